// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane's work with the preferred roaming list: --prl-show lays out a .prl
// file's header, acquisition table and system table (or prints them as
// JSON), --prl-get reads the handset's list into a new file, --prl-put
// writes one to the handset after checking it.
#pragma once

#include "Options.h"

namespace halvane {

// Each tells any fault on standard error and gives the exit status: 0 when
// it did what was asked. ShowPrl needs no handset, and exits 1 for a list
// that is not valid after showing what it could read of it.
int ShowPrl(const Options& options);
// Reads the roaming list of the handset on the options' port into
// `options.prlGet`, which must not be there yet.
int GetPrl(const Options& options);
// Checks `options.prlPut` (its size field, its CRC, its tables) before a
// byte is sent; keeps the handset's list in the backups folder, writes the
// new one (with the SPC of --spc where the handset is locked), reads it back
// and compares it whole.
int PutPrl(const Options& options);

} // namespace halvane
