// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/DiagPackets.h"

#include "link/DiagRoamingList.h"
#include "link/DiagSubsystem.h"
#include "link/PacketBytes.h"

#include <tessaly/TessalyError.h>

#include <algorithm>

namespace tessaly::link {

namespace {

// The error replies a handset gives instead of an answer.
QString ErrorReplyText(uint8_t code)
{
    switch (code) {
    case CmdBadCommand:
        return QStringLiteral("the handset does not know this command; it may not support NV access over this port");
    case CmdBadParameter: return QStringLiteral("the handset refused a parameter of the request");
    case CmdBadLength: return QStringLiteral("the handset refused the length of the request");
    case CmdBadDevice: return QStringLiteral("the handset cannot reach the device the request is for");
    case CmdBadMode:
        return QStringLiteral("the handset is in a mode that does not allow this; restart it in its normal mode");
    case CmdBadSecurityMode: return QStringLiteral("the handset's security mode does not allow this request");
    default: return {};
    }
}

} // namespace

void CheckReply(QByteArrayView request, QByteArrayView reply, qsizetype size)
{
    if (reply.isEmpty())
        throw TessalyError(errWrongReply, QStringLiteral("The handset sent an empty reply."));
    const uint8_t code = uint8_t(reply[0]);
    if (code == CmdBadSpcMode)
        throw TessalyError(errSpcLocked, QStringLiteral("The handset is locked: it needs its service programming code "
                                                        "(SPC) before it allows this."));
    if (const QString text = ErrorReplyText(code); !text.isEmpty() && code != uint8_t(request[0]))
        throw TessalyError(errHandsetRefused, QStringLiteral("The request was refused: %1 (reply 0x%2).")
                                                  .arg(text)
                                                  .arg(code, 2, 16, QLatin1Char('0')));
    if (code != uint8_t(request[0]) || reply.size() < size)
        throw TessalyError(errWrongReply, QStringLiteral("The handset's reply does not answer the request (command "
                                                         "0x%1, %2 bytes).")
                                              .arg(code, 2, 16, QLatin1Char('0'))
                                              .arg(reply.size()));
}

QByteArray BareRequest(Command command)
{
    return QByteArray(1, char(command));
}

QByteArray ErrorReply(Command code, QByteArrayView request)
{
    return QByteArray(1, char(code)) + request.toByteArray();
}

bool IsBadCommand(QByteArrayView reply)
{
    return !reply.isEmpty() && uint8_t(reply[0]) == CmdBadCommand;
}

QByteArray EsnRequest()
{
    return BareRequest(CmdEsn);
}

void AppendNvData(QByteArray& packet, const model::NvData& data)
{
    packet.append(reinterpret_cast<const char*>(data.data()), qsizetype(data.size()));
}

model::NvData NvDataAt(QByteArrayView packet, qsizetype at)
{
    model::NvData data;
    std::copy_n(reinterpret_cast<const uint8_t*>(packet.data()) + at, data.size(), data.begin());
    return data;
}

// A request is laid out as its reply, with status 0.
QByteArray NvItemRequest(Command command, uint16_t item, const model::NvData& data)
{
    return EncodeNvItemReply(command, {item, data, 0});
}

QByteArray NvItemRequest(Command command, model::NvAddress address, model::NvData data)
{
    if (address.index >= 0)
        data[0] = uint8_t(address.index);
    return NvItemRequest(command, address.item, data);
}

QByteArray SpcRequest(const QString& spc)
{
    if (spc.size() != 6 || !std::all_of(spc.begin(), spc.end(), [](QChar c) { return c >= u'0' && c <= u'9'; }))
        throw TessalyError(errBadSpc, QStringLiteral("The SPC is six digits."));
    return QByteArray(1, char(CmdSpc)) + spc.toLatin1();
}

bool IsUnsolicited(QByteArrayView reply)
{
    return !reply.isEmpty() && (uint8_t(reply[0]) == CmdLog || uint8_t(reply[0]) == CmdEventReport);
}

bool Answers(QByteArrayView request, QByteArrayView reply, bool indexed)
{
    if (reply.isEmpty())
        return false;
    const uint8_t code = uint8_t(reply[0]);
    // The answer to an event report switch is an event report that carries
    // no events; one that carries some came on its own.
    if (code == CmdEventReport)
        return uint8_t(request[0]) == CmdEventReport && reply.size() == 3 && Little16(reply, 1) == 0;
    if (IsUnsolicited(reply))
        return false;
    if (code == CmdBadSpcMode)
        return true;
    if (code != uint8_t(request[0])) {
        // An error reply echoes as much of its request as it holds.
        const QByteArrayView echo = reply.sliced(1);
        const qsizetype shared = std::min(echo.size(), request.size());
        return !ErrorReplyText(code).isEmpty() && request.first(shared) == echo.first(shared);
    }
    if (code == CmdSubsystem) {
        // The same subsystem and command, and for an NV item by
        // subscription the same item and subscription.
        const qsizetype shared = request.size() >= 8 && uint8_t(request[1]) == SubsysNv ? 8 : 4;
        if (reply.size() < shared || request.size() < shared || reply.first(shared) != request.first(shared))
            return false;
        return !indexed || shared < 8 || (reply.size() > 8 && reply[8] == request[8]);
    }
    // A block of the roaming list: the same sequence number.
    if (code == CmdPrListRead)
        return reply.size() < 5 || request.size() < 2 || reply[4] == request[1];
    if ((code != CmdNvRead && code != CmdNvWrite) || reply.size() < 4)
        return true;
    return Little16(reply, 1) == Little16(request, 1) && (!indexed || reply[3] == request[3]);
}

NvItemReply ParseNvItem(QByteArrayView request, QByteArrayView reply)
{
    CheckReply(request, reply, NvPacketSize);
    NvItemReply answer;
    answer.item = Little16(reply, 1);
    if (answer.item != Little16(request, 1))
        throw TessalyError(errWrongReply, QStringLiteral("The handset answered for NV item %1 when asked for NV item %2.")
                                              .arg(answer.item)
                                              .arg(Little16(request, 1)));
    answer.data = NvDataAt(reply, 3);
    answer.status = Little16(reply, 131);
    return answer;
}

uint32_t ParseEsn(QByteArrayView request, QByteArrayView reply)
{
    CheckReply(request, reply, 5);
    return Little32(reply, 1);
}

bool ParseSpc(QByteArrayView request, QByteArrayView reply)
{
    CheckReply(request, reply, 2);
    return reply[1] == 1;
}

// An NV item reply has its request's layout (libqcdm's DMCmdNVReadWrite):
// the command, the item (16 bits), 128 data bytes, the status (16 bits).
QByteArray EncodeNvItemReply(Command command, const NvItemReply& reply)
{
    QByteArray packet = BareRequest(command);
    packet.reserve(NvPacketSize);
    AppendLittle16(packet, reply.item);
    AppendNvData(packet, reply.data);
    AppendLittle16(packet, reply.status);
    return packet;
}

// The ESN reply as libqcdm's DMCmdEsnRsp lays it out: the command, then the
// ESN, 32 bits little-endian.
QByteArray EncodeEsnReply(uint32_t esn)
{
    QByteArray packet = BareRequest(CmdEsn);
    AppendLittle32(packet, esn);
    return packet;
}

// The SPC reply as libopenpst's QcdmSpcResponse lays it out: the command,
// then one status byte, 1 when the code was taken.
QByteArray EncodeSpcReply(bool taken)
{
    QByteArray packet = BareRequest(CmdSpc);
    packet.append(char(taken ? 1 : 0));
    return packet;
}

// The code 0x42 alone, as libqcdm names it (DIAG_CMD_BAD_SPC_MODE).
QByteArray SpcLockedReply()
{
    return BareRequest(CmdBadSpcMode);
}

} // namespace tessaly::link
