// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The handset tessaly-emu stands for: what it says of itself (version reply,
// extended build id, diagnostic version, status) and what it can do (MEID,
// extended build id, subsystem commands). A profile is chosen by name
// (--model) and its fields may be set in the state file's "handset" object.
#pragma once

#include "link/DiagIdentity.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>
#include <optional>

namespace emu {

struct HandsetProfile {
    tessaly::link::VersionInfo version;
    tessaly::link::ExtendedBuildId build;
    uint16_t diagVersion = 8;
    bool hasBuildId = true;      // answers the extended build id
    bool hasMeid = true;         // holds the MEID's NV item
    bool hasSubsystems = true;   // answers subsystem commands
    int subscriptions = 1;       // the subscriptions its NV items are kept for
    QString password;            // the 16-digit security password
    // The last log item of each equipment id it logs, 0 for one it lacks: a
    // CDMA handset logs 1X (equipment 1) alone.
    std::array<uint32_t, 16> lastLogItems{};
    uint16_t sid = 0;
    uint16_t nid = 0;
    uint16_t channel = 0;
};

// The profiles there are: a current handset, and an older one without MEID,
// extended build id or subsystem commands.
QStringList ProfileNames();
std::optional<HandsetProfile> ProfileByName(const QString& name);

// `profile` with the fields that `fields` (the state file's "handset"
// object) sets; a field of the wrong kind is a problem, told in `problem`.
HandsetProfile WithFields(HandsetProfile profile, const QJsonObject& fields, QString& problem);

} // namespace emu
