// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The roaming list's header and tables as 3GPP2 C.S0016 section 3.5.5 lays
// them out (the records themselves: PrlRecords.cpp). The IS-683-A list:
// PR_LIST_SIZE 16, PR_LIST_ID 16, PREF_ONLY 1, DEF_ROAM_IND 8, NUM_ACQ_RECS
// 9, NUM_SYS_RECS 14, the acquisition and system tables, reserved bits to
// the octet, PR_LIST_CRC 16. The extended list: PR_LIST_SIZE, PR_LIST_ID,
// CUR_SSPR_P_REV 8, PREF_ONLY, DEF_ROAM_IND, NUM_ACQ_RECS 9,
// NUM_COMMON_SUBNET_RECS 9, NUM_SYS_RECS 14, 7 reserved bits, the extended
// acquisition table (ACQ_TYPE 8 and LENGTH 8 before each record's octets),
// the common subnet table (SUBNET_COMMON_LENGTH 4 and that many octets
// each), the extended system table, reserved bits, PR_LIST_CRC.

#include "model/Prl.h"

#include "model/PrlRecords.h"

namespace tessaly::model {

using namespace prl;

namespace {

constexpr qsizetype CrcSize = 2;
constexpr qsizetype StandardHeader = 8;  // octets before the acquisition table
constexpr qsizetype ExtendedHeader = 11;
constexpr uint8_t ExtendedRevision = 3; // CUR_SSPR_P_REV of the IS-683-C list

uint16_t Big16(QByteArrayView bytes, qsizetype at)
{
    return uint16_t(uint8_t(bytes[at]) << 8 | uint8_t(bytes[at + 1]));
}

QString Hex16(uint16_t value)
{
    return QStringLiteral("%1").arg(value, 4, 16, QLatin1Char('0')).toUpper();
}

// The tables' end: reserved bits to the octet, then the CRC at once.
QString CheckEnd(BitReader& bits, QByteArrayView body)
{
    if (bits.overrun())
        return QStringLiteral("The tables run past the end of the list.");
    bits.alignToOctet();
    if (bits.position() != body.size() * 8)
        return QStringLiteral("%1 bytes lie between the system table and the CRC.")
            .arg(body.size() - bits.position() / 8);
    return {};
}

// The IS-683-A list in `body` (the list without its CRC).
QString ReadStandard(QByteArrayView body, Prl& list, bool& complete)
{
    list.layout = PrlLayout::Standard;
    BitReader bits(body, 32);
    list.preferredOnly = bits.read(1);
    list.defaultRoaming = uint8_t(bits.read(8));
    const uint32_t acquisitions = bits.read(9);
    const uint32_t systems = bits.read(14);
    for (uint32_t i = 0; i < acquisitions; ++i) {
        const qsizetype start = bits.position();
        PrlAcquisition record;
        record.type = uint8_t(bits.read(4));
        if (!KnownAcquisitionType(record.type, PrlLayout::Standard)) {
            record.unknown = body.sliced(std::min(start / 8, body.size())).toByteArray();
            list.acquisitions.push_back(record);
            return QStringLiteral("Acquisition record %1 is of type %2, which the standard does not define for this "
                                  "list. Its records carry no length, so the %3 acquisition records after it and the "
                                  "%4 system records cannot be read.")
                .arg(i)
                .arg(record.type)
                .arg(acquisitions - i - 1)
                .arg(systems);
        }
        ReadAcquisitionFields(bits, record);
        list.acquisitions.push_back(record);
        if (bits.overrun())
            return QStringLiteral("The acquisition table runs past the end of the list.");
    }
    for (uint32_t i = 0; i < systems && !bits.overrun(); ++i) {
        PrlSystem record;
        ReadStandardSystem(bits, record);
        list.systems.push_back(record);
    }
    complete = !bits.overrun();
    return CheckEnd(bits, body);
}

QString ReadExtended(QByteArrayView body, Prl& list, bool& complete)
{
    list.layout = PrlLayout::Extended;
    BitReader bits(body, 32);
    list.ssprRevision = uint8_t(bits.read(8));
    list.preferredOnly = bits.read(1);
    list.defaultRoaming = uint8_t(bits.read(8));
    const uint32_t acquisitions = bits.read(9);
    const uint32_t subnets = bits.read(9);
    const uint32_t systems = bits.read(14);
    bits.read(7);
    for (uint32_t i = 0; i < acquisitions && !bits.overrun(); ++i) {
        PrlAcquisition record;
        record.type = uint8_t(bits.read(8));
        const qsizetype length = bits.read(8);
        const qsizetype start = bits.position() / 8;
        if (bits.overrun() || start + length > body.size())
            return QStringLiteral("Acquisition record %1 runs past the end of the list.").arg(i);
        const QByteArrayView octets = body.sliced(start, length);
        if (KnownAcquisitionType(record.type, PrlLayout::Extended)) {
            BitReader fields(octets);
            ReadAcquisitionFields(fields, record);
            if (fields.overrun())
                return QStringLiteral("Acquisition record %1 is shorter than the fields of its type.").arg(i);
        } else {
            record.unknown = octets.toByteArray();
        }
        list.acquisitions.push_back(record);
        bits.skipTo((start + length) * 8);
    }
    for (uint32_t i = 0; i < subnets && !bits.overrun(); ++i) {
        BitWriter subnet;
        for (uint32_t n = bits.read(4); n > 0; --n)
            subnet.write(bits.read(8), 8);
        list.commonSubnets.push_back(subnet.bytes());
    }
    bits.alignToOctet();
    for (uint32_t i = 0; i < systems && !bits.overrun(); ++i) {
        const qsizetype start = bits.position();
        const qsizetype length = bits.read(5);
        const qsizetype end = start + length * 8;
        if (length < 3 || end > body.size() * 8)
            return QStringLiteral("System record %1 gives a length of %2 bytes, which does not fit.").arg(i).arg(length);
        PrlSystem record;
        record.type = uint8_t(bits.read(4));
        if (!ReadExtendedSystem(bits, record))
            record.unknown = body.sliced(start / 8, length).toByteArray();
        if (bits.position() > end)
            return QStringLiteral("System record %1 is longer than its length field says.").arg(i);
        list.systems.push_back(record);
        bits.skipTo(end);
    }
    complete = !bits.overrun();
    return CheckEnd(bits, body);
}

} // namespace

// The generator x^16 + x^12 + x^5 + 1, every register bit set to one first,
// the bits taken most significant first from PR_LIST_SIZE to the last
// reserved bit, and the register's content complemented at the end.
uint16_t PrlCrc(QByteArrayView bytes)
{
    uint16_t crc = 0xFFFF;
    for (const char byte : bytes) {
        crc ^= uint16_t(uint8_t(byte) << 8);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 0x8000) ? uint16_t(crc << 1 ^ 0x1021) : uint16_t(crc << 1);
    }
    return uint16_t(~crc);
}

