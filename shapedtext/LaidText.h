// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "shapedtext/GlyphSlots.h"
#include "shapedtext/ShapedTextSettings.h"
#include "shapedtext/TextFonts.h"
#include "shaping/TextLayout.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvane
{

class PathLine;
class TextShaper;

/// A glyph of a text, or a part of a coloured glyph.
struct LaidLetter
{
    std::size_t glyph = 0;  ///< in the layout
    int slot = 0;           ///< in a GlyphSlots; of a letter that is not turned
    int gaps = 0;           ///< before the letter, counted from the line's begin
};

/// A line of a text as it is placed: its letters, and lengths in ems.
struct LaidLine
{
    std::size_t firstLetter = 0;
    std::size_t endLetter = 0;
    double left = 0;  ///< x of the line's begin in the layout
    double width = 0;
    double baseline = 0;  ///< y in the layout
    double distance = 0;  ///< from the baseline of the line above
    int gaps = 0;         ///< places where bevels and spacing move letters apart
};

/// The room that the bevels and the spacings of a text take, in ems before the text's scale.
struct LineRoom
{
    double letters = 0;  ///< between two letters
    double ends = 0;     ///< at both ends of a line together
    double lines = 0;    ///< between two lines
    double edges = 0;    ///< above and below the text together

    bool operator==(const LineRoom& other) const = default;
};

/// A text that is laid out, with the numbers of its letters in a GlyphSlots.
struct LaidText
{
    std::string text;
    LineRoom room;  ///< that a text in a box was laid out with
    TextLayout layout;
    std::vector<LaidLetter> letters;  ///< line by line
    std::vector<LaidLine> lines;
    std::shared_ptr<const PathLine> path;  ///< of its only line; null for straight lines
    bool hasAreas = false;                 ///< whether any letter is a part of a coloured glyph
    bool hasTransparentAreas = false;
};

/// How a text is laid out, but for its alignment and for its box.
ORVANE_API LayoutOptions LayoutOptionsOf(const ShapedTextSettings& settings,
                                         const TextFonts& fonts);

/// Lays out a text. Without any font it has no lines. Throws what TextShaper::LayOut throws.
/// \param room has no meaning for a text that fills no box
LaidText LayOutText(std::string_view utf8, const ShapedTextSettings& settings, const LineRoom& room,
                    const TextFonts& fonts, TextShaper& shaper, GlyphSlots& slots);

/// Throws OptionError for settings that make no sense with any text.
void CheckSettings(const ShapedTextSettings& settings);

/// Whether a style has a material of its own.
bool HasColors(const ShapedStyle& style);

}  // namespace orvane
