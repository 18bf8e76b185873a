// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "LastBackup.h"

#include <QDir>
#include <QRegularExpression>

namespace halvane {

std::optional<KeptBackup> NewestBackup(const QString& folder, const QString& esn)
{
    // The time, then the number a name takes when its second was taken.
    static const QRegularExpression name(QStringLiteral("^([0-9A-F]{8})-(\\d{8}-\\d{6})(?:-full)?(?:-(\\d+))?\\.json$"));
    std::optional<KeptBackup> newest;
    int newestNumber = 0;
    for (const QString& file : QDir(folder).entryList({esn + QStringLiteral("-*.json")}, QDir::Files)) {
        const QRegularExpressionMatch match = name.match(file);
        if (!match.hasMatch() || match.captured(1) != esn)
            continue;
        const QDateTime time = QDateTime::fromString(match.captured(2), QStringLiteral("yyyyMMdd-HHmmss"));
        const int number = match.captured(3).toInt();
        if (!time.isValid())
            continue;
        if (!newest || time > newest->time || (time == newest->time && number > newestNumber)) {
            newest = KeptBackup{QDir(folder).filePath(file), time};
            newestNumber = number;
        }
    }
    return newest;
}

} // namespace halvane