PrlDecoding DecodePrl(QByteArrayView bytes)
{
    PrlDecoding decoding;
    if (bytes.size() < StandardHeader + CrcSize) {
        decoding.problem = QStringLiteral("The list is %1 bytes long: too short for a roaming list, whose header and "
                                          "CRC alone take %2.")
                               .arg(bytes.size())
                               .arg(StandardHeader + CrcSize);
        return decoding;
    }
    decoding.sizeField = Big16(bytes, 0);
    if (decoding.sizeField != bytes.size()) {
        decoding.problem = QStringLiteral("The list's size field says %1 bytes, but the list is %2 bytes long.")
                               .arg(decoding.sizeField)
                               .arg(bytes.size());
        return decoding;
    }
    const QByteArrayView body = bytes.first(bytes.size() - CrcSize);
    decoding.crcField = Big16(bytes, body.size());
    decoding.crc = PrlCrc(body);

    // The extended list says so in CUR_SSPR_P_REV; an IS-683-A list whose
    // first bits there happen to read 3 is told by its tables, which then
    // end where the CRC begins.
    Prl list;
    list.listId = Big16(bytes, 2);
    bool complete = false;
    QString tables;
    if (uint8_t(bytes[4]) == ExtendedRevision && bytes.size() >= ExtendedHeader + CrcSize) {
        tables = ReadExtended(body, list, complete);
        if (!tables.isEmpty()) {
            Prl standard = list;
            standard.acquisitions.clear();
            standard.commonSubnets.clear();
            standard.systems.clear();
            bool standardComplete = false;
            if (ReadStandard(body, standard, standardComplete).isEmpty()) {
                list = standard;
                complete = standardComplete;
                tables.clear();
            }
        }
    } else {
        tables = ReadStandard(body, list, complete);
    }
    decoding.list = list;
    decoding.complete = complete;
    if (decoding.crc != decoding.crcField)
        decoding.problem = QStringLiteral("The list's CRC is %1, but its bytes give %2: the list is damaged.")
                               .arg(Hex16(decoding.crcField), Hex16(decoding.crc));
    if (!tables.isEmpty())
        decoding.problem = (decoding.problem + QLatin1Char(' ') + tables).trimmed();
    return decoding;
}

