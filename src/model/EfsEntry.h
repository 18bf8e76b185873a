// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// One entry of a handset's embedded file system as a backup keeps it: a
// folder, a file with its bytes, or a symbolic link with its target. Modes are
// the handset's own, a kind in the upper bits and the permissions below, as
// POSIX lays them out (octal 040000 a folder, 0100000 a file, 0120000 a link,
// 0160000 an item file).
#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>

namespace tessaly::model {

struct EfsEntry {
    QString path{};    // absolute: "/nv/item_files/modem/mmode/sms_domain_pref"
    uint32_t mode = 0;
    int32_t mtime = 0; // seconds, as the handset keeps them
    QByteArray data{}; // a file's bytes
    QString target{};  // a link's target

    bool operator==(const EfsEntry&) const = default;
};

inline constexpr uint32_t EfsModeKind = 0170000;
inline constexpr uint32_t EfsModeFolder = 0040000;
inline constexpr uint32_t EfsModeFile = 0100000;
inline constexpr uint32_t EfsModeLink = 0120000;
inline constexpr uint32_t EfsModeItemFile = 0160000;

inline bool IsEfsFolder(const EfsEntry& entry) { return (entry.mode & EfsModeKind) == EfsModeFolder; }
inline bool IsEfsLink(const EfsEntry& entry) { return (entry.mode & EfsModeKind) == EfsModeLink; }

} // namespace tessaly::model
