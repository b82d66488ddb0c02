// SPDX-License-Identifier: MIT
#include "extrude/ExtrusionData.h"

#include <bit>
#include <cstdint>

namespace
{
// 1 - cos 45 degrees to four places: the middle ring lies on the quarter circle of the edge. The
// bits, because other floats print the same.
constexpr float kRoundRing = std::bit_cast<float>(std::uint32_t{0x3E95F6FE});
}  // namespace

int ExtrusionData::CalculateHeights()
{
    const double width = bevelDepth;
    const double depth = scale.z;
    backZ = static_cast<float>(-depth);
    backBevelZ = static_cast<float>(width - depth);
    backRoundZ = static_cast<float>(kRoundRing * width - depth);
    frontZ = 0;
    frontBevelZ = static_cast<float>(-width);
    frontRoundZ = static_cast<float>(-kRoundRing * width);
    return 1;
}
