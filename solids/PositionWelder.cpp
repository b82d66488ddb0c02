// SPDX-License-Identifier: MIT
#include "solids/PositionWelder.h"

#include <bit>

namespace orvane
{

std::size_t PositionWelder::Hash::operator()(const Bits& bits) const
{
    // Odd factors spread the bits of each coordinate over the whole number.
    const std::uint64_t mixed = bits[0] * std::uint64_t{0x9E3779B97F4A7C15} ^
                                bits[1] * std::uint64_t{0xC2B2AE3D27D4EB4F} ^
                                bits[2] * std::uint64_t{0x165667B19E3779F9};
    return static_cast<std::size_t>(mixed ^ mixed >> 29);
}

std::uint32_t PositionWelder::NumberOf(const float (&position)[3])
{
    Bits bits;
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        bits[axis] = std::bit_cast<std::uint32_t>(position[axis] == 0 ? 0.0f : position[axis]);
    }
    const auto next = static_cast<std::uint32_t>(numbers_.size());
    return numbers_.try_emplace(bits, next).first->second;
}

}  // namespace orvane
