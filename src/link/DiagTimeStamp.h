// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The handset's 64-bit time stamp, which its event reports and log packets
// carry: a count of 1.25 ms ticks since the GPS epoch (6 January 1980,
// 00:00:00) in the upper 48 bits, and the time since the last tick in
// 1/32 chip units (1.2288 Mcps) in the lower 16, as osmo-qcdiag's protocol
// notes describe it.
#pragma once

#include <chrono>
#include <cstdint>

namespace tessaly::link {

using DiagClock = std::chrono::system_clock;

// 1.25 ms is 1,536 chips, and so 49,152 units of 1/32 chip.
inline constexpr uint32_t StampUnitsPerTick = 1536 * 32;

// The stamp of `time`, taken as the handset's clock (leap seconds aside).
uint64_t DiagTimeStamp(DiagClock::time_point time);
// The time a stamp stands for, to the microsecond.
DiagClock::time_point TimeOfStamp(uint64_t stamp);

} // namespace tessaly::link
