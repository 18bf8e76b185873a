// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// A move of a window driven by the user, as when its caption is grabbed: the
// window system's own move where the platform offers one for a top-level
// window; elsewhere, and for a window inside another, the window follows the
// pointer until the left button is let go.
#pragma once

#include <QPointF>

class QWidget;

namespace tessaly {

// Starts moving `window` with the pointer, which is at `globalGrab` now. A
// move already under way for that window goes on undisturbed.
void BeginWindowDrag(QWidget* window, const QPointF& globalGrab);

} // namespace tessaly
