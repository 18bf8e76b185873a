// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/DiagEvents.h"

#include "link/DiagPackets.h"
#include "link/PacketBytes.h"

namespace tessaly::link {

namespace {

// The flags above the 12-bit id: bit 12 is reserved, bits 13 and 14 tell the
// payload (0 none, 1 one byte, 2 two bytes, 3 a length byte and as many
// bytes), bit 15 the short time stamp.
constexpr uint16_t IdBits = 0x0FFF;
constexpr int PayloadShift = 13;
constexpr uint16_t ShortTimeFlag = 0x8000;

void AppendEvent(QByteArray& report, const DiagEvent& event)
{
    const qsizetype size = std::min<qsizetype>(event.payload.size(), 255);
    const uint16_t kind = size == 0 ? 0 : size <= 2 ? uint16_t(size) : 3;
    const uint16_t flags = uint16_t(kind << PayloadShift | (event.shortTime ? ShortTimeFlag : 0));
    AppendLittle16(report, uint16_t((event.id & IdBits) | flags));
    if (event.shortTime) {
        AppendLittle16(report, uint16_t(event.time >> 16));
    } else {
        AppendLittle32(report, uint32_t(event.time));
        AppendLittle32(report, uint32_t(event.time >> 32));
    }
    if (kind == 3)
        report.append(char(size));
    report.append(event.payload.first(size));
}

} // namespace

// The event report as osmo-qcdiag's diag_event.c reads it: code 0x60, the
// length of the events (16 bits), then each event's id and flags (16 bits),
// its time stamp (64 bits, or 16 in the short form) and its payload.
QByteArray EncodeEventReport(const std::vector<DiagEvent>& events)
{
    QByteArray body;
    for (const DiagEvent& event : events)
        AppendEvent(body, event);
    QByteArray report(1, char(CmdEventReport));
    AppendLittle16(report, uint16_t(body.size()));
    return report + body;
}

std::optional<std::vector<DiagEvent>> ReadEventReport(QByteArrayView packet)
{
    if (packet.size() < 3 || uint8_t(packet[0]) != CmdEventReport || packet.size() != 3 + Little16(packet, 1))
        return {};
    std::vector<DiagEvent> events;
    for (qsizetype at = 3; at < packet.size();) {
        if (at + 2 > packet.size())
            return {};
        const uint16_t flags = Little16(packet, at);
        DiagEvent event;
        event.id = flags & IdBits;
        event.shortTime = (flags & ShortTimeFlag) != 0;
        at += 2;
        const qsizetype stamp = event.shortTime ? 2 : 8;
        if (at + stamp > packet.size())
            return {};
        event.time = event.shortTime ? uint64_t(Little16(packet, at)) << 16
                                     : uint64_t(Little32(packet, at)) | uint64_t(Little32(packet, at + 4)) << 32;
        at += stamp;
        qsizetype size = (flags >> PayloadShift) & 3;
        if (size == 3) {
            if (at >= packet.size())
                return {};
            size = uint8_t(packet[at++]);
        }
        if (at + size > packet.size())
            return {};
        event.payload = packet.sliced(at, size).toByteArray();
        at += size;
        events.push_back(std::move(event));
    }
    return events;
}

} // namespace tessaly::link
