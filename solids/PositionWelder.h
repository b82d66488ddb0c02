// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>

namespace orvane
{

/// Numbers positions so that equal ones get the same number, whatever the normals there are. 0 and
/// -0 are equal, and a coordinate that is not a number is equal to itself.
class ORVANE_API PositionWelder
{
public:
    /// The number of a position. Numbers are counted from 0 in the order of first use.
    std::uint32_t NumberOf(const float (&position)[3]);
    std::size_t Count() const { return numbers_.size(); }

private:
    using Bits = std::array<std::uint32_t, 3>;  ///< the coordinates as they lie in memory

    struct Hash
    {
        std::size_t operator()(const Bits& bits) const;
    };

    std::unordered_map<Bits, std::uint32_t, Hash> numbers_;
};

}  // namespace orvane
