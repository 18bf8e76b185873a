// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/PortList.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <set>

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessaly::link {

namespace {

QString ReadLine(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readLine()).trimmed();
}

// The sysfs folder's attribute as a hexadecimal number, or -1.
int HexAttribute(const QString& folder, const char* name)
{
    bool ok = false;
    const int value = ReadLine(folder + QLatin1Char('/') + QLatin1String(name)).toInt(&ok, 16);
    return ok ? value : -1;
}

// The USB interface and device above a tty's device folder: the interface
// is the nearest folder with bInterfaceNumber, the device the nearest with
// idVendor. Nothing for a port not on USB.
std::optional<UsbInterfaceInfo> UsbOf(const QString& root, QString folder)
{
    QString prefix = QFileInfo(root).canonicalFilePath();
    if (prefix == QLatin1String("/"))
        prefix.clear();
    const QString sysRoot = prefix + QStringLiteral("/sys");
    QString interfaceFolder;
    for (; folder.startsWith(sysRoot + QLatin1Char('/')); folder = QFileInfo(folder).path()) {
        if (interfaceFolder.isEmpty() && QFileInfo::exists(folder + QStringLiteral("/bInterfaceNumber")))
            interfaceFolder = folder;
        if (QFileInfo::exists(folder + QStringLiteral("/idVendor")))
            break;
    }
    if (!folder.startsWith(sysRoot + QLatin1Char('/')))
        return {};
    UsbInterfaceInfo usb;
    usb.vendorId = uint16_t(HexAttribute(folder, "idVendor"));
    usb.productId = uint16_t(HexAttribute(folder, "idProduct"));
    usb.manufacturer = ReadLine(folder + QStringLiteral("/manufacturer"));
    usb.product = ReadLine(folder + QStringLiteral("/product"));
    usb.device = folder.mid(prefix.size());
    if (!interfaceFolder.isEmpty()) {
        usb.interfaceNumber = HexAttribute(interfaceFolder, "bInterfaceNumber");
        usb.interfaceClass = HexAttribute(interfaceFolder, "bInterfaceClass");
    }
    return usb;
}

// The driver that serves the port: that of its device or the nearest above
// it, past the serial core's own layers (the bus "serial-base").
QString DriverOf(QString folder)
{
    for (; folder.contains(QLatin1String("/sys/devices/")); folder = QFileInfo(folder).path()) {
        const QString driver = QFileInfo(folder + QStringLiteral("/driver")).canonicalFilePath();
        if (!driver.isEmpty() && !driver.contains(QLatin1String("/bus/serial-base/")))
            return QFileInfo(driver).fileName();
    }
    return {};
}

} // namespace

QString GroupName(uint32_t gid)
{
    if (const group* entry = getgrgid(gid))
        return QString::fromLocal8Bit(entry->gr_name);
    return QString::number(gid);
}

bool SerialPortEntry::heldBy(QStringView program) const
{
    return std::any_of(holders.begin(), holders.end(), [&](const PortHolder& h) { return h.program == program; });
}

bool MayOpen(const QString& node)
{
    return ::access(QFile::encodeName(node).constData(), R_OK | W_OK) == 0;
}

std::vector<SerialPortEntry> ListPorts(const QString& root, const std::vector<DiagInterface>& known,
                                       const OpenCheck& mayOpen)
{
    std::vector<SerialPortEntry> ports;
    std::map<QString, std::vector<PortHolder>> holders = DeviceHolders(root);
    const QDir ttys(root + QStringLiteral("/sys/class/tty"));
    for (const QString& name : ttys.entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::System, QDir::Name)) {
        const QString folder = ttys.filePath(name);
        const QFileInfo device(folder + QStringLiteral("/device"));
        if (!device.exists())
            continue; // virtual consoles, pseudo-terminals
        const QString type = ReadLine(folder + QStringLiteral("/type"));
        if (type == QLatin1String("0"))
            continue; // a built-in serial port with no hardware behind it
        SerialPortEntry port;
        port.device = QStringLiteral("/dev/") + name;
        port.node = QDir::cleanPath(root + port.device);
        port.driver = DriverOf(device.canonicalFilePath());
        port.usb = UsbOf(root, device.canonicalFilePath());
        if (port.usb)
            port.usb->diagnostic
                = FindDiagInterface(known, port.usb->vendorId, port.usb->productId, port.usb->interfaceNumber);
        if (const auto found = holders.find(port.device); found != holders.end())
            port.holders = found->second;
        struct stat status {};
        port.nodeExists = ::stat(QFile::encodeName(port.node).constData(), &status) == 0;
        if (port.nodeExists) {
            port.ownerUid = status.st_uid;
            port.groupGid = status.st_gid;
            port.group = GroupName(status.st_gid);
            port.mode = status.st_mode & 07777;
            port.permitted = mayOpen(port.node);
        }
        ports.push_back(std::move(port));
    }
    std::sort(ports.begin(), ports.end(),
              [](const SerialPortEntry& a, const SerialPortEntry& b) { return a.device < b.device; });
    return ports;
}

std::map<QString, std::vector<PortHolder>> DeviceHolders(const QString& root)
{
    std::map<QString, std::vector<PortHolder>> holders;
    const QDir proc(root + QStringLiteral("/proc"));
    for (const QString& entry : proc.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isPid = false;
        const qint64 pid = entry.toLongLong(&isPid);
        if (!isPid)
            continue;
        const QDir fds(proc.filePath(entry) + QStringLiteral("/fd"));
        std::set<QString> devices; // a program holding a port twice is named once
        for (const QString& fd : fds.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
            const QString target = QFile::symLinkTarget(fds.filePath(fd));
            if (target.startsWith(QLatin1String("/dev/")))
                devices.insert(target);
        }
        if (devices.empty())
            continue;
        const QString program = ReadLine(proc.filePath(entry) + QStringLiteral("/comm"));
        for (const QString& device : devices)
            holders[device].push_back({pid, program});
    }
    for (auto& [device, programs] : holders)
        std::sort(programs.begin(), programs.end(), [](const PortHolder& a, const PortHolder& b) { return a.pid < b.pid; });
    return holders;
}

std::vector<PortHolder> HoldersOf(const QString& root, const QString& device)
{
    auto holders = DeviceHolders(root);
    const auto found = holders.find(device);
    return found == holders.end() ? std::vector<PortHolder>{} : std::move(found->second);
}

QString SystemRoot()
{
    const QString root = qEnvironmentVariable("TESSALY_SYSTEM_ROOT");
    return root.isEmpty() ? QStringLiteral("/") : root;
}

} // namespace tessaly::link
