// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/DiagIdentity.h"

#include "link/DiagPackets.h"
#include "link/PacketBytes.h"

#include <QList>

#include <algorithm>

namespace tessaly::link {

// The version reply as libqcdm (ModemManager, dm-commands.h) decodes it:
// code, compile date[11], compile time[8], release date[11], release
// time[8], version directory[8], station class mark, CAI revision, model
// number, firmware revision (16 bits), slot cycle index, hardware major and
// minor version: 55 bytes.
QByteArray EncodeVersion(const VersionInfo& version)
{
    QByteArray reply(1, char(CmdVersion));
    AppendFixedText(reply, version.compileDate, 11);
    AppendFixedText(reply, version.compileTime, 8);
    AppendFixedText(reply, version.releaseDate, 11);
    AppendFixedText(reply, version.releaseTime, 8);
    AppendFixedText(reply, version.versionDirectory, 8);
    reply.append(char(version.stationClassMark));
    reply.append(char(version.caiRevision));
    reply.append(char(version.modelNumber));
    AppendLittle16(reply, version.firmwareRevision);
    reply.append(char(version.slotCycleIndex));
    reply.append(char(version.hardwareMajor));
    reply.append(char(version.hardwareMinor));
    return reply;
}

VersionInfo ParseVersion(QByteArrayView request, QByteArrayView reply)
{
    CheckReply(request, reply, VersionReplySize);
    VersionInfo version;
    version.compileDate = FixedText(reply, 1, 11);
    version.compileTime = FixedText(reply, 12, 8);
    version.releaseDate = FixedText(reply, 20, 11);
    version.releaseTime = FixedText(reply, 31, 8);
    version.versionDirectory = FixedText(reply, 39, 8);
    version.stationClassMark = uint8_t(reply[47]);
    version.caiRevision = uint8_t(reply[48]);
    version.modelNumber = uint8_t(reply[49]);
    version.firmwareRevision = Little16(reply, 50);
    version.slotCycleIndex = uint8_t(reply[52]);
    version.hardwareMajor = uint8_t(reply[53]);
    version.hardwareMinor = uint8_t(reply[54]);
    return version;
}

// The extended build id as the diag service's packet definitions published
// in the open MSM source trees (diagdiag.h) lay it out: code, version,
// two reserved bytes, MSM hardware version (32 bits), mobile model id (32
// bits), then the build id string and the model string, each NUL-ended.
QByteArray EncodeExtendedBuildId(const ExtendedBuildId& build)
{
    QByteArray reply(1, char(CmdExtBuildId));
    reply.append(char(build.version));
    reply.append(2, '\0');
    AppendLittle32(reply, build.msmHardwareVersion);
    AppendLittle32(reply, build.modelId);
    reply.append(build.software.toLatin1()).append('\0');
    reply.append(build.model.toLatin1()).append('\0');
    return reply;
}

ExtendedBuildId ParseExtendedBuildId(QByteArrayView request, QByteArrayView reply)
{
    CheckReply(request, reply, 12);
    ExtendedBuildId build;
    build.version = uint8_t(reply[1]);
    build.msmHardwareVersion = Little32(reply, 4);
    build.modelId = Little32(reply, 8);
    // The strings end at their NULs; a handset that leaves out the last one
    // ends the packet instead.
    const QList<QByteArray> strings = reply.sliced(12).toByteArray().split('\0');
    build.software = strings.size() > 0 ? QString::fromLatin1(strings[0]).trimmed() : QString();
    build.model = strings.size() > 1 ? QString::fromLatin1(strings[1]).trimmed() : QString();
    return build;
}

// The diagnostic version: code, then the version (16 bits), as libqcdm and
// OpenPST read it.
QByteArray EncodeDiagVersion(uint16_t version)
{
    QByteArray reply(1, char(CmdDiagVersion));
    AppendLittle16(reply, version);
    return reply;
}

uint16_t ParseDiagVersion(QByteArrayView request, QByteArrayView reply)
{
    CheckReply(request, reply, 3);
    return Little16(reply, 1);
}

// The station status as libqcdm (dm-commands.h) decodes it, 48 bytes: code,
// 3 bytes of demodulator state, ESN (32 bits) at 4, RF mode at 8, the MIN
// words (MIN1 analog and CDMA, 32 bits each at 10 and 14, MIN2 analog and
// CDMA, 16 bits each at 18 and 20), CDMA receive state at 23, the frame counters, entry reason at 32,
// current channel at 34, code channel at 36, pilot base at 37, SID at 39,
// NID at 41, then the analog locating id, RSSI and power.
QByteArray EncodeStatus(const StationStatus& status)
{
    QByteArray reply(StatusReplySize, '\0');
    reply[0] = char(CmdStatus);
    const auto put16 = [&reply](qsizetype at, uint16_t value) {
        reply[at] = char(value & 0xFF);
        reply[at + 1] = char(value >> 8);
    };
    put16(4, uint16_t(status.esn & 0xFFFF));
    put16(6, uint16_t(status.esn >> 16));
    put16(8, status.rfMode);
    for (qsizetype at : {10, 14}) {
        put16(at, uint16_t(status.min1 & 0xFFFF));
        put16(at + 2, uint16_t(status.min1 >> 16));
    }
    put16(18, status.min2);
    put16(20, status.min2);
    put16(23, status.cdmaRxState);
    put16(32, status.entryReason);
    put16(34, status.channel);
    put16(37, status.pilotBase);
    put16(39, status.sid);
    put16(41, status.nid);
    return reply;
}

StationStatus ParseStatus(QByteArrayView request, QByteArrayView reply)
{
    CheckReply(request, reply, StatusReplySize);
    StationStatus status;
    status.esn = Little32(reply, 4);
    status.rfMode = Little16(reply, 8);
    status.min1 = Little32(reply, 14);
    status.min2 = Little16(reply, 20);
    status.cdmaRxState = Little16(reply, 23);
    status.entryReason = Little16(reply, 32);
    status.channel = Little16(reply, 34);
    status.pilotBase = Little16(reply, 37);
    status.sid = Little16(reply, 39);
    status.nid = Little16(reply, 41);
    return status;
}

namespace {

// Three digits as the air interface codes them (3GPP2 C.S0005, 2.3.1.1):
// each digit with 0 counted as 10, the three read as a decimal number, less
// 111.
uint32_t ThreeDigits(QStringView digits)
{
    uint32_t value = 0;
    for (QChar digit : digits)
        value = value * 10 + (digit == u'0' ? 10 : uint32_t(digit.unicode() - u'0'));
    return value - 111;
}

} // namespace

// MIN1 is 24 bits: the exchange's three digits (10 bits), the thousands
// digit (4 bits, 0 counted as 10) and the last three digits (10 bits).
std::optional<MobileIdNumber> MinOfNumber(QStringView digits)
{
    const auto digit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    if (digits.size() != 10 || !std::all_of(digits.begin(), digits.end(), digit))
        return {};
    const uint32_t thousands = digits[6] == u'0' ? 10 : uint32_t(digits[6].unicode() - u'0');
    return MobileIdNumber{ThreeDigits(digits.sliced(3, 3)) << 14 | thousands << 10 | ThreeDigits(digits.sliced(7, 3)),
                          uint16_t(ThreeDigits(digits.first(3)))};
}

} // namespace tessaly::link
