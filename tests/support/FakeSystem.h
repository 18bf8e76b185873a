// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// A root folder laid out as the kernel shows serial ports: sysfs's tty
// class with the USB devices and interfaces behind it, /proc with programs
// holding device nodes, and /dev. Device nodes are plain files, or links to
// pseudo-terminals where a test wants a line behind the port.
#pragma once

#include <QString>
#include <QTemporaryDir>

#include <cstdint>

class FakeSystem {
public:
    FakeSystem();

    const QString& root() const { return m_root; }

    struct Usb {
        uint16_t vendorId;
        uint16_t productId;
        int interfaceNumber;
        QString manufacturer;
        QString product;
        int interfaceClass = 0xff;
    };
    // ttyUSBn behind a USB serial converter's interface; ttyACMn straight on
    // its interface. The node is a link to `line` when one is given.
    void addUsbPort(const QString& name, const Usb& usb, const QString& line = {});
    // ttySn of the built-in serial driver, reported with `type` (0: absent).
    void addBuiltInPort(const QString& name, int type, const QString& line = {});
    // A tty with no device behind it, such as a virtual console.
    void addVirtualTty(const QString& name);
    // Takes the port away as the kernel does when its device is unplugged:
    // its device node and its entry in the tty class go.
    void unplug(const QString& name);
    // `program` with process id `pid` holds `device` open.
    void hold(qint64 pid, const QString& program, const QString& device);
    // Lets a holder go, as a program closes the port.
    void release(qint64 pid);
    // The USB device folder of `name`, as the listing gives it.
    QString usbDevice(const QString& name) const;

    // The path under the root.
    QString path(const QString& inside) const { return m_root + inside; }

private:
    void write(const QString& inside, const QByteArray& content) const;
    void link(const QString& inside, const QString& target) const;
    void node(const QString& name, const QString& line) const;

    QTemporaryDir m_dir;
    QString m_root;
    int m_usbDevices = 0;
};
