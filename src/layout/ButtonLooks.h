// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The bitmaps of an image button: at rest, under the pointer, pressed and
// dimmed. The layout hands each button's set to the subsystem that shows it.
#pragma once

#include <QPixmap>

namespace tessaly {

// A look a button has no bitmap for is shown as its rest look.
struct ButtonLooks {
    QPixmap rest;
    QPixmap hover;
    QPixmap pressed;
    QPixmap dimmed;
};

} // namespace tessaly
