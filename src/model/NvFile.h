// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// NV items on disk: the simulated handset's memory and the backups of a live
// handset are files of one format, read and written here alone. A JSON object
// says which kind of file it is ("format"), carries a few fields of its own
// (a backup's ESN, MEID and time), and lists its items one a line: number,
// index when the item has one, status, and the data bytes in hexadecimal with
// trailing zero bytes left out. A full backup lists after its items the
// handset's file system, one entry a line: path, mode and time, a file's size
// and bytes (base64), a link's target.
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
// item listed twice; a file entry whose path is not one IsEfsPath takes,
// whose mode is of no kind IsEfsKind knows, whose size is not that of its
// data or whose data is not base64, a link without a target IsEfsTarget
// takes, a path listed twice), or an empty string when `file` holds it.
QString ReadNvFile(const QString& path, NvFileKind kind, NvFile& file);
// The same for a file of any of `kinds`; `file` says which it was.
QString ReadNvFile(const QString& path, std::initializer_list<NvFileKind> kinds, NvFile& file);

// Whether `path` can name an entry of the handset's file system: absolute,
// of printable characters of one byte each, without "." or ".." parts or
// empty ones (doubled slashes, a slash at the end).
bool IsEfsPath(const QString& path);
// Whether `target` can be a link's target: not empty, of printable characters
// of one byte each; a relative one is taken.
bool IsEfsTarget(const QString& target);
// Whether `mode` is one of 16 bits whose kind a backup keeps: folder, file,
// link, item file.
bool IsEfsKind(uint32_t mode);

// Writes `file` to `path` at once, mode 0600; an earlier file stays whole when
// the write fails. Gives what went wrong, or an empty string.
QString WriteNvFile(const QString& path, const NvFile& file);
// Writes `bytes` to `path` the same way: at once, mode 0600 (NV items hold
// passwords), an earlier file whole when the write fails.
QString WriteWhole(const QString& path, const QByteArray& bytes);
// A name beside `path` that no file has yet, to set a damaged file aside
// under: "<path>.damaged-<time>".
QString AsideName(const QString& path);

} // namespace tessaly::model
