// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane --restore-backup: a backup written back to its own handset.
#pragma once

#include "Options.h"

#include "link/Backup.h"
#include "link/LiveNvMemory.h"
#include "link/SerialLink.h"

#include <functional>

namespace halvane {

// Writes `backup` to the handset on `line` whose NV memory is `memory`: its
// items, then its files, telling each one's outcome as it happens. Items the
// catalogue does not know, and files the handset does not have, are written
// only with --all-items. Gives whether every item and file that was to be
// written was. Throws TessalyError saying what was left unwritten when the
// link fails or the backup is not this handset's.
bool RestoreItemsAndFiles(const Options& options, const tessaly::link::Backup& backup, tessaly::link::SerialLink& line,
                          tessaly::link::LiveNvMemory& memory, const std::function<void(const QString&)>& tell);

// Writes the backup --restore-backup names, an NV file or an XQCN file, to
// the handset on --port (no panel is made; the SPC is --spc's): its items, then its files, printing each one's outcome on
// standard output as it happens and any fault on standard error. Items the
// catalogue does not know, and files the handset does not have, are written
// only with --all-items. A part of an XQCN file that halvane does not know is
// named. Gives the exit status: 0 when every item and file that was to be
// written was and nothing was passed over.
int RestoreFromBackup(const Options& options);

} // namespace halvane
