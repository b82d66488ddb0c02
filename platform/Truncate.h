// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <limits>

/// The one way from a real number to a whole one: toward zero, defined for every value. What does
/// not fit 64 bits is clamped to them, not-a-number gives 0, and a narrower result keeps the low
/// bits.

inline std::int64_t TruncateToInt64(double value)
{
    // 2 to the 63rd, the first double beyond the range on both sides.
    constexpr double limit = 9223372036854775808.0;
    if (value >= limit)
    {
        return std::numeric_limits<std::int64_t>::max();
    }
    if (value < -limit)
    {
        return std::numeric_limits<std::int64_t>::min();
    }
    return value == value ? static_cast<std::int64_t>(value) : 0;
}

inline std::int32_t TruncateToLong(double value)
{
    return static_cast<std::int32_t>(TruncateToInt64(value));
}

inline std::int16_t TruncateToShort(double value)
{
    return static_cast<std::int16_t>(TruncateToInt64(value));
}
