// SPDX-License-Identifier: MIT
#include "tests/support/GlyphShapes.h"

#include <algorithm>
#include <cmath>

namespace
{

/// Appends a fixed-point number: the fraction in 1/65536 units, then the whole part, rounded down.
void AddFixed(RecordBytes& record, double value)
{
    const double whole = std::floor(value);
    record.Word(static_cast<WORD>((value - whole) * 65536.0));
    record.Word(static_cast<WORD>(static_cast<SHORT>(whole)));
}

void AddPlace(RecordBytes& record, OutlinePlace place)
{
    AddFixed(record, place.x);
    AddFixed(record, place.y);
}

}  // namespace

NativeOutline& NativeOutline::Start(OutlinePlace start)
{
    polygons_.emplace_back();
    AddPlace(polygons_.back().start, start);
    return *this;
}

NativeOutline& NativeOutline::Curve(WORD type, std::initializer_list<OutlinePlace> places)
{
    RecordBytes& curves = polygons_.back().curves;
    curves.Word(type).Word(static_cast<WORD>(places.size()));
    for (const OutlinePlace& place : places)
    {
        AddPlace(curves, place);
    }
    return *this;
}

Bytes NativeOutline::Get() const
{
    RecordBytes buffer;
    for (const Polygon& polygon : polygons_)
    {
        const std::size_t size = 8 + polygon.start.Get().size() + polygon.curves.Get().size();
        buffer.Dword(static_cast<DWORD>(size)).Dword(TT_POLYGON_TYPE);
        buffer.Append(polygon.start).Append(polygon.curves);
    }
    return buffer;
}

TTGlyph ReadOutline(Bytes buffer)
{
    TTGlyph glyph;
    glyph.FromGlyphOutline(buffer.data(), buffer.size());
    return glyph;
}

TTPoint On(int x, int y)
{
    return TTPoint(TTPoint::OnCurve, static_cast<short>(x), static_cast<short>(y));
}

TTPoint Off(int x, int y, int resolution)
{
    TTPoint point(TTPoint::OffCurve, static_cast<short>(x), static_cast<short>(y));
    point.SetQuadraticResolution(resolution);
    return point;
}

TTContour MakeContour(const OutlinePoints& points)
{
    TTContour contour;
    contour.SetPointCount(static_cast<unsigned short>(points.size()));
    std::copy(points.begin(), points.end(), contour.GetPoints());
    return contour;
}

TTGlyph MakeGlyph(const std::vector<OutlinePoints>& contours)
{
    TTGlyph glyph;
    glyph.SetContourCount(static_cast<short>(contours.size()));
    std::transform(contours.begin(), contours.end(), glyph.GetContours(), MakeContour);
    glyph.SetDefined();
    return glyph;
}

TTGlyph SquareGlyph()
{
    return MakeGlyph({{On(0, 0), On(0, 1000), On(1000, 1000), On(1000, 0)}});
}

TTGlyph SquareWithHoleGlyph()
{
    return MakeGlyph({{On(0, 0), On(0, 1000), On(1000, 1000), On(1000, 0)},
                      {On(250, 250), On(750, 250), On(750, 750), On(250, 750)}});
}

TTGlyph QuarterGlyph()
{
    return MakeGlyph({{On(0, 0), On(0, 1000), Off(1000, 1000), On(1000, 0)}});
}

TTGlyph DiscGlyph()
{
    return MakeGlyph({{On(0, 500), Off(0, 1000), Off(1000, 1000), Off(1000, 0), Off(0, 0)}});
}

TTGlyph HairpinGlyph()
{
    return MakeGlyph({{On(0, 0), On(40, 1000), On(80, 0)}});
}

TTGlyph NotchGlyph()
{
    return MakeGlyph(
        {{On(0, 0), On(0, 1000), On(1000, 1000), On(500, 500), On(1000, 300), On(1000, 0)}});
}

TTGlyph TouchingGlyph()
{
    return MakeGlyph({{On(0, 0), On(0, 500), On(500, 500), On(500, 0)},
                      {On(500, 500), On(500, 1000), On(1000, 1000), On(1000, 500)}});
}

TTGlyph CrossingGlyph()
{
    return MakeGlyph({{On(0, 0), On(1000, 1000), On(1000, 0), On(0, 1000)}});
}

TTGlyph EmptyGlyph()
{
    return MakeGlyph({});
}
