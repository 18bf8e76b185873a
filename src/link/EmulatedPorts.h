// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The handsets that running emulators announce (EmulatorAnnouncement.h), as
// ports of the listing: each announced terminal becomes a port marked as
// emulated, listed after the machine's own. An announcement whose emulator
// no longer runs, or whose terminal is gone, is stale and passed over.
//
// Their holders are not read from /proc: the emulator itself keeps its
// terminal open, and that is no reason to pass the port over.
#pragma once

#include "link/PortList.h"

#include <functional>
#include <vector>

namespace tessaly::link {

// Whether process `pid` is a running emulator.
using EmulatorCheck = std::function<bool(qint64 pid)>;
// The check of this machine: /proc/<pid>/comm names tessaly-emu, so that a
// process id taken by another program since is not mistaken for one.
bool EmulatorRuns(qint64 pid);

// The ports the announcements in `folder` give, in their terminals' order
// ("/dev/pts/9" before "/dev/pts/10").
std::vector<SerialPortEntry> EmulatedPorts(const QString& folder, const EmulatorCheck& runs = EmulatorRuns,
                                           const OpenCheck& mayOpen = MayOpen);

} // namespace tessaly::link
