// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// How a text is to be laid out, and what comes out of it. Lengths are in ems: 1 is the em square
/// of a text of size 1. x runs to the right, y upward. Offsets are bytes of the text in UTF-8.

#include "shaping/Bidi.h"
#include "shaping/FontChain.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvane
{

/// How letters are shaped.
struct TextStyle
{
    FontChain fonts;
    double size = 1;  ///< from 0.001 to 1,000
    double rise = 0;  ///< of the baseline, from -1,000 to 1,000
    /// A BCP 47 tag such as "sr-Latn". Empty: the likely language of each script.
    std::string language;
    /// Four letters (ISO 15924) such as "Latn". Empty: that of the characters.
    std::string script;
    /// OpenType features: "smcp", "liga=0", "salt=2", "-kern".
    std::vector<std::string> features;
};

/// A part of a text with a style of its own. A letter and its marks have the style of the letter.
struct StyledSpan
{
    std::size_t begin = 0;  ///< the first byte
    std::size_t end = 0;    ///< the byte after the last; larger than \c begin
    TextStyle style;
};

enum class LineAlignment
{
    Start,  ///< left in paragraphs that run to the right, else right
    Left,
    Center,
    Right,
    /// Spaces are widened until a line is as wide as the text, except for the last line of a
    /// paragraph, which is aligned at its start. Spaces before a tab stay as they are.
    Justified
};

struct LayoutOptions
{
    TextStyle style;                                ///< of everything that is in no span
    std::vector<StyledSpan> spans;                  ///< in the order of the text, without overlaps
    TextDirection direction = TextDirection::Auto;  ///< of every paragraph
    /// The width to which lines are broken, up to 1,000,000; 0: lines end at line ends alone.
    double width = 0;
    /// Whether a word that is wider than a line is broken between its letters. If not, it sticks
    /// out of the line.
    bool breaksWords = false;
    LineAlignment alignment = LineAlignment::Start;
    /// The distance of two baselines as a factor of that which the fonts ask for, from 0 to 100.
    /// Without a value it is the size of the largest letter of the lower line.
    std::optional<double> lineHeight = 1;
    /// Distances of tab stops from the start of a line, each larger than the one before.
    std::vector<double> tabStops;
    /// The distance of the tab stops that follow those, from 0.001 to 1,000.
    double tabInterval = 2;
};

/// The value of PlacedGlyph::span for text that is in no span.
constexpr std::size_t noSpan = static_cast<std::size_t>(-1);

/// A glyph at its place. Spaces and tabs have glyphs without an outline.
struct PlacedGlyph
{
    std::size_t face = 0;  ///< in TextLayout::faces
    /// The glyph's number in the face. 0 is the face's mark for missing characters.
    std::uint32_t glyph = 0;
    /// The characters that the glyph stands for, with the other glyphs of the same characters.
    std::size_t textBegin = 0;
    std::size_t textEnd = 0;
    std::size_t span = noSpan;  ///< the span of the first character, in LayoutOptions::spans
    double x = 0;               ///< of the glyph's origin
    double y = 0;
    double advance = 0;  ///< the way that the glyph takes on its line
    double size = 1;     ///< of the em square
    bool isRightToLeft = false;
};

struct TextLine
{
    std::size_t textBegin = 0;
    std::size_t textEnd = 0;     ///< with spaces at the end of the line, without LF and CR
    std::size_t firstGlyph = 0;  ///< in TextLayout::glyphs; from left to right
    std::size_t glyphCount = 0;
    double left = 0;      ///< of the first letter
    double width = 0;     ///< to the end of the last letter, without spaces that hang
    double baseline = 0;  ///< y; 0 for the first line
    double ascent = 0;    ///< of the highest font on the line, above the baseline
    double descent = 0;   ///< of the lowest font on the line, below the baseline
    bool isRightToLeft = false;
    bool endsParagraph = false;
};

/// A character that no font has.
struct MissingCharacter
{
    char32_t character = 0;
    std::size_t offset = 0;  ///< of the first such character in the text
};

struct TextLayout
{
    std::vector<std::shared_ptr<const ShapingFace>> faces;  ///< those that glyphs are from
    std::vector<PlacedGlyph> glyphs;                        ///< line by line
    std::vector<TextLine> lines;                            ///< at least one
    /// Each character that no font has, once. Glyph 0 stands in its places.
    std::vector<MissingCharacter> missing;
    double width = 0;   ///< LayoutOptions::width or, without that, the width of the widest line
    double top = 0;     ///< the ascent of the first line
    double bottom = 0;  ///< y of the last line's descent; usually negative
};

/// A text that was made as large as its box allows.
struct FittedText
{
    /// The size of a text of size 1, in the units of the box. The layout's lengths times this
    /// number are in those units.
    double size = 0;
    TextLayout layout;
};

}  // namespace orvane
