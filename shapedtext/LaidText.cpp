// SPDX-License-Identifier: MIT
#include "shapedtext/LaidText.h"

#include "extrude/EdgeStyle.h"
#include "extrude/ExtrusionData.h"
#include "extrude/OrvGlyph.h"
#include "orvane/Error.h"
#include "platform/Limits.h"
#include "scene/OrvString.h"
#include "shaping/TextShaper.h"

#include <utf8.h>

#include <algorithm>
#include <limits>

namespace orvane
{

namespace
{

/// Scripts whose letters touch each other. Room between them would tear words apart.
bool HasTouchingLetters(char32_t character)
{
    static constexpr ScriptTag scripts[] = {
        MakeScriptTag("Arab"), MakeScriptTag("Syrc"), MakeScriptTag("Mand"), MakeScriptTag("Mong"),
        MakeScriptTag("Nkoo"), MakeScriptTag("Phag"), MakeScriptTag("Adlm"), MakeScriptTag("Rohg"),
        MakeScriptTag("Deva"), MakeScriptTag("Beng"), MakeScriptTag("Guru")};
    constexpr char32_t tatweel = 0x640;  // the stroke that prolongs Arabic letters
    return character == tatweel || std::find(std::begin(scripts), std::end(scripts),
                                             ScriptOf(character)) != std::end(scripts);
}

char32_t CharacterAt(std::string_view utf8, std::size_t byte)
{
    return byte < utf8.size()
               ? static_cast<char32_t>(utf8::unchecked::peek_next(utf8.data() + byte))
               : char32_t{0};
}

/// Whether bevels and spacing move a glyph away from the one on its left.
bool IsGap(std::string_view utf8, const PlacedGlyph& left, const PlacedGlyph& right)
{
    return left.textBegin != right.textBegin &&
           !(HasTouchingLetters(CharacterAt(utf8, left.textBegin)) &&
             HasTouchingLetters(CharacterAt(utf8, right.textBegin)));
}

/// Whether a glyph is a space that hangs beyond an end of its line.
bool Hangs(const PlacedGlyph& glyph, const TextLine& line)
{
    constexpr double tolerance = 1e-9;
    const double middle = glyph.x + glyph.advance / 2;
    return middle < line.left - tolerance || middle > line.left + line.width + tolerance;
}

TextStyle StyleOf(const ShapedStyle& style, const ShapedStyle& ofText, const TextFonts& fonts)
{
    TextStyle ready;
    for (const std::size_t font : style.fonts.empty() ? ofText.fonts : style.fonts)
    {
        if (fonts.faces[font] != nullptr)
        {
            ready.fonts.faces.push_back(fonts.faces[font]);
        }
    }
    if (ready.fonts.faces.empty() && &style != &ofText)
    {
        ready.fonts.faces = StyleOf(ofText, ofText, fonts).fonts.faces;
    }
    else if (ready.fonts.faces.empty() && fonts.standard != nullptr)
    {
        ready.fonts.faces.push_back(fonts.standard);
    }
    ready.fonts.usesInstalledFonts = style.usesInstalledFonts;
    ready.size = style.size;
    ready.rise = style.rise;
    ready.language = style.language;
    ready.script = style.script;
    ready.features = style.features;
    return ready;
}

/// Where a line begins and ends.
void SetWidth(LaidLine& line, const TextLine& inLayout, const TextLayout& layout,
              const ShapedTextSettings& settings)
{
    if (settings.width > 0)
    {
        line.left = settings.isJustified ? 0 : inLayout.left;
        line.width = settings.isJustified ? settings.width : inLayout.width;
        return;
    }
    // Spaces at the end take room, as in other texts.
    double left = inLayout.left;
    double right = inLayout.left;
    for (std::size_t i = line.firstGlyph; i < line.endGlyph; ++i)
    {
        left = std::min(left, layout.glyphs[i].x);
        right = std::max(right, layout.glyphs[i].x + layout.glyphs[i].advance);
    }
    line.left = left;
    line.width = right - left;
}

double SignOf(double value)
{
    return value < 0 ? -1.0 : 1.0;
}

/// A range of positions that grows.
struct Range
{
    double minimum = 0;
    double maximum = 0;

