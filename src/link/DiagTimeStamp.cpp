// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "link/DiagTimeStamp.h"

namespace tessaly::link {

namespace {

// The GPS epoch in the system clock's own count: 3,657 days after 1970.
constexpr std::chrono::seconds GpsEpoch{315964800};

} // namespace

uint64_t DiagTimeStamp(DiagClock::time_point time)
{
    const auto since = std::chrono::duration_cast<std::chrono::microseconds>(time.time_since_epoch() - GpsEpoch);
    const uint64_t micros = uint64_t(std::max<int64_t>(0, since.count()));
    const uint64_t ticks = micros / 1250;
    const uint64_t units = (micros % 1250) * StampUnitsPerTick / 1250;
    return ticks << 16 | units;
}

DiagClock::time_point TimeOfStamp(uint64_t stamp)
{
    const uint64_t micros
        = (stamp >> 16) * 1250 + ((stamp & 0xFFFF) * 1250 + StampUnitsPerTick / 2) / StampUnitsPerTick;
    return DiagClock::time_point(GpsEpoch + std::chrono::microseconds(micros));
}

} // namespace tessaly::link
