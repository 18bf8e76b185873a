// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "support/FakeSystem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace {

QByteArray Hex(int value, int width)
{
    return QByteArray::number(value, 16).rightJustified(width, '0') + '\n';
}

} // namespace

FakeSystem::FakeSystem()
    : m_root(QFileInfo(m_dir.path()).canonicalFilePath())
{
    for (const char* folder : {"sys/class/tty", "proc", "dev"})
        QDir(m_root).mkpath(QLatin1String(folder));
}

void FakeSystem::write(const QString& inside, const QByteArray& content) const
{
    const QString file = path(inside);
    QDir().mkpath(QFileInfo(file).path());
    QFile out(file);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly)) << qPrintable(file);
    out.write(content);
}

void FakeSystem::link(const QString& inside, const QString& target) const
{
    const QString file = path(inside);
    QDir().mkpath(QFileInfo(file).path());
    ASSERT_TRUE(QFile::link(target, file)) << qPrintable(file);
}

void FakeSystem::node(const QString& name, const QString& line) const
{
    if (line.isEmpty())
        write(QStringLiteral("/dev/") + name, {});
    else
        link(QStringLiteral("/dev/") + name, line);
}

QString FakeSystem::usbDevice(const QString& name) const
{
    // The tty's class link leads to .../<device>/<interface>/...; the device
    // folder is the one named like "1-3".
    QString folder = QFileInfo(path(QStringLiteral("/sys/class/tty/") + name)).canonicalFilePath();
    while (!QFileInfo::exists(folder + QStringLiteral("/idVendor")) && folder.size() > m_root.size())
        folder = QFileInfo(folder).path();
    return folder.mid(m_root.size());
}

void FakeSystem::addUsbPort(const QString& name, const Usb& usb, const QString& line)
{
    const QString device = QStringLiteral("/sys/devices/pci0000:00/0000:00:14.0/usb1/1-%1").arg(++m_usbDevices);
    write(device + QStringLiteral("/idVendor"), Hex(usb.vendorId, 4));
    write(device + QStringLiteral("/idProduct"), Hex(usb.productId, 4));
    write(device + QStringLiteral("/manufacturer"), usb.manufacturer.toUtf8() + '\n');
    write(device + QStringLiteral("/product"), usb.product.toUtf8() + '\n');
    const QString interface = device + QStringLiteral("/1-%1:1.%2").arg(m_usbDevices).arg(usb.interfaceNumber);
    write(interface + QStringLiteral("/bInterfaceNumber"), Hex(usb.interfaceNumber, 2));
    write(interface + QStringLiteral("/bInterfaceClass"), Hex(usb.interfaceClass, 2));
    QString ttyFolder;
    if (name.startsWith(QLatin1String("ttyACM"))) {
        ttyFolder = interface + QStringLiteral("/tty/") + name;
        link(ttyFolder + QStringLiteral("/device"), QStringLiteral("../../../") + QFileInfo(interface).fileName());
    } else {
        // A converter's port is a folder of its own under the interface.
        const QString port = interface + QLatin1Char('/') + name;
        write(port + QStringLiteral("/port_number"), "0\n");
        ttyFolder = port + QStringLiteral("/tty/") + name;
        link(ttyFolder + QStringLiteral("/device"), QStringLiteral("../../../") + name);
    }
    write(ttyFolder + QStringLiteral("/dev"), "188:0\n");
    link(QStringLiteral("/sys/class/tty/") + name, QStringLiteral("../../..") + ttyFolder);
    node(name, line);
}

void FakeSystem::addBuiltInPort(const QString& name, int type, const QString& line)
{
    const QString ttyFolder = QStringLiteral("/sys/devices/platform/serial8250/tty/") + name;
    write(ttyFolder + QStringLiteral("/type"), QByteArray::number(type) + '\n');
    link(ttyFolder + QStringLiteral("/device"), QStringLiteral("../../../serial8250"));
    QDir(m_root).mkpath(QStringLiteral("sys/bus/platform/drivers/serial8250"));
    if (!QFileInfo::exists(path(QStringLiteral("/sys/devices/platform/serial8250/driver"))))
        link(QStringLiteral("/sys/devices/platform/serial8250/driver"), QStringLiteral("../../../bus/platform/drivers/serial8250"));
    link(QStringLiteral("/sys/class/tty/") + name, QStringLiteral("../../..") + ttyFolder);
    node(name, line);
}

void FakeSystem::addVirtualTty(const QString& name)
{
    const QString ttyFolder = QStringLiteral("/sys/devices/virtual/tty/") + name;
    write(ttyFolder + QStringLiteral("/dev"), "4:0\n");
    link(QStringLiteral("/sys/class/tty/") + name, QStringLiteral("../../..") + ttyFolder);
    node(name, {});
}

void FakeSystem::unplug(const QString& name)
{
    EXPECT_TRUE(QFile::remove(path(QStringLiteral("/dev/") + name))) << qPrintable(name);
    EXPECT_TRUE(QFile::remove(path(QStringLiteral("/sys/class/tty/") + name))) << qPrintable(name);
}

void FakeSystem::hold(qint64 pid, const QString& program, const QString& device)
{
    const QString process = QStringLiteral("/proc/%1").arg(pid);
    const bool known = QFileInfo::exists(path(process + QStringLiteral("/comm")));
    write(process + QStringLiteral("/comm"), program.toUtf8() + '\n');
    if (!known)
        link(process + QStringLiteral("/fd/0"), QStringLiteral("/dev/null"));
    link(process + QStringLiteral("/fd/7"), device);
}

void FakeSystem::release(qint64 pid)
{
    QFile::remove(path(QStringLiteral("/proc/%1/fd/7").arg(pid)));
}
