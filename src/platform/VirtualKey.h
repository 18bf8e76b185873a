// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Key events as the forms platform reports them: Windows virtual-key codes and
// a shift state of 1 (shift), 2 (ctrl) and 4 (alt).
#pragma once

#include <QKeyEvent>

namespace tessaly {

enum VirtualKey : int {
    vbKeyBack = 8, vbKeyTab = 9, vbKeyReturn = 13, vbKeyShift = 16, vbKeyControl = 17,
    vbKeyMenu = 18, vbKeyEscape = 27, vbKeySpace = 32, vbKeyPageUp = 33, vbKeyPageDown = 34,
    vbKeyEnd = 35, vbKeyHome = 36, vbKeyLeft = 37, vbKeyUp = 38, vbKeyRight = 39,
    vbKeyDown = 40, vbKeyInsert = 45, vbKeyDelete = 46, vbKeyF1 = 112, vbKeyF2 = 113,
    vbKeyF4 = 115,
};

// The virtual-key code of a Qt key event, 0 for keys that have none.
int VirtualKeyCode(const QKeyEvent& event);
int ShiftState(Qt::KeyboardModifiers modifiers);

} // namespace tessaly
