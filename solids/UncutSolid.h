// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace orvane
{

/// A solid that does not have the profile that its node asks for.
struct UncutSolid
{
    /// The index of an area of outlines; of a text, the index of the letter in the bytes, or that
    /// of the first of joined letters.
    std::size_t index = 0;
    int line = 0;            ///< of the letters; the index of the area
    bool isLeftOut = false;  ///< it has no triangles; otherwise its edges are square
    std::string problem;     ///< why
};

/// A letter that is left out because the outline of one of its glyphs cannot be read.
struct UnreadLetter
{
    std::string letter;  ///< in UTF-8
    std::string font;    ///< its full name in UTF-8
};

}  // namespace orvane
