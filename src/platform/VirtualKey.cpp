// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "platform/VirtualKey.h"

namespace tessaly {

int VirtualKeyCode(const QKeyEvent& event)
{
    const int key = event.key();
    if ((key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z))
        return key; // the platform's codes for digits and letters are their ASCII capitals
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return vbKeyF1 + (key - Qt::Key_F1);
    switch (key) {
    case Qt::Key_Backspace: return vbKeyBack;
    case Qt::Key_Tab: case Qt::Key_Backtab: return vbKeyTab;
    case Qt::Key_Return: case Qt::Key_Enter: return vbKeyReturn;
    case Qt::Key_Shift: return vbKeyShift;
    case Qt::Key_Control: return vbKeyControl;
    case Qt::Key_Alt: return vbKeyMenu;
    case Qt::Key_Escape: return vbKeyEscape;
    case Qt::Key_Space: return vbKeySpace;
    case Qt::Key_PageUp: return vbKeyPageUp;
    case Qt::Key_PageDown: return vbKeyPageDown;
    case Qt::Key_End: return vbKeyEnd;
    case Qt::Key_Home: return vbKeyHome;
    case Qt::Key_Left: return vbKeyLeft;
    case Qt::Key_Up: return vbKeyUp;
    case Qt::Key_Right: return vbKeyRight;
    case Qt::Key_Down: return vbKeyDown;
    case Qt::Key_Insert: return vbKeyInsert;
    case Qt::Key_Delete: return vbKeyDelete;
    default: return 0;
    }
}

int ShiftState(Qt::KeyboardModifiers modifiers)
{
    return (modifiers & Qt::ShiftModifier ? 1 : 0) | (modifiers & Qt::ControlModifier ? 2 : 0)
        | (modifiers & Qt::AltModifier ? 4 : 0);
}

} // namespace tessaly
