// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The USB interfaces known to carry a handset's diagnostic port, read from
// the list the build embeds (DiagInterfaces.txt, the same list the udev rule
// is made from).
#pragma once

#include <QString>
#include <QStringView>

#include <cstdint>
#include <vector>

namespace tessaly::link {

struct DiagInterface {
    uint16_t vendorId = 0;
    uint16_t productId = 0;
    int interfaceNumber = 0;
    QString name;
};

// The entries of a list in DiagInterfaces.txt's format: "vvvv pppp ii name",
// comments after '#' and blank lines passed over. A line that is not an
// entry throws std::invalid_argument naming it.
std::vector<DiagInterface> ParseDiagInterfaces(QStringView text);

// The list built into this program.
const std::vector<DiagInterface>& KnownDiagInterfaces();

// The known interface for these ids, or nullptr.
const DiagInterface* FindDiagInterface(const std::vector<DiagInterface>& known, uint16_t vendorId,
                                       uint16_t productId, int interfaceNumber);

} // namespace tessaly::link
