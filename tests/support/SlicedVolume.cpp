// SPDX-License-Identifier: MIT
#include "tests/support/SlicedVolume.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

using namespace orvane;

namespace
{

constexpr double unitsPerEm = 1 << 20;

}  // namespace

MovedAreas::MovedAreas(const PlaneRegion& region, ProfileCorners corners) : corners_(corners)
{
    for (const auto& contour : region.contours)
    {
        ClipperLib::Path& path = region_.emplace_back();
        for (const contours::DoublePoint& place : contour)
        {
            path.push_back(
                {std::llround(place.x * unitsPerEm), std::llround(place.y * unitsPerEm)});
        }
    }
    ClipperLib::SimplifyPolygons(region_, ClipperLib::pftNonZero);
}

ClipperLib::Paths MovedAreas::Moved(double offset) const
{
    constexpr double miterLimit = 4;
    constexpr double arcTolerance = 0.0002 * unitsPerEm;
    ClipperLib::ClipperOffset mover(miterLimit, arcTolerance);
    mover.AddPaths(region_,
                   corners_ == ProfileCorners::Round ? ClipperLib::jtRound : ClipperLib::jtMiter,
                   ClipperLib::etClosedPolygon);
    ClipperLib::Paths moved;
    mover.Execute(moved, offset * unitsPerEm);
    return moved;
}

double MovedAreas::At(double offset) const
{
    double area = 0;
    for (const ClipperLib::Path& path : Moved(offset))
    {
        area += ClipperLib::Area(path);
    }
    return area / (unitsPerEm * unitsPerEm);
}

double MovedAreas::Middle(double precision) const
{
    double left = 0;
    double empty = 64;
    constexpr double least = 1 / unitsPerEm;
    while (empty - left > std::max(precision * left, least))
    {
        // Most strokes are thin: the first steps are powers of two.
        const double middle = left == 0 ? empty / 4 : (left + empty) / 2;
        (Moved(-middle).empty() ? empty : left) = middle;
    }
    return empty;
}

double SlicedVolume(const PlaneRegion& region, const EdgeProfile& profile,
                    const ProfileSolidOptions& options, int slices)
{
    const MovedAreas areas(region, profile.corners);
    const double unit = profile.reachesMiddle ? areas.Middle(1e-5) : 1;
    double edges = 0;
    for (std::size_t i = 1; i < profile.steps.size(); ++i)
    {
        const ProfileStep& upper = profile.steps[i - 1];
        const ProfileStep& lower = profile.steps[i];
        const double height = upper.height - lower.height;
        for (int slice = 0; slice < slices && height > 0; ++slice)
        {
            const double at = (slice + 0.5) / slices;
            const double offset = (upper.offset + (lower.offset - upper.offset) * at) * unit;
            edges += areas.At(offset) * height / slices;
        }
    }
    const int count = options.sides == ProfileSides::Both ? 2 : 1;
    const double wall = areas.At(profile.steps.back().offset * unit);
    return count * edges + wall * (options.depth + count * profile.steps.back().height);
}
