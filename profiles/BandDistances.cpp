// SPDX-License-Identifier: MIT
#include "profiles/BandDistances.h"

#include <algorithm>
#include <cmath>

namespace orvane::profiles
{

namespace
{

using contours::DoublePoint;

double Size(const DoublePoint& way)
{
    return std::sqrt(Dot(way, way));
}

/// The slope that rises to the left of a direction of unit length, or to the right for \p side -1.
Slope SlopeBeside(const DoublePoint& onLine, const DoublePoint& direction, double side)
{
    const DoublePoint normal = DoublePoint{-direction.y, direction.x} * side;
    return {normal, Dot(normal, onLine)};
}

}  // namespace

BandDistances::BandDistances(const Triangulation& triangulation, const Side& upper,
                             const Side& lower, double arcStep)
    : triangulation_(triangulation),
      upperCount_(static_cast<int>(upper.ring.points.size())),
      ringCount_(static_cast<int>(upper.ring.points.size() + lower.ring.points.size())),
      isBaseUpper_(std::abs(upper.offset) < std::abs(lower.offset)),
      span_(std::abs(upper.offset - lower.offset))
{
    const Side& base = isBaseUpper_ ? upper : lower;
    const Side& far = isBaseUpper_ ? lower : upper;
    FindCorners(base.ring, far.offset > base.offset, arcStep);
}

void BandDistances::FindCorners(const Ring& base, bool grows, double arcStep)
{
    // The area of the base lies to the left of its edges.
    const double side = grows ? -1 : 1;
    corners_.resize(base.points.size());
    std::vector<int> arriving(base.points.size());
    for (const RingEdge& edge : base.edges)
    {
        arriving[static_cast<std::size_t>(edge.to)] = edge.from;
    }
    const auto pointOf = [&](int index) {
        return PointOf(base.points[static_cast<std::size_t>(index)]);
    };
    for (const RingEdge& edge : base.edges)
    {
        const auto index = static_cast<std::size_t>(edge.from);
        const DoublePoint corner = pointOf(edge.from);
        const DoublePoint wayBefore = corner - pointOf(arriving[index]);
        const DoublePoint wayAfter = pointOf(edge.to) - corner;
        Corner& gap = corners_[index];
        gap.lengthBefore = Size(wayBefore);
        gap.lengthAfter = Size(wayAfter);
        gap.before = wayBefore / gap.lengthBefore;
        gap.after = wayAfter / gap.lengthAfter;
        gap.slopeBefore = SlopeBeside(corner, gap.before, side);
        gap.slopeAfter = SlopeBeside(corner, gap.after, side);
        gap.isGap = Cross(wayBefore, wayAfter) * side < 0;
        if (gap.isGap)
        {
            ShapeGap(gap, edge.from + (isBaseUpper_ ? 0 : upperCount_), side, arcStep);
        }
    }
}

/// Finds how rings go around a corner, as RegionOffsets makes them.
void BandDistances::ShapeGap(Corner& gap, int point, double side, double arcStep)
{
    const DoublePoint corner = PointOf(triangulation_.Point(point));
    const double cosine = Dot(gap.before, gap.after);
    if (arcStep > 0 && cosine <= std::cos(arcStep))
    {
        const double turn = std::atan2(Cross(gap.before, gap.after), cosine);
        const int steps = static_cast<int>(std::ceil(std::abs(turn) / arcStep));
        const double rise = 1 / std::cos(turn / steps / 2);
        for (int step = 0; step < steps; ++step)
        {
            const double angle = turn * (step + 0.5) / steps;
            const double sine = std::sin(angle);
            const double across = std::cos(angle);
            const DoublePoint direction = {gap.before.x * across - gap.before.y * sine,
                                           gap.before.x * sine + gap.before.y * across};
            const Slope slope = SlopeBeside(corner, direction, side * rise);
            gap.between.push_back(slope);
        }
        return;
    }
    // A tip reaches 1 / cos(half of the turn) offsets from its corner. With a turn of less than 49
    // degrees that is at most a tenth more.
    constexpr double flatTurn = 0.65;
    if (cosine < flatTurn)
    {
        tips_[CellOf(corner, 0, 0)].push_back(point);
    }
    // A tip that would reach beyond 4 offsets is cut off at 1 offset. It turns by more than 151
    // degrees: the cosine of half the turn is 1/4, its sine 0.968.
    constexpr double cutTipTurn = 2 * 0.96824583655;
    const DoublePoint out = gap.before - gap.after;
    const double size = Size(out);
    if (size > cutTipTurn)
    {
        gap.between.push_back({out / size, Dot(out / size, corner)});
    }
}

BandDistances::Place BandDistances::PlaceOf(int point) const
{
    return point >= ringCount_                     ? Place::Ridge
           : (point < upperCount_) == isBaseUpper_ ? Place::Base
                                                   : Place::Far;
}

BandDistance BandDistances::SlopeOf(int halfEdge) const
{
    const DoublePoint start = PointOf(triangulation_.Point(triangulation_.Start(halfEdge)));
    const DoublePoint edge = PointOf(triangulation_.Point(triangulation_.End(halfEdge))) - start;
    return {0, SlopeBeside(start, edge / Size(edge), 1), true};
}

/// Takes the distance from an edge of the base if the place lies in front of the edge.
void BandDistances::LookAtEdge(int halfEdge, const DoublePoint& place, BandDistance& nearest) const
{
    const DoublePoint start = PointOf(triangulation_.Point(triangulation_.Start(halfEdge)));
    const DoublePoint edge = PointOf(triangulation_.Point(triangulation_.End(halfEdge))) - start;
    const DoublePoint way = place - start;
    const double along = Dot(way, edge);
    const double square = Dot(edge, edge);
    if (along < 0 || along > square)
    {
        return;
    }
    const double length = std::sqrt(square);
    const double distance = Cross(edge, way) / length;
    if (distance >= 0 && distance < nearest.distance)
    {
        nearest = {distance, SlopeBeside(start, edge / length, 1), true};
    }
}

/// Takes the distance at which the tip or the arc around a corner reaches the place.
void BandDistances::LookAtCorner(int point, const DoublePoint& place, BandDistance& nearest) const
{
    if (PlaceOf(point) != Place::Base || !CornerAt(point).isGap)
    {
        return;
    }
    const Corner& gap = CornerAt(point);
    const DoublePoint way = place - PointOf(triangulation_.Point(point));
    if (Dot(way, gap.before) < 0 || Dot(way, gap.after) > 0)
    {
        return;
    }
    BandDistance tip = {gap.slopeBefore.At(place), gap.slopeBefore, true};
    const auto take = [&](const Slope& slope) {
        const double distance = slope.At(place);
        if (distance > tip.distance)
        {
            tip = {distance, slope, true};
        }
    };
    take(gap.slopeAfter);
    std::for_each(gap.between.begin(), gap.between.end(), take);
    if (tip.distance < nearest.distance)
    {
        nearest = tip;
    }
}

/// The cell of a grid that is a number of cells to the right of a place, and above it. No tip
/// reaches farther than a cell.
std::int64_t BandDistances::CellOf(const DoublePoint& place, int right, int up) const
{
    constexpr double longestTip = 4.25;
    const double size = span_ * longestTip + 1;
    const auto column = static_cast<std::int64_t>(std::floor(place.x / size)) + right;
    const auto row = static_cast<std::int64_t>(std::floor(place.y / size)) + up;
    return row * (std::int64_t{1} << 32) + column;
}

/// Takes the distances at which tips from farther corners reach the place.
void BandDistances::LookAtTips(int triangle, const DoublePoint& place, BandDistance& nearest) const
{
    for (const int right : {-1, 0, 1})
    {
        for (const int up : {-1, 0, 1})
        {
            const auto found = tips_.find(CellOf(place, right, up));
            if (found == tips_.end())
            {
                continue;
            }
            for (const int point : found->second)
            {
                BandDistance tip = nearest;
                LookAtCorner(point, place, tip);
                if (tip.distance < nearest.distance &&
                    WalkFrom(triangle, place, PointOf(triangulation_.Point(point))).contourEdge ==
                        Triangulation::none)
                {
                    nearest = tip;
                }
            }
        }
    }
}

double BandDistances::DistanceToEdge(int halfEdge, const DoublePoint& place) const
{
    const DoublePoint start = PointOf(triangulation_.Point(triangulation_.Start(halfEdge)));
    const DoublePoint edge = PointOf(triangulation_.Point(triangulation_.End(halfEdge))) - start;
    const DoublePoint way = place - start;
    const double along = std::clamp(Dot(way, edge) / Dot(edge, edge), 0.0, 1.0);
    return Size(way - edge * along);
}

BandDistances::Walk BandDistances::WalkFrom(int triangle, const DoublePoint& from,
                                            const DoublePoint& to) const
{
    int entered = Triangulation::none;
    for (int steps = triangulation_.TriangleCount(); steps > 0; --steps)
    {
        int exit = Triangulation::none;
        double exitPart = 0;
        for (int edge = 3 * triangle; edge < 3 * triangle + 3; ++edge)
        {
            if (edge == entered)
            {
                continue;
            }
            const DoublePoint start = PointOf(triangulation_.Point(triangulation_.Start(edge)));
            const DoublePoint side =
                PointOf(triangulation_.Point(triangulation_.End(edge))) - start;
            const double toSide = Cross(side, to - start);
            if (toSide >= 0)
            {
                continue;
            }
            // Of two edges that the end lies behind, the way leaves through the one it comes to
            // first.
            const double fromSide = std::max(Cross(side, from - start), 0.0);
            const double part = fromSide / (fromSide - toSide);
            if (exit == Triangulation::none || part < exitPart)
            {
                exit = edge;
                exitPart = part;
            }
        }
        if (exit == Triangulation::none)
        {
            return {triangle, 1, Triangulation::none};
        }
        if (triangulation_.IsContourEdge(exit))
        {
            return {triangle, exitPart, exit};
        }
        entered = triangulation_.Twin(exit);
        triangle = entered / 3;
    }
    return {triangle, 0, Triangulation::none};
}

BandDistance BandDistances::At(int triangle, const DoublePoint& place)
{
    visited_.resize(static_cast<std::size_t>(triangulation_.TriangleCount()), 0);
    ++searches_;
    // The corners of the far ring are rounded to the grid.
    constexpr double rounding = 4;
    BandDistance nearest = {span_ + rounding, {}, false};
    // Of the tips that reach farther, the corners are looked up.
    constexpr double reach = 1.1;
    toVisit_.assign(1, {triangle, 0});
    for (std::size_t i = 0; i < toVisit_.size(); ++i)
    {
        const auto [current, distance] = toVisit_[i];
        if (distance >= nearest.distance * reach)
        {
            continue;
        }
        int& search = visited_[static_cast<std::size_t>(current)];
        if (search == searches_)
        {
            continue;
        }
        search = searches_;
        for (int edge = 3 * current; edge < 3 * current + 3; ++edge)
        {
            const int start = triangulation_.Start(edge);
            LookAtCorner(start, place, nearest);
            if (triangulation_.IsContourEdge(edge))
            {
                if (PlaceOf(start) == Place::Base)
                {
                    LookAtEdge(edge, place, nearest);
                }
            }
            else if (const int beyond = triangulation_.Twin(edge) / 3;
                     visited_[static_cast<std::size_t>(beyond)] != searches_)
            {
                const double away = DistanceToEdge(edge, place);
                if (away < nearest.distance * reach)
                {
                    toVisit_.push_back({beyond, away});
                }
            }
        }
    }
    LookAtTips(triangle, place, nearest);
    nearest.distance = std::min(nearest.distance, span_);
    return nearest;
}

}  // namespace orvane::profiles
