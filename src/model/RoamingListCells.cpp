// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "model/RoamingListCells.h"

#include "model/PrlRecords.h"

namespace tessaly::model {

namespace {

// The widest values of C.S0016 3.5.5.2 and 3.5.5.3: SID 15 bits, CHAN 11
// bits, BAND_CLASS 5 bits, NUM_CHANS 5 bits, NUM_BLOCKS 3 bits.
constexpr int MaxSid = 32767;
constexpr int MaxChannel = 2047;
constexpr int MaxBand = 31;
constexpr int MaxChannels = 31;
constexpr int MaxBlocks = 7;

const char* const Systems[] = {"A", "B", "reserved", "A or B"};
const char* const PrimarySecondary[] = {"none", "primary", "secondary", "both"};
const char* const Indicators[] = {"roaming", "home", "flashing"};

// A whole number from `low` to `high`, or -1.
int Number(const QString& text, int low, int high)
{
    bool ok = false;
    const int value = text.trimmed().toInt(&ok);
    return ok && value >= low && value <= high ? value : -1;
}

QString OneOf(const QString& text, const char* const* names, int count, uint8_t& value)
{
    for (int i = 0; i < count; ++i)
        if (text.trimmed().compare(QLatin1String(names[i]), Qt::CaseInsensitive) == 0) {
            value = uint8_t(i);
            return {};
        }
    QStringList choices;
    for (int i = 0; i < count; ++i)
        choices << QLatin1String(names[i]);
    return QStringLiteral("is none of %1").arg(choices.join(QStringLiteral(", ")));
}

bool Banded(uint8_t type)
{
    return type == AcqGeneric1x || type == AcqGenericHrpd;
}

} // namespace

QStringList PrlKindChoices()
{
    return {QStringLiteral("preferred"), QStringLiteral("negative")};
}

QStringList PrlPriorityChoices()
{
    return {QStringLiteral("more"), QStringLiteral("same")};
}

QStringList PrlRoamingChoices()
{
    return {PrlRoamingText(0), PrlRoamingText(1), PrlRoamingText(2)};
}

QStringList PrlSystemChoices()
{
    return {PrlSystemText(0), PrlSystemText(1), PrlSystemText(3)};
}

QStringList PrlChannelChoices()
{
    return {PrlPrimarySecondaryText(1), PrlPrimarySecondaryText(2), PrlPrimarySecondaryText(3)};
}

QString PrlNidText(const PrlSystem& system)
{
    switch (system.nidIncluded) {
    case NidWildcard: return QStringLiteral("any");
    case NidPublic: return QStringLiteral("public");
    default: return QString::number(system.nid);
    }
}

QString ReadPrlNid(const QString& text, PrlSystem& system)
{
    if (text.trimmed() == QLatin1String("any")) {
        system.nidIncluded = NidWildcard;
        system.nid = 65535;
    } else if (text.trimmed() == QLatin1String("public")) {
        system.nidIncluded = NidPublic;
        system.nid = 0;
    } else if (const int nid = Number(text, 0, 65535); nid >= 0) {
        system.nidIncluded = NidIncluded;
        system.nid = uint16_t(nid);
    } else {
        return QStringLiteral("is not a NID: a number from 0 to 65535, \"any\" or \"public\"");
    }
    return {};
}

QString ReadPrlSid(const QString& text, PrlSystem& system)
{
    const int sid = Number(text, 0, MaxSid);
    if (sid < 0)
        return QStringLiteral("is not a SID: a number from 0 to %1").arg(MaxSid);
    system.sid = uint16_t(sid);
    return {};
}

QString PrlPriorityText(const PrlSystem& system)
{
    if (!system.preferred)
        return QStringLiteral("-");
    return system.morePreferred ? QStringLiteral("more") : QStringLiteral("same");
}

QString PrlRoamingText(std::optional<uint8_t> indicator)
{
    if (!indicator)
        return QStringLiteral("-");
    return *indicator <= 2 ? QStringLiteral("%1 (%2)").arg(*indicator).arg(QLatin1String(Indicators[*indicator]))
                           : QString::number(*indicator);
}

QString ReadPrlRoaming(const QString& text, std::optional<uint8_t>& indicator)
{
    if (text.trimmed() == QLatin1String("-")) {
        indicator.reset();
        return {};
    }
    // "1 (home)" or "1": the number before any name.
    const int value = Number(text.section(QLatin1Char('('), 0, 0), 0, 255);
    if (value < 0)
        return QStringLiteral("is not a roaming indicator: a number from 0 to 255");
    indicator = uint8_t(value);
    return {};
}

bool PrlAcquisitionKnown(const PrlAcquisition& record, PrlLayout layout)
{
    return prl::KnownAcquisitionType(record.type, layout) && record.unknown.isEmpty();
}

QString PrlAcquisitionTypeText(uint8_t type, PrlLayout layout)
{
    return prl::KnownAcquisitionType(type, layout) ? PrlAcquisitionTypeName(type)
                                                    : QStringLiteral("unknown (type %1)").arg(type);
}

bool HasPrlSystem(uint8_t type)
{
    return type == AcqCellularAnalog || type == AcqCellularCdmaStandard || type == AcqCellularCdmaPreferred
        || type == AcqJtacsCdmaStandard;
}

bool HasPrlPrimarySecondary(uint8_t type)
{
    return type == AcqCellularCdmaStandard || type == AcqJtacsCdmaStandard;
}

bool HasPrlBlocks(uint8_t type)
{
    return type == AcqPcsCdmaBlocks;
}

bool HasPrlChannels(uint8_t type)
{
    return type == AcqCellularCdmaCustom || type == AcqPcsCdmaChannels || type == AcqJtacsCdmaCustom
        || type == Acq2GHzBandChannels || Banded(type);
}

QString PrlSystemText(uint8_t system)
{
    return QLatin1String(Systems[system & 3]);
}

QString ReadPrlSystem(const QString& text, uint8_t& system)
{
    return OneOf(text, Systems, 4, system);
}

QString PrlPrimarySecondaryText(uint8_t primarySecondary)
{
    return QLatin1String(PrimarySecondary[primarySecondary & 3]);
}

QString ReadPrlPrimarySecondary(const QString& text, uint8_t& primarySecondary)
{
    return OneOf(text, PrimarySecondary, 4, primarySecondary);
}

QString PrlBlocksText(const std::vector<uint8_t>& blocks)
{
    QStringList names;
    for (const uint8_t block : blocks)
        names << (block <= 5 ? QString(QLatin1Char(char('A' + block))) : block == 7 ? QStringLiteral("any")
                                                                                    : QString::number(block));
    return names.join(QStringLiteral(", "));
}

QString ReadPrlBlocks(const QString& text, std::vector<uint8_t>& blocks)
{
    std::vector<uint8_t> read;
    for (const QString& part : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QString name = part.trimmed().toUpper();
        if (name.size() == 1 && name[0] >= QLatin1Char('A') && name[0] <= QLatin1Char('F'))
            read.push_back(uint8_t(name[0].unicode() - 'A'));
        else if (name == QLatin1String("ANY"))
            read.push_back(7);
        else
            return QStringLiteral("is not a list of PCS blocks: A to F or \"any\", between commas");
    }
    if (read.empty() || read.size() > size_t(MaxBlocks))
        return QStringLiteral("does not hold 1 to %1 blocks").arg(MaxBlocks);
    blocks = std::move(read);
    return {};
}

QString PrlChannelsText(const PrlAcquisition& record)
{
    QStringList channels;
    for (const PrlChannel& channel : record.channels)
        channels << (Banded(record.type) ? QStringLiteral("%1/%2").arg(channel.band).arg(channel.channel)
                                         : QString::number(channel.channel));
    return channels.join(QStringLiteral(", "));
}

QString ReadPrlChannels(const QString& text, PrlAcquisition& record)
{
    const bool banded = Banded(record.type);
    std::vector<PrlChannel> read;
    for (const QString& part : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        PrlChannel channel;
        const QStringList fields = part.split(QLatin1Char('/'));
        const int band = banded && fields.size() == 2 ? Number(fields[0], 0, MaxBand) : 0;
        const int number = fields.size() == (banded ? 2 : 1) ? Number(fields.last(), 0, MaxChannel) : -1;
        if (band < 0 || number < 0)
            return banded ? QStringLiteral("is not a list of band/channel pairs (band 0 to %1, channel 0 to %2), "
                                           "between commas")
                                .arg(MaxBand)
                                .arg(MaxChannel)
                          : QStringLiteral("is not a list of channels from 0 to %1, between commas").arg(MaxChannel);
        channel.band = uint8_t(band);
        channel.channel = uint16_t(number);
        read.push_back(channel);
    }
    if (read.empty() || read.size() > size_t(MaxChannels))
        return QStringLiteral("does not hold 1 to %1 channels").arg(MaxChannels);
    record.channels = std::move(read);
    return {};
}

} // namespace tessaly::model
