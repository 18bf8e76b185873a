// Whole-number conversions with the platform's overflow rule: a value that
// does not fit its width is a run-time error, never a silent wrap.
#pragma once

#include "platform/RuntimeError.h"

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

} // namespace tessaly
