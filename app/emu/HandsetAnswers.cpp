// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "HandsetAnswers.h"

#include "link/DiagControl.h"
#include "link/DiagIdentity.h"
#include "link/DiagLogPackets.h"
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

// NAM 1's directory number and preferred mode, where the catalogue keeps
// them: the status reply's MIN and the call manager's mode preference come
// from them.
constexpr model::NvAddress DirectoryNumber{178, 0};
constexpr model::NvAddress PreferredMode{10, 0};
constexpr uint8_t DigitalOnly = 1; // the preferred mode's choices count from 0

bool BitOf(const QByteArray& bits, uint32_t item)
{
    return qsizetype(item / 8) < bits.size() && (uint8_t(bits[item / 8]) >> (item % 8) & 1);
}

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
                               EfsTree& files, LeftOn leftOn)
    : m_memory(memory)
    , m_profile(std::move(profile))
    , m_spc(spc.isEmpty() ? QStringLiteral("000000") : spc)
    , m_faults(faults)
    , m_files(files)
    , m_lockable(!spc.isEmpty())
    , m_locked(m_lockable)
    , m_mode(uint16_t(ControlMode::Online))
    , m_indexed(model::Catalogue::BuiltIn().indexedItems())
    , m_reportingEvents(leftOn.events)
{
    if (leftOn.logs && m_profile.lastLogItems[1] > 0)
        logMask(1).bits.fill(char(0xFF));
}

bool HandsetAnswers::online() const
{
    return m_mode == uint16_t(ControlMode::Online);
}

bool HandsetAnswers::logging(uint16_t code) const
{
    const auto kept = m_logMasks.find(link::LogEquipment(code));
    return kept != m_logMasks.end() && link::LogItem(code) < kept->second.items
        && BitOf(kept->second.bits, link::LogItem(code));
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
    case link::CmdStatus:
        return link::EncodeStatus(status());
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
        if (const std::optional<bool> on = link::EventReportSwitch(request)) {
            m_reportingEvents = *on;
            return link::EncodeEventReportReply();
        }
        return ErrorReply(link::CmdBadLength, request);
    case link::CmdLogConfig:
        return logConfig(request);
    case link::CmdExtLogMask:
        return extendedLogMask(request);
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
    if (header->subsystem == link::SubsysCallManager && header->command == link::CallManagerStateInfo)
        return callManagerState();
    return ErrorReply(link::CmdBadCommand, request);
}

// The status of a handset idle on its system: on the paging channel while
// online, receiving nothing otherwise; the MIN of NAM 1's directory number.
link::StationStatus HandsetAnswers::status()
{
    link::StationStatus status;
    status.esn = esn();
    status.rfMode = 1; // CDMA
    model::NvData number{};
    m_memory.read(DirectoryNumber, number);
    const QString digits = QString::fromLatin1(reinterpret_cast<const char*>(number.data()) + 1, 10);
    if (const std::optional<link::MobileIdNumber> min = link::MinOfNumber(digits)) {
        status.min1 = min->min1;
        status.min2 = min->min2;
    }
    status.cdmaRxState = online() ? link::RxPagingChannel : link::RxEnteringCdma;
    status.channel = m_profile.channel;
    status.sid = m_profile.sid;
    status.nid = m_profile.nid;
    return status;
}

// The call manager's state in its own codes, as libqcdm names them, and as
// the status reply tells it: no call; the operating mode (online 5, offline
// CDMA 4, offline analog 3, low power 6); CDMA service (system mode 2) while
// online; the mode preference of NAM 1, digital only (1) or automatic (2),
// the handset having no analog mode to prefer.
QByteArray HandsetAnswers::callManagerState()
{
    link::CallManagerState state;
    state.callState = 0;
    state.operatingMode = online()                        ? 5
        : m_mode == uint16_t(ControlMode::OfflineDigital) ? 4
        : m_mode == uint16_t(ControlMode::OfflineAnalog)  ? 3
                                                          : 6;
    state.systemMode = online() ? 2 : 0;
    model::NvData preferred{};
    m_memory.read(PreferredMode, preferred);
    state.modePreference = preferred[1] == DigitalOnly ? 1 : 2;
    state.bandPreference = 0x3FFFFFFF;
    state.roamPreference = 0xFF;
    state.serviceDomainPreference = 2;
    return link::EncodeCallManagerState(state);
}

void HandsetAnswers::changeMode(uint16_t mode)
{
    if (mode == m_mode)
        return;
    ++m_modeChanges;
    if (mode == uint16_t(ControlMode::Online))
        ++m_acquisitions;
    m_mode = mode;
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
        changeMode(*mode);
        return link::ControlRequest(ControlMode(*mode)); // taken: the request echoed
    case ControlMode::Reset:
        // A handset resets only from offline; it starts again online and
        // locked, with its memory as it was and its reports off.
        if (!offline)
            return ErrorReply(link::CmdBadMode, request);
        changeMode(uint16_t(ControlMode::Online));
        m_locked = m_lockable;
        m_reportingEvents = false; // what a tool turned on is off again
        m_logMasks.clear();
        m_silentUntil = Clock::now() + ResetTime;
        return link::ControlRequest(ControlMode::Reset);
    default:
        return ErrorReply(link::CmdBadParameter, request);
    }
}

link::LogMask& HandsetAnswers::logMask(uint32_t equipment)
{
    link::LogMask& mask = m_logMasks[equipment];
    const uint32_t items = m_profile.lastLogItems[equipment] + 1;
    if (mask.items != items)
        mask = {equipment, items, QByteArray(qsizetype((items + 7) / 8), '\0')};
    return mask;
}

// A mask keeps the equipment's whole range whatever a tool sets: the items
// the tool names are set as it says, the others turned off, and the reply
// (to a set or a read) gives the whole range.
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
        config->lastItems = m_profile.lastLogItems;
        break;
    case link::LogSetMask:
    case link::LogGetMask: {
        if (equipment >= 16 || m_profile.lastLogItems[equipment] == 0) {
            config->status = 1; // an equipment id it does not have
            config->mask.items = 0;
            config->mask.bits.clear();
            break;
        }
        link::LogMask& kept = logMask(equipment);
        if (config->operation == link::LogSetMask) {
            kept.bits.fill('\0');
            for (uint32_t item = 0; item < std::min(config->mask.items, kept.items); ++item)
                if (BitOf(config->mask.bits, item))
                    kept.bits[item / 8] = char(uint8_t(kept.bits[item / 8]) | 1 << (item % 8));
        }
        config->mask = kept;
        break;
    }
    default:
        return ErrorReply(link::CmdBadParameter, request);
    }
    return link::EncodeLogConfig(*config);
}

// The extended mask is the 1X equipment's mask by another command: setting
// one sets the other, and no bits asks for it as it is.
QByteArray HandsetAnswers::extendedLogMask(const QByteArray& request)
{
    const std::optional<link::ExtendedLogMask> asked = link::ReadExtendedLogMask(request);
    if (!asked)
        return ErrorReply(link::CmdBadLength, request);
    if (m_profile.lastLogItems[1] == 0)
        return ErrorReply(link::CmdBadCommand, request);
    const QByteArray set = link::LogConfigRequest(link::LogSetMask, {1, asked->bits, asked->mask});
    const link::LogMask& kept = asked->bits > 0 ? link::ParseLogConfig(set, logConfig(set)).mask : logMask(1);
    return link::EncodeExtendedLogMask({uint16_t(kept.items), kept.bits});
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
