// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The event reports a CDMA handset sends on its own while reporting is on,
// at a handset's pace: idle on its paging channel it wakes for its slot,
// hears pages and overhead messages, now and then hands off to the other
// pilot it hears or registers again; a change of operating mode is told as
// it happens, with the power down or the acquisition and power-up
// registration that go with it. Nothing while reporting is off, and a mode
// changed meanwhile is not told late.
#pragma once

#include "HandsetAnswers.h"

#include "link/DiagEvents.h"

#include <QByteArray>

#include <chrono>
#include <optional>
#include <vector>

namespace emu {

class EventSource {
public:
    using Clock = std::chrono::steady_clock;

    // A report every `pace`, the first a pace from `start`.
    EventSource(std::chrono::milliseconds pace, Clock::time_point start);

    // When the next report falls due.
    Clock::time_point nextAt() const { return m_next; }
    // The report due at `now` from `handset`, if one is due and reporting is
    // on; the next falls due a pace later.
    std::optional<QByteArray> due(Clock::time_point now, const HandsetAnswers& handset);
    // The next report at once, out of turn: as the --events fault sends one
    // before a reply. Nothing while reporting is off.
    std::optional<QByteArray> now(const HandsetAnswers& handset);

private:
    std::vector<tessaly::link::DiagEvent> nextEvents(const HandsetAnswers& handset);

    std::chrono::milliseconds m_pace;
    Clock::time_point m_next;
    unsigned m_step = 0;
    unsigned m_seenModeChanges = 0; // the handset's counts, as last told
    unsigned m_seenAcquisitions = 0;
    bool m_otherPilot = false; // which of its two pilots the handset idles on
};

} // namespace emu
