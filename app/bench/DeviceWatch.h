// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Tells when serial devices come and go. Where the system runs udev, its
// monitor of the tty subsystem says when; elsewhere a watch on the device
// folder under the system root does, and the emulator's announcement folder
// is watched either way. A change is followed by a new listing of the ports,
// at most a fifth of a second later, so that a burst of events gives one.
#pragma once

#include "link/PortList.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace halvane {

class DeviceWatch : public QObject {
    Q_OBJECT
public:
    using Lister = std::function<std::vector<tessaly::link::SerialPortEntry>()>;

    // Lists the ports once with `lister` and watches from then on.
    explicit DeviceWatch(Lister lister, QObject* parent = nullptr);
    ~DeviceWatch() override;

    // The ports of the latest listing.
    const std::vector<tessaly::link::SerialPortEntry>& ports() const;
    // Whether udev's monitor tells the changes, rather than the device folder.
    bool usesUdev() const;

signals:
    // After a listing that differs from the one before it: the ports that
    // came, and the devices ("/dev/ttyUSB0") of those that went.
    void changed(const std::vector<tessaly::link::SerialPortEntry>& appeared, const QStringList& gone);

private:
    struct Private;
    std::unique_ptr<Private> const d;
};

} // namespace halvane
