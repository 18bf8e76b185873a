// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "platform/MouseCapture.h"

#include <QWidget>

namespace tessaly {

QWidget* GetCapture()
{
    return QWidget::mouseGrabber();
}

void SetCapture(QWidget* control)
{
    if (control && control->isVisible())
        control->grabMouse();
}

void ReleaseCapture()
{
    if (QWidget* holder = QWidget::mouseGrabber())
        holder->releaseMouse();
}

} // namespace tessaly
