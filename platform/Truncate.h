// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <limits>

/// Conversion of real numbers to whole ones, defined for every value. Fractions are dropped.
/// Numbers beyond 64 bits give the nearest 64-bit number, and not-a-number gives 0. A result of
/// fewer bits keeps the low bits.

inline std::int64_t TruncateToInt64(double value)
{
    // 2 to the 63rd. This and larger doubles do not fit 64 bits, and doubles below -(2 to the 63rd)
    // do not fit either.
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
