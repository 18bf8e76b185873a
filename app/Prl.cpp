// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
#include "Prl.h"

#include "link/Backup.h"
#include "link/RoamingList.h"
#include "model/NvFile.h"
#include "model/Prl.h"

#include <tessaly/TessalyError.h>

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

namespace halvane {

using namespace tessaly;
using model::Prl;
using model::PrlAcquisition;
using model::PrlSystem;

namespace {

// The first NAM's list: the one handsets keep and carriers ship.
constexpr uint8_t Nam = 0;

QString Hex16(uint16_t value)
{
    return QStringLiteral("%1").arg(value, 4, 16, QLatin1Char('0')).toUpper();
}

QString CellularSystem(uint8_t system)
{
    static const char* const names[] = {"A", "B", "reserved", "A or B"};
    return QStringLiteral("system %1").arg(QLatin1String(names[system & 3]));
}

QString Block(uint8_t block)
{
    return block <= 5 ? QString(QLatin1Char(char('A' + block))) : block == 7 ? QStringLiteral("any") : QStringLiteral("reserved");
}

// What a record has the handset search: its system, blocks or channels.
QString Frequencies(const PrlAcquisition& record)
{
    if (!record.unknown.isEmpty() || record.type < model::AcqCellularAnalog || record.type > model::AcqGenericHrpd)
        return QStringLiteral("bytes %1").arg(QString::fromLatin1(record.unknown.left(16).toHex(' ')));
    switch (record.type) {
    case model::AcqCellularAnalog:
    case model::AcqCellularCdmaPreferred: return CellularSystem(record.system);
    case model::AcqCellularCdmaStandard:
    case model::AcqJtacsCdmaStandard: {
        static const char* const channels[] = {"no channels", "primary", "secondary", "primary and secondary"};
        return CellularSystem(record.system) + QStringLiteral(", ") + QLatin1String(channels[record.primarySecondary & 3]);
    }
    case model::AcqPcsCdmaBlocks: {
        QStringList blocks;
        for (const uint8_t block : record.blocks)
            blocks << Block(block);
        return QStringLiteral("blocks ") + blocks.join(QStringLiteral(", "));
    }
    default: {
        const bool banded = record.type == model::AcqGeneric1x || record.type == model::AcqGenericHrpd;
        QStringList channels;
        for (const model::PrlChannel& channel : record.channels)
            channels << (banded ? QStringLiteral("band %1 channel %2").arg(channel.band).arg(channel.channel)
                                : QString::number(channel.channel));
        return (banded ? QString() : QStringLiteral("channels ")) + channels.join(QStringLiteral(", "));
    }
    }
}

QString Nid(const PrlSystem& system)
{
    return system.nidIncluded == model::NidWildcard ? QStringLiteral("any") : QString::number(system.nid);
}

// TSB-58's roaming indicators a handset shows for the common values.
QString Roaming(std::optional<uint8_t> indicator)
{
    if (!indicator)
        return QStringLiteral("-");
    static const char* const names[] = {"roaming", "home", "flashing"};
    return *indicator <= 2 ? QStringLiteral("%1 (%2)").arg(*indicator).arg(QLatin1String(names[*indicator]))
                           : QString::number(*indicator);
}

QJsonObject Json(const model::PrlDecoding& decoding)
{
    const Prl& list = *decoding.list;
    QJsonObject object{{"layout", model::PrlLayoutName(list.layout)},
                       {"size", decoding.sizeField},
                       {"prlId", list.listId},
                       {"preferredOnly", list.preferredOnly},
                       {"defaultRoamingIndicator", list.defaultRoaming},
                       {"crc", Hex16(decoding.crcField)},
                       {"crcRight", decoding.crc == decoding.crcField}};
    if (list.layout == model::PrlLayout::Extended)
        object[QLatin1String("ssprRevision")] = list.ssprRevision;
    QJsonArray acquisitions;
    for (size_t i = 0; i < list.acquisitions.size(); ++i) {
        const PrlAcquisition& record = list.acquisitions[i];
        QJsonObject entry{{"index", int(i)},
                          {"type", record.type},
                          {"typeName", model::PrlAcquisitionTypeName(record.type)},
                          {"frequencies", Frequencies(record)}};
        QJsonArray channels;
        for (const model::PrlChannel& channel : record.channels)
            channels.append(record.type >= model::AcqGeneric1x ? QJsonValue(QJsonObject{{"band", channel.band},
                                                                                         {"channel", channel.channel}})
                                                               : QJsonValue(channel.channel));
        if (!record.channels.empty())
            entry[QLatin1String("channels")] = channels;
        QJsonArray blocks;
        for (const uint8_t block : record.blocks)
            blocks.append(Block(block));
        if (!record.blocks.empty())
            entry[QLatin1String("blocks")] = blocks;
        if (!record.unknown.isEmpty())
            entry[QLatin1String("bytes")] = QString::fromLatin1(record.unknown.toHex());
        acquisitions.append(entry);
    }
    object[QLatin1String("acquisitions")] = acquisitions;
    QJsonArray systems;
    int region = 0;
    for (size_t i = 0; i < list.systems.size(); ++i) {
        const PrlSystem& system = list.systems[i];
        region += system.sameRegion ? 0 : 1;
        QJsonObject entry{{"index", int(i)},
                          {"sid", system.sid},
                          {"nid", system.nidIncluded == model::NidWildcard ? QJsonValue(QStringLiteral("any"))
                                                                          : QJsonValue(system.nid)},
                          {"preferred", system.preferred},
                          {"region", region},
                          {"morePreferred", system.morePreferred},
                          {"acquisitionIndex", system.acquisitionIndex}};
        if (system.roamingIndicator)
            entry[QLatin1String("roamingIndicator")] = *system.roamingIndicator;
        if (system.type == model::SysHrpd)
            entry[QLatin1String("subnet")] = QString::fromLatin1(system.subnet.toHex());
        systems.append(entry);
    }
    object[QLatin1String("systems")] = systems;
    if (!decoding.problem.isEmpty())
        object[QLatin1String("problem")] = decoding.problem;
    return object;
}

void PrintTables(const model::PrlDecoding& decoding)
{
    const Prl& list = *decoding.list;
    std::printf("Roaming list %u, %s, %u bytes, CRC %s (%s)\n", list.listId, qPrintable(model::PrlLayoutName(list.layout)),
                decoding.sizeField, qPrintable(Hex16(decoding.crcField)),
                decoding.crc == decoding.crcField ? "right" : "wrong");
    std::printf("Preferred only: %s\n", list.preferredOnly ? "yes" : "no");
    std::printf("Default roaming indicator: %s\n", qPrintable(Roaming(list.defaultRoaming)));
    std::printf("\nAcquisition table, %zu records:\n", list.acquisitions.size());
    for (size_t i = 0; i < list.acquisitions.size(); ++i)
        std::printf("%4zu  %-34s %s\n", i, qPrintable(model::PrlAcquisitionTypeName(list.acquisitions[i].type)),
                    qPrintable(Frequencies(list.acquisitions[i])));
    std::printf("\nSystem table, %zu records:\n", list.systems.size());
    std::printf("%4s  %5s  %5s  %-9s  %6s  %-8s  %3s  %s\n", "", "SID", "NID", "Kind", "Region", "Priority", "Acq",
                "Roaming");
    int region = 0;
    for (size_t i = 0; i < list.systems.size(); ++i) {
        const PrlSystem& system = list.systems[i];
        region += system.sameRegion ? 0 : 1;
        const QString sid = system.type == model::SysHrpd ? QStringLiteral("HRPD") : QString::number(system.sid);
        const QString nid = system.type == model::SysHrpd ? QString::fromLatin1(system.subnet.toHex()) : Nid(system);
        std::printf("%4zu  %5s  %5s  %-9s  %6d  %-8s  %3u  %s\n", i, qPrintable(sid), qPrintable(nid),
                    system.preferred ? "preferred" : "negative", region,
                    !system.preferred ? "-" : system.morePreferred ? "more" : "same", system.acquisitionIndex,
                    qPrintable(Roaming(system.roamingIndicator)));
    }
}

// The file's bytes, or nothing after telling why.
std::optional<QByteArray> ReadLocal(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "halvane: %s cannot be read: %s\n", qPrintable(path), qPrintable(file.errorString()));
        return {};
    }
    return file.readAll();
}

} // namespace

