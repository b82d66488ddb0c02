// SPDX-License-Identifier: MIT
#include "shapedtext/LaidText.h"

#include "document/OptionRange.h"
#include "orvane/Error.h"
#include "platform/Limits.h"
#include "shapedtext/GlyphSlots.h"
#include "shapedtext/PathLine.h"
#include "shaping/TextShaper.h"

#include <utf8.h>

#include <algorithm>
#include <utility>

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

/// Whether a glyph is a space that hangs beyond an end of its line.
bool Hangs(const PlacedGlyph& glyph, const TextLine& line)
{
    constexpr double tolerance = 1e-9;
    const double middle = glyph.x + glyph.advance / 2;
    return middle < line.left - tolerance || middle > line.left + line.width + tolerance;
}

/// Whether lines have spaces beyond their ends, which take no room.
bool HaveLinesHangingSpaces(const ShapedTextSettings& settings)
{
    return settings.width > 0 || settings.fit.has_value();
}

/// Whether bevels and spacing move a glyph of a line away from the one on its left.
/// \param index in the line, from 0
bool IsGap(std::string_view utf8, const TextLayout& layout, const TextLine& line, std::size_t index,
           bool hasHangingSpaces)
{
    if (index == 0)
    {
        return false;
    }
    const PlacedGlyph& left = layout.glyphs[line.firstGlyph + index - 1];
    const PlacedGlyph& right = layout.glyphs[line.firstGlyph + index];
    if (hasHangingSpaces && (Hangs(left, line) || Hangs(right, line)))
    {
        return false;
    }
    return left.textBegin != right.textBegin &&
           !(HasTouchingLetters(CharacterAt(utf8, left.textBegin)) &&
             HasTouchingLetters(CharacterAt(utf8, right.textBegin)));
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

/// Makes a layout larger or smaller.
void ScaleLayout(TextLayout& layout, double factor)
{
    for (PlacedGlyph& glyph : layout.glyphs)
    {
        for (double* const length : {&glyph.x, &glyph.y, &glyph.advance, &glyph.size})
        {
            *length *= factor;
        }
    }
    for (TextLine& line : layout.lines)
    {
        for (double* const length :
             {&line.left, &line.width, &line.baseline, &line.ascent, &line.descent})
        {
            *length *= factor;
        }
    }
    for (double* const length : {&layout.width, &layout.top, &layout.bottom})
    {
        *length *= factor;
    }
}

int CountGaps(std::string_view utf8, const TextLayout& layout, const TextLine& line)
{
    int gaps = 0;
    for (std::size_t i = 0; i < line.glyphCount; ++i)
    {
        gaps += IsGap(utf8, layout, line, i, true) ? 1 : 0;
    }
    return gaps;
}

/// The factor by which the letters of a layout may grow so that it fits into a box.
double GrowthIn(const FitBox& box, std::string_view utf8, const TextLayout& layout,
                const LineRoom& room)
{
    constexpr double least = 0.001;  // where the room alone is larger than the box
    const double height = layout.top - layout.bottom;
    const auto lineGaps = static_cast<double>(layout.lines.size() - 1);
    double growth = height > 0 ? (box.height - room.edges - lineGaps * room.lines) / height : 1.0;
    for (const TextLine& line : layout.lines)
    {
        if (line.width > 0)
        {
            const double letterRoom = CountGaps(utf8, layout, line) * room.letters;
            growth = std::min(growth, (box.width - room.ends - letterRoom) / line.width);
        }
    }
    return std::max(growth, least);
}

TextLayout LayOutInBox(std::string_view utf8, const LayoutOptions& options, const FitBox& box,
                       const LineRoom& room, TextShaper& shaper)
{
    if (!box.breaksLines)
    {
        TextLayout layout = shaper.LayOut(utf8, options);
        ScaleLayout(layout, GrowthIn(box, utf8, layout, room));
        return layout;
    }
    // The shaper knows of no room: it gets the largest box whose lines fit with it.
    constexpr int steps = 12;
    TextLayout best;
    double bestGrowth = 0;
    double fitting = 0;
    double tooLarge = 1;
    for (int n = 0; n < steps; ++n)
    {
        const double share = n == 0 ? 1 : (fitting + tooLarge) / 2;
        FittedText fitted = shaper.FitToBox(utf8, options, box.width * share, box.height * share);
        const double growth = GrowthIn(box, utf8, fitted.layout, room);
        if (growth > bestGrowth)
        {
            best = std::move(fitted.layout);
            bestGrowth = growth;
        }
        if (growth >= fitted.size && n == 0)
        {
            break;  // nothing takes room
        }
        (growth >= fitted.size ? fitting : tooLarge) = share;
    }
    ScaleLayout(best, bestGrowth);
    return best;
}

/// Where a line begins and ends.
void SetWidth(LaidLine& line, const TextLine& inLayout, const TextLayout& layout,
              const ShapedTextSettings& settings)
{
    if (HaveLinesHangingSpaces(settings))
    {
        line.left = settings.isJustified ? 0 : inLayout.left;
        line.width = settings.isJustified ? layout.width : inLayout.width;
        return;
    }
    // Spaces at the end take room, as in other texts.
    double left = inLayout.left;
    double right = inLayout.left;
    for (std::size_t i = 0; i < inLayout.glyphCount; ++i)
    {
        const PlacedGlyph& glyph = layout.glyphs[inLayout.firstGlyph + i];
        left = std::min(left, glyph.x);
        right = std::max(right, glyph.x + glyph.advance);
    }
    line.left = left;
    line.width = right - left;
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
    if (settings.fit)
    {
        CheckRange("fit.width", settings.fit->width, 0.001, 1000);
        CheckRange("fit.height", settings.fit->height, 0.001, 1000);
        if (settings.fit->breaksLines && settings.width != 0)
        {
            throw OptionError("fit.breaksLines", "no width to which lines are broken, too", "one");
        }
    }
    if (settings.path && (settings.fit || settings.width != 0))
    {
        throw OptionError("path", "a text that is neither broken nor fitted into a box",
                          settings.fit ? "one in a box" : "one with a width");
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

LaidText LayOutText(std::string_view utf8, const ShapedTextSettings& settings, const LineRoom& room,
                    const TextFonts& fonts, TextShaper& shaper, GlyphSlots& slots)
{
    LaidText laid;
    laid.text = utf8;
    laid.room = room;
    const LayoutOptions options = LayoutOptionsOf(settings, fonts);
    if (options.style.fonts.faces.empty())
    {
        return laid;
    }
    laid.layout = settings.fit ? LayOutInBox(utf8, options, *settings.fit, room, shaper)
                               : shaper.LayOut(utf8, options);
    const TextLayout& layout = laid.layout;
    if (settings.path)
    {
        if (layout.lines.size() > 1)
        {
            throw Error("text", std::to_string(layout.lines.size()) + " lines",
                        "one line, because it stands on a path");
        }
        laid.path = std::make_shared<PathLine>(*settings.path);
    }
    laid.letters.reserve(layout.glyphs.size());
    for (const TextLine& inLayout : layout.lines)
    {
        LaidLine line;
        line.firstLetter = laid.letters.size();
        line.baseline = inLayout.baseline;
        for (std::size_t i = 0; i < inLayout.glyphCount; ++i)
        {
            const std::size_t at = inLayout.firstGlyph + i;
            const PlacedGlyph& glyph = layout.glyphs[at];
            line.gaps += IsGap(utf8, layout, inLayout, i, HaveLinesHangingSpaces(settings)) ? 1 : 0;
            const bool hasColors =
                glyph.span != noSpan && HasColors(settings.spans[glyph.span].style);
            LetterShape shape;
            shape.face = layout.faces[glyph.face];
            shape.glyph = glyph.glyph;
            shape.size = glyph.size;
            shape.span = hasColors ? glyph.span : noSpan;
            const std::size_t areas =
                settings.usesColorGlyphs ? slots.ColorAreasOf(shape.face, shape.glyph).size() : 0;
            if (areas == 0)
            {
                laid.letters.push_back({at, slots.SlotOf(shape), line.gaps});
            }
            for (shape.area = 0; shape.area < areas; ++shape.area)
            {
                const int slot = slots.SlotOf(shape);
                laid.letters.push_back({at, slot, line.gaps});
                laid.hasAreas = true;
                laid.hasTransparentAreas = laid.hasTransparentAreas ||
                                           slots.ColorAt(slot).value_or(ColorLayer()).alpha < 1;
            }
        }
        line.endLetter = laid.letters.size();
        SetWidth(line, inLayout, layout, settings);
        if (!laid.lines.empty())
        {
            line.distance = laid.lines.back().baseline - line.baseline;
        }
        laid.lines.push_back(line);
    }
    return laid;
}

}  // namespace orvane
