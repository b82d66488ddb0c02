// SPDX-License-Identifier: MIT
#include "profiles/BandRidges.h"

#include <algorithm>
#include <cmath>

namespace orvane::profiles
{

namespace
{

using contours::DoublePoint;

/// The length of the difference of the unit vectors along two edges whose tip is cut off: they turn
/// by more than 151 degrees, where the cosine of half the turn is 1/4 and its sine 0.968.
constexpr double cutTipTurn = 2 * 0.96824583655;

double Size(const DoublePoint& way)
{
    return std::sqrt(Dot(way, way));
}

DoublePoint Way(const GridPoint& from, const GridPoint& to)
{
    return {double{1} * to.x - from.x, double{1} * to.y - from.y};
}

GridPoint Middle(const GridPoint& a, const GridPoint& b)
{
    return {(a.x + b.x) / 2, (a.y + b.y) / 2};
}

GridPoint Center(const GridPoint& a, const GridPoint& b, const GridPoint& c)
{
    return {(a.x + b.x + c.x) / 3, (a.y + b.y + c.y) / 3};
}

}  // namespace

BandRidges::BandRidges(Triangulation& triangulation, const Side& upper, const Side& lower,
                       ProfileCorners corners, double unitsPerEm)
    : triangulation_(triangulation),
      upperCount_(static_cast<int>(upper.ring.points.size())),
      ringCount_(triangulation.PointCount()),
      isMitred_(corners == ProfileCorners::Mitred),
      unitsPerEm_(unitsPerEm),
      from_(upper.offset),
      to_(lower.offset),
      base_(std::abs(from_) < std::abs(to_) ? Place::Upper : Place::Lower)
{
    const Ring& base = base_ == Place::Upper ? upper.ring : lower.ring;
    firstOfBase_ = base_ == Place::Upper ? 0 : upperCount_;
    beside_.resize(base.points.size());
    for (const RingEdge& edge : base.edges)
    {
        beside_[static_cast<std::size_t>(edge.from)].after = firstOfBase_ + edge.to;
        beside_[static_cast<std::size_t>(edge.to)].before = firstOfBase_ + edge.from;
    }
}

BandRidges::Place BandRidges::PlaceOf(int point) const
{
    return point < upperCount_ ? Place::Upper : point < ringCount_ ? Place::Lower : Place::Ridge;
}

bool BandRidges::IsChord(int halfEdge) const
{
    return triangulation_.IsInside(halfEdge / 3) && !triangulation_.IsContourEdge(halfEdge) &&
           PlaceOf(triangulation_.Start(halfEdge)) != Place::Ridge &&
           PlaceOf(triangulation_.Start(halfEdge)) == PlaceOf(triangulation_.End(halfEdge));
}

/// Grid units, from a place to an edge of the base or to another edge.
double BandRidges::DistanceToEdge(int halfEdge, const GridPoint& place) const
{
    const int start = triangulation_.Start(halfEdge);
    const int end = triangulation_.End(halfEdge);
    const DoublePoint edge = Way(triangulation_.Point(start), triangulation_.Point(end));
    const DoublePoint way = Way(triangulation_.Point(start), place);
    const double along = Dot(way, edge) / Dot(edge, edge);
    const bool isBeside = along > 0 && along < 1;
    if (!isBeside && isMitred_ && triangulation_.IsContourEdge(halfEdge) && PlaceOf(start) == base_)
    {
        return DistanceToTip(along <= 0 ? start : end, place);
    }
    return Size(way - edge * std::clamp(along, 0.0, 1.0));
}

/// The offset at which the tip around a corner of the base reaches a place.
double BandRidges::DistanceToTip(int point, const GridPoint& place) const
{
    const PointPair& beside = beside_[static_cast<std::size_t>(point - firstOfBase_)];
    const GridPoint& corner = triangulation_.Point(point);
    const DoublePoint before = Way(triangulation_.Point(beside.before), corner);
    const DoublePoint after = Way(corner, triangulation_.Point(beside.after));
    const DoublePoint way = Way(corner, place);
    const double distance = std::max(std::abs(Cross(before, way)) / Size(before),
                                     std::abs(Cross(after, way)) / Size(after));
    // A tip that would reach beyond 4 offsets is cut off at 1 offset.
    const DoublePoint out = before / Size(before) - after / Size(after);
    const bool isCut = Size(out) > cutTipTurn;
    return isCut ? std::max(distance, Dot(way, out) / Size(out)) : distance;
}

double BandRidges::DistanceToBase(int triangle, const GridPoint& place)
{
    visited_.resize(static_cast<std::size_t>(triangulation_.TriangleCount()), 0);
    ++searches_;
    double nearest = std::abs(to_ - from_);
    toVisit_.assign(1, triangle);
    while (!toVisit_.empty())
    {
        const int current = toVisit_.back();
        toVisit_.pop_back();
        int& search = visited_[static_cast<std::size_t>(current)];
        if (search == searches_)
        {
            continue;
        }
        search = searches_;
        for (int edge = 3 * current; edge < 3 * current + 3; ++edge)
        {
            const int start = triangulation_.Start(edge);
            const double distance = DistanceToEdge(edge, place);
            if (distance >= nearest)
            {
                continue;
            }
            if (!triangulation_.IsContourEdge(edge))
            {
                toVisit_.push_back(triangulation_.Twin(edge) / 3);
            }
            else if (PlaceOf(start) == base_)
            {
                nearest = distance;
            }
        }
    }
    return nearest;
}

std::vector<BandRidges::WrongTriangle> BandRidges::WrongTriangles()
{
    std::vector<WrongTriangle> wrong;
    for (int triangle = 0; triangle < triangulation_.TriangleCount(); ++triangle)
    {
        if (!triangulation_.IsInside(triangle))
        {
            continue;
        }
        const int first = 3 * triangle;
        const int corner = triangulation_.Start(first);
        const double area =
            0.5 * static_cast<double>(Turn(triangulation_.Point(corner),
                                           triangulation_.Point(triangulation_.Start(first + 1)),
                                           triangulation_.Point(triangulation_.Start(first + 2))));
        const Place ring = PlaceOf(corner);
        const bool isLevel = PlaceOf(triangulation_.Start(first + 1)) == ring &&
                             PlaceOf(triangulation_.Start(first + 2)) == ring;
        const WrongTriangle judged =
            isLevel ? JudgeLevel(triangle, area, ring) : JudgeSloping(triangle, area);
        if (judged.volume > 0)
        {
            wrong.push_back(judged);
        }
    }
    return wrong;
}

/// A triangle with corners on one ring only: the middles of its chords should lie elsewhere.
BandRidges::WrongTriangle BandRidges::JudgeLevel(int triangle, double area, Place ring)
{
    const double span = std::abs(to_ - from_);
    const int first = 3 * triangle;
    const GridPoint center = Center(triangulation_.Point(triangulation_.Start(first)),
                                    triangulation_.Point(triangulation_.Start(first + 1)),
                                    triangulation_.Point(triangulation_.Start(first + 2)));
    double farthest = DistanceToBase(triangle, center);
    double nearest = farthest;
    for (int edge = first; edge < first + 3; ++edge)
    {
        if (IsChord(edge))
        {
            const GridPoint middle = Middle(triangulation_.Point(triangulation_.Start(edge)),
                                            triangulation_.Point(triangulation_.End(edge)));
            const double distance = DistanceToBase(triangle, middle);
            farthest = std::max(farthest, distance);
            nearest = std::min(nearest, distance);
        }
    }
    return {farthest, area * (ring == base_ ? farthest : span - nearest)};
}

/// A triangle between both rings: when an edge of the base lies much farther from the opposite
/// corner than the other ring does, a ridge ends in between, as it does where a stroke that
/// vanishes ends.
BandRidges::WrongTriangle BandRidges::JudgeSloping(int triangle, double area)
{
    const double span = std::abs(to_ - from_);
    for (int edge = 3 * triangle; edge < 3 * triangle + 3; ++edge)
    {
        const int start = triangulation_.Start(edge);
        if (!triangulation_.IsContourEdge(edge) || PlaceOf(start) != base_)
        {
            continue;
        }
        const GridPoint& from = triangulation_.Point(start);
        const GridPoint& to = triangulation_.Point(triangulation_.End(edge));
        const GridPoint& apex = triangulation_.Point(triangulation_.Apex(edge));
        constexpr double muchFarther = 1.2;
        const double length = Size(Way(from, to));
        if (2 * area < muchFarther * span * length)
        {
            continue;
        }
        const GridPoint middle = Middle(from, to);
        WrongTriangle judged = {0, 0};
        for (const int quarters : {1, 2, 3})
        {
            const GridPoint place = {middle.x + (apex.x - middle.x) / 4 * quarters,
                                     middle.y + (apex.y - middle.y) / 4 * quarters};
            const double distance = DistanceToBase(triangle, place);
            judged.distance = std::max(judged.distance, distance);
            judged.volume += area * std::abs(distance - span * quarters / 4) / 3;
        }
        return judged;
    }
    return {0, 0};
}

std::vector<double> BandRidges::Cuts()
{
    constexpr double wrongSize = 0.004;      // ems: the cube of it may be wrong
    constexpr double minPart = 0.05;         // of the wrong volume: less is no reason for a level
    constexpr double sameDistance = 0.9;     // of the farthest triangle of a group
    constexpr double shortOf = 63.0 / 64;    // of the distance: leaves a strip of a 64th
    constexpr double minSeparation = 0.002;  // ems, between levels
    constexpr std::size_t maxCuts = 4;

    std::vector<WrongTriangle> wrong = WrongTriangles();
    std::sort(wrong.begin(), wrong.end(), [](const WrongTriangle& a, const WrongTriangle& b) {
        return a.distance > b.distance;
    });
    double total = 0;
    for (const WrongTriangle& triangle : wrong)
    {
        total += triangle.volume;
    }
    const double span = std::abs(to_ - from_);
    std::vector<double> cuts;
    if (total <= std::pow(wrongSize * unitsPerEm_, 3))
    {
        return cuts;
    }
    const double separation =
        std::max(minSeparation * unitsPerEm_, 2 * RegionOffsets::minSeparation);
    const double base = base_ == Place::Upper ? from_ : to_;
    const double sign = (base_ == Place::Upper) == (to_ > from_) ? 1 : -1;
    double last = span;  // the distance of the last cut
    for (std::size_t i = 0; i < wrong.size() && cuts.size() < maxCuts;)
    {
        const double farthest = wrong[i].distance;
        double volume = 0;
        for (; i < wrong.size() && wrong[i].distance >= sameDistance * farthest; ++i)
        {
            volume += wrong[i].volume;
        }
        const double cut = std::min(farthest * shortOf, span - separation);
        if (volume > minPart * total && cut > separation && last - cut >= separation)
        {
            cuts.push_back(base + sign * cut);
            last = cut;
        }
    }
    // So far, the cut farthest from the base comes first.
    if (base_ == Place::Upper)
    {
        std::reverse(cuts.begin(), cuts.end());
    }
    return cuts;
}

double BandRidges::FractionAt(double distance) const
{
    // The last thousandth keeps ridges from touching a ring's height.
    const double fraction = std::clamp(distance / std::abs(to_ - from_), 0.001, 0.999);
    return base_ == Place::Upper ? fraction : 1 - fraction;
}

void BandRidges::AddPoints(std::vector<RidgePoint>& ridge)
{
    const int triangleCount = triangulation_.TriangleCount();
    for (int triangle = 0; triangle < triangleCount; ++triangle)
    {
        const int edge = 3 * triangle;
        if (IsChord(edge) && IsChord(edge + 1) && IsChord(edge + 2))
        {
            const GridPoint& a = triangulation_.Point(triangulation_.Start(edge));
            const GridPoint& b = triangulation_.Point(triangulation_.Start(edge + 1));
            const GridPoint& c = triangulation_.Point(triangulation_.Start(edge + 2));
            const GridPoint place = Center(a, b, c);
            const double distance = DistanceToBase(triangle, place);
            if (triangulation_.SplitTriangle(triangle, place) != Triangulation::none)
            {
                ridge.push_back({place, FractionAt(distance)});
            }
        }
    }
    // Splitting appends half-edges, which are looked at in their turn.
    for (int edge = 0; edge < triangulation_.HalfEdgeCount(); ++edge)
    {
        if (IsChord(edge))
        {
            const int start = triangulation_.Start(edge);
            const GridPoint place =
                Middle(triangulation_.Point(start), triangulation_.Point(triangulation_.End(edge)));
            const double distance = DistanceToBase(edge / 3, place);
            if (triangulation_.SplitEdge(edge, place) != Triangulation::none)
            {
                ridge.push_back({place, FractionAt(distance)});
            }
        }
    }
}

void AppendInside(const Triangulation& triangulation, bool turnOver,
                  std::vector<IndexTriangle>& triangles)
{
    for (int triangle = 0; triangle < triangulation.TriangleCount(); ++triangle)
    {
        if (triangulation.IsInside(triangle))
        {
            const int first = triangulation.Start(3 * triangle);
            const int second = triangulation.Start(3 * triangle + 1);
            const int third = triangulation.Start(3 * triangle + 2);
            triangles.push_back(turnOver ? IndexTriangle{first, third, second}
                                         : IndexTriangle{first, second, third});
        }
    }
}

}  // namespace orvane::profiles
