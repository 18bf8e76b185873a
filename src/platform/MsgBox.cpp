// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "platform/MsgBox.h"

#include "platform/ModalBox.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>

namespace tessaly {

void MsgBox(const QString& prompt, MsgBoxStyle style)
{
    // On the heap: the window it stands over may end while it is open.
    const QPointer<QMessageBox> box = new QMessageBox(
        style == MsgBoxStyle::Critical ? QMessageBox::Critical : QMessageBox::NoIcon, QApplication::applicationName(),
        prompt, QMessageBox::Ok, QApplication::activeWindow());
    box->setTextFormat(Qt::PlainText);
    ShowModal(*box);
    delete box.data();
}

} // namespace tessaly