QByteArray EncodePrl(const Prl& list)
{
    BitWriter bits;
    bits.write(0, 16); // PR_LIST_SIZE, filled in below
    bits.write(list.listId, 16);
    const bool extended = list.layout == PrlLayout::Extended;
    if (extended)
        bits.write(list.ssprRevision, 8);
    bits.write(list.preferredOnly, 1);
    bits.write(list.defaultRoaming, 8);
    bits.write(uint32_t(list.acquisitions.size()), 9);
    if (extended)
        bits.write(uint32_t(list.commonSubnets.size()), 9);
    bits.write(uint32_t(list.systems.size()), 14);
    if (extended)
        bits.write(0, 7);
    for (const PrlAcquisition& record : list.acquisitions) {
        if (!extended) {
            bits.write(record.type, 4);
            WriteAcquisitionFields(bits, record);
            continue;
        }
        BitWriter fields;
        if (KnownAcquisitionType(record.type, PrlLayout::Extended))
            WriteAcquisitionFields(fields, record);
        const QByteArray octets = record.unknown.isEmpty() ? fields.bytes() : record.unknown;
        bits.write(record.type, 8);
        bits.write(uint32_t(octets.size()), 8);
        bits.writeBytes(octets);
    }
    if (extended) {
        for (const QByteArray& subnet : list.commonSubnets) {
            bits.write(uint32_t(subnet.size()), 4);
            bits.writeBytes(subnet);
        }
        bits.alignToOctet(); // the extended system records start on an octet
    }
    for (const PrlSystem& record : list.systems) {
        if (extended)
            bits.writeBytes(ExtendedSystemRecord(record));
        else
            WriteStandardSystem(bits, record);
    }
    QByteArray bytes = bits.bytes();
    const qsizetype size = bytes.size() + CrcSize;
    bytes[0] = char(size >> 8);
    bytes[1] = char(size & 0xFF);
    const uint16_t crc = PrlCrc(bytes);
    bytes.append(char(crc >> 8));
    bytes.append(char(crc & 0xFF));
    return bytes;
}

QString PrlProblem(QByteArrayView bytes)
{
    return DecodePrl(bytes).problem;
}

QString PrlAcquisitionTypeName(uint8_t type)
{
    switch (type) {
    case AcqCellularAnalog: return QStringLiteral("Cellular analog");
    case AcqCellularCdmaStandard: return QStringLiteral("Cellular CDMA, standard channels");
    case AcqCellularCdmaCustom: return QStringLiteral("Cellular CDMA, custom channels");
    case AcqCellularCdmaPreferred: return QStringLiteral("Cellular CDMA preferred");
    case AcqPcsCdmaBlocks: return QStringLiteral("PCS CDMA, blocks");
    case AcqPcsCdmaChannels: return QStringLiteral("PCS CDMA, channels");
    case AcqJtacsCdmaStandard: return QStringLiteral("JTACS CDMA, standard channels");
    case AcqJtacsCdmaCustom: return QStringLiteral("JTACS CDMA, custom channels");
    case Acq2GHzBandChannels: return QStringLiteral("2 GHz band, channels");
    case AcqGeneric1x: return QStringLiteral("Generic, cdma2000 1x and IS-95");
    case AcqGenericHrpd: return QStringLiteral("Generic, HRPD");
    default: return QStringLiteral("Unknown type %1").arg(type);
    }
}

QString PrlLayoutName(PrlLayout layout)
{
    return layout == PrlLayout::Extended ? QStringLiteral("IS-683-C extended") : QStringLiteral("IS-683-A");
}

} // namespace tessaly::model