int ShowPrl(const Options& options)
{
    const std::optional<QByteArray> bytes = ReadLocal(options.prlShow);
    if (!bytes)
        return 1;
    const model::PrlDecoding decoding = model::DecodePrl(*bytes);
    if (decoding.list && options.json)
        std::printf("%s", QJsonDocument(Json(decoding)).toJson().constData());
    else if (decoding.list)
        PrintTables(decoding);
    if (decoding.problem.isEmpty())
        return 0;
    std::fprintf(stderr, "halvane: %s: %s\n", qPrintable(options.prlShow), qPrintable(decoding.problem));
    return 1;
}

int GetPrl(const Options& options)
{
    if (QFileInfo::exists(options.prlGet)) {
        std::fprintf(stderr, "halvane: %s is there already; it is not written over\n", qPrintable(options.prlGet));
        return 1;
    }
    try {
        link::SerialLink line(options.port, options.replyTime);
        const QByteArray list = link::ReadRoamingList(line, Nam);
        if (const QString problem = model::WriteWhole(options.prlGet, list); !problem.isEmpty()) {
            std::fprintf(stderr, "halvane: %s could not be written: %s\n", qPrintable(options.prlGet),
                         qPrintable(problem));
            return 1;
        }
        const model::PrlDecoding decoding = model::DecodePrl(list);
        std::printf("%s: %lld bytes", qPrintable(options.prlGet), qlonglong(list.size()));
        if (decoding.list)
            std::printf(", roaming list %u, %s", decoding.list->listId, qPrintable(model::PrlLayoutName(decoding.list->layout)));
        std::printf("\n");
        // Kept as the handset holds it, even damaged: that is worth seeing.
        if (!decoding.problem.isEmpty())
            std::fprintf(stderr, "halvane: warning: the handset's roaming list is not valid: %s\n",
                         qPrintable(decoding.problem));
        return 0;
    } catch (const TessalyError& error) {
        std::fprintf(stderr, "halvane: %s\n", qPrintable(error.description()));
        return 1;
    }
}

int PutPrl(const Options& options)
{
    const std::optional<QByteArray> bytes = ReadLocal(options.prlPut);
    if (!bytes)
        return 1;
    // A damaged list is told by its file's name, before the port is opened;
    // PutRoamingList would refuse it too.
    if (const QString problem = model::PrlProblem(*bytes); !problem.isEmpty()) {
        std::fprintf(stderr, "halvane: %s is refused: %s Nothing was written to the handset.\n",
                     qPrintable(options.prlPut), qPrintable(problem));
        return 1;
    }
    try {
        link::SerialLink line(options.port, options.replyTime);
        const QString spc = options.spc;
        link::HandsetRoamingList handset(line, Nam, [spc] { return spc; });
        const QString kept = model::PutRoamingList(handset, *bytes);
        std::printf("The handset's roaming list is kept in %s\n", qPrintable(kept));
        const model::PrlDecoding decoding = model::DecodePrl(*bytes);
        std::printf("Roaming list %u written and read back the same, %lld bytes\n", decoding.list->listId,
                    qlonglong(bytes->size()));
        return 0;
    } catch (const TessalyError& error) {
        std::fprintf(stderr, "halvane: %s\n", qPrintable(error.description()));
        return 1;
    }
}

} // namespace halvane
