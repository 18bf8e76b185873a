// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The handset's embedded file system (EFS2), reached through subsystem
// commands of subsystem 19 (0x13), as packets without I/O: every request and
// every reply of the commands a backup, a restore and a file copy need, each
// encoded and decoded here alone, by the client and by the emulator alike.
//
// The layouts are those of the open OpenPST project's description of the
// EFS2 diagnostic packets (libopenpst, qc/diag_efs.h): after the subsystem
// header (code 0x4B, subsystem 0x13, command as 16 bits), fields of 32 bits
// little-endian, a mode of 16 bits in mkdir and chmod, paths as text ended by
// a NUL. Every reply but hello's and query's carries the errno of the call,
// 0 when it went well; the numbers are those of POSIX as Linux gives them,
// and a few of EFS2's own (0x40000001 on).
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <cstdint>
#include <optional>

namespace tessaly::link {

inline constexpr uint8_t SubsysEfs = 0x13;

// A file's times count seconds from the start of CDMA system time, 1980-01-06
// 00:00:00 UTC, by the handset's clock; this is that start in Unix time.
inline constexpr qint64 EfsTimeStart = 315964800;

enum EfsCommand : uint16_t {
    EfsHello = 0,
    EfsQuery = 1,
    EfsOpen = 2,
    EfsClose = 3,
    EfsRead = 4,
    EfsWrite = 5,
    EfsSymlink = 6,
    EfsReadlink = 7,
    EfsUnlink = 8,
    EfsMkdir = 9,
    EfsRmdir = 10,
    EfsOpendir = 11,
    EfsReaddir = 12,
    EfsClosedir = 13,
    EfsRename = 14,
    EfsStat = 15,
    EfsLstat = 16,
    EfsFstat = 17,
    EfsChmod = 18,
    EfsStatfs = 19,
};

// The flags of an open, as EFS2 takes them (octal, the values of POSIX).
enum EfsOpenFlag : int32_t {
    EfsReadOnly = 00,
    EfsWriteOnly = 01,
    EfsReadWrite = 02,
    EfsCreate = 0100,
    EfsExclusive = 0200,
    EfsTruncate = 01000,
    EfsAppend = 02000,
};

// The kind of a file in its mode's upper bits (octal), as POSIX has them;
// an item file is EFS2's own: a small file kept whole in one place.
enum EfsFileKind : uint32_t {
    EfsKindMask = 0170000,
    EfsKindFolder = 0040000,
    EfsKindFile = 0100000,
    EfsKindLink = 0120000,
    EfsKindItem = 0160000,
};

// The kind of a folder's entry in a readdir reply.
enum EfsEntryType : int32_t { EfsEntryFile = 0, EfsEntryFolder = 1, EfsEntryLink = 2, EfsEntryImmovable = 3 };

// The errno values a handset answers, by name.
enum EfsErrno : int32_t {
    EfsOk = 0,
    EfsNoEntry = 2,         // ENOENT
    EfsBadFile = 9,         // EBADF
    EfsDenied = 13,         // EACCES
    EfsExists = 17,         // EEXIST
    EfsNotFolder = 20,      // ENOTDIR
    EfsIsFolder = 21,       // EISDIR
    EfsInvalid = 22,        // EINVAL
    EfsTooManyOpen = 24,    // EMFILE
    EfsNoSpace = 28,        // ENOSPC
    EfsNameTooLong = 36,    // ENAMETOOLONG
    EfsNotEmpty = 39,       // ENOTEMPTY
    EfsDirNotOpen = 0x40000003,
    EfsDirEntryNotFound = 0x40000004, // readdir past a folder's last entry
};

// The window parameters of hello, the same both ways: how many packets and
// bytes may be on the way from the handset, from the host and while a folder
// is read, and the protocol's version.
struct EfsWindow {
    uint32_t targetPackets = 0;
    uint32_t targetBytes = 0;
    uint32_t hostPackets = 0;
    uint32_t hostBytes = 0;
    uint32_t folderPackets = 0;
    uint32_t folderBytes = 0;
    uint32_t version = 1;
    uint32_t minVersion = 1;
    uint32_t maxVersion = 1;
    uint32_t features = 0;

