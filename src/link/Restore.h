// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// A backup's NV items written back to the handset it was taken from.
#pragma once

#include "link/Backup.h"
#include "link/LiveNvMemory.h"

#include <functional>

namespace tessaly::link {

// Why an item that the handset answered a read of with `onHandset` is not
// written to it: it refuses the item (a bad parameter, read-only, not valid,
// a fault) or holds it busy; an empty string when it may be, as done or
// inactive (there, but without a value). Beside the catalogue's protection
// (model::Catalogue::protection), the rule of every write of an item.
QString HandsetRefusal(model::NvStatus onHandset);

// Writes `backup` back to the handset behind `memory`, which must be the one
// it was taken from. First every item is read, the ESN and MEID compared, and
// what the handset holds kept as a backup of its own (see
// LiveNvMemory::setBackupFolder); then each item is written unless the
// catalogue protects it, the backup kept it with a status other than held,
// the handset refuses it or holds it busy, or the catalogue does not know it
// and `allItems` is not given; an item the handset holds as inactive is
// written back. `tell` gets one line per item, as it happens: restored
// (written and read back the same), unchanged, skipped, refused; when the link
// fails, the rest are told as not written. Gives whether every item that was
// to be written was. Throws TessalyError when nothing could be written at all.
bool RestoreBackup(const Backup& backup, LiveNvMemory& memory, const std::function<void(const QString&)>& tell,
                   bool allItems = false);

} // namespace tessaly::link
