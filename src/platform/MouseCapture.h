// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Mouse capture: the one control that receives every mouse event, wherever
// the pointer is, until it lets go. Qt's mouse grab plays this part.
#pragma once

class QWidget;

namespace tessaly {

// The control holding the capture, or none.
QWidget* GetCapture();
// Gives the capture to a control on view, taking it from any other.
void SetCapture(QWidget* control);
// Ends the capture, whoever holds it.
void ReleaseCapture();

} // namespace tessaly
