// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// --diff A B: two NV files compared (backups of either kind, XQCN files, or
// one of each), every item and file that differs, was added or is gone
// printed with its differing bytes marked and the catalogue's values side by
// side, or with --json the same as data.
#pragma once

#include "Options.h"

namespace halvane {

// Compares options.diffFrom with options.diffTo and prints what differs.
// Gives the exit status as diff does: 0 when they hold the same, 1 when they
// differ, 2 when either cannot be read or is damaged (told on standard error,
// naming which and why).
int DiffBackups(const Options& options);

} // namespace halvane
