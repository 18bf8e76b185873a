// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane --bench: the bench window, watching the machine's ports or, with
// --port LIST, showing the handsets on those ports; without a display or
// with --screenshot, rendered to a picture file once the ports are probed.
#pragma once

#include "Options.h"

namespace halvane {

// Shows the bench window, or renders it when `unattended`; gives the exit
// status.
int BenchWindowCommand(const Options& options, bool unattended);

} // namespace halvane
