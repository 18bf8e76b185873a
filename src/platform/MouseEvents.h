// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Mouse events as the forms platform reports them: MouseDown, MouseMove and
// MouseUp with the buttons (1 left, 2 right, 4 middle), the shift state and
// the position in twips, and Click when a button is let go over the control
// that took the press. Controls that raise them declare the four signals and
// pass their Qt mouse events here.
#pragma once

#include "platform/FormControl.h"
#include "platform/VirtualKey.h"

#include <QMouseEvent>

namespace tessaly {

inline int MouseButtons(Qt::MouseButtons buttons)
{
    return (buttons & Qt::LeftButton ? 1 : 0) | (buttons & Qt::RightButton ? 2 : 0)
        | (buttons & Qt::MiddleButton ? 4 : 0);
}

template <class Control>
void RaiseMouseEvent(Control& control, QMouseEvent* event)
{
    event->accept();
    const int shift = ShiftState(event->modifiers());
    const QPointF at = event->position();
    const float x = float(at.x() * TwipsPerPixel);
    const float y = float(at.y() * TwipsPerPixel);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        emit control.MouseDown(MouseButtons(event->button()), shift, x, y);
        break;
    case QEvent::MouseMove:
        emit control.MouseMove(MouseButtons(event->buttons()), shift, x, y);
        break;
    case QEvent::MouseButtonRelease:
        emit control.MouseUp(MouseButtons(event->button()), shift, x, y);
        if (event->button() == Qt::LeftButton && control.rect().contains(at.toPoint()))
            emit control.Click();
        break;
    default:
        break;
    }
}

} // namespace tessaly
