// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The panel as the options ask to see it: a page, an open editor, the
// panel's message box; on screen, or rendered to a picture file.
#pragma once

#include "Options.h"
#include "UnattendedDialogs.h"

class Tessaly;

namespace tessaly::model {
class SimulatedHandset;
}

namespace halvane {

// Shows the page and opens the editor the options name. A node or a cell
// that is not there is told on standard error (with the page nodes there
// are) and gives false.
bool ShowAsAsked(const Options& options, Tessaly& panel);

// Runs an NV Read, shows what the options ask and renders it to the
// screenshot file (halvane.png without one), with the dialogs shown meanwhile
// over the panel, or the message box alone. Prints the file's path. Gives the
// exit status: 0 when the read succeeded and the picture was written.
int RenderScreenshot(const Options& options, Tessaly& panel, tessaly::model::SimulatedHandset& handset,
                     UnattendedDialogs& dialogs);

} // namespace halvane
