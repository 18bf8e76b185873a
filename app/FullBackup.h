// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane --read --all-items: every NV item of a range kept in one full
// backup with the handset's file system, with its progress on a terminal.
#pragma once

#include "Options.h"

#include "link/ItemScan.h"
#include "link/SerialLink.h"

#include <QStringList>

#include <functional>

namespace halvane {

// What a full backup kept and what befell it on the way.
struct FullBackupTaken {
    QString path;      // the backup file
    QStringList gaps;  // each item kept as busy or with a fault's status, each item or file not read
    QString summary;   // "Items 0 to 65535: 108 held, ...; 333 files, 1.1 MB; 1.2 s"
    bool busy = false; // an item stayed busy: the backup has a gap a script must know of
};

// Where a full backup stands: the items, then the files read so far.
struct FullBackupProgress {
    std::function<void(const tessaly::link::ScanProgress&)> items;
    std::function<void(size_t files, qint64 bytes)> files;
};

// Scans the handset on `line` as the options say, then walks its file system
// unless --no-files, and saves the full backup. Throws TessalyError when the
// link fails; nothing is kept then.
FullBackupTaken TakeFullBackup(const Options& options, tessaly::link::SerialLink& line,
                               const FullBackupProgress& progress);

// Opens the handset on --port (no panel is made), scans its items as the
// options say, then walks its file
// system unless --no-files, saves the full backup and prints its path, each
// gap (an item kept as busy or with a status of a fault, an item or a file
// not read) and a summary line on standard output; on a terminal, standard
// error shows one line of progress that rewrites itself. Gives the exit
// status: 0 when the whole range was read and kept and no item stayed busy,
// items and files the handset refused to give told and counted.
int SaveFullBackup(const Options& options);

} // namespace halvane
