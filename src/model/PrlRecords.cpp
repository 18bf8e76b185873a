// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Field widths from 3GPP2 C.S0016: the type-specific acquisition records of
// section 3.5.5.2.1, the system record of
// section 3.5.5.3.1 and the extended system record of section 3.5.5.3.2.

#include "model/PrlRecords.h"

namespace tessaly::model::prl {

namespace {

constexpr int ChannelWidth = 11;   // CHAN
constexpr int BandWidth = 5;       // BAND_CLASS
constexpr int CountWidth = 5;      // NUM_CHANS
constexpr int BlockCountWidth = 3; // NUM_BLOCKS
constexpr int SidWidth = 15;
constexpr int NidWidth = 16;
constexpr int AcqIndexWidth = 9;

// The types whose records are a list of channels, and whether each channel
// names its band.
bool ChannelList(uint8_t type, bool& withBand)
{
    withBand = type == AcqGeneric1x || type == AcqGenericHrpd;
    return withBand || type == AcqCellularCdmaCustom || type == AcqPcsCdmaChannels || type == AcqJtacsCdmaCustom
        || type == Acq2GHzBandChannels;
}

uint16_t NidMeant(uint8_t nidIncluded)
{
    return nidIncluded == NidPublic ? 0 : 65535;
}

} // namespace

bool KnownAcquisitionType(uint8_t type, PrlLayout layout)
{
    return type >= AcqCellularAnalog && type <= (layout == PrlLayout::Extended ? AcqGenericHrpd : Acq2GHzBandChannels);
}

void ReadAcquisitionFields(BitReader& bits, PrlAcquisition& record)
{
    bool withBand = false;
    switch (record.type) {
    case AcqCellularAnalog:
    case AcqCellularCdmaPreferred: record.system = uint8_t(bits.read(2)); return;
    case AcqCellularCdmaStandard:
    case AcqJtacsCdmaStandard:
        record.system = uint8_t(bits.read(2));
        record.primarySecondary = uint8_t(bits.read(2));
        return;
    case AcqPcsCdmaBlocks:
        for (uint32_t n = bits.read(BlockCountWidth); n > 0; --n)
            record.blocks.push_back(uint8_t(bits.read(3)));
        return;
    default:
        if (!ChannelList(record.type, withBand))
            return;
        for (uint32_t n = bits.read(CountWidth); n > 0 && !bits.overrun(); --n) {
            PrlChannel channel;
            channel.band = withBand ? uint8_t(bits.read(BandWidth)) : 0;
            channel.channel = uint16_t(bits.read(ChannelWidth));
            record.channels.push_back(channel);
        }
    }
}

void WriteAcquisitionFields(BitWriter& bits, const PrlAcquisition& record)
{
    bool withBand = false;
    switch (record.type) {
    case AcqCellularAnalog:
    case AcqCellularCdmaPreferred: bits.write(record.system, 2); return;
    case AcqCellularCdmaStandard:
    case AcqJtacsCdmaStandard:
        bits.write(record.system, 2);
        bits.write(record.primarySecondary, 2);
        return;
    case AcqPcsCdmaBlocks:
        bits.write(uint32_t(record.blocks.size()), BlockCountWidth);
        for (const uint8_t block : record.blocks)
            bits.write(block, 3);
        return;
    default:
        if (!ChannelList(record.type, withBand))
            return;
        bits.write(uint32_t(record.channels.size()), CountWidth);
        for (const PrlChannel& channel : record.channels) {
            if (withBand)
                bits.write(channel.band, BandWidth);
            bits.write(channel.channel, ChannelWidth);
        }
    }
}

// SID, NID_INCL, NID, PREF_NEG, GEO, then PRI and ROAM_IND for a preferred
// system alone, ACQ_INDEX between them.
void ReadStandardSystem(BitReader& bits, PrlSystem& record)
{
    record.sid = uint16_t(bits.read(SidWidth));
    record.nidIncluded = uint8_t(bits.read(2));
    record.nid = record.nidIncluded == NidIncluded ? uint16_t(bits.read(NidWidth)) : NidMeant(record.nidIncluded);
    record.preferred = bits.read(1);
    record.sameRegion = bits.read(1);
    record.morePreferred = record.preferred && bits.read(1);
    record.acquisitionIndex = uint16_t(bits.read(AcqIndexWidth));
    if (record.preferred)
        record.roamingIndicator = uint8_t(bits.read(8));
}

void WriteStandardSystem(BitWriter& bits, const PrlSystem& record)
{
    bits.write(record.sid, SidWidth);
    bits.write(record.nidIncluded, 2);
    if (record.nidIncluded == NidIncluded)
        bits.write(record.nid, NidWidth);
    bits.write(record.preferred, 1);
    bits.write(record.sameRegion, 1);
    if (record.preferred)
        bits.write(record.morePreferred, 1);
    bits.write(record.acquisitionIndex, AcqIndexWidth);
    if (record.preferred)
        bits.write(record.roamingIndicator.value_or(0), 8);
}

// PREF_NEG, GEO, PRI, ACQ_INDEX; the type's fields (NID_INCL, SID, NID for
// a 1x system; SUBNET_COMMON_INCLUDED, SUBNET_LSB_LENGTH, SUBNET_LSB,
// SUBNET_COMMON_OFFSET for an HRPD one); ROAM_IND_INCL, ROAM_IND,
// ASSOCIATION_INC, ASSOCIATION_TAG, PN_ASSOCIATION, DATA_ASSOCIATION.
bool ReadExtendedSystem(BitReader& bits, PrlSystem& record)
{
    record.preferred = bits.read(1);
    record.sameRegion = bits.read(1);
    record.morePreferred = bits.read(1);
    record.acquisitionIndex = uint16_t(bits.read(AcqIndexWidth));
    if (record.type == SysCdma) {
        record.nidIncluded = uint8_t(bits.read(2));
        record.sid = uint16_t(bits.read(SidWidth));
        record.nid = record.nidIncluded == NidIncluded ? uint16_t(bits.read(NidWidth)) : NidMeant(record.nidIncluded);
    } else if (record.type == SysHrpd) {
        const bool common = bits.read(1);
        record.subnetBits = int(bits.read(7));
        BitWriter subnet;
        for (int left = record.subnetBits; left > 0; left -= 8)
            subnet.write(bits.read(std::min(left, 8)), std::min(left, 8));
        record.subnet = subnet.bytes();
        if (common)
            record.subnetCommonOffset = uint16_t(bits.read(12));
    } else {
        return false;
    }
    if (bits.read(1))
        record.roamingIndicator = uint8_t(bits.read(8));
    if (bits.read(1)) {
        record.associationTag = uint8_t(bits.read(8));
        record.pnAssociation = bits.read(1);
        record.dataAssociation = bits.read(1);
    }
    return true;
}

QByteArray ExtendedSystemRecord(const PrlSystem& record)
{
    if (!record.unknown.isEmpty())
        return record.unknown;
    BitWriter bits;
    bits.write(0, 5); // SYS_RECORD_LENGTH, filled in below
    bits.write(record.type, 4);
    bits.write(record.preferred, 1);
    bits.write(record.sameRegion, 1);
    bits.write(record.morePreferred, 1);
    bits.write(record.acquisitionIndex, AcqIndexWidth);
    if (record.type == SysHrpd) {
        bits.write(record.subnetCommonOffset.has_value(), 1);
        bits.write(uint32_t(record.subnetBits), 7);
        BitReader subnet(record.subnet);
        for (int left = record.subnetBits; left > 0; left -= 8)
            bits.write(subnet.read(std::min(left, 8)), std::min(left, 8));
        if (record.subnetCommonOffset)
            bits.write(*record.subnetCommonOffset, 12);
    } else {
        bits.write(record.nidIncluded, 2);
        bits.write(record.sid, SidWidth);
        if (record.nidIncluded == NidIncluded)
            bits.write(record.nid, NidWidth);
    }
    bits.write(record.roamingIndicator.has_value(), 1);
    if (record.roamingIndicator)
        bits.write(*record.roamingIndicator, 8);
    bits.write(record.associationTag.has_value(), 1);
    if (record.associationTag) {
        bits.write(*record.associationTag, 8);
        bits.write(record.pnAssociation, 1);
        bits.write(record.dataAssociation, 1);
    }
    QByteArray bytes = bits.bytes();
    bytes[0] = char(uint8_t(bytes[0]) | uint8_t(bytes.size() << 3));
    return bytes;
}

} // namespace tessaly::model::prl
