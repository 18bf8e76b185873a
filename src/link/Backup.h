// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Backups of a live handset's NV memory: every NV Read saves one, an NV file
// of the backup kind (model/NvFile.h) with the handset's ESN and MEID, the
// time, and every item with its bytes and status; a full backup
// (link/ItemScan.h) is of the full kind. A backup is never written over.
// Restoring one checks that it was taken from this handset, keeps a backup of
// what the handset holds first, and tells each item's outcome.
#pragma once

#include "link/LiveNvMemory.h"
#include "model/NvFile.h"

#include <QDateTime>
#include <QStringList>

#include <functional>
#include <set>

namespace tessaly::link {

struct Backup {
    QString esn;  // hexadecimal
    QString meid; // hexadecimal
    QDateTime time;
    std::vector<model::NvEntry> items;
    bool full = false; // every item number of a range, not the catalogue's items
    std::vector<model::EfsEntry> files{}; // a full backup's file system, in the order of its walk
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

// The items that the catalogue says are kept once per NAM or per profile.
std::set<uint16_t> IndexedItems();

// The folder of the backups in the user's data folder.
QString BackupFolder();

// The ESN and the MEID as they are written, from their items' data: the
// first 4 and 7 bytes, stored little-endian, in upper-case hexadecimal.
QString EsnHex(const model::NvData& data);
QString MeidHex(const model::NvData& data);

// Writes `backup` back to the handset behind `memory`, which must be the one
// it was taken from. First every item is read, the ESN and MEID compared, and
// what the handset holds kept as a backup of its own (see
// LiveNvMemory::setBackupFolder); then each item is written unless the
// catalogue protects it, the handset lacks it, or the catalogue does not know
// it and `allItems` is not given. `tell` gets one line per
// item, as it happens: restored (written and read back the same), unchanged,
// skipped, refused; when the link fails, the rest are told as not written.
// Gives whether every item that was to be written was. Throws TessalyError
// when nothing could be written at all.
bool RestoreBackup(const Backup& backup, LiveNvMemory& memory, const std::function<void(const QString&)>& tell,
                   bool allItems = false);

} // namespace tessaly::link
