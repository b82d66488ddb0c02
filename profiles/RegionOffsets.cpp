// SPDX-License-Identifier: MIT
#include "profiles/RegionOffsets.h"

#include "orvane/Error.h"
#include "outline/TTPolyGlyph.h"
#include "platform/Limits.h"

#include <polyclipping/clipper.hpp>

#include <algorithm>
#include <cmath>
#include <span>

namespace orvane
{

namespace profiles
{

namespace
{

using contours::DoublePoint;

/// Square grid units: a contour with a smaller area is a trace of rounding and is left out.
constexpr double minArea = 16;

ClipperLib::IntPoint GridPlace(const DoublePoint& place)
{
    return {std::llround(place.x), std::llround(place.y)};
}

ClipperLib::Path PathOf(const std::vector<DoublePoint>& contour, double unitsPerEm,
                        const DoublePoint& offset)
{
    ClipperLib::Path path;
    path.reserve(contour.size());
    for (const DoublePoint& place : contour)
    {
        path.push_back(GridPlace((place + offset) * unitsPerEm));
    }
    return path;
}

/// The border of the area that some paths fill.
ClipperLib::Paths Union(const ClipperLib::Paths& paths, ClipperLib::PolyFillType fill)
{
    ClipperLib::Clipper clipper;
    ClipperLib::Paths border;
    clipper.AddPaths(paths, ClipperLib::ptSubject, true);
    clipper.Execute(ClipperLib::ctUnion, border, fill, fill);
    std::erase_if(border, [](const ClipperLib::Path& path) {
        return std::abs(ClipperLib::Area(path)) < minArea;
    });
    return border;
}

/// The largest distance of the regions from the origin along x or y, in ems.
double ExtentOf(std::span<const PlacedRegion> regions)
{
    double extent = 0;
    for (const PlacedRegion& placed : regions)
    {
        for (const auto& contour : placed.region->contours)
        {
            for (const DoublePoint& place : contour)
            {
                const DoublePoint moved = place + placed.offset;
                const double size = std::max(std::abs(moved.x), std::abs(moved.y));
                // A number that is not a number fails the comparison.
                if (!(size <= limits::maxRegionSide))
                {
                    throw Error("region", std::to_string(size) + " em from the origin",
                                "at most " + std::to_string(limits::maxRegionSide));
                }
                extent = std::max(extent, size);
            }
        }
    }
    return extent;
}

double UnitsPerEmFor(double extent)
{
    double units = 1 << 18;
    while (extent * units > maxGridCoordinate / 2.0)
    {
        units /= 2;
    }
    return units;
}

}  // namespace

Grid::Grid(const PlaneRegion& region, double reach)
{
    const PlacedRegion placed = {&region, {}};
    // A tip reaches as far as 4 offsets.
    unitsPerEm = UnitsPerEmFor(ExtentOf({&placed, 1}) + 4 * reach);
}

RegionOffsets::RegionOffsets(const PlaneRegion& region, ProfileCorners corners, double reach)
    : grid_(region, reach), corners_(corners)
{
    // An arc stays within 0.0005 em of the circle and turns by at most 15 degrees a step.
    constexpr double tolerance = 0.0005;
    constexpr double maxStep = 0.2618;
    arcStep_ =
        reach > tolerance ? std::min(maxStep, 2 * std::acos(1 - tolerance / reach)) : maxStep;

    ClipperLib::Paths paths;
    for (const auto& contour : region.contours)
    {
        paths.push_back(PathOf(contour, grid_.unitsPerEm, {}));
    }
    for (const ClipperLib::Path& path : Union(paths, ClipperLib::pftNonZero))
    {
        std::vector<Corner>& contour = contours_.emplace_back(path.size());
        const std::size_t count = path.size();
        for (std::size_t i = 0; i < count; ++i)
        {
            const ClipperLib::IntPoint& place = path[i];
            const ClipperLib::IntPoint& next = path[(i + 1) % count];
            const DoublePoint way = {static_cast<double>(next.X - place.X),
                                     static_cast<double>(next.Y - place.Y)};
            Corner& corner = contour[i];
            corner.place = {static_cast<double>(place.X), static_cast<double>(place.Y)};
            corner.lengthAfter = Length(way);
            corner.normalAfter = DoublePoint{way.y, -way.x} / corner.lengthAfter;
            contour[(i + 1) % count].normalBefore = corner.normalAfter;
        }
        for (Corner& corner : contour)
        {
            corner.sine = Cross(corner.normalBefore, corner.normalAfter);
            corner.cosine = Dot(corner.normalBefore, corner.normalAfter);
        }
    }
}

/// The join at a corner whose two edges keep their direction.
RegionOffsets::Join RegionOffsets::JoinAt(const Corner& corner, double offset) const
{
    const bool isGap = corner.sine * offset > 0;
    if (!isGap || corner.cosine > std::cos(arcStep_))
    {
        return Join::Tip;
    }
    if (corners_ == ProfileCorners::Round)
    {
        return Join::Arc;
    }
    // A tip lies at 1 / cos(half of the turn) offsets from the corner; at most 4 are allowed.
    constexpr double limit = 4;
    return 1 + corner.cosine >= 2 / (limit * limit) ? Join::Tip : Join::CutTip;
}

void RegionOffsets::AddJoin(const Corner& corner, Join join, double offset,
                            std::vector<DoublePoint>& path) const
{
    const DoublePoint& before = corner.normalBefore;
    const DoublePoint& after = corner.normalAfter;
    switch (join)
    {
        case Join::Tip:
            path.push_back(corner.place + (before + after) * (offset / (1 + corner.cosine)));
            break;
        case Join::CutTip: {
            const double turn = std::atan2(corner.sine, corner.cosine);
            const double along = std::tan(turn / 4);
            const DoublePoint wayBefore = {-before.y, before.x};
            const DoublePoint wayAfter = {-after.y, after.x};
            path.push_back(corner.place + (before + wayBefore * along) * offset);
            path.push_back(corner.place + (after - wayAfter * along) * offset);
            break;
        }
        case Join::Arc: {
            const double turn = std::atan2(corner.sine, corner.cosine);
            const int steps = static_cast<int>(std::ceil(std::abs(turn) / arcStep_));
            for (int i = 0; i <= steps; ++i)
            {
                const double angle = turn * i / steps;
                const DoublePoint way = {-before.y, before.x};
                path.push_back(corner.place +
                               (before * std::cos(angle) + way * std::sin(angle)) * offset);
            }
            break;
        }
        case Join::Through:
            path.push_back(corner.place + before * offset);
            path.push_back(corner.place);
            path.push_back(corner.place + after * offset);
            break;
    }
}

/// The path of a contour that is moved by an offset. It may cross itself: its area is where its
/// windings add up to more than zero.
std::vector<DoublePoint> RegionOffsets::OffsetContour(const std::vector<Corner>& corners,
                                                      double offset) const
{
    // An edge is shortened at its ends where it moves toward its neighbours, and turns round when
    // its length is used up.
    const std::size_t count = corners.size();
    const auto change = [&](const Corner& corner) {
        if (corner.sine * offset > 0 && JoinAt(corner, offset) != Join::Tip)
        {
            return 0.0;
        }
        constexpr double tiny = 1e-9;
        return offset * corner.sine / std::max(1 + corner.cosine, tiny);
    };
    std::vector<char> turnsRound(count);
    for (std::size_t i = 0; i < count; ++i)
    {
        const Corner& next = corners[(i + 1) % count];
        turnsRound[i] = corners[i].lengthAfter + change(corners[i]) + change(next) <= 0;
    }
    std::vector<DoublePoint> path;
    path.reserve(count * 2);
    for (std::size_t i = 0; i < count; ++i)
    {
        const Corner& corner = corners[i];
        const bool mayCross = turnsRound[i] != 0 || turnsRound[(i + count - 1) % count] != 0 ||
                              corner.cosine < -0.999;
        const bool isGap = corner.sine * offset > 0;
        AddJoin(corner, mayCross && !isGap ? Join::Through : JoinAt(corner, offset), offset, path);
    }
    return path;
}

Ring RegionOffsets::At(double offset) const
{
    ClipperLib::Paths paths;
    paths.reserve(contours_.size());
    for (const std::vector<Corner>& corners : contours_)
    {
        std::vector<DoublePoint> moved;
        if (offset != 0)
        {
            moved = OffsetContour(corners, offset);
        }
        ClipperLib::Path& path = paths.emplace_back();
        path.reserve(offset != 0 ? moved.size() : corners.size());
        if (offset != 0)
        {
            std::transform(moved.begin(), moved.end(), std::back_inserter(path), GridPlace);
        }
        else
        {
            std::transform(corners.begin(), corners.end(), std::back_inserter(path),
                           [](const Corner& corner) { return GridPlace(corner.place); });
        }
    }
    if (offset != 0)
    {
        paths = Union(paths, ClipperLib::pftPositive);
    }

    Ring ring;
    for (const ClipperLib::Path& path : paths)
    {
        const int first = static_cast<int>(ring.points.size());
        const int count = static_cast<int>(path.size());
        for (int i = 0; i < count; ++i)
        {
            const ClipperLib::IntPoint& place = path[static_cast<std::size_t>(i)];
            ring.points.push_back(
                {static_cast<std::int32_t>(place.X), static_cast<std::int32_t>(place.Y)});
            ring.edges.push_back({first + i, first + (i + 1) % count});
        }
    }
    return ring;
}

double RegionOffsets::MiddleOffset() const
{
    const auto isGone = [this](double offset) { return At(-offset).edges.empty(); };
    // A long stroke is gone at its area divided by the length of its border.
    double twiceArea = 0;
    double length = 0;
    for (const std::vector<Corner>& contour : contours_)
    {
        const Corner* last = &contour.back();
        for (const Corner& corner : contour)
        {
            twiceArea += Cross(last->place, corner.place);
            length += corner.lengthAfter;
            last = &corner;
        }
    }
    constexpr double least = 4;
    double gone = least;
    while (gone * 2 * length < twiceArea / 2)
    {
        gone *= 2;
    }
    while (gone > least && isGone(gone / 2))
    {
        gone /= 2;
    }
    while (!isGone(gone))
    {
        gone *= 2;
    }
    double left = gone > least ? gone / 2 : 0;
    while (gone - left > 2)
    {
        const double middle = (gone + left) / 2;
        (isGone(middle) ? gone : left) = middle;
    }
    return gone;
}

}  // namespace profiles

PlaneRegion RegionOf(const TTPolyGlyph& glyph)
{
    PlaneRegion region;
    for (int i = 0; i < glyph.GetContourCount(); ++i)
    {
        const TTPolyContour& contour = *glyph.contours.GetElement(i);
        std::vector<contours::DoublePoint>& places = region.contours.emplace_back();
        for (int j = 0; j < contour.GetVertexCount(); ++j)
        {
            const Vector2D place = contour.GetVertexElement(j)->GetPoint();
            places.push_back(
                {place.x * double{glyph.inverseScale}, place.y * double{glyph.inverseScale}});
        }
    }
    return region;
}

PlaneRegion JoinRegions(const std::vector<PlacedRegion>& regions)
{
    const double unitsPerEm = profiles::UnitsPerEmFor(profiles::ExtentOf(regions));
    ClipperLib::Paths paths;
    for (const PlacedRegion& placed : regions)
    {
        // Each region is made of contours that run the right way, so that the windings of
        // neighbours do not cancel each other out.
        ClipperLib::Paths own;
        for (const auto& contour : placed.region->contours)
        {
            own.push_back(profiles::PathOf(contour, unitsPerEm, placed.offset));
        }
        own = profiles::Union(own, ClipperLib::pftNonZero);
        paths.insert(paths.end(), own.begin(), own.end());
    }
    PlaneRegion joined;
    for (const ClipperLib::Path& path : profiles::Union(paths, ClipperLib::pftNonZero))
    {
        auto& contour = joined.contours.emplace_back();
        for (const ClipperLib::IntPoint& place : path)
        {
            contour.push_back({static_cast<double>(place.X) / unitsPerEm,
                               static_cast<double>(place.Y) / unitsPerEm});
        }
    }
    return joined;
}

}  // namespace orvane
