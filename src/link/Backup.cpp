// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/Backup.h"

#include "link/ErrorNumbers.h"
#include "link/IdentityText.h"
#include "model/Catalogue.h"
#include "model/Xqcn.h"

#include <tessaly/TessalyError.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>

#include <algorithm>

namespace tessaly::link {

using model::Describe;
using model::EsnItem;
using model::MeidItem;
using model::NvStatus;

QString BackupFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/backups");
}

std::vector<KeptBackup> KeptBackups(const QString& folder, const QString& esn)
{
    // "<ESN>-<yyyyMMdd-HHmmss>[-full][-<n>].json", n from 2 for a name whose
    // second was taken.
    static const QRegularExpression name(
        QStringLiteral("^([0-9A-F]{8})-(\\d{8}-\\d{6})(-full)?(?:-(\\d+))?\\.json$"));
    std::vector<std::pair<KeptBackup, int>> kept;
    for (const QString& file : QDir(folder).entryList({esn + QStringLiteral("-*.json")}, QDir::Files)) {
        const QRegularExpressionMatch match = name.match(file);
        const QDateTime time = QDateTime::fromString(match.captured(2), QStringLiteral("yyyyMMdd-HHmmss"));
        if (match.hasMatch() && match.captured(1) == esn && time.isValid())
            kept.push_back({{QDir(folder).filePath(file), time, match.hasCaptured(3)}, match.captured(4).toInt()});
    }
    std::sort(kept.begin(), kept.end(), [](const auto& a, const auto& b) {
        return a.first.time != b.first.time ? a.first.time > b.first.time : a.second > b.second;
    });
    std::vector<KeptBackup> newestFirst;
    for (auto& [backup, number] : kept)
        newestFirst.push_back(std::move(backup));
    return newestFirst;
}

QString Backup::save(const QString& folder) const
{
    const QString stem = QDir(folder).filePath(esn + QLatin1Char('-') + time.toString(QStringLiteral("yyyyMMdd-HHmmss"))
                                               + (full ? QStringLiteral("-full") : QString()));
    // Never over an earlier one: the name is claimed by making the file, so
    // that handsets saved at once under one ESN never take the same one.
    QDir().mkpath(folder);
    QString path = stem + QStringLiteral(".json");
    for (int n = 2;; ++n) {
        QFile claim(path);
        if (claim.open(QIODevice::WriteOnly | QIODevice::NewOnly) || !claim.exists())
            break; // claimed, or not to be made: the write tells why
        path = stem + QStringLiteral("-%1.json").arg(n);
    }
    if (const QString problem = model::WriteNvFile(path, file()); !problem.isEmpty())
        throw TessalyError(errBackupUnwritable, QStringLiteral("The backup %1 could not be written: %2.").arg(path, problem));
    return path;
}

model::NvFile Backup::file() const
{
    return {full ? model::NvFileKind::FullBackup : model::NvFileKind::Backup,
            {{"esn", esn}, {"meid", meid}, {"time", time.toString(Qt::ISODate)}},
            items,
            files};
}

Backup Backup::Load(const QString& path)
{
    if (path.endsWith(QLatin1String(".xqcn"), Qt::CaseInsensitive)) {
        QFile source(path);
        model::XqcnContents contents;
        const QString problem = !source.open(QIODevice::ReadOnly)
            ? QStringLiteral("it cannot be read: %1").arg(source.errorString())
            : model::ReadXqcn(source.readAll(), model::Catalogue::BuiltIn().indexedItems(), contents);
        if (!problem.isEmpty())
            throw TessalyError(errBackupUnreadable, QStringLiteral("The XQCN file %1 is refused: %2.").arg(path, problem));
        Backup backup = FromItems(std::move(contents.entries));
        backup.files = std::move(contents.files);
        backup.passedOver = std::move(contents.passedOver);
        return backup;
    }
    model::NvFile file;
    if (const QString problem
        = model::ReadNvFile(path, {model::NvFileKind::Backup, model::NvFileKind::FullBackup}, file);
        !problem.isEmpty())
        throw TessalyError(errBackupUnreadable, QStringLiteral("The backup %1 is refused: %2.")
                                                    .arg(path, problem));
    const auto text = [&](const char* key) { return file.fields[QLatin1String(key)].toString(); };
    return {text("esn"), text("meid"), QDateTime::fromString(text("time"), Qt::ISODate), std::move(file.entries),
            file.kind == model::NvFileKind::FullBackup, std::move(file.files)};
}

Backup Backup::FromItems(std::vector<model::NvEntry> items)
{
    Backup backup;
    backup.full = true;
    backup.time = QDateTime::currentDateTime();
    for (const model::NvEntry& entry : items) {
        if (entry.address == model::NvAddress{EsnItem, -1})
            backup.esn = EsnHex(entry.data);
        if (entry.address == model::NvAddress{MeidItem, -1})
            backup.meid = MeidHex(entry.data);
    }
    backup.items = std::move(items);
    return backup;
}


} // namespace tessaly::link
