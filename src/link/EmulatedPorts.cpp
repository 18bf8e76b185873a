// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/EmulatedPorts.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

#include <sys/stat.h>

namespace tessaly::link {

namespace {

// A terminal's path as its name and the number it ends with, so that
// terminals sort by number: "/dev/pts/10" is ("/dev/pts/", 10).
std::pair<QString, qint64> NumberedName(const QString& path)
{
    static const QRegularExpression trailing(QStringLiteral("^(.*?)(\\d+)$"));
    const QRegularExpressionMatch match = trailing.match(path);
    if (!match.hasMatch())
        return {path, -1};
    return {match.captured(1), match.captured(2).toLongLong()};
}

} // namespace

bool EmulatorRuns(qint64 pid)
{
    QFile comm(QStringLiteral("/proc/%1/comm").arg(pid));
    return comm.open(QIODevice::ReadOnly) && comm.readLine().trimmed() == "tessaly-emu";
}

std::vector<SerialPortEntry> EmulatedPorts(const QString& folder, const EmulatorCheck& runs, const OpenCheck& mayOpen)
{
    std::vector<SerialPortEntry> ports;
    const QDir announced(folder);
    for (const QString& name : announced.entryList({QStringLiteral("*.json")}, QDir::Files)) {
        QFile file(announced.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const std::optional<EmulatorAnnouncement> announcement = ParseAnnouncement(file.read(64 * 1024));
        struct stat status {};
        if (!announcement || !runs(announcement->pid)
            || ::stat(QFile::encodeName(announcement->terminal).constData(), &status) != 0)
            continue;
        SerialPortEntry port;
        port.device = announcement->terminal;
        port.node = announcement->terminal;
        port.nodeExists = true;
        port.ownerUid = status.st_uid;
        port.groupGid = status.st_gid;
        port.group = GroupName(status.st_gid);
        port.mode = status.st_mode & 07777;
        port.permitted = mayOpen(port.node);
        port.emulated = announcement;
        ports.push_back(std::move(port));
    }
    std::sort(ports.begin(), ports.end(), [](const SerialPortEntry& a, const SerialPortEntry& b) {
        return NumberedName(a.device) < NumberedName(b.device);
    });
    return ports;
}

} // namespace tessaly::link
