// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "LogSource.h"

#include "link/Cdma1xLogItems.h"
#include "link/DiagLogPackets.h"
#include "link/DiagTimeStamp.h"

namespace emu {

using namespace tessaly;

namespace {

constexpr uint16_t PilotPn = 168;
constexpr uint16_t RegistrationZone = 12;
constexpr uint16_t BaseId = 0x1C2D;
constexpr uint8_t ConfigSequence = 5;
constexpr uint8_t AccessSequence = 9;
constexpr uint8_t ProtocolRevision = 6; // IS-2000 release 0
constexpr uint8_t LeastProtocolRevision = 3;

} // namespace

LogSource::LogSource(std::chrono::milliseconds pace, Clock::time_point start)
    : m_pace(pace)
    , m_next(start + pace / 2)
{
}

std::vector<QByteArray> LogSource::due(Clock::time_point now, const HandsetAnswers& handset)
{
    if (now < m_next)
        return {};
    m_next = now + m_pace;
    const bool acquired = handset.acquisitions() != m_seenAcquisitions;
    m_seenAcquisitions = handset.acquisitions();
    if (!handset.online())
        return {};
    const HandsetProfile& profile = handset.profile();
    std::vector<link::LogPacket> packets;
    if (acquired && handset.logging(link::LogSyncChannelMessage))
        packets.push_back({0, link::LogSyncChannelMessage, 0,
                           link::EncodeSyncChannelMessage({ProtocolRevision, LeastProtocolRevision, profile.sid,
                                                           profile.nid, PilotPn})});
    if (handset.logging(link::LogPagingChannelMessage)) {
        // Overhead messages between the general pages of its slots.
        const link::SystemParameters parameters{PilotPn, ConfigSequence, profile.sid,
                                                profile.nid, RegistrationZone, BaseId};
        const QByteArray message = m_step++ % 3 == 2 ? link::EncodeSystemParameters(parameters)
                                                     : link::EncodeGeneralPage({ConfigSequence, AccessSequence});
        packets.push_back({0, link::LogPagingChannelMessage, 0, message});
    }
    const uint64_t stamp = link::DiagTimeStamp(link::DiagClock::now());
    std::vector<QByteArray> sent;
    for (size_t i = 0; i < packets.size(); ++i) {
        packets[i].pending = uint8_t(packets.size() - 1 - i);
        packets[i].time = stamp + i;
        sent.push_back(link::EncodeLogPacket(packets[i]));
    }
    return sent;
}

} // namespace emu
