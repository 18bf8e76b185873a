// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// A backup's files written back to the handset, by the rules of the items'
// restore: only what differs from what the handset holds is written, each
// file read back and compared whole; a file, folder or link the handset does
// not have is made only when asked (`createMissing`, the restore's
// --all-items). The caller has checked the handset's identity, read what it
// holds (link/EfsTreeRead.h) and kept that as a backup.
#pragma once

#include "link/EfsTreeRead.h"

namespace tessaly::link {

// `tell` gets one line per entry, as it happens: restored, made, unchanged,
// skipped, failed; when the link fails, the rest are told as not written.
// Gives whether every entry that was to be written was.
bool RestoreFiles(const std::vector<model::EfsEntry>& files, const EfsTree& onHandset, EfsClient& client,
                  bool createMissing, const std::function<void(const QString&)>& tell);

} // namespace tessaly::link
