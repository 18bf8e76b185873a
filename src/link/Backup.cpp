#include "link/Backup.h"

#include "link/DiagPackets.h"

#include <tessaly/TessalyError.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

namespace tessaly::link {

using model::Describe;
using model::EsnItem;
using model::MeidItem;

namespace {

enum : int32_t { errBackupUnwritable = 2030, errBackupUnreadable = 2031, errOtherHandset = 2032 };

} // namespace

QString IdentityHex(const model::NvData& data, int bytes)
{
    QByteArray raw(reinterpret_cast<const char*>(data.data()), bytes);
    std::reverse(raw.begin(), raw.end()); // little-endian on the handset
    return QString::fromLatin1(raw.toHex()).toUpper();
}

QString BackupFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/backups");
}

QString Backup::save(const QString& folder) const
{
    QJsonArray entries;
    for (const BackupItem& item : items) {
        QJsonObject entry{{"item", item.address.item}, {"status", item.status},
                          {"data", QString::fromLatin1(QByteArray(reinterpret_cast<const char*>(item.data.data()),
                                                                  qsizetype(item.data.size()))
                                                           .toHex())}};
        if (item.address.index >= 0)
            entry[QLatin1String("index")] = item.address.index;
        entries.append(entry);
    }
    const QJsonObject root{{"format", "Halvane NV backup"}, {"esn", esn}, {"meid", meid},
                           {"time", time.toString(Qt::ISODate)}, {"items", entries}};
    QDir().mkpath(folder);
    const QString stem = QDir(folder).filePath(esn + QLatin1Char('-') + time.toString(QStringLiteral("yyyyMMdd-HHmmss")));
    QString path = stem + QStringLiteral(".json");
    for (int n = 2; QFile::exists(path); ++n) // never over an earlier one
        path = stem + QStringLiteral("-%1.json").arg(n);
    QFile file(path);
    if (!file.open(QIODevice::NewOnly | QIODevice::WriteOnly)
        || file.write(QJsonDocument(root).toJson()) < 0 || !file.flush())
        throw TessalyError(errBackupUnwritable, QStringLiteral("The backup %1 could not be written: %2.")
                                                    .arg(path, file.errorString()));
    return path;
}

Backup Backup::Load(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw TessalyError(errBackupUnreadable, QStringLiteral("The backup %1 cannot be read: %2.").arg(path, file.errorString()));
    const QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
    if (root[QLatin1String("format")].toString() != QLatin1String("Halvane NV backup"))
        throw TessalyError(errBackupUnreadable, QStringLiteral("%1 is not a Halvane NV backup.").arg(path));
    Backup backup{root[QLatin1String("esn")].toString(), root[QLatin1String("meid")].toString(),
                  QDateTime::fromString(root[QLatin1String("time")].toString(), Qt::ISODate), {}};
    for (const QJsonValue& value : root[QLatin1String("items")].toArray()) {
        const QJsonObject entry = value.toObject();
        BackupItem item{{uint16_t(entry[QLatin1String("item")].toInt()), int16_t(entry[QLatin1String("index")].toInt(-1))},
                        {}, uint16_t(entry[QLatin1String("status")].toInt())};
        const QByteArray bytes = QByteArray::fromHex(entry[QLatin1String("data")].toString().toLatin1());
        if (bytes.size() != qsizetype(item.data.size()))
            throw TessalyError(errBackupUnreadable, QStringLiteral("%1: %2 is damaged.").arg(path, Describe(item.address)));
        std::copy(bytes.begin(), bytes.end(), item.data.begin());
        backup.items.push_back(item);
    }
    return backup;
}

QStringList RestoreBackup(const Backup& backup, LiveNvMemory& memory)
{
    model::NvData esn{};
    model::NvData meid{};
    memory.read({EsnItem, -1}, esn);
    memory.read({MeidItem, -1}, meid);
    if (IdentityHex(esn, 4) != backup.esn || IdentityHex(meid, 7) != backup.meid)
        throw TessalyError(errOtherHandset, QStringLiteral("The backup was taken from another handset (ESN %1, MEID %2; "
                                                           "this one has ESN %3, MEID %4): nothing was written.")
                                                .arg(backup.esn, backup.meid, IdentityHex(esn, 4), IdentityHex(meid, 7)));
    QStringList outcomes;
    for (const BackupItem& item : backup.items) {
        const QString name = Describe(item.address);
        if (item.address.item == EsnItem || item.address.item == MeidItem || item.status != 0) {
            outcomes << name + QStringLiteral(": skipped (%1)").arg(item.status != 0 ? NvStatusText(item.status)
                                                                                     : QStringLiteral("identity"));
            continue;
        }
        model::NvData now{};
        memory.read(item.address, now);
        if (now == item.data) {
            outcomes << name + QStringLiteral(": unchanged");
            continue;
        }
        try {
            memory.write(item.address, item.data);
            outcomes << name + QStringLiteral(": restored");
        } catch (const TessalyError& error) {
            outcomes << name + QStringLiteral(": skipped (%1)").arg(error.description());
        }
    }
    return outcomes;
}

} // namespace tessaly::link
