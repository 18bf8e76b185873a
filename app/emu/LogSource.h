// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The log packets a CDMA handset sends on its own for the 1X codes its log
// masks turn on, at a handset's pace: each paging channel message it hears
// while idle online (overhead messages and general pages), and the sync
// channel message when it acquires its system on coming online. Nothing for
// a code the masks leave off.
#pragma once

#include "HandsetAnswers.h"

#include <QByteArray>

#include <chrono>
#include <vector>

namespace emu {

class LogSource {
public:
    using Clock = std::chrono::steady_clock;

    // A packet every `pace`, the first half a pace from `start`, between
    // the event reports.
    LogSource(std::chrono::milliseconds pace, Clock::time_point start);

    Clock::time_point nextAt() const { return m_next; }
    // The packets due at `now` from `handset`, in the order they go out.
    std::vector<QByteArray> due(Clock::time_point now, const HandsetAnswers& handset);

private:
    std::chrono::milliseconds m_pace;
    Clock::time_point m_next;
    unsigned m_step = 0;
    unsigned m_seenAcquisitions = 0; // the handset's count, as last logged
};

} // namespace emu
