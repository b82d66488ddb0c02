// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/OrvFont.h"
#include "geometry/DVector.h"
#include "platform/Export.h"
#include "shapedtext/GlyphSlots.h"
#include "shapedtext/ShapedTextSettings.h"
#include "shapedtext/TextFonts.h"
#include "shaping/TextLayout.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

class ExtrusionData;
class OrvString;

namespace orvane
{

class TextShaper;

/// A line of a text as it is placed: its glyphs, and lengths in ems.
struct LaidLine
{
    std::size_t firstGlyph = 0;
    std::size_t endGlyph = 0;
    double left = 0;  ///< x of the line's begin in the layout
    double width = 0;
    double baseline = 0;  ///< y in the layout
    double distance = 0;  ///< from the baseline of the line above
    int gaps = 0;         ///< places where bevels and spacing move letters apart
};

/// A text that is laid out, with the numbers of its letters in a GlyphSlots.
struct LaidText
{
    std::string text;
    TextLayout layout;
    std::vector<int> slots;  ///< of each glyph
    std::vector<int> gaps;   ///< before each glyph, counted from the line's begin
    std::vector<LaidLine> lines;
};

/// How a text is laid out, but for its alignment.
ORVANE_API LayoutOptions LayoutOptionsOf(const ShapedTextSettings& settings,
                                         const TextFonts& fonts);

/// Lays out a text. Without any font it has no lines. Throws what TextShaper::LayOut throws.
LaidText LayOutText(std::string_view utf8, const ShapedTextSettings& settings,
                    const TextFonts& fonts, TextShaper& shaper, GlyphSlots& slots);

/// Throws OptionError for settings that make no sense with any text.
void CheckSettings(const ShapedTextSettings& settings);

/// Whether a style has a material of its own.
bool HasColors(const ShapedStyle& style);

/// Calls \p visit with each glyph: the first byte of its letter, its line, its slot and its place
/// with the scale, the bevels and the spacings of a text, as OrvFont places its letters.
void PlaceGlyphs(const LaidText& laid, const OrvString& text, const ExtrusionData& extrusion,
                 const std::function<void(const PlacedLetter&)>& visit);

/// The extents of a text, which begin at its highest point.
struct TextExtents
{
    DVector unscaled;
    DVector scaled;
    double top = 0;  ///< of the scaled text, above its first baseline
};

/// Measures a text as OrvFont::CalculateStringExtents does.
TextExtents MeasureGlyphs(const LaidText& laid, const OrvString& text, GlyphSlots& slots);

}  // namespace orvane
