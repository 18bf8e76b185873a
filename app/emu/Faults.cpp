// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later

#include "Faults.h"

namespace emu {

ReplyPlan Faults::planFor(int request)
{
    ReplyPlan plan;
    if (deadAfter > 0 && request > deadAfter) {
        plan.silent = true;
        return plan;
    }
    plan.delay = std::chrono::milliseconds(request == lateAt ? lateMs : slowMs);
    plan.eventFirst = events;
    plan.badCrc = badCrcEvery > 0 && ++replies % badCrcEvery == 0;
    return plan;
}

} // namespace emu
