// SPDX-License-Identifier: MIT
#include "tests/support/SlicedVolume.h"

#include <polyclipping/clipper.hpp>

#include <cmath>
#include <cstddef>

using namespace orvane;

namespace
{

constexpr double unitsPerEm = 1 << 20;

ClipperLib::Paths Moved(const ClipperLib::Paths& region, ProfileCorners corners, double offset)
{
    constexpr double miterLimit = 4;
    constexpr double arcTolerance = 0.0002 * unitsPerEm;
    ClipperLib::ClipperOffset mover(miterLimit, arcTolerance);
    mover.AddPaths(region,
                   corners == ProfileCorners::Round ? ClipperLib::jtRound : ClipperLib::jtMiter,
                   ClipperLib::etClosedPolygon);
    ClipperLib::Paths moved;
    mover.Execute(moved, offset * unitsPerEm);
    return moved;
}

double AreaOf(const ClipperLib::Paths& paths)
{
    double area = 0;
    for (const ClipperLib::Path& path : paths)
    {
        area += ClipperLib::Area(path);
    }
    return area / (unitsPerEm * unitsPerEm);
}

}  // namespace

double SlicedVolume(const PlaneRegion& region, const EdgeProfile& profile,
                    const ProfileSolidOptions& options, int slices)
{
    ClipperLib::Paths own;
    for (const auto& contour : region.contours)
    {
        ClipperLib::Path& path = own.emplace_back();
        for (const contours::DoublePoint& place : contour)
        {
            path.push_back(
                {std::llround(place.x * unitsPerEm), std::llround(place.y * unitsPerEm)});
        }
    }
    ClipperLib::SimplifyPolygons(own, ClipperLib::pftNonZero);
    double unit = 1;
    if (profile.reachesMiddle)
    {
        double left = 0;
        unit = 64;
        while (unit - left > 1e-6)
        {
            const double middle = (left + unit) / 2;
            (Moved(own, profile.corners, -middle).empty() ? unit : left) = middle;
        }
    }
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
            edges += AreaOf(Moved(own, profile.corners, offset)) * height / slices;
        }
    }
    const int count = options.sides == ProfileSides::Both ? 2 : 1;
    const double wall = AreaOf(Moved(own, profile.corners, profile.steps.back().offset * unit));
    return count * edges + wall * (options.depth + count * profile.steps.back().height);
}
