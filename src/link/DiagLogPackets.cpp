// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/DiagLogPackets.h"

#include "link/DiagPackets.h"
#include "link/PacketBytes.h"

namespace tessaly::link {

namespace {

// The log item's header: its length (header included), code, time stamp.
constexpr qsizetype LogHeaderSize = 12;

} // namespace

// The log packet as osmo-qcdiag's protocol.h lays it out (diag_log_hdr and
// log_hdr): code 0x10, the count of packets still to come (8 bits), the
// length of the log item (16 bits); the item is its own length again (16
// bits), its code (16 bits), its time stamp (64 bits) and the payload.
QByteArray EncodeLogPacket(const LogPacket& packet)
{
    const uint16_t length = uint16_t(LogHeaderSize + packet.payload.size());
    QByteArray bytes(1, char(CmdLog));
    bytes.append(char(packet.pending));
    AppendLittle16(bytes, length);
    AppendLittle16(bytes, length);
    AppendLittle16(bytes, packet.code);
    AppendLittle32(bytes, uint32_t(packet.time));
    AppendLittle32(bytes, uint32_t(packet.time >> 32));
    return bytes + packet.payload;
}

std::optional<LogPacket> ReadLogPacket(QByteArrayView bytes)
{
    if (bytes.size() < 4 + LogHeaderSize || uint8_t(bytes[0]) != CmdLog)
        return {};
    const uint16_t length = Little16(bytes, 2);
    if (length < LogHeaderSize || bytes.size() != 4 + length || Little16(bytes, 4) != length)
        return {};
    LogPacket packet;
    packet.pending = uint8_t(bytes[1]);
    packet.code = Little16(bytes, 6);
    packet.time = uint64_t(Little32(bytes, 8)) | uint64_t(Little32(bytes, 12)) << 32;
    packet.payload = bytes.sliced(4 + LogHeaderSize).toByteArray();
    return packet;
}

} // namespace tessaly::link
