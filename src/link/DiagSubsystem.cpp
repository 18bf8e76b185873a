// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/DiagSubsystem.h"

#include "link/DiagPackets.h"
#include "link/PacketBytes.h"

#include <tessaly/TessalyError.h>

#include <algorithm>

namespace tessaly::link {

// The header as libqcdm's DMCmdSubsysHeader lays it out: code 0x4B, the
// subsystem id, the subsystem's command (16 bits).
std::optional<SubsystemHeader> ReadSubsystemHeader(QByteArrayView packet)
{
    if (packet.size() < 4 || uint8_t(packet[0]) != CmdSubsystem)
        return {};
    return SubsystemHeader{uint8_t(packet[1]), Little16(packet, 2)};
}

QByteArray SubsystemRequest(Subsystem subsystem, uint16_t command)
{
    QByteArray request(1, char(CmdSubsystem));
    request.append(char(subsystem));
    AppendLittle16(request, command);
    return request;
}

// NV read and write by subscription, subsystem 0x30 commands 1 and 2, as the
// OpenPST tools' NV subsystem request carries them with the subscription
// (context) after the item: header, item, subscription, 128 data bytes,
// status; an indexed item's index is the first data byte, as in a plain NV
// read.
QByteArray EncodeSubscriptionNv(SubsystemCommand command, const SubscriptionNvItem& item)
{
    QByteArray packet = SubsystemRequest(SubsysNv, command);
    AppendLittle16(packet, item.item);
    AppendLittle16(packet, item.subscription);
    AppendNvData(packet, item.data);
    AppendLittle16(packet, item.status);
    return packet;
}

std::optional<SubscriptionNvItem> ReadSubscriptionNv(QByteArrayView packet)
{
    if (packet.size() != SubscriptionNvPacketSize)
        return {};
    SubscriptionNvItem item;
    item.item = Little16(packet, 4);
    item.subscription = Little16(packet, 6);
    item.data = NvDataAt(packet, 8);
    item.status = Little16(packet, 136);
    return item;
}

SubscriptionNvItem ParseSubscriptionNv(QByteArrayView request, QByteArrayView reply)
{
    CheckReply(request, reply, SubscriptionNvPacketSize);
    const std::optional<SubscriptionNvItem> item = ReadSubscriptionNv(reply.first(SubscriptionNvPacketSize));
    if (reply.first(8) != request.first(8))
        throw TessalyError(errWrongReply, QStringLiteral("The handset answered for NV item %1 of subscription %2 "
                                                         "when asked for NV item %3 of subscription %4.")
                                              .arg(item->item)
                                              .arg(item->subscription)
                                              .arg(Little16(request, 4))
                                              .arg(Little16(request, 6)));
    return *item;
}

// The call manager's state as libqcdm's DMCmdSubsysCMStateInfoRsp lays it
// out: the header, then call state, operating mode, system mode, mode,
// band and roaming preferences, service domain preference, acquisition
// order, hybrid preference and network selection mode, 32 bits each.
QByteArray EncodeCallManagerState(const CallManagerState& state)
{
    QByteArray reply = SubsystemRequest(SubsysCallManager, CallManagerStateInfo);
    for (uint32_t field : {state.callState, state.operatingMode, state.systemMode, state.modePreference,
                           state.bandPreference, state.roamPreference, state.serviceDomainPreference,
                           state.acquisitionOrder, state.hybridPreference, state.networkSelection})
        AppendLittle32(reply, field);
    return reply;
}

CallManagerState ParseCallManagerState(QByteArrayView request, QByteArrayView reply)
{
    CheckReply(request, reply, CallManagerStateSize);
    if (reply.first(4) != request.first(4))
        throw TessalyError(errWrongReply, QStringLiteral("The handset answered another subsystem's command."));
    const auto at = [&reply](int field) { return Little32(reply, 4 + field * 4); };
    return {at(0), at(1), at(2), at(3), at(4), at(5), at(6), at(7), at(8), at(9)};
}

} // namespace tessaly::link
