// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Truncate.h"

#include <algorithm>

/// A pixel position or size without its fraction. Positions that no picture has are limited, so
/// that sums and differences of two of them stay in range.
inline int WholePixels(double pixels)
{
    constexpr double limit = 1 << 29;
    return pixels == pixels ? static_cast<int>(std::clamp(pixels, -limit, limit)) : 0;
}
