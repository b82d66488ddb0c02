// SPDX-License-Identifier: MIT
#include "shapedtext/GlyphBuilding.h"

#include "extrude/FontDC.h"
#include "outline/TTContour.h"
#include "outline/TTGlyph.h"
#include "outline/TTPoint.h"
#include "shapedtext/ColorGlyphs.h"
#include "shapedtext/GlyphSlots.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

namespace orvane
{

using contours::DoublePoint;

namespace
{

constexpr MAT2 identity = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};
constexpr UINT outlineFormat = GGO_NATIVE | GGO_GLYPH_INDEX;

/// An outline before it is rounded to whole units.
struct FineOutline
{
    struct Point
    {
        DoublePoint place;  // in ems
        short type;         // of TTPoint::Types
        std::uint8_t curveSegments;
    };
    std::vector<std::vector<Point>> contours;
};

std::unique_ptr<OrvGlyph> InvalidGlyph()
{
    auto glyph = std::make_unique<OrvGlyph>(0, GLYPHMETRICS());
    glyph->SetInvalid();
    return glyph;
}

std::unique_ptr<OrvGlyph> Construct(const TTGlyph& outline, int unitsPerEm, DWORD size,
                                    const GLYPHMETRICS& metrics)
{
    auto glyph = std::make_unique<OrvGlyph>(size, metrics);
    if (!glyph->ConstructGlyph(outline, static_cast<float>(unitsPerEm)))
    {
        glyph->SetInvalid();
    }
    return glyph;
}

struct ReadOutline
{
    TTGlyph outline;
    DWORD size = 0;  ///< bytes
    GLYPHMETRICS metrics = {};
};

/// Reads the outline of a glyph. No value when that fails.
std::optional<ReadOutline> Read(std::uint32_t number, HFONT font)
{
    ReadOutline read;
    const FontDC dc(font);
    read.size = font != nullptr ? GetGlyphOutlineA(dc, number, outlineFormat, &read.metrics, 0,
                                                   nullptr, &identity)
                                : GDI_ERROR;
    if (read.size == GDI_ERROR)
    {
        return std::nullopt;
    }
    std::vector<BYTE> bytes(read.size);
    GetGlyphOutlineA(dc, number, outlineFormat, &read.metrics, read.size, bytes.data(), &identity);
    read.outline.FromGlyphOutline(bytes.data(), static_cast<unsigned long>(bytes.size()));
    return read;
}

/// Turns points around the origin.
class Turn
{
public:
    explicit Turn(double angle) : cosine_(std::cos(angle)), sine_(std::sin(angle)) {}

    DoublePoint operator()(const DoublePoint& place) const
    {
        return {place.x * cosine_ - place.y * sine_, place.x * sine_ + place.y * cosine_};
    }

private:
    double cosine_;
    double sine_;
};

FineOutline Turned(const TTGlyph& outline, int unitsPerEm, const Turn& turn)
{
    FineOutline turned;
    for (short i = 0; i < outline.GetContourCount(); ++i)
    {
        const TTContour& contour = outline.GetContours()[i];
        auto& points = turned.contours.emplace_back();
        for (unsigned short j = 0; j < contour.GetPointCount(); ++j)
        {
            const TTPoint& point = contour.GetPoints()[j];
            const DoublePoint place = {static_cast<double>(point.GetX()),
                                       static_cast<double>(point.GetY())};
            points.push_back(
                {turn(place / unitsPerEm), point.GetType(), point.GetQuadraticResolution()});
        }
    }
    return turned;
}

/// The contours of an area. They run with the area on their right, as the contours of glyphs do.
FineOutline Turned(const PlaneRegion& region, const Turn& turn)
{
    FineOutline turned;
    for (const std::vector<DoublePoint>& contour : region.contours)
    {
        auto& points = turned.contours.emplace_back();
        for (auto corner = contour.rbegin(); corner != contour.rend(); ++corner)
        {
            points.push_back({turn(*corner), TTPoint::OnCurve, 0});
        }
    }
    return turned;
}

/// Builds a glyph whose em has as many units as its coordinates allow.
std::unique_ptr<OrvGlyph> Construct(const FineOutline& outline)
{
    constexpr int mostUnits = 16'384;
    constexpr int mostPoints = std::numeric_limits<unsigned short>::max();
    double reach = 1;
    for (const auto& contour : outline.contours)
    {
        if (contour.size() > static_cast<std::size_t>(mostPoints))
        {
            return InvalidGlyph();
        }
        for (const FineOutline::Point& point : contour)
        {
            reach = std::max({reach, std::abs(point.place.x), std::abs(point.place.y)});
        }
    }
    const double largest = std::numeric_limits<short>::max() - 1;
    const int units = static_cast<int>(std::min(double{mostUnits}, largest / reach));
    if (units == 0 || outline.contours.size() > std::numeric_limits<short>::max())
    {
        return InvalidGlyph();
    }
    TTGlyph rounded;
    rounded.SetContourCount(static_cast<short>(outline.contours.size()));
    for (std::size_t i = 0; i < outline.contours.size(); ++i)
    {
        const std::vector<FineOutline::Point>& points = outline.contours[i];
        TTContour& contour = rounded.GetContours()[i];
        contour.SetPointCount(static_cast<unsigned short>(points.size()));
        for (std::size_t j = 0; j < points.size(); ++j)
        {
            const FineOutline::Point& point = points[j];
            contour.GetPoints()[j] =
                TTPoint(point.type, static_cast<short>(std::lround(point.place.x * units)),
                        static_cast<short>(std::lround(point.place.y * units)));
            contour.GetPoints()[j].SetQuadraticResolution(point.curveSegments);
        }
    }
    rounded.SetDefined();
    return Construct(rounded, units, 0, GLYPHMETRICS());
}

}  // namespace

std::unique_ptr<OrvGlyph> BuildGlyph(std::uint32_t number, HFONT font, int unitsPerEm)
{
    const std::optional<ReadOutline> read = Read(number, font);
    if (!read)
    {
        return InvalidGlyph();
    }
    return Construct(read->outline, unitsPerEm, read->size, read->metrics);
}

std::unique_ptr<OrvGlyph> BuildLetter(const LetterShape& shape, HFONT font, ColorGlyphs& colors)
{
    const int unitsPerEm = shape.face->Metrics().unitsPerEm;
    if (shape.area != wholeGlyph)
    {
        const std::vector<ColorArea>& areas = colors.AreasOf(*shape.face, shape.glyph, font);
        if (shape.area >= areas.size())
        {
            return InvalidGlyph();
        }
        return Construct(Turned(areas[shape.area].region, Turn(shape.angle)));
    }
    if (shape.angle == 0)
    {
        return BuildGlyph(shape.glyph, font, unitsPerEm);
    }
    const std::optional<ReadOutline> read = Read(shape.glyph, font);
    if (!read)
    {
        return InvalidGlyph();
    }
    return Construct(Turned(read->outline, unitsPerEm, Turn(shape.angle)));
}

}  // namespace orvane
