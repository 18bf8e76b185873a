// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "Announcements.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace emu {

Announcements::Announcements(QString folder)
    : m_folder(std::move(folder))
{
}

QString Announcements::announce(const tessaly::link::EmulatorAnnouncement& announcement)
{
    if (!QDir(m_folder).exists()) {
        if (!QDir().mkpath(m_folder))
            return QStringLiteral("%1 could not be made").arg(m_folder);
        QFile::setPermissions(m_folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    const QString path = m_folder + QLatin1Char('/') + tessaly::link::AnnouncementFileName(announcement);
    // Written whole or not at all: a reader never finds half a file.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(tessaly::link::EncodeAnnouncement(announcement)) < 0
        || !file.commit())
        return QStringLiteral("%1: %2").arg(path, file.errorString());
    m_files << path;
    return {};
}

void Announcements::withdraw()
{
    for (const QString& path : std::as_const(m_files))
        QFile::remove(path);
    m_files.clear();
}

} // namespace emu
