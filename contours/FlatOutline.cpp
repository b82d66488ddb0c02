// SPDX-License-Identifier: MIT
#include "contours/FlatOutline.h"

#include "contours/DuplicateSearch.h"
#include "contours/Flattening.h"

#include <span>

namespace orvane::contours
{
namespace
{

FloatPoint FloatPointOf(const ShortPoint& point, float unit)
{
    return {static_cast<float>(point.x) * unit, static_cast<float>(point.y) * unit};
}

ShortPoint StoredNormalOf(const FloatPoint& normal)
{
    return {StoredNormal(normal.x), StoredNormal(normal.y)};
}

/// One contour of a flat outline, with the members that DuplicateSearch needs. The vertices are
/// borrowed.
class FlatContour
{
public:
    FlatContour(FlatVertex* first, int count) : first_(first), count_(count) {}

    int GetVertexCount() const { return count_; }
    FlatVertex* GetVertexElement(int index) const { return first_ + index; }

    void CalculateNormals()
    {
        // Built glyphs average the edges' normals after rounding them to the precision of stored
        // normals, so this function does the same.
        const auto stored = [](const FloatPoint& normal) {
            return FloatPointOf(StoredNormalOf(normal), storedNormalUnit);
        };
        ForEachCorner(
            count_, [this](int index) { return PlaceOf(index); },
            [&](int index, const FloatPoint& arriving, const FloatPoint& leaving) {
                first_[index].vertexNormal =
                    StoredNormalOf(AverageNormal(stored(arriving), stored(leaving)));
            });
    }

    void AdjustDuplicateVertex(int index)
    {
        const FloatPoint place =
            ShiftedPlace(PlaceOf(index), FloatPointOf(first_[index].vertexNormal, storedNormalUnit),
                         PlaceOf(index + 1 < count_ ? index + 1 : 0));
        first_[index].point = {TruncateToShort(place.x), TruncateToShort(place.y)};
    }

private:
    FloatPoint PlaceOf(int index) const { return FloatPointOf(first_[index].point, 1.0f); }

    FlatVertex* first_;
    int count_;
};

std::vector<FlatContour> ContoursOf(FlatOutline& flat)
{
    std::vector<FlatContour> contours;
    contours.reserve(flat.sizes.size());
    ForEachContour(flat, [&](int first, int end) {
        contours.emplace_back(flat.vertices.data() + first, end - first);
    });
    return contours;
}

}  // namespace

void FlattenInto(FlatOutline& flat, const NativeOutline& outline, int unitsPerEm)
{
    flat.vertices.clear();
    flat.sizes.clear();
    flat.vertices.reserve(3 * outline.points.size());
    flat.sizes.reserve(outline.ends.size());
    const float spacing = VertexSpacing(static_cast<float>(unitsPerEm));
    std::size_t first = 0;
    for (const std::size_t end : outline.ends)
    {
        const std::size_t verticesBefore = flat.vertices.size();
        const NativePoint* const points = &outline.points[first];
        const auto curvePointAt = [points](int n) {
            const NativePoint& point = points[n];
            const ShortPoint place = {static_cast<std::int16_t>(WholeUnits(point.x)),
                                      static_cast<std::int16_t>(WholeUnits(point.y))};
            return point.onCurve ? CurvePoint{place, CurvePoint::Kind::OnCurve, 0}
                                 : CurvePoint{place, CurvePoint::Kind::OffCurve, segmentsPerCurve};
        };
        FlattenContour(
            static_cast<int>(end - first), curvePointAt, spacing,
            [&flat](const FloatPoint& place, bool) {
                flat.vertices.push_back({{TruncateToShort(place.x), TruncateToShort(place.y)}, {}});
            });
        flat.sizes.push_back(static_cast<int>(flat.vertices.size() - verticesBefore));
        first = end;
    }
}

FlatOutline Flatten(const NativeOutline& outline, int unitsPerEm)
{
    FlatOutline flat;
    FlattenInto(flat, outline, unitsPerEm);
    return flat;
}

bool AnyPlaceRepeats(FlatOutline& flat)
{
    std::vector<FlatContour> contours = ContoursOf(flat);
    return AnyPlaceRepeats(std::span<FlatContour>(contours));
}

void SeparateVertices(FlatOutline& flat)
{
    std::vector<FlatContour> contours = ContoursOf(flat);
    const std::span<FlatContour> all(contours);
    if (AnyPlaceRepeats(all))
    {
        for (FlatContour& contour : contours)
        {
            contour.CalculateNormals();
        }
        SeparateVertices(all);
    }
}

FlatOutline FlattenAndSeparate(const NativeOutline& outline, int unitsPerEm)
{
    FlatOutline flat = Flatten(outline, unitsPerEm);
    SeparateVertices(flat);
    return flat;
}

}  // namespace orvane::contours
