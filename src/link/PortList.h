// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The machine's serial ports as its kernel tells them, read from a root
// folder given (the real one is "/"): sysfs for what each port is, /proc for
// the programs that hold it open, and the device node's owner and mode.
// Tests point it at a tree of their own.
#pragma once

#include "link/DiagInterfaces.h"
#include "link/EmulatorAnnouncement.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace tessaly::link {

// A program that holds a port open.
struct PortHolder {
    qint64 pid = 0;
    QString program; // its command name, from /proc/<pid>/comm
};

struct UsbInterfaceInfo {
    uint16_t vendorId = 0;
    uint16_t productId = 0;
    QString manufacturer;
    QString product;
    int interfaceNumber = -1;
    int interfaceClass = -1;
    QString device; // the USB device's sysfs path under the root, "/sys/devices/..."
    const DiagInterface* diagnostic = nullptr; // when it is a known handset's diagnostic interface
};

struct SerialPortEntry {
    QString device; // "/dev/ttyUSB0": what the user names
    QString node;   // the device node under the root, what is opened
    QString driver;
    std::optional<UsbInterfaceInfo> usb;
    std::vector<PortHolder> holders;
    bool nodeExists = false;
    uint32_t ownerUid = 0;
    uint32_t groupGid = 0;
    QString group;  // the owning group's name, or its number
    uint32_t mode = 0; // permission bits
    bool permitted = false; // whether this user may open it for reading and writing
    // For a handset tessaly-emu serves on a pseudo-terminal, its
    // announcement (EmulatedPorts.h); such a port has no driver, USB
    // interface or holders.
    std::optional<EmulatorAnnouncement> emulated;

    bool heldBy(QStringView program) const;
};

// Whether this user may open a device node for reading and writing.
using OpenCheck = std::function<bool(const QString& node)>;
// The check of the running user: access(2), which honours ACLs such as the
// one the uaccess tag gives.
bool MayOpen(const QString& node);

// The serial ports under `root`, sorted by device path: every tty of
// /sys/class/tty with a device behind it, except the built-in serial ports
// the kernel reports as absent (type 0).
std::vector<SerialPortEntry> ListPorts(const QString& root, const std::vector<DiagInterface>& known,
                                       const OpenCheck& mayOpen = MayOpen);

// The programs under `root`'s /proc that hold device nodes open, by node
// ("/dev/ttyUSB0"), each list sorted by process id; read in one pass over
// /proc. Processes of other users whose descriptors cannot be read are
// passed over.
std::map<QString, std::vector<PortHolder>> DeviceHolders(const QString& root);
// Those that hold `device`.
std::vector<PortHolder> HoldersOf(const QString& root, const QString& device);

// The name of group `gid`, or its number when it has none.
QString GroupName(uint32_t gid);

// The root folder halvane reads ports from: "/", or TESSALY_SYSTEM_ROOT,
// which only tests set.
QString SystemRoot();

} // namespace tessaly::link
