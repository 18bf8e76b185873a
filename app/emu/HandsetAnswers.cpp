// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "HandsetAnswers.h"

#include "link/DiagControl.h"
#include "link/DiagIdentity.h"
#include "link/DiagRoamingList.h"
#include "link/DiagSubsystem.h"
#include "link/Efs2.h"
#include "link/PacketBytes.h"
#include "model/Catalogue.h"

namespace emu {

using namespace tessaly;
using link::Command;
using link::ControlMode;
using link::ErrorReply;

namespace {

// The log items the handset knows, by equipment id: 1 is CDMA, the one a
// service tool asks for.
constexpr uint32_t LastLogItems[16] = {0, 0x5FF, 0, 0, 0x2FF, 0, 0, 0x4FF, 0, 0, 0, 0, 0, 0, 0, 0};
constexpr uint16_t ExtendedLogBits = 0x600;
// The subsystem ids of its messages.
constexpr link::SsidRange MessageRanges[] = {{0, 120}, {500, 520}};

bool KnownSsid(uint16_t ssid)
{
    for (const link::SsidRange& range : MessageRanges)
        if (ssid >= range.first && ssid <= range.last)
            return true;
    return false;
}

} // namespace

HandsetAnswers::HandsetAnswers(model::NvMemory& memory, HandsetProfile profile, QString spc, ItemFaults faults,
                               EfsTree& files)
    : m_memory(memory)
    , m_profile(std::move(profile))
    , m_spc(spc.isEmpty() ? QStringLiteral("000000") : spc)
    , m_faults(faults)
    , m_files(files)
    , m_lockable(!spc.isEmpty())
    , m_locked(m_lockable)
    , m_mode(uint16_t(ControlMode::Online))
    , m_indexed(model::Catalogue::BuiltIn().indexedItems())
{
    m_extendedLogMask.bits = ExtendedLogBits;
}

std::optional<QByteArray> HandsetAnswers::answer(const QByteArray& request)
{
    if (silent())
        return {};
    switch (uint8_t(request[0])) {
    case link::CmdVersion:
        return link::EncodeVersion(m_profile.version);
    case link::CmdEsn:
        return link::EncodeEsnReply(esn());
    case link::CmdExtBuildId:
        if (!m_profile.hasBuildId)
            break;
        return link::EncodeExtendedBuildId(m_profile.build);
    case link::CmdDiagVersion:
        return link::EncodeDiagVersion(m_profile.diagVersion);
    case link::CmdStatus: {
        link::StationStatus status;
        status.esn = esn();
        status.rfMode = 1; // CDMA
        status.cdmaRxState = m_mode == uint16_t(ControlMode::Online) ? 3 : 0; // idle, or not receiving
        status.channel = m_profile.channel;
        status.sid = m_profile.sid;
        status.nid = m_profile.nid;
        return link::EncodeStatus(status);
    }
    case link::CmdSpc:
        if (request.size() != 7)
            return ErrorReply(link::CmdBadLength, request);
        {
            const bool right = request.mid(1) == m_spc.toLatin1();
            m_locked = m_locked && !right;
            return link::EncodeSpcReply(right);
        }
    case link::CmdPassword:
        if (request.size() != link::PasswordRequestSize)
            return ErrorReply(link::CmdBadLength, request);
        return link::EncodePasswordReply(request.mid(1).toHex().compare(m_profile.password.toLatin1(),
                                                                        Qt::CaseInsensitive) == 0);
    case link::CmdNvRead:
    case link::CmdNvWrite:
        return nvItem(request);
    case link::CmdControl:
        return control(request);
    case link::CmdPrListRead:
        return m_roamingList.read(request);
    case link::CmdPrListWrite:
        if (m_locked)
            return link::SpcLockedReply();
        return m_roamingList.write(request);
    case link::CmdSubsystem:
        if (!m_profile.hasSubsystems)
            break;
        return subsystem(request);
    case link::CmdEventReport:
        if (link::EventReportSwitch(request))
            return link::EncodeEventReportReply();
        return ErrorReply(link::CmdBadLength, request);
    case link::CmdLogConfig:
        return logConfig(request);
    case link::CmdExtLogMask:
        if (const std::optional<link::ExtendedLogMask> mask = link::ReadExtendedLogMask(request)) {
            if (mask->bits > 0) // no bits asks for the mask as it is
                m_extendedLogMask = {std::min(mask->bits, ExtendedLogBits), mask->mask.left((ExtendedLogBits + 7) / 8)};
            return link::EncodeExtendedLogMask(m_extendedLogMask);
        }
        return ErrorReply(link::CmdBadLength, request);
    case link::CmdMessageConfig:
        return messageConfig(request);
    default:
        break;
    }
    return ErrorReply(link::CmdBadCommand, request);
}

model::NvStatus HandsetAnswers::exchangeItem(bool write, uint16_t item, model::NvData& data)
{
    const model::NvAddress address{item, m_indexed.count(item) ? int16_t(data[0]) : int16_t(-1)};
    if (item == model::MeidItem && !m_profile.hasMeid) {
        data.fill(0);
        return model::NvStatus::NotValid;
    }
    model::NvData kept{};
    model::NvStatus status = m_memory.read(address, kept);
    if (!write && item == m_faults.busy && (m_faults.busyReads == 0 || ++m_busyReadsSeen <= m_faults.busyReads))
        return model::NvStatus::Busy; // the reply carries what was sent
    if (!write) {
        data = kept;
        if (address.index >= 0)
            data[0] = uint8_t(address.index); // an indexed item's reply carries its index
    } else if (item == model::EsnItem) {
        status = model::NvStatus::ReadOnly;
    } else if (status != model::NvStatus::ReadOnly && status != model::NvStatus::NotValid) {
        if (item == m_faults.garbled)
            data[data.size() - 1] ^= 0x5A;
        status = m_memory.write(address, data);
        m_memory.commit();
    }
    return status;
}

// The ESN as the handset keeps it: the first four bytes of its item,
// little-endian.
uint32_t HandsetAnswers::esn()
{
    model::NvData esn{};
    m_memory.read({model::EsnItem, -1}, esn);
    return link::Little32(QByteArrayView(reinterpret_cast<const char*>(esn.data()), 4), 0);
}

QByteArray HandsetAnswers::nvItem(const QByteArray& request)
{
    if (request.size() != link::NvPacketSize)
        return ErrorReply(link::CmdBadLength, request);
    const bool write = uint8_t(request[0]) == link::CmdNvWrite;
    if (write && m_locked)
        return link::SpcLockedReply();
    link::NvItemReply reply;
    reply.item = link::Little16(request, 1);
    // Byte by byte: GCC's bounds check under the sanitizers takes a pointer
    // into the request for one into QByteArray's shared empty array.
    for (size_t i = 0; i < reply.data.size(); ++i)
        reply.data[i] = uint8_t(request.at(qsizetype(i) + 3));
    reply.status = uint16_t(exchangeItem(write, reply.item, reply.data));
    return link::EncodeNvItemReply(Command(request[0]), reply);
}

QByteArray HandsetAnswers::subscriptionNv(const QByteArray& request)
{
    std::optional<link::SubscriptionNvItem> item = link::ReadSubscriptionNv(request);
    if (!item)
        return ErrorReply(link::CmdBadLength, request);
    const auto command = link::SubsystemCommand(link::ReadSubsystemHeader(request)->command);
    if (command == link::NvWriteBySubscription && m_locked)
        return link::SpcLockedReply();
    // Items are kept for the subscriptions the handset has; the others do not exist.
    item->status = item->subscription < m_profile.subscriptions
        ? uint16_t(exchangeItem(command == link::NvWriteBySubscription, item->item, item->data))
        : uint16_t(model::NvStatus::BadParameter);
    return link::EncodeSubscriptionNv(command, *item);
}

QByteArray HandsetAnswers::subsystem(const QByteArray& request)
{
    const std::optional<link::SubsystemHeader> header = link::ReadSubsystemHeader(request);
    if (!header)
        return ErrorReply(link::CmdBadLength, request);
    if (header->subsystem == link::SubsysNv
        && (header->command == link::NvReadBySubscription || header->command == link::NvWriteBySubscription))
        return subscriptionNv(request);
    if (header->subsystem == link::SubsysEfs)
        return m_files.answer(request);
    if (header->subsystem == link::SubsysCallManager && header->command == link::CallManagerStateInfo) {
        link::CallManagerState state;
        // Idle; the operating mode as the call manager numbers it (online 5,
        // offline CDMA 4, offline analog 3, low power 6); CDMA service.
        state.operatingMode = m_mode == uint16_t(ControlMode::Online) ? 5
            : m_mode == uint16_t(ControlMode::OfflineDigital)         ? 4
            : m_mode == uint16_t(ControlMode::OfflineAnalog)          ? 3
                                                                       : 6;
        state.systemMode = m_mode == uint16_t(ControlMode::Online) ? 2 : 0;
        state.modePreference = 4; // automatic
        state.bandPreference = 0x3FFFFFFF;
        state.roamPreference = 0xFF;
        state.serviceDomainPreference = 2;
        return link::EncodeCallManagerState(state);
    }
    return ErrorReply(link::CmdBadCommand, request);
}

QByteArray HandsetAnswers::control(const QByteArray& request)
{
    const std::optional<uint16_t> mode = link::ControlModeOf(request);
    if (!mode)
        return ErrorReply(link::CmdBadLength, request);
    if (m_locked)
        return link::SpcLockedReply();
    const bool offline = m_mode == uint16_t(ControlMode::OfflineAnalog) || m_mode == uint16_t(ControlMode::OfflineDigital);
    switch (ControlMode(*mode)) {
    case ControlMode::OfflineAnalog:
    case ControlMode::OfflineDigital:
    case ControlMode::Online:
    case ControlMode::LowPower:
        m_mode = *mode;
        return link::ControlRequest(ControlMode(*mode)); // taken: the request echoed
    case ControlMode::Reset:
        // A handset resets only from offline; it starts again online and
        // locked, with its memory as it was.
        if (!offline)
            return ErrorReply(link::CmdBadMode, request);
        m_mode = uint16_t(ControlMode::Online);
        m_locked = m_lockable;
        m_silentUntil = Clock::now() + ResetTime;
        return link::ControlRequest(ControlMode::Reset);
    default:
        return ErrorReply(link::CmdBadParameter, request);
    }
}

QByteArray HandsetAnswers::logConfig(const QByteArray& request)
{
    std::optional<link::LogConfig> config = link::ReadLogConfigRequest(request);
    if (!config)
        return ErrorReply(link::CmdBadLength, request);
    const uint32_t equipment = config->mask.equipment;
    switch (config->operation) {
    case link::LogDisable:
        m_logMasks.clear();
        break;
    case link::LogRetrieveRanges:
        std::copy(std::begin(LastLogItems), std::end(LastLogItems), config->lastItems.begin());
        break;
    case link::LogSetMask:
    case link::LogGetMask:
        if (equipment >= 16 || LastLogItems[equipment] == 0) {
            config->status = 1; // an equipment id it does not have
            config->mask.items = 0;
            config->mask.bits.clear();
            break;
        }
        if (config->operation == link::LogSetMask) {
            config->mask.items = std::min(config->mask.items, LastLogItems[equipment] + 1);
            m_logMasks[equipment] = config->mask;
        }
        if (const auto kept = m_logMasks.find(equipment); kept != m_logMasks.end())
            config->mask = kept->second;
        else
            config->mask = {equipment, LastLogItems[equipment] + 1, {}};
        break;
    default:
        return ErrorReply(link::CmdBadParameter, request);
    }
    return link::EncodeLogConfig(*config);
}

QByteArray HandsetAnswers::messageConfig(const QByteArray& request)
{
    std::optional<link::MessageConfig> config = link::ReadMessageConfigRequest(request);
    if (!config)
        return ErrorReply(link::CmdBadParameter, request);
    switch (config->operation) {
    case link::MsgRetrieveRanges:
        config->ranges.assign(std::begin(MessageRanges), std::end(MessageRanges));
        break;
    case link::MsgSetAllMasks:
        for (const link::SsidRange& range : MessageRanges)
            for (uint32_t ssid = range.first; ssid <= range.last; ++ssid)
                m_messageMasks[uint16_t(ssid)] = config->masks.front();
        break;
    case link::MsgSetMasks:
    case link::MsgRetrieveMasks:
    case link::MsgRetrieveBuildMasks: {
        const bool known = KnownSsid(config->range.first) && KnownSsid(config->range.last);
        config->status = known ? 1 : 0;
        std::vector<uint32_t> masks;
        for (uint32_t ssid = config->range.first; known && ssid <= config->range.last; ++ssid) {
            if (config->operation == link::MsgSetMasks)
                m_messageMasks[uint16_t(ssid)] = config->masks[ssid - config->range.first];
            // Every level is built in; the run-time mask is as it was set.
            masks.push_back(config->operation == link::MsgRetrieveBuildMasks ? 0x1F : m_messageMasks[uint16_t(ssid)]);
        }
        config->masks = masks;
        break;
    }
    }
    return link::EncodeMessageConfig(*config);
}

} // namespace emu
