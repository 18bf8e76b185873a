// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// What a handset on the diagnostic link says of itself, asked once: its
// model and software version (from the extended build id when it answers
// that, else from the version reply's fields), the dates of its software,
// its ESN and its MEID when it has one.
#pragma once

#include "link/DiagIdentity.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace tessaly::link {

class SerialLink;

struct HandsetIdentity {
    QString model;
    QString softwareVersion;
    QString compiled; // date and time, as the handset gives them
    QString released;
    uint32_t esn = 0;
    QString meid; // 14 hexadecimal digits; empty on a handset without one
};

// The identity the replies give: the build id's strings where there are
// any, the version reply's fields for the rest. ESN and MEID are left out.
HandsetIdentity IdentityOf(const VersionInfo& version, const std::optional<ExtendedBuildId>& build);

// Asks the handset: the version reply, the extended build id (an older
// handset's "bad command" is no fault), the ESN and the MEID's NV item.
// Throws TessalyError when the link fails or the handset gives no version.
HandsetIdentity QueryIdentity(SerialLink& link);

} // namespace tessaly::link
