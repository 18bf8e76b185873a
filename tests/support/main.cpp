// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Runs a test binary headless: the offscreen platform unless one is chosen,
// with every modal dialog answered.
#include "support/DialogAnswerer.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("TessalyTests"));
    DialogAnswerer::InstallGuard();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
