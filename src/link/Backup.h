// Backups of a live handset's NV memory: every NV Read saves one, a JSON file
// with the handset's ESN and MEID, the time, and every item with its raw bytes
// and status. A backup is never written over. Restoring one checks that it was
// taken from this handset and tells each item's outcome.
#pragma once

#include "link/LiveNvMemory.h"

#include <QDateTime>
#include <QStringList>

namespace tessaly::link {

struct BackupItem {
    model::NvAddress address;
    model::NvData data{};
    uint16_t status = 0;
};

struct Backup {
    QString esn;  // hexadecimal
    QString meid; // hexadecimal
    QDateTime time;
    std::vector<BackupItem> items;

    // Saves into `folder` under a name of its own, "<ESN>-<time>.json"; gives
    // the file's path. Throws TessalyError when it cannot be written.
    QString save(const QString& folder) const;
    // Throws TessalyError naming what is wrong with the file.
    static Backup Load(const QString& path);
};

// The folder of the backups in the user's data folder.
QString BackupFolder();

// An identity number as it is written: the first `bytes` of an item's data,
// stored little-endian, in upper-case hexadecimal.
QString IdentityHex(const model::NvData& data, int bytes);

// Writes `backup` back to the handset behind `memory`, which must be the one
// it was taken from (its ESN and MEID, read now, must match). Read-only and
// identity items are skipped. Gives one line per item: what became of it.
QStringList RestoreBackup(const Backup& backup, LiveNvMemory& memory);

} // namespace tessaly::link
