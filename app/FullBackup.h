// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane --read --all-items: every NV item of a range kept in one full
// backup with the handset's file system, with its progress on a terminal.
#pragma once

#include "Handset.h"

namespace halvane {

// Scans the real handset's items as the options say, then walks its file
// system unless --no-files, saves the full backup and prints its path, each
// gap (an item kept as busy or with a status of a fault, an item or a file
// not read) and a summary line on standard output; on a terminal, standard
// error shows one line of progress that rewrites itself. Gives the exit
// status: 0 when the whole range was read and kept and no item stayed busy,
// items and files the handset refused to give told and counted.
int SaveFullBackup(const Options& options, Handset& handset);

} // namespace halvane
