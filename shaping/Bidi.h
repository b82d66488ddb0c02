// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The order of characters that are written in two directions (Unicode Standard Annex #9), found by
/// FriBidi. Directions nest to 125 levels; deeper ones have no effect, as the annex says.

#include "platform/Export.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace orvane
{

enum class TextDirection
{
    Auto,  ///< that of the first letter with a direction; left to right without one
    LeftToRight,
    RightToLeft
};

/// The embedding levels of a paragraph: even levels run to the right, odd ones to the left.
struct BidiLevels
{
    std::uint8_t paragraph = 0;
    std::vector<std::uint8_t> ofCharacters;
};

/// Finds the levels of a paragraph, which has no line ends but at its end. Throws std::bad_alloc.
ORVANE_API BidiLevels FindLevels(std::u32string_view paragraph, TextDirection direction);

/// The first of the characters that end a line and have the paragraph's level whatever level they
/// had: white space and marks of direction. \p end when there are none.
ORVANE_API std::size_t LineEndSpace(std::u32string_view paragraph, std::size_t begin,
                                    std::size_t end);

/// The order from left to right of runs with these levels.
ORVANE_API std::vector<std::size_t> VisualOrder(const std::vector<std::uint8_t>& levels);

/// The same for a line of characters. The levels are those of FindLevels.
ORVANE_API std::vector<std::size_t> VisualOrderOfLine(std::u32string_view paragraph,
                                                      const BidiLevels& levels, std::size_t begin,
                                                      std::size_t end);

}  // namespace orvane
