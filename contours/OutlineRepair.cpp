// SPDX-License-Identifier: MIT
#include "contours/OutlineRepair.h"

#include "contours/Areas.h"
#include "contours/OutlineRebuild.h"
#include "contours/OutlineTrial.h"
#include "contours/PlanePoint.h"

#include <cmath>
#include <map>
#include <utility>

namespace orvane::contours
{
namespace
{

/// Returns the outline, with contours reversed where they ran the wrong way, if it passes the trial
/// and fills nearly the given area. Otherwise returns nothing.
/// \param area in square units; negative when the rebuild found no border
std::optional<NativeOutline> PassedTrial(NativeOutline outline, int unitsPerEm, double area)
{
    if (area < 0)
    {
        return std::nullopt;
    }
    OutlineVerdict verdict = TryOutline(outline, unitsPerEm);
    if (verdict.fills && !verdict.wrongWay.empty())
    {
        outline = Reversed(outline, verdict.wrongWay);
        verdict = TryOutline(outline, unitsPerEm);
    }
    if (!verdict.fills || !verdict.wrongWay.empty())
    {
        return std::nullopt;
    }
    // The two areas differ a little, because flattening cuts the curves into other numbers of
    // straight edges than the rebuild does. A difference of 3 % of the area plus 0.0001 square ems
    // is accepted.
    constexpr double maxShare = 0.03;
    constexpr double maxSquareEms = 0.0001;
    const double em = unitsPerEm;
    const double filled = ClockwiseArea(FlattenAndSeparate(outline, unitsPerEm));
    const bool isWhole = std::fabs(filled - area) <= maxShare * area + maxSquareEms * em * em;
    return isWhole ? std::optional(std::move(outline)) : std::nullopt;
}

/// Returns a copy in which every corner that shares its place with another corner is moved by \p
/// distance units into the narrower angle between its two edges, so that contours no longer touch
/// there. Without this, the library would shift such vertices along their normals, and their edges
/// could then cross others.
NativeOutline TouchingCornersApart(const NativeOutline& outline, double distance)
{
    // One past the index of a contour's last point. A last point that repeats the first point does
    // not count.
    const auto ringEnd = [&](std::size_t contour) {
        const std::size_t first = outline.FirstOf(contour);
        const std::size_t end = outline.ends[contour];
        return outline.points[end - 1] == outline.points[first] ? end - 1 : end;
    };
    std::map<std::pair<std::int32_t, std::int32_t>, int> cornersAtPlace;
    for (std::size_t contour = 0; contour < outline.ends.size(); ++contour)
    {
        for (std::size_t n = outline.FirstOf(contour); n < ringEnd(contour); ++n)
        {
            cornersAtPlace[{outline.points[n].x, outline.points[n].y}] += outline.points[n].onCurve;
        }
    }
    const auto placeOf = [&](std::size_t index) { return WholePlaceOf(outline.points[index]); };
    NativeOutline apart = outline;
    for (std::size_t contour = 0; contour < outline.ends.size(); ++contour)
    {
        const std::size_t first = outline.FirstOf(contour);
        const std::size_t end = ringEnd(contour);
        for (std::size_t n = first; n < end; ++n)
        {
            const NativePoint& point = outline.points[n];
            const DoublePoint toPrevious = placeOf(n > first ? n - 1 : end - 1) - placeOf(n);
            const DoublePoint toNext = placeOf(n + 1 < end ? n + 1 : first) - placeOf(n);
            if (!point.onCurve || cornersAtPlace[{point.x, point.y}] < 2 ||
                Length(toPrevious) == 0 || Length(toNext) == 0)
            {
                continue;
            }
            const DoublePoint inward =
                toPrevious * (1 / Length(toPrevious)) + toNext * (1 / Length(toNext));
            // A nearly straight corner stays where it is, because neither side of it is narrower.
            constexpr double minInward = 0.1;
            if (Length(inward) > minInward)
            {
                const DoublePoint moved = placeOf(n) + inward * (distance / Length(inward));
                apart.points[n].x = CoordinateOf(moved.x);
                apart.points[n].y = CoordinateOf(moved.y);
            }
        }
        apart.points[outline.ends[contour] - 1] =
            end < outline.ends[contour] ? apart.points[first] : apart.points[end - 1];
    }
    return apart;
}

}  // namespace

std::optional<NativeOutline> RepairOutline(const NativeOutline& outline, int unitsPerEm)
{
    constexpr RebuildSettings usual = {10, true};
    const RebuiltOutline rebuilt = RebuildOutline(outline, usual);
    if (auto repaired = PassedTrial(rebuilt.outline, unitsPerEm, rebuilt.area))
    {
        return repaired;
    }
    for (const RebuildSettings& settings : {RebuildSettings{20, true}, RebuildSettings{5, true}})
    {
        const RebuiltOutline other = RebuildOutline(outline, settings);
        if (auto repaired = PassedTrial(other.outline, unitsPerEm, other.area))
        {
            return repaired;
        }
    }
    // Edges of the rebuilt outline that cross only because of the rounding are removed by a second
    // rebuild.
    if (auto repaired =
            PassedTrial(RebuildOutline(rebuilt.outline, usual).outline, unitsPerEm, rebuilt.area))
    {
        return repaired;
    }
    for (const double distance : {1.5, 3.0})
    {
        if (auto repaired = PassedTrial(TouchingCornersApart(rebuilt.outline, distance), unitsPerEm,
                                        rebuilt.area))
        {
            return repaired;
        }
    }
    for (const int samples : {5, 10, 3})
    {
        const RebuildSettings straightLines = {samples, false};
        RebuiltOutline straight = RebuildOutline(outline, straightLines);
        for (int pass = 0; pass < 3; ++pass)
        {
            if (auto repaired = PassedTrial(straight.outline, unitsPerEm, straight.area))
            {
                return repaired;
            }
            straight.outline = RebuildOutline(straight.outline, straightLines).outline;
        }
    }
    return std::nullopt;
}

}  // namespace orvane::contours
