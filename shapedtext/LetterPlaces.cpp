// SPDX-License-Identifier: MIT
#include "shapedtext/LetterPlaces.h"

#include "extrude/EdgeStyle.h"
#include "extrude/ExtrusionData.h"
#include "extrude/OrvGlyph.h"
#include "scene/OrvString.h"
#include "shapedtext/GlyphSlots.h"
#include "shapedtext/LaidText.h"
#include "shapedtext/PathLine.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvane
{

using contours::DoublePoint;

namespace
{

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
        return adjusts && line.endLetter > line.firstLetter ? end + 2 * bevelX : end;
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

/// Places the letters of a text on its path. The letters of a cluster, such as a letter and its
/// marks, stay together.
void PlaceOnPath(const LaidText& laid, const Units& units, Alignment alignment, GlyphSlots& slots,
                 const std::function<void(const PlacedLetter&)>& visit)
{
    constexpr double shortest = 0.01;  // ems: of the chord that gives a letter its direction
    const LaidLine& line = laid.lines.front();
    const double gap = units.scaleX != 0 ? units.gap / units.scaleX : 0;
    const double length = line.width + line.gaps * gap;
    const double begin =
        laid.path->StartOf(alignment) - (alignment == Alignment::Left    ? 0
                                         : alignment == Alignment::Right ? length
                                                                         : length / 2);
    const std::vector<PlacedGlyph>& glyphs = laid.layout.glyphs;
    for (std::size_t first = line.firstLetter, end = first; first < line.endLetter; first = end)
    {
        const std::size_t cluster = glyphs[laid.letters[first].glyph].textBegin;
        Range extent = {std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest()};
        for (; end < line.endLetter && glyphs[laid.letters[end].glyph].textBegin == cluster; ++end)
        {
            const PlacedGlyph& glyph = glyphs[laid.letters[end].glyph];
            extent.Include(glyph.x);
            extent.Include(glyph.x + glyph.advance);
        }
        const double middle = (extent.minimum + extent.maximum) / 2;
        const double half = std::max(extent.maximum - extent.minimum, shortest) / 2;
        const double way = begin + middle - line.left + laid.letters[first].gaps * gap;
        const DoublePoint place = laid.path->PointAt(way);
        const DoublePoint chord = laid.path->PointAt(way + half) - laid.path->PointAt(way - half);
        const double chordLength = Length(chord);
        const DoublePoint along = chordLength > 0 ? chord / chordLength : DoublePoint{1, 0};
        const DoublePoint up = {-along.y, along.x};
        for (std::size_t i = first; i < end; ++i)
        {
            const PlacedGlyph& glyph = glyphs[laid.letters[i].glyph];
            LetterShape shape = slots.ShapeAt(laid.letters[i].slot);
            shape.angle = std::atan2(along.y, along.x);
            const DoublePoint origin =
                place + along * (glyph.x - middle) + up * (glyph.y - line.baseline);
            visit({cluster, 0, slots.SlotOf(shape), origin.x * units.scaleX,
                   origin.y * units.scaleY});
        }
    }
}

/// The box around a text on a path.
struct PathBox
{
    Range across = {std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest()};
    Range down = across;

    bool IsEmpty() const { return across.minimum > across.maximum; }
};

PathBox MeasureOnPath(const LaidText& laid, const Units& units, Alignment alignment,
                      GlyphSlots& slots)
{
    PathBox box;
    PlaceOnPath(laid, units, alignment, slots, [&](const PlacedLetter& letter) {
        const OrvGlyph* const glyph = slots.GlyphAt(letter.glyphIndex);
        if (glyph == nullptr || glyph->GetContourCount() == 0)
        {
            return;
        }
        const double size = slots.ShapeAt(letter.glyphIndex).size;
        for (const double side : {-1.0, 1.0})
        {
            const double x = double{side < 0 ? glyph->GetXMin() : glyph->GetXMax()};
            const double y = double{side < 0 ? glyph->GetYMin() : glyph->GetYMax()};
            box.across.Include(letter.x + units.scaleX * size * x + side * units.bevelX);
            box.down.Include(letter.y + units.scaleY * size * y + side * units.bevelY);
        }
    });
    return box;
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
        if (line.firstLetter < line.endLetter)
        {
            across.Include(units.EndOf(line, units.adjusts ? 0 : 2 * units.bevelX));
        }
        for (std::size_t i = line.firstLetter; i < line.endLetter; ++i)
        {
            const LaidLetter& letter = laid.letters[i];
            const PlacedGlyph& placed = laid.layout.glyphs[letter.glyph];
            const OrvGlyph* const glyph = slots.GlyphAt(letter.slot);
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

}  // namespace

LineRoom RoomOf(const OrvString& text)
{
    const DVector scale = text.GetScale();
    if (scale.x == 0 || scale.y == 0)
    {
        return {};
    }
    const Units units(text, scale.x, scale.y, double{text.GetAllowableBevelDepth()},
                      text.ShouldScaleBevels() != 0);
    return {units.gap / units.scaleX, 2 * units.bevelX / units.scaleX, units.lineGap / units.scaleY,
            units.adjusts ? 2 * units.bevelY / units.scaleY : 0};
}

void PlaceGlyphs(const LaidText& laid, const OrvString& text, const ExtrusionData& extrusion,
                 GlyphSlots& slots, const std::function<void(const PlacedLetter&)>& visit)
{
    const Units units(text, double{extrusion.scale.x}, double{extrusion.scale.y},
                      double{extrusion.bevelDepth}, extrusion.ShouldScaleBevels() != 0);
    const auto alignment = static_cast<Alignment>(text.GetJustification());
    if (laid.path != nullptr)
    {
        PlaceOnPath(laid, units, alignment, slots, visit);
        return;
    }
    double y = text.GetScaledDimensions().y / 2 - double{text.GetFirstLineOffset()};
    int number = 0;
    for (const LaidLine& line : laid.lines)
    {
        y -= number == 0 ? 0 : units.DistanceTo(line);
        Range range;
        range.Include(-units.bevelX);
        range.Include(units.EndOf(line, -units.bevelX));
        const double begin = BeginOf(alignment, range);
        for (std::size_t i = line.firstLetter; i < line.endLetter; ++i)
        {
            const LaidLetter& letter = laid.letters[i];
            const PlacedGlyph& glyph = laid.layout.glyphs[letter.glyph];
            visit({glyph.textBegin, number, letter.slot,
                   begin + units.scaleX * (glyph.x - line.left) + letter.gaps * units.gap,
                   y + units.scaleY * (glyph.y - line.baseline)});
        }
        ++number;
    }
}

TextExtents MeasureGlyphs(const LaidText& laid, const OrvString& text, GlyphSlots& slots)
{
    const DVector scale = text.GetScale();
    const double bevel = double{text.GetAllowableBevelDepth()};
    const Units unscaled(text, SignOf(scale.x), SignOf(scale.y), bevel, false);
    const Units scaled(text, scale.x, scale.y, bevel, text.ShouldScaleBevels() != 0);
    TextExtents extents;
    if (laid.path != nullptr)
    {
        const auto alignment = static_cast<Alignment>(text.GetJustification());
        const PathBox small = MeasureOnPath(laid, unscaled, alignment, slots);
        const PathBox box = MeasureOnPath(laid, scaled, alignment, slots);
        if (!box.IsEmpty() && !small.IsEmpty())
        {
            extents.unscaled = DVector(small.across.maximum - small.across.minimum,
                                       small.down.maximum - small.down.minimum, 1);
            extents.low = DVector(box.across.minimum, box.down.minimum, -scale.z);
            extents.high = DVector(box.across.maximum, box.down.maximum, 0);
            extents.scaled = extents.high - extents.low;
        }
        return extents;
    }
    double unscaledTop = 0;
    extents.unscaled = Measure(laid, unscaled, slots, 1.0, unscaledTop);
    extents.scaled = Measure(laid, scaled, slots, scale.z, extents.top);
    return extents;
}

}  // namespace orvane
