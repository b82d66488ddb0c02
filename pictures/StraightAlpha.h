// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

namespace orvane
{

/// The straight colour of a pixel whose colour is multiplied by its alpha: color * most / alpha,
/// rounded to the nearest number and a half upwards, and at most \p most. An invisible pixel, whose
/// alpha is 0, is black.
/// \param alpha in the unit of \p color, at most 65535
/// \param most the largest number of a channel, 255 or 65535
constexpr unsigned StraightColor(unsigned color, unsigned alpha, unsigned most)
{
    const unsigned long long rounded =
        alpha == 0 ? 0 : (2ULL * color * most + alpha) / (2ULL * alpha);
    return static_cast<unsigned>(std::min<unsigned long long>(most, rounded));
}

}  // namespace orvane