    void Include(double value)
    {
        minimum = std::min(minimum, value);
        maximum = std::max(maximum, value);
    }
};

/// Turns ems into the units of a text at one scale.
struct Units
{
    /// \param bevel the width of the bevels, before any scale
    Units(const OrvString& text, double x, double y, double bevel, bool scalesBevels)
        : scaleX(x),
          scaleY(y),
          bevelX(bevel * (scalesBevels ? x : SignOf(x))),
          bevelY(bevel * (scalesBevels ? y : SignOf(y))),
          adjusts(text.ShouldAdjustSpacingForBevels() != 0),
          gap(SignOf(x) * double{text.GetInterCharacterSpacing()} + (adjusts ? 2 * bevelX : 0)),
          lineGap(SignOf(y) * double{text.GetInterLineSpacing()} + (adjusts ? 2 * bevelY : 0))
    {}

    /// The end of a line that begins at \p begin.
    double EndOf(const LaidLine& line, double begin) const
    {
        const double end = begin + scaleX * line.width + line.gaps * gap;
        return adjusts && line.endGlyph > line.firstGlyph ? end + 2 * bevelX : end;
    }
    double DistanceTo(const LaidLine& line) const { return scaleY * line.distance + lineGap; }

    double scaleX, scaleY;
    double bevelX, bevelY;  ///< the room that a bevel takes on one side of a letter
    bool adjusts;           ///< whether letters and lines move apart by their bevels
    double gap;             ///< between letters
    double lineGap;         ///< between lines
};

double BeginOf(Alignment alignment, const Range& line)
{
    switch (alignment)
    {
        case Alignment::Center:
            return -(line.minimum + line.maximum) / 2;
        case Alignment::Right:
            return -line.maximum;
        case Alignment::Left:
        default:
            return -line.minimum;
    }
}

/// The size of a text at one scale, and its highest point above the first baseline.
DVector Measure(const LaidText& laid, const Units& units, GlyphSlots& slots, double depth,
                double& top)
{
    Range across;
    Range down = {std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest()};
    double baseline = 0;
    for (const LaidLine& line : laid.lines)
    {
        baseline -= &line == laid.lines.data() ? 0 : units.DistanceTo(line);
        if (line.firstGlyph < line.endGlyph)
        {
            across.Include(units.EndOf(line, units.adjusts ? 0 : 2 * units.bevelX));
        }
        for (std::size_t i = line.firstGlyph; i < line.endGlyph; ++i)
        {
            const PlacedGlyph& placed = laid.layout.glyphs[i];
            const OrvGlyph* const glyph = slots.GlyphAt(laid.slots[i]);
            if (glyph == nullptr)
            {
                continue;
            }
            const double y = baseline + units.scaleY * (placed.y - line.baseline);
            const double room = units.adjusts ? units.bevelY : 0;
            const double unit = units.scaleY * placed.size;
            down.Include(y + unit * double{glyph->GetYMax()} + room);
            down.Include(y + unit * double{glyph->GetYMin()} - room);
        }
    }
    const bool isEmpty = down.minimum > down.maximum;
    top = isEmpty ? 0 : down.maximum;
    return {across.maximum - across.minimum, isEmpty ? 0 : down.maximum - down.minimum, depth};
}

void CheckCount(const char* field, std::size_t count, std::size_t most)
{
    if (count > most)
    {
        throw OptionError(field, "at most " + std::to_string(most), std::to_string(count));
    }
}

void CheckStyle(const ShapedStyle& style, std::size_t fontCount)
{
    CheckCount("fonts", style.fonts.size(), limits::maxTextFonts);
    CheckCount("features", style.features.size(), limits::maxSpanSettings);
    for (const std::size_t font : style.fonts)
    {
        if (font >= fontCount)
        {
            throw OptionError("fonts", "0 to " + std::to_string(fontCount) + " exclusive",
                              std::to_string(font));
        }
    }
}

}  // namespace

void CheckSettings(const ShapedTextSettings& settings)
{
    CheckCount("fonts", settings.fonts.size(), limits::maxTextFonts);
    CheckCount("spans", settings.spans.size(), limits::maxTextSpans);
    CheckCount("tabStops", settings.tabStops.size(), limits::maxTabStops);
    for (const ShapedFont& font : settings.fonts)
    {
        CheckCount("axes", font.query.axes.size(), limits::maxSpanSettings);
    }
    CheckStyle(settings.style, settings.fonts.size());
    for (const ShapedSpan& span : settings.spans)
    {
        CheckStyle(span.style, settings.fonts.size());
    }
    if (settings.isJustified && settings.width == 0)
    {
        throw OptionError("isJustified", "a width to which lines are broken", "none");
    }
}

bool HasColors(const ShapedStyle& style)
{
    return style.face || style.edge || style.bevel;
}

LayoutOptions LayoutOptionsOf(const ShapedTextSettings& settings, const TextFonts& fonts)
{
    LayoutOptions options;
    options.style = StyleOf(settings.style, settings.style, fonts);
    for (const ShapedSpan& span : settings.spans)
    {
        options.spans.push_back({span.begin, span.end, StyleOf(span.style, settings.style, fonts)});
    }
    options.direction = settings.direction;
    options.width = settings.width;
    options.breaksWords = settings.breaksWords;
    // Other lines are aligned when they are placed.
    options.alignment = settings.isJustified ? LineAlignment::Justified : LineAlignment::Left;
    options.lineHeight = settings.lineHeight;
    options.tabStops = settings.tabStops;
    options.tabInterval = settings.tabInterval;
    return options;
}

LaidText LayOutText(std::string_view utf8, const ShapedTextSettings& settings,
                    const TextFonts& fonts, TextShaper& shaper, GlyphSlots& slots)
{
    LaidText laid;
    laid.text = utf8;
    const LayoutOptions options = LayoutOptionsOf(settings, fonts);
    if (options.style.fonts.faces.empty())
    {
        return laid;
    }
    laid.layout = shaper.LayOut(utf8, options);
    const TextLayout& layout = laid.layout;
    laid.slots.reserve(layout.glyphs.size());
    laid.gaps.reserve(layout.glyphs.size());
    for (const TextLine& inLayout : layout.lines)
    {
        LaidLine line;
        line.firstGlyph = inLayout.firstGlyph;
        line.endGlyph = inLayout.firstGlyph + inLayout.glyphCount;
        line.baseline = inLayout.baseline;
        for (std::size_t i = line.firstGlyph; i < line.endGlyph; ++i)
        {
            const PlacedGlyph& glyph = layout.glyphs[i];
            const bool hasColors =
                glyph.span != noSpan && HasColors(settings.spans[glyph.span].style);
            laid.slots.push_back(slots.SlotOf({layout.faces[glyph.face], glyph.glyph, glyph.size,
                                               hasColors ? glyph.span : noSpan}));
            const bool isGap = i > line.firstGlyph && IsGap(utf8, layout.glyphs[i - 1], glyph) &&
                               !(settings.width > 0 &&
                                 (Hangs(layout.glyphs[i - 1], inLayout) || Hangs(glyph, inLayout)));
            line.gaps += isGap ? 1 : 0;
            laid.gaps.push_back(line.gaps);
        }
        SetWidth(line, inLayout, layout, settings);
        if (!laid.lines.empty())
        {
            line.distance = laid.lines.back().baseline - line.baseline;
        }
        laid.lines.push_back(line);
    }
    return laid;
}

void PlaceGlyphs(const LaidText& laid, const OrvString& text, const ExtrusionData& extrusion,
                 const std::function<void(const PlacedLetter&)>& visit)
{
    const Units units(text, double{extrusion.scale.x}, double{extrusion.scale.y},
                      double{extrusion.bevelDepth}, extrusion.ShouldScaleBevels() != 0);
    const auto alignment = static_cast<Alignment>(text.GetJustification());
    double y = text.GetScaledDimensions().y / 2 - double{text.GetFirstLineOffset()};
    int number = 0;
    for (const LaidLine& line : laid.lines)
    {
        y -= number == 0 ? 0 : units.DistanceTo(line);
        Range range;
        range.Include(-units.bevelX);
        range.Include(units.EndOf(line, -units.bevelX));
        const double begin = BeginOf(alignment, range);
        for (std::size_t i = line.firstGlyph; i < line.endGlyph; ++i)
        {
            const PlacedGlyph& glyph = laid.layout.glyphs[i];
            visit({glyph.textBegin, number, laid.slots[i],
                   begin + units.scaleX * (glyph.x - line.left) + laid.gaps[i] * units.gap,
                   y + units.scaleY * (glyph.y - line.baseline)});
        }
        ++number;
    }
}

TextExtents MeasureGlyphs(const LaidText& laid, const OrvString& text, GlyphSlots& slots)
{
    const DVector scale = text.GetScale();
    const double bevel = double{text.GetAllowableBevelDepth()};
    TextExtents extents;
    double unscaledTop = 0;
    extents.unscaled = Measure(laid, Units(text, SignOf(scale.x), SignOf(scale.y), bevel, false),
                               slots, 1.0, unscaledTop);
    extents.scaled =
        Measure(laid, Units(text, scale.x, scale.y, bevel, text.ShouldScaleBevels() != 0), slots,
                scale.z, extents.top);
    return extents;
}

}  // namespace orvane
