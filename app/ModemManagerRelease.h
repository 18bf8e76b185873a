// Asks ModemManager, over the system D-Bus, to leave a USB device alone for
// as long as halvane runs: its InhibitDevice with the device's uid, which
// ModemManager takes back by itself when halvane leaves the bus.
#pragma once

#include <QString>

namespace halvane {

struct ModemManagerAnswer {
    enum Kind {
        Absent,   // ModemManager is not on the bus: nothing was asked
        Released, // it let go of the device
        Refused,  // its policy asks for an administrator
        Unknown,  // it does not know the device
    } kind = Absent;
    QString detail; // its error message, when it said no
};

// `uid` is the USB device's sysfs path ("/sys/devices/.../1-1"), which is
// how ModemManager names a physical device on Linux.
ModemManagerAnswer InhibitDevice(const QString& uid);

} // namespace halvane
