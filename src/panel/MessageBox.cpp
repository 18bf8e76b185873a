// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <tessaly/MessageBox.h>

#include "frame/frmMsgBox.h"

QDialog* TessalyCreateMessageBox(QWidget* panel, const QString& text)
{
    auto* box = new tessaly::frmMsgBox(panel);
    box->SetMessage(text);
    return box;
}
