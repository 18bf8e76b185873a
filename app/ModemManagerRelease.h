// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// ModemManager over the system D-Bus: the serial ports of the modems it
// manages, and asking it to leave a device alone for as long as halvane runs
// (its InhibitDevice with the device's uid, which ModemManager takes back by
// itself when halvane leaves the bus). Nothing is asked when ModemManager is
// not on the bus.
#pragma once

#include <QString>

#include <vector>

namespace halvane {

// A port of a modem ModemManager manages.
struct ModemManagerPort {
    QString device; // "/dev/ttyUSB0"
    QString uid;    // the modem's physical device, as ModemManager names it
    qint64 pid = 0; // ModemManager's process
};

// The ports ModemManager holds by its own account: /proc does not show the
// descriptors of another user's process, such as ModemManager's, to a user
// who is not root.
std::vector<ModemManagerPort> ModemManagerPorts();

struct ModemManagerAnswer {
    enum Kind {
        Absent,   // ModemManager is not on the bus: nothing was asked
        Released, // it let go of the device
        Refused,  // its policy asks for an administrator
        Unknown,  // it does not know the device
    } kind = Absent;
    QString detail; // its error message, when it said no
};

// `uid` as ModemManager names the physical device: on Linux the USB
// device's sysfs path ("/sys/devices/.../1-1").
ModemManagerAnswer InhibitDevice(const QString& uid);

} // namespace halvane
