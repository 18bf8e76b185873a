// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/EmulatorAnnouncement.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

namespace tessaly::link {

QString EmulatorAnnouncementFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + QStringLiteral("/tessaly-emu");
}

QString AnnouncementFileName(const EmulatorAnnouncement& announcement)
{
    return QStringLiteral("%1-%2.json").arg(announcement.pid).arg(announcement.handset);
}

QByteArray EncodeAnnouncement(const EmulatorAnnouncement& announcement)
{
    QJsonObject object{
        {QStringLiteral("terminal"), announcement.terminal}, {QStringLiteral("pid"), announcement.pid},
        {QStringLiteral("handset"), announcement.handset},   {QStringLiteral("model"), announcement.model},
        {QStringLiteral("esn"), announcement.esn},
    };
    if (!announcement.meid.isEmpty())
        object[QStringLiteral("meid")] = announcement.meid;
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<EmulatorAnnouncement> ParseAnnouncement(const QByteArray& bytes)
{
    const QJsonObject object = QJsonDocument::fromJson(bytes).object();
    EmulatorAnnouncement announcement;
    announcement.terminal = object[QLatin1String("terminal")].toString();
    announcement.pid = object[QLatin1String("pid")].toInteger();
    announcement.handset = int(object[QLatin1String("handset")].toInteger(1));
    announcement.model = object[QLatin1String("model")].toString();
    announcement.esn = object[QLatin1String("esn")].toString();
    announcement.meid = object[QLatin1String("meid")].toString();
    if (!announcement.terminal.startsWith(QLatin1Char('/')) || announcement.pid <= 0)
        return {};
    return announcement;
}

} // namespace tessaly::link
