// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
#include "Files.h"

#include "link/Backup.h"
#include "link/DiagPackets.h"
#include "link/EfsClient.h"
#include "model/NvFile.h"

#include <tessaly/TessalyError.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

namespace halvane {

using namespace tessaly;
using link::EfsClient;

namespace {

// A mode as ls -l shows it: the kind, then read, write and run for the
// owner, the group and the others.
QString ModeText(uint32_t mode)
{
    const uint32_t kind = mode & link::EfsKindMask;
    QString text(1, kind == link::EfsKindFolder ? QLatin1Char('d') : kind == link::EfsKindLink ? QLatin1Char('l')
                                                                                               : QLatin1Char('-'));
    for (int shift = 6; shift >= 0; shift -= 3)
        for (const auto& [bit, letter] : {std::pair{4u, 'r'}, {2u, 'w'}, {1u, 'x'}})
            text += (mode >> shift & bit) ? QLatin1Char(letter) : QLatin1Char('-');
    return text;
}

QDateTime TimeOf(int32_t seconds)
{
    return QDateTime::fromSecsSinceEpoch(link::EfsTimeStart + seconds, Qt::UTC);
}

// Runs `work` on a client of the handset on the options' port, telling a
// failure on standard error.
int WithClient(const Options& options, const std::function<int(link::SerialLink&, EfsClient&)>& work)
{
    try {
        link::SerialLink line(options.port, options.replyTime);
        EfsClient client(line, options.inFlight, options.replyTime);
        client.hello();
        return work(line, client);
    } catch (const TessalyError& error) {
        std::fprintf(stderr, "halvane: %s\n", qPrintable(error.description()));
        return 1;
    }
}

// The listing of `path`: a folder's entries, or the file alone.
std::vector<link::EfsListing> Listing(EfsClient& client, const QString& path)
{
    const link::EfsReply stat = client.call({.command = link::EfsLstat, .path = path});
    if (stat.error != link::EfsOk)
        link::ThrowEfsError(stat.error, path, QStringLiteral("listed"));
    if ((uint32_t(stat.attributes.mode) & link::EfsKindMask) == link::EfsKindFolder)
        return client.list(path);
    // lstat tells no size: stat does, through a link.
    link::EfsListing alone{path, link::EfsEntryFile, client.call({.command = link::EfsStat, .path = path}).attributes, {}};
    alone.attributes.mode = stat.attributes.mode;
    if ((uint32_t(stat.attributes.mode) & link::EfsKindMask) == link::EfsKindLink) {
        alone.entryType = link::EfsEntryLink;
        alone.target = client.call({.command = link::EfsReadlink, .path = path}).name;
    }
    return {alone};
}

} // namespace

int ListFiles(const Options& options)
{
    return WithClient(options, [&](link::SerialLink&, EfsClient& client) {
        const std::vector<link::EfsListing> entries = Listing(client, options.efsFrom);
        if (options.json) {
            QJsonArray array;
            for (const link::EfsListing& entry : entries) {
                QJsonObject object{{"path", entry.path},
                                   {"size", entry.attributes.size},
                                   {"mode", entry.attributes.mode},
                                   {"mtime", TimeOf(entry.attributes.mtime).toString(Qt::ISODate)}};
                if (entry.entryType == link::EfsEntryLink)
                    object[QLatin1String("target")] = entry.target;
                array.append(object);
            }
            std::printf("%s", QJsonDocument(array).toJson().constData());
            return 0;
        }
        for (const link::EfsListing& entry : entries) {
            const QString target = entry.entryType == link::EfsEntryLink ? QStringLiteral(" -> ") + entry.target
                                                                         : QString();
            std::printf("%s %9d %s %s%s\n", qPrintable(ModeText(uint32_t(entry.attributes.mode))),
                        entry.attributes.size, qPrintable(TimeOf(entry.attributes.mtime).toString(QStringLiteral("yyyy-MM-dd HH:mm"))),
                        qPrintable(QFileInfo(entry.path).fileName()), qPrintable(target));
        }
        return 0;
    });
}

int GetFile(const Options& options)
{
    if (QFileInfo::exists(options.efsTo)) {
        std::fprintf(stderr, "halvane: %s is there already; it is not written over\n", qPrintable(options.efsTo));
        return 1;
    }
    return WithClient(options, [&](link::SerialLink&, EfsClient& client) {
        const QByteArray bytes = client.read(options.efsFrom);
        if (const QString problem = model::WriteWhole(options.efsTo, bytes); !problem.isEmpty()) {
            std::fprintf(stderr, "halvane: %s could not be written: %s\n", qPrintable(options.efsTo),
                         qPrintable(problem));
            return 1;
        }
        std::printf("%s: %lld bytes\n", qPrintable(options.efsTo), qlonglong(bytes.size()));
        return 0;
    });
}

int PutFile(const Options& options)
{
    QFile source(options.efsFrom);
    if (!source.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "halvane: %s cannot be read: %s. Nothing was written to the handset.\n",
                     qPrintable(options.efsFrom), qPrintable(source.errorString()));
        return 1;
    }
    const QByteArray bytes = source.readAll();
    const QString path = options.efsTo;
    return WithClient(options, [&](link::SerialLink& line, EfsClient& client) {
        const link::EfsReply stat = client.call({.command = link::EfsStat, .path = path});
        if (stat.error == link::EfsOk && (uint32_t(stat.attributes.mode) & link::EfsKindMask) == link::EfsKindFolder)
            link::ThrowEfsError(link::EfsIsFolder, path, QStringLiteral("written"));
        if (stat.error == link::EfsOk) {
            // What was there is kept first, under the handset's ESN and the time.
            const QByteArray esnRequest = link::EsnRequest();
            const QString esn = QStringLiteral("%1").arg(link::ParseEsn(esnRequest, line.transact(esnRequest)), 8, 16,
                                                         QLatin1Char('0')).toUpper();
            const QString kept = QDir(link::BackupFolder()).filePath(
                esn + QDateTime::currentDateTime().toString(QStringLiteral("-yyyyMMdd-HHmmss-zzz")) + QStringLiteral("-efs")
                + path);
            QDir().mkpath(QFileInfo(kept).absolutePath());
            if (const QString problem = model::WriteWhole(kept, client.read(path)); !problem.isEmpty())
                throw TessalyError(link::errEfsRefused, QStringLiteral("What the handset holds at %1 could not be "
                                                                       "kept in %2: %3. Nothing was written.")
                                                            .arg(path, kept, problem));
            std::printf("What the handset held at %s is kept in %s\n", qPrintable(path), qPrintable(kept));
        } else if (stat.error != link::EfsNoEntry) {
            link::ThrowEfsError(stat.error, path, QStringLiteral("looked at"));
        }
        client.makeFolders(link::EfsParent(path));
        client.write(path, bytes, 0644);
        if (client.read(path) != bytes) {
            std::fprintf(stderr, "halvane: %s reads back different from what was written\n", qPrintable(path));
            return 1;
        }
        std::printf("%s: written and read back the same, %lld bytes\n", qPrintable(path), qlonglong(bytes.size()));
        return 0;
    });
}

} // namespace halvane
