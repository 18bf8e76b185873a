// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/DiagLogging.h"

#include "link/DiagPackets.h"
#include "link/PacketBytes.h"

#include <tessaly/TessalyError.h>

namespace tessaly::link {

namespace {

// The bytes of a mask of `items` bits.
qsizetype MaskLength(uint32_t items)
{
    return qsizetype((items + 7) / 8);
}

QByteArray MaskBytes(QByteArray bits, uint32_t items)
{
    bits.resize(MaskLength(items), '\0');
    return bits;
}

[[noreturn]] void ThrowShort(const char* what)
{
    throw TessalyError(errWrongReply, QStringLiteral("The handset's %1 reply is cut short.").arg(QLatin1String(what)));
}

} // namespace

// The event report switch is the code and one byte, on or off; the handset
// answers with an event report of length 0 (libqcdm's DMCmdEventReport).
QByteArray EventReportRequest(bool on)
{
    return QByteArray(1, char(CmdEventReport)) + char(on ? 1 : 0);
}

std::optional<bool> EventReportSwitch(QByteArrayView request)
{
    if (request.size() != 2 || uint8_t(request[0]) != CmdEventReport)
        return {};
    return request[1] != 0;
}

QByteArray EncodeEventReportReply()
{
    return QByteArray(1, char(CmdEventReport)) + QByteArray(2, '\0');
}

// The log configuration as libqcdm's DMCmdLogConfig and its reply lay it
// out: code, 3 bytes of padding, the operation (32 bits); a request to set a
// mask adds the equipment id, the item count and the mask, one to get it the
// equipment id. The reply repeats the operation, adds a status (32 bits),
// then the 16 last items by equipment id for the ranges, or the equipment
// id, item count and mask.
QByteArray LogConfigRequest(uint32_t operation, const LogMask& mask)
{
    QByteArray request(1, char(CmdLogConfig));
    request.append(3, '\0');
    AppendLittle32(request, operation);
    if (operation == LogSetMask || operation == LogGetMask)
        AppendLittle32(request, mask.equipment);
    if (operation == LogSetMask) {
        AppendLittle32(request, mask.items);
        request.append(MaskBytes(mask.bits, mask.items));
    }
    return request;
}

std::optional<LogConfig> ReadLogConfigRequest(QByteArrayView request)
{
    if (request.size() < 8)
        return {};
    LogConfig config;
    config.operation = Little32(request, 4);
    if (config.operation == LogSetMask || config.operation == LogGetMask) {
        if (request.size() < 12)
            return {};
        config.mask.equipment = Little32(request, 8);
    }
    if (config.operation == LogSetMask) {
        if (request.size() < 16)
            return {};
        config.mask.items = Little32(request, 12);
        const qsizetype length = MaskLength(config.mask.items);
        if (request.size() < 16 + length)
            return {};
        config.mask.bits = request.sliced(16, length).toByteArray();
    }
    return config;
}

QByteArray EncodeLogConfig(const LogConfig& config)
{
    QByteArray reply(1, char(CmdLogConfig));
    reply.append(3, '\0');
    AppendLittle32(reply, config.operation);
    AppendLittle32(reply, config.status);
    if (config.operation == LogRetrieveRanges) {
        for (uint32_t last : config.lastItems)
            AppendLittle32(reply, last);
    } else if (config.operation == LogSetMask || config.operation == LogGetMask) {
        AppendLittle32(reply, config.mask.equipment);
        AppendLittle32(reply, config.mask.items);
        reply.append(MaskBytes(config.mask.bits, config.mask.items));
    }
    return reply;
}

LogConfig ParseLogConfig(QByteArrayView request, QByteArrayView reply)
{
    CheckReply(request, reply, 12);
    LogConfig config;
    config.operation = Little32(reply, 4);
    config.status = Little32(reply, 8);
    if (config.operation == LogRetrieveRanges) {
        if (reply.size() < 12 + 16 * 4)
            ThrowShort("log ranges");
        for (size_t i = 0; i < config.lastItems.size(); ++i)
            config.lastItems[i] = Little32(reply, 12 + qsizetype(i) * 4);
    } else if (config.operation == LogSetMask || config.operation == LogGetMask) {
        if (reply.size() < 20)
            ThrowShort("log mask");
        config.mask.equipment = Little32(reply, 12);
        config.mask.items = Little32(reply, 16);
        const qsizetype length = MaskLength(config.mask.items);
        if (reply.size() < 20 + length)
            ThrowShort("log mask");
        config.mask.bits = reply.sliced(20, length).toByteArray();
    }
    return config;
}

// The extended log mask is the code, the number of bits (16 bits) and the
// mask, in the request and in the reply alike (libqcdm's DMCmdExtLogMask).
QByteArray EncodeExtendedLogMask(const ExtendedLogMask& mask)
{
    QByteArray packet(1, char(CmdExtLogMask));
    AppendLittle16(packet, mask.bits);
    packet.append(MaskBytes(mask.mask, mask.bits));
    return packet;
}

std::optional<ExtendedLogMask> ReadExtendedLogMask(QByteArrayView packet)
{
    if (packet.size() < 3 || uint8_t(packet[0]) != CmdExtLogMask)
        return {};
    ExtendedLogMask mask;
    mask.bits = Little16(packet, 1);
    const qsizetype length = MaskLength(mask.bits);
    if (packet.size() < 3 + length)
        return {};
    mask.mask = packet.sliced(3, length).toByteArray();
    return mask;
}

// The message configuration as the diag service's packet definitions
// published in the open MSM source trees (msg_pkt_defs.h) lay it out: code,
// operation, then by operation:
// - ranges: reply status, a reserved byte, a count (32 bits) and the ranges,
//   first and last id (16 bits each);
// - masks of a range: first and last id, in the reply then status and a
//   reserved byte, then one mask (32 bits) per id; a request to set them has
//   two reserved bytes before the masks;
// - all masks: a request has two reserved bytes and the mask, the reply the
//   status, a reserved byte and the mask.
QByteArray MessageConfigRequest(const MessageConfig& config)
{
    QByteArray request(1, char(CmdMessageConfig));
    request.append(char(config.operation));
    if (config.operation == MsgRetrieveRanges)
        return request;
    if (config.operation == MsgSetAllMasks) {
        request.append(2, '\0');
        AppendLittle32(request, config.masks.empty() ? 0 : config.masks.front());
        return request;
    }
    AppendLittle16(request, config.range.first);
    AppendLittle16(request, config.range.last);
    if (config.operation == MsgSetMasks) {
        request.append(2, '\0');
        for (uint32_t mask : config.masks)
            AppendLittle32(request, mask);
    }
    return request;
}

std::optional<MessageConfig> ReadMessageConfigRequest(QByteArrayView request)
{
    if (request.size() < 2)
        return {};
    MessageConfig config;
    config.operation = uint8_t(request[1]);
    switch (config.operation) {
    case MsgRetrieveRanges:
        return config;
    case MsgSetAllMasks:
        if (request.size() < 8)
            return {};
        config.masks = {Little32(request, 4)};
        return config;
    case MsgRetrieveBuildMasks:
    case MsgRetrieveMasks:
    case MsgSetMasks:
        if (request.size() < 6)
            return {};
        config.range = {Little16(request, 2), Little16(request, 4)};
        if (config.range.last < config.range.first)
            return {};
        if (config.operation == MsgSetMasks) {
            const qsizetype count = config.range.last - config.range.first + 1;
            if (request.size() < 8 + count * 4)
                return {};
            for (qsizetype i = 0; i < count; ++i)
                config.masks.push_back(Little32(request, 8 + i * 4));
        }
        return config;
    default:
        return {};
    }
}

QByteArray EncodeMessageConfig(const MessageConfig& config)
{
    QByteArray reply(1, char(CmdMessageConfig));
    reply.append(char(config.operation));
    if (config.operation == MsgRetrieveRanges) {
        reply.append(char(config.status)).append('\0');
        AppendLittle32(reply, uint32_t(config.ranges.size()));
        for (const SsidRange& range : config.ranges) {
            AppendLittle16(reply, range.first);
            AppendLittle16(reply, range.last);
        }
        return reply;
    }
    if (config.operation != MsgSetAllMasks) {
        AppendLittle16(reply, config.range.first);
        AppendLittle16(reply, config.range.last);
    }
    reply.append(char(config.status)).append('\0');
    for (uint32_t mask : config.masks)
        AppendLittle32(reply, mask);
    return reply;
}

MessageConfig ParseMessageConfig(QByteArrayView request, QByteArrayView reply)
{
    CheckReply(request, reply, 4);
    MessageConfig config;
    config.operation = uint8_t(reply[1]);
    if (config.operation == MsgRetrieveRanges) {
        config.status = uint8_t(reply[2]);
        if (reply.size() < 8)
            ThrowShort("message ranges");
        const uint32_t count = Little32(reply, 4);
        if (reply.size() < 8 + qsizetype(count) * 4)
            ThrowShort("message ranges");
        for (uint32_t i = 0; i < count; ++i)
            config.ranges.push_back({Little16(reply, 8 + qsizetype(i) * 4), Little16(reply, 10 + qsizetype(i) * 4)});
        return config;
    }
    qsizetype at = 2;
    if (config.operation != MsgSetAllMasks) {
        if (reply.size() < 8)
            ThrowShort("message mask");
        config.range = {Little16(reply, 2), Little16(reply, 4)};
        at = 6;
    }
    config.status = uint8_t(reply[at]);
    for (at += 2; at + 4 <= reply.size(); at += 4)
        config.masks.push_back(Little32(reply, at));
    return config;
}

} // namespace tessaly::link
