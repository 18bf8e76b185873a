// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The handset's whole file system read for a backup: every folder walked from
// the root, every file read whole and every link's target, all with several
// requests on the line at once (link/EfsClient.h). A folder or file the
// handset will not let be read is told by path with its errno, and the walk
// goes on.
#pragma once

#include "link/EfsClient.h"
#include "model/EfsEntry.h"

#include <functional>
#include <vector>

namespace tessaly::link {

struct EfsTree {
    std::vector<model::EfsEntry> entries; // by path
    std::vector<std::pair<QString, QString>> gaps; // path, what befell it; by path
    qint64 bytes = 0; // in the files
    size_t files() const;
};

// Reads the tree under `root`; `progress` hears of each file read, with the
// files and bytes read so far. Throws TessalyError when the link fails or
// the handset has no file system.
EfsTree ReadEfsTree(EfsClient& client, const QString& root = QStringLiteral("/"),
                    const std::function<void(size_t files, qint64 bytes)>& progress = {});

} // namespace tessaly::link
