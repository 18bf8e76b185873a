// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// A running tessaly-emu's word that an emulated handset answers on a
// terminal, so that a port listing finds it as it finds a real port: one
// small JSON file per terminal in "tessaly-emu" under the user's runtime
// folder, written while the emulator serves and removed when it stops. One
// layout for the emulator that writes it and halvane that reads it:
//
//   {"terminal": "/dev/pts/5", "pid": 1234, "handset": 2,
//    "model": "Halvane SIM-800", "esn": "8F3A21C6", "meid": "A0000031F4C2DB"}
//
// "meid" is left out for a handset without one.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tessaly::link {

struct EmulatorAnnouncement {
    QString terminal; // the pseudo-terminal's path, what the client opens
    qint64 pid = 0;   // the emulator's process
    int handset = 1;  // its number in the emulator's bench, from 1
    QString model;
    QString esn;      // upper-case hexadecimal, as written
    QString meid;     // the same; empty for a handset without one
};

// "<runtime folder>/tessaly-emu": the runtime folder as Qt finds it, which
// honours XDG_RUNTIME_DIR.
QString EmulatorAnnouncementFolder();

// The file's name in that folder: "<pid>-<handset>.json".
QString AnnouncementFileName(const EmulatorAnnouncement& announcement);

QByteArray EncodeAnnouncement(const EmulatorAnnouncement& announcement);
// Nothing for bytes that are not such an object, or that name no terminal
// or no process.
std::optional<EmulatorAnnouncement> ParseAnnouncement(const QByteArray& bytes);

} // namespace tessaly::link
