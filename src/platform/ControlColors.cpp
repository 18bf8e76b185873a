// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "platform/ControlColors.h"

#include <QPalette>
#include <QWidget>

namespace tessaly {

void SetControlColors(QWidget& control, const QColor& back, const QColor& fore)
{
    QPalette palette = control.palette();
    if (back.isValid()) {
        palette.setColor(QPalette::Window, back);
        palette.setColor(QPalette::Base, back);
        palette.setColor(QPalette::Button, back);
        control.setAutoFillBackground(true);
    }
    if (fore.isValid()) {
        palette.setColor(QPalette::WindowText, fore);
        palette.setColor(QPalette::Text, fore);
        palette.setColor(QPalette::ButtonText, fore);
    }
    control.setPalette(palette);
}

} // namespace tessaly
