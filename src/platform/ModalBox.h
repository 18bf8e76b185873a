// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Modal boxes. A box runs an event loop of its own inside the handler that
// opened it, and a host may end a panel from that loop (from a timer, say).
// Such a panel's controls and state must outlive the handlers still waiting
// on boxes: it hands them over here, and they are deleted once no box is
// open any more and the event loop has the control again.
#pragma once

class QDialog;
class QObject;

namespace tessaly {

// Shows `dialog` modally and returns its result when it has closed. The
// dialog may be deleted meanwhile; it is not touched after.
int ShowModal(QDialog& dialog);

// Whether a box of ShowModal is open.
bool ModalBoxOpen();

// Whether a box is open, or an ended panel still waits to be deleted: the
// library's code is still needed then.
bool ModalBoxesBusy();

// Deletes `object` once no box of ShowModal is open, from the event loop.
void DeleteAfterModalBoxes(QObject* object);

} // namespace tessaly
