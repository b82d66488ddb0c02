// SPDX-License-Identifier: MIT
#include "extrude/ExtrusionData.h"

#include <bit>
#include <cstdint>

namespace
{
// A rounded edge is a quarter circle. The middle of this arc, at 45 degrees, lies behind the face
// by 1 - cos 45 degrees = 0.2929 of the edge's width. The value is given by its bits because
// several floats print as 0.2929.
constexpr float middleLevel = std::bit_cast<float>(std::uint32_t{0x3E95F6FE});
}  // namespace

int ExtrusionData::CalculateHeights()
{
    const double width = bevelDepth;
    const double depth = scale.z;
    backZ = static_cast<float>(-depth);
    backBevelZ = static_cast<float>(width - depth);
    backRoundZ = static_cast<float>(middleLevel * width - depth);
    frontZ = 0;
    frontBevelZ = static_cast<float>(-width);
    frontRoundZ = static_cast<float>(-middleLevel * width);
    return 1;
}
