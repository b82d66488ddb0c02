// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Truncate.h"

#include <algorithm>

/// Truncates a position or size in pixels toward zero. Results are limited to plus or minus 2 to
/// the power of 29, far beyond any picture, so that the sum or difference of two results fits into
/// an int. Not-a-number gives 0.
inline int WholePixels(double pixels)
{
    constexpr double limit = 1 << 29;
    return pixels == pixels ? static_cast<int>(std::clamp(pixels, -limit, limit)) : 0;
}
