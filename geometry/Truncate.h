// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Truncate.h"

#include <algorithm>

/// A position or size in pixels without its fraction. Results are limited to plus or minus 2 to the
/// 29th, far beyond any picture, so that the sum or difference of two results fits an int.
/// Not-a-number gives 0.
inline int WholePixels(double pixels)
{
    constexpr double limit = 1 << 29;
    return pixels == pixels ? static_cast<int>(std::clamp(pixels, -limit, limit)) : 0;
}