    bool operator==(const EfsWindow&) const = default;
};

// The limits of query's reply.
struct EfsLimits {
    int32_t maxName = 0;
    int32_t maxPath = 0;
    int32_t maxLinkDepth = 0;
    int32_t maxFileSize = 0;
    int32_t maxFolderEntries = 0;
    int32_t maxMounts = 0;

    bool operator==(const EfsLimits&) const = default;
};

// What stat, lstat, fstat and readdir tell of a file. lstat's reply has no
// size and no link count.
struct EfsAttributes {
    int32_t mode = 0;
    int32_t size = 0;
    int32_t links = 0;
    int32_t atime = 0;
    int32_t mtime = 0;
    int32_t ctime = 0;

    bool operator==(const EfsAttributes&) const = default;
};

// statfs's reply.
struct EfsVolume {
    int32_t id = 0;
    QByteArray type{}; // 8 bytes at most, such as "EFS2"
    int32_t blockSize = 0;
    int32_t totalBlocks = 0;
    int32_t availableBlocks = 0;
    int32_t freeBlocks = 0;
    int32_t maxFileSize = 0;
    int32_t files = 0;
    int32_t maxFiles = 0;

    bool operator==(const EfsVolume&) const = default;
};

// One request; the fields its command carries are set, the rest left alone.
struct EfsRequest {
    EfsCommand command = EfsHello;
    EfsWindow window{};    // hello
    int32_t fd = 0;      // close, read, write, fstat
    uint32_t folder = 0; // readdir, closedir: the handle opendir gave
    int32_t sequence = 0; // readdir: the entry wanted, from 1
    int32_t flags = 0;   // open
    int32_t mode = 0;    // open, mkdir, chmod
    uint32_t size = 0;   // read: bytes wanted
    uint32_t offset = 0; // read, write
    QString path{};        // the commands on a path; symlink: the link's target; rename: the old name
    QString path2{};       // symlink: the link; rename: the new name
    QByteArray data{};     // write

    bool operator==(const EfsRequest&) const = default;
};

// One reply; the fields its command carries are set.
struct EfsReply {
    EfsCommand command = EfsHello;
    int32_t error = EfsOk; // every reply but hello's and query's
    EfsWindow window{};      // hello
    EfsLimits limits{};      // query
    EfsVolume volume{};      // statfs
    int32_t fd = 0;        // open, read, write
    uint32_t folder = 0;   // opendir, readdir
    int32_t sequence = 0;  // readdir
    uint32_t offset = 0;   // read, write
    int32_t count = 0;     // read, write: bytes read or written
    int32_t entryType = 0; // readdir: an EfsEntryType
    EfsAttributes attributes{}; // stat, lstat, fstat, readdir
    QString name{};          // readdir: the entry's name; readlink: the target
    QByteArray data{};       // read

    bool operator==(const EfsReply&) const = default;
};

// The bytes of a request or a reply.
QByteArray EncodeEfsRequest(const EfsRequest& request);
QByteArray EncodeEfsReply(const EfsReply& reply);

// The fields of an EFS2 request or reply; nothing for a packet of another
// subsystem, of a command not listed above, or cut short.
std::optional<EfsRequest> ReadEfsRequest(QByteArrayView packet);
std::optional<EfsReply> ReadEfsReply(QByteArrayView packet);

// Whether `reply` answers `request`: the same command, and for a read or a
// write the same descriptor and offset, for a readdir the same handle and sequence
// number. An error reply that echoes the request answers it too.
bool EfsAnswers(QByteArrayView request, QByteArrayView reply);

// The reply to `request`. Throws TessalyError for an error reply ("bad
// command": the handset has no file system over the diagnostic port) or a
// reply that answers something else; an errno is not thrown, it is the
// reply's `error`.
EfsReply ParseEfsReply(QByteArrayView request, QByteArrayView reply);

// An errno for a person: "No such file or directory (ENOENT)".
QString EfsErrorText(int32_t error);

// `name` joined to the folder `folder`, and the folder that holds `path`.
QString EfsPath(const QString& folder, const QString& name);
QString EfsParent(const QString& path);

} // namespace tessaly::link
