// SPDX-License-Identifier: MIT
#include "outline/TTGlyph.h"

#include "contours/Flattening.h"
#include "platform/Fonts.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <numeric>
#include <span>
#include <vector>

namespace
{

using ByteSpan = std::span<const std::byte>;

constexpr std::size_t curveHeaderSize = offsetof(TTPOLYCURVE, apfx);

/// One contour of the native outline: a header and the curves that belong to it.
struct Polygon
{
    ByteSpan bytes;
    unsigned pointCount;
};

/// Copies a record from the start of the bytes, which may have any alignment and must be long
/// enough.
template <typename Record>
Record Read(ByteSpan bytes)
{
    Record record;
    std::memcpy(&record, bytes.data(), sizeof record);
    return record;
}

/// Calls visit(type, points) for each curve of a contour; points is a span of bytes. Returns false
/// as soon as \p visit returns false or a curve does not fit into the contour's bytes.
template <typename Visitor>
bool ForEachCurve(ByteSpan polygon, Visitor visit)
{
    ByteSpan rest = polygon.subspan(sizeof(TTPOLYGONHEADER));
    while (!rest.empty())
    {
        if (rest.size() < curveHeaderSize)
        {
            return false;
        }
        const WORD type = Read<WORD>(rest);
        const std::size_t count = Read<WORD>(rest.subspan(sizeof type));
        rest = rest.subspan(curveHeaderSize);
        if (rest.size() / sizeof(POINTFX) < count ||
            !visit(type, rest.first(count * sizeof(POINTFX))))
        {
            return false;
        }
        rest = rest.subspan(count * sizeof(POINTFX));
    }
    return true;
}

/// Finds the contours in the buffer, up to the first broken contour and at most 32,767, because a
/// glyph counts its contours in 16 bits. A contour with a broken curve is included with the points
/// before that curve.
std::vector<Polygon> FindPolygons(ByteSpan buffer)
{
    std::vector<Polygon> polygons;
    bool isWhole = true;
    while (isWhole && buffer.size() >= sizeof(TTPOLYGONHEADER) &&
           polygons.size() < std::numeric_limits<std::int16_t>::max())
    {
        const DWORD size = Read<TTPOLYGONHEADER>(buffer).cb;
        if (size < sizeof(TTPOLYGONHEADER) || size > buffer.size())
        {
            break;
        }
        unsigned pointCount = 1;
        const auto countPoints = [&pointCount](WORD, ByteSpan points) {
            const std::size_t sum = pointCount + points.size() / sizeof(POINTFX);
            if (sum > std::numeric_limits<std::uint16_t>::max())
            {
                return false;
            }
            pointCount = static_cast<unsigned>(sum);
            return true;
        };
        isWhole = ForEachCurve(buffer.first(size), countPoints);
        polygons.push_back({buffer.first(size), pointCount});
        buffer = buffer.subspan(size);
    }
    return polygons;
}

TTPoint MakePoint(TTPoint::Types type, const POINTFX& place)
{
    TTPoint point(type, place.x.value, place.y.value);
    point.SetQuadraticResolution(type == TTPoint::OffCurve ? orvane::contours::segmentsPerCurve
                                                           : 0);
    return point;
}

void FillContour(const Polygon& polygon, TTContour& contour)
{
    contour.SetPointCount(static_cast<unsigned short>(polygon.pointCount));
    TTPoint* point = contour.GetPoints();
    const TTPoint* const end = point + polygon.pointCount;
    *point++ = MakePoint(TTPoint::OnCurve, Read<TTPOLYGONHEADER>(polygon.bytes).pfxStart);

    const auto addPoints = [&point, end](WORD type, ByteSpan places) {
        if (places.size() / sizeof(POINTFX) > static_cast<std::size_t>(end - point))
        {
            return false;
        }
        while (!places.empty())
        {
            const POINTFX place = Read<POINTFX>(places);
            places = places.subspan(sizeof place);
            const bool onCurve = type == TT_PRIM_LINE || places.empty();
            *point++ = MakePoint(onCurve ? TTPoint::OnCurve : TTPoint::OffCurve, place);
        }
        return true;
    };
    ForEachCurve(polygon.bytes, addPoints);
}

}  // namespace

int TTGlyph::GetOffCurvePointCount() const
{
    return std::accumulate(
        contours.get(), contours.get() + contourCount, 0,
        [](int sum, const TTContour& contour) { return sum + contour.GetOffCurvePointCount(); });
}

unsigned long TTGlyph::SizeOf() const
{
    return std::accumulate(
        contours.get(), contours.get() + contourCount, static_cast<unsigned long>(sizeof *this),
        [](unsigned long sum, const TTContour& contour) { return sum + contour.SizeOf(); });
}

void TTGlyph::SetContourCount(short count)
{
    contourCount = std::max<short>(count, 0);
    contours = contourCount != 0 ? std::make_shared<TTContour[]>(contourCount) : nullptr;
}

int TTGlyph::FromGlyphOutline(void* buffer, unsigned long bufferLength)
{
    ClearDefined();
    const std::vector<Polygon> polygons =
        FindPolygons(ByteSpan(static_cast<const std::byte*>(buffer), bufferLength));
    SetContourCount(static_cast<short>(polygons.size()));
    for (std::size_t i = 0; i < polygons.size(); ++i)
    {
        FillContour(polygons[i], contours[i]);
    }
    SetDefined();
    return 1;
}
