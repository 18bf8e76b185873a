// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// Whole-number conversions with the platform's overflow rule: a value that
// does not fit its width is a run-time error, never a silent wrap.
#pragma once

#include "platform/RuntimeError.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace tessaly {

[[noreturn]] inline void RaiseOverflow()
{
    Raise(errOverflow, QStringLiteral("Overflow"));
}

inline int16_t ToInt16(int64_t value)
{
    if (value < std::numeric_limits<int16_t>::min() || value > std::numeric_limits<int16_t>::max())
        RaiseOverflow();
    return int16_t(value);
}

inline int32_t ToInt32(int64_t value)
{
    if (value < std::numeric_limits<int32_t>::min() || value > std::numeric_limits<int32_t>::max())
        RaiseOverflow();
    return int32_t(value);
}

// Rounds to the nearest whole number, halves to the even neighbour, as the
// platform's conversions do: 2.5 gives 2, 3.5 gives 4.
inline int16_t RoundToInt16(double value)
{
    const double rounded = std::nearbyint(value);
    if (!(rounded >= std::numeric_limits<int16_t>::min() && rounded <= std::numeric_limits<int16_t>::max()))
        RaiseOverflow();
    return int16_t(rounded);
}

inline int32_t RoundToInt32(double value)
{
    const double rounded = std::nearbyint(value);
    if (!(rounded >= std::numeric_limits<int32_t>::min() && rounded <= std::numeric_limits<int32_t>::max()))
        RaiseOverflow();
    return int32_t(rounded);
}

} // namespace tessaly
