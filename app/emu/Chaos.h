// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// A chaos schedule: the faults of Faults.h mixed at random from a seed, so
// that a long run meets them in every order and a failing run can be made
// again with its seed. Most replies go out untouched; some are slow, a few
// come after the client's reply time, carry a broken CRC, follow an event
// report or give other bytes for an NV item than the handset keeps; now and
// then the line goes dead for a spell and comes back.
#pragma once

#include "Faults.h"

#include <chrono>
#include <cstdint>
#include <random>

namespace emu {

class ChaosSchedule {
public:
    using Clock = std::chrono::steady_clock;

    explicit ChaosSchedule(uint32_t seed);

    // The plan for the next reply, at `now`.
    ReplyPlan next(Clock::time_point now);

private:
    std::mt19937 m_random;
    Clock::time_point m_deadUntil{};
};

} // namespace emu
