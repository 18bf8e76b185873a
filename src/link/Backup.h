// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Backups of a live handset's NV memory: every NV Read saves one, an NV file
// of the backup kind (model/NvFile.h) with the handset's ESN and MEID, the
// time, and every item with its bytes and status; a full backup
// (link/ItemScan.h) is of the full kind, with the handset's files. A backup
// is never written over. Restoring one: link/Restore.h.
#pragma once

#include "model/NvFile.h"

#include <QDateTime>
#include <QStringList>

namespace tessaly::link {

struct Backup {
    QString esn;  // hexadecimal
    QString meid; // hexadecimal
    QDateTime time;
    std::vector<model::NvEntry> items;
    bool full = false; // every item number of a range, not the catalogue's items
    std::vector<model::EfsEntry> files{}; // a full backup's file system, by path
    QStringList passedOver{}; // the streams of an XQCN file that Load did not understand (model::XqcnContents)

    // Saves into `folder` under a name of its own, "<ESN>-<time>.json" or for
    // a full backup "<ESN>-<time>-full.json"; gives the file's path. Throws
    // TessalyError when it cannot be written.
    QString save(const QString& folder) const;
    // The backup as an NV file, for a name of the caller's choosing.
    model::NvFile file() const;
    // Reads a backup of either kind, or an XQCN file (model/Xqcn.h, by its
    // extension .xqcn), whose identity is that of its ESN and MEID items and
    // whose streams passed over are named in passedOver.
    // Throws TessalyError naming what is wrong with the file: any entry out
    // of range or of a wrong kind refuses the whole file.
    static Backup Load(const QString& path);
    // A full backup of `items`, its identity from their ESN and MEID.
    static Backup FromItems(std::vector<model::NvEntry> items);
};

// The folder of the backups in the user's data folder.
QString BackupFolder();

// A backup kept in a folder, known by the name Backup::save gave it.
struct KeptBackup {
    QString path;
    QDateTime time; // as its name tells it
    bool full = false;
};

// The backups in `folder` of the handset with the ESN `esn` (eight upper-case
// hexadecimal digits), newest first by the time in their names; of two saved
// in the same second, the one saved last first. Files of other names are
// passed over; none is read.
std::vector<KeptBackup> KeptBackups(const QString& folder, const QString& esn);

} // namespace tessaly::link
