// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "Chaos.h"

namespace emu {

ChaosSchedule::ChaosSchedule(uint32_t seed)
    : m_random(seed)
{
}

ReplyPlan ChaosSchedule::next(Clock::time_point now)
{
    ReplyPlan plan;
    if (now < m_deadUntil) {
        plan.silent = true;
        return plan;
    }
    const auto between = [this](int least, int most) { return std::uniform_int_distribution<int>(least, most)(m_random); };
    // One draw in a thousand picks the fault; the rest of the range is a
    // reply as it should be.
    const int draw = between(0, 999);
    if (draw < 1) {
        m_deadUntil = now + std::chrono::milliseconds(between(800, 2500));
        plan.silent = true;
    } else if (draw < 11) {
        plan.delay = std::chrono::milliseconds(between(450, 750)); // past a short reply time, within its second
    } else if (draw < 90) {
        plan.delay = std::chrono::milliseconds(between(5, 120));
    } else if (draw < 130) {
        plan.badCrc = true;
    } else if (draw < 180) {
        plan.eventFirst = true;
    } else if (draw < 195) {
        plan.garbledRead = true;
    }
    return plan;
}

} // namespace emu
