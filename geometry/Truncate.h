// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Truncate.h"

#include <algorithm>

/// A pixel position or size without its fraction. What no picture has is brought near enough that
/// sums and differences of two stay in range.
inline int WholePixels(double pixels)
{
    constexpr double limit = 1 << 29;
    return pixels == pixels ? static_cast<int>(std::clamp(pixels, -limit, limit)) : 0;
}
