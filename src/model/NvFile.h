// NV items on disk: the simulated handset's memory and the backups of a live
// handset are files of one format, read and written here alone. A JSON object
// says which kind of file it is ("format"), carries a few fields of its own
// (a backup's ESN, MEID and time), and lists its items one a line: number,
// index when the item has one, status, and the data bytes in hexadecimal with
// trailing zero bytes left out.
//
// The files hold passwords (PPP, WAP): they are written whole or not at all,
// readable by their owner alone.
#pragma once

#include "model/EfsEntry.h"
#include "model/NvMemory.h"

#include <QJsonObject>
#include <QString>

#include <initializer_list>
#include <vector>

namespace tessaly::model {

// A backup holds what one NV Read gave, the catalogue's items; a full backup
// every item a scan of the item numbers found on the handset.
enum class NvFileKind { Memory, Backup, FullBackup };

struct NvEntry {
    NvAddress address;
    NvStatus status = NvStatus::Done;
    NvData data{};

    bool operator==(const NvEntry&) const = default;
};

struct NvFile {
    NvFileKind kind = NvFileKind::Memory;
    QJsonObject fields; // besides the format and the items
    std::vector<NvEntry> entries;
    std::vector<EfsEntry> files{}; // a full backup's file system: folders, files, links
};

// Reads a file of `kind`. Gives why it cannot be taken, naming the first
// entry at fault (an item out of 0 to 65535, an index out of 0 to 255, data
// missing, not hexadecimal or longer than 128 bytes, an unknown status, an
// item listed twice), or an empty string when `file` holds it.
QString ReadNvFile(const QString& path, NvFileKind kind, NvFile& file);
// The same for a file of any of `kinds`; `file` says which it was.
QString ReadNvFile(const QString& path, std::initializer_list<NvFileKind> kinds, NvFile& file);

// Writes `file` to `path` at once, mode 0600; an earlier file stays whole when
// the write fails. Gives what went wrong, or an empty string.
QString WriteNvFile(const QString& path, const NvFile& file);
// Writes `bytes` to `path` the same way: at once, mode 0600 (NV items hold
// passwords), an earlier file whole when the write fails.
QString WriteWhole(const QString& path, const QByteArray& bytes);

} // namespace tessaly::model
