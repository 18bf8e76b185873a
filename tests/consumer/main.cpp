// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// A host that places the panel and fills one value, as an installed package
// user writes it.
#include <tessaly/Tessaly.h>

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    Tessaly panel;
    panel.AddItemToGrd(2, QString(), false, false, QString(), QStringLiteral("#777"), 1, 1);
    return panel.GetItemFromGrd(2, 1, 0) == QLatin1String("#777") ? 0 : 1;
}
