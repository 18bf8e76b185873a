// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The port listing as the user reads it: one line per port, or a JSON array
// for scripts, with what the probe found where it ran.
#pragma once

#include "link/PortList.h"
#include "link/PortProbe.h"

#include <QJsonArray>
#include <QString>

#include <optional>

namespace tessaly::link {

struct ListedPort {
    SerialPortEntry port;
    std::optional<ProbeResult> probe; // when the port was probed
};

// Why a port is not asked at all: held by another program, not permitted,
// no device node. Empty when it may be probed.
QString WhyNotProbed(const SerialPortEntry& port);

// "/dev/ttyUSB0  05c6:9002 ..." on one line; an emulated handset's
// "/dev/pts/5  emulated handset (tessaly-emu, pid 1234, ESN 8F3A21C5) ...".
QString PortLine(const ListedPort& listed);

// Every port as an object: device, usb (or null), emulated (the emulator's
// pid, handset number, model, ESN and MEID, or null), holders, owner,
// group, mode, permitted, and the probe's findings (or null).
QJsonArray PortsJson(const std::vector<ListedPort>& ports);

} // namespace tessaly::link
