// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvane
{

/// The characters of a text that is known to be UTF-8 and within the limits.
struct CheckedText
{
    std::u32string characters;
    /// The byte at which each character begins, and at the end the number of all bytes.
    std::vector<std::uint32_t> offsets;
};

/// Reads a text. Throws Error for the first byte that is not UTF-8, for more than
/// limits::maxTextBytes bytes, and for more than limits::maxClusterMarks combining marks in a row.
/// The Error's place has the offset in bytes.
ORVANE_API CheckedText ReadUtf8(std::string_view utf8);

/// The first combining mark. Characters before it never belong to the one before them.
constexpr char32_t firstMark = 0x300;

/// The end of the characters that belong together with the one at \p begin: a letter with its
/// marks, joined pictures, the parts of a Hangul syllable, the two letters of a flag.
ORVANE_API std::size_t ClusterEnd(std::u32string_view text, std::size_t begin);

/// Whether a character is white space that hangs beyond the end of a line: a space or a tab, but no
/// space that keeps lines together.
ORVANE_API bool HangsAtLineEnd(char32_t character);

/// A character for a message, as U+0E01.
ORVANE_API std::string CodePointName(char32_t character);

}  // namespace orvane
