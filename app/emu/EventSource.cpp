// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "EventSource.h"

#include "link/DiagControl.h"
#include "link/DiagTimeStamp.h"

namespace emu {

using namespace tessaly;
using link::DiagEvent;

namespace {

// The pilots the handset hears, by PN offset, and the paging channel it
// watches.
constexpr uint16_t Pilots[2] = {168, 424};
constexpr uint8_t PagingChannel = 1;
constexpr uint16_t RegistrationZone = 12;
// Registration types (C.S0005 REG_TYPE): timer-based and power-up.
constexpr uint8_t TimerRegistration = 0;
constexpr uint8_t PowerUpRegistration = 1;
// Paging channel message types: system parameters, access parameters,
// general page.
constexpr uint8_t SystemParametersMessage = 0x01;
constexpr uint8_t AccessParametersMessage = 0x02;
constexpr uint8_t GeneralPageMessage = 0x11;

QByteArray Bytes(std::initializer_list<uint8_t> bytes)
{
    QByteArray payload;
    for (uint8_t byte : bytes)
        payload.append(char(byte));
    return payload;
}

QByteArray Little(uint16_t value)
{
    return Bytes({uint8_t(value & 0xFF), uint8_t(value >> 8)});
}

} // namespace

EventSource::EventSource(std::chrono::milliseconds pace, Clock::time_point start)
    : m_pace(pace)
    , m_next(start + pace)
{
}

std::optional<QByteArray> EventSource::due(Clock::time_point now, const HandsetAnswers& handset)
{
    if (now < m_next)
        return {};
    m_next = now + m_pace;
    return this->now(handset);
}

std::optional<QByteArray> EventSource::now(const HandsetAnswers& handset)
{
    if (!handset.reportingEvents()) {
        m_seenModeChanges = handset.modeChanges();
        m_seenAcquisitions = handset.acquisitions();
        return {};
    }
    std::vector<DiagEvent> events = nextEvents(handset);
    if (events.empty())
        return {};
    // The first event carries the full time stamp, the ones after it the
    // short form, as a handset packs the events of one moment.
    const uint64_t stamp = link::DiagTimeStamp(link::DiagClock::now());
    for (size_t i = 0; i < events.size(); ++i) {
        events[i].time = stamp + (uint64_t(i) << 16);
        events[i].shortTime = i > 0;
    }
    return link::EncodeEventReport(events);
}

std::vector<DiagEvent> EventSource::nextEvents(const HandsetAnswers& handset)
{
    const HandsetProfile& profile = handset.profile();
    const uint16_t pilot = Pilots[m_otherPilot ? 1 : 0];
    const uint16_t mode = handset.mode();
    if (handset.modeChanges() != m_seenModeChanges) {
        // The mode it is in now, however many it went through meanwhile.
        m_seenModeChanges = handset.modeChanges();
        const bool acquired = handset.acquisitions() != m_seenAcquisitions;
        m_seenAcquisitions = handset.acquisitions();
        std::vector<DiagEvent> told{{link::EventOperatingModeChange, 0, false, Bytes({uint8_t(mode)})}};
        if (mode == uint16_t(link::ControlMode::LowPower))
            told.push_back({link::EventPowerDown, 0, false, {}});
        if (!handset.online() || !acquired)
            return told;
        // Back online: it finds its system again and registers.
        told.push_back({link::EventPagingChannelAcquired, 0, false, Bytes({PagingChannel}) + Little(pilot)});
        told.push_back({link::EventSidChange, 0, false, Little(profile.sid)});
        told.push_back({link::EventNidChange, 0, false, Little(profile.nid)});
        told.push_back({link::EventCdmaChannelChange, 0, false, Little(profile.channel)});
        told.push_back({link::EventRegistration, 0, false, Bytes({PowerUpRegistration})});
        return told;
    }
    if (!handset.online())
        return {};
    const unsigned step = m_step++;
    if (step % 40 == 39)
        return {{link::EventRegistration, 0, false, Bytes({TimerRegistration})},
                {link::EventRegistrationZone, 0, false, Little(RegistrationZone)}};
    if (step % 12 == 7) {
        m_otherPilot = !m_otherPilot;
        return {{link::EventIdleHandoff, 0, false, Little(Pilots[m_otherPilot ? 1 : 0])}};
    }
    switch (step % 4) {
    case 0: // its slot: awake, a page for others, asleep again
        return {{link::EventSlottedMode, 0, false, Bytes({0})},
                {link::EventMessageReceived, 0, false, Bytes({PagingChannel, GeneralPageMessage})},
                {link::EventSlottedMode, 0, false, Bytes({1})}};
    case 1:
        return {{link::EventQuickPagingInUse, 0, false, Bytes({1})}};
    case 2:
        return {{link::EventMessageReceived, 0, false, Bytes({PagingChannel, SystemParametersMessage})}};
    default:
        return {{link::EventMessageReceived, 0, false, Bytes({PagingChannel, AccessParametersMessage})}};
    }
}

} // namespace emu
