// SPDX-License-Identifier: MIT
#include "profiles/BandSkeleton.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvane::profiles
{

namespace
{

using contours::DoublePoint;

/// Grid units: heights that differ by less are the same. Corners are rounded to the grid.
constexpr double sameHeight = 3;
/// Grid units: nodes that are closer are one.
constexpr double sameNode = 12;
/// Grid units: how far from a node a line is looked for.
constexpr double probe = 48;

double SizeOf(const DoublePoint& way)
{
    return std::sqrt(Dot(way, way));
}

bool AreSame(const Slope& a, const Slope& b, const DoublePoint& place)
{
    constexpr double sameDirection = 1e-4;
    const DoublePoint change = a.normal - b.normal;
    return Dot(change, change) < sameDirection * sameDirection &&
           std::abs(a.At(place) - b.At(place)) < sameHeight;
}

}  // namespace

BandSkeleton::BandSkeleton(const Triangulation& triangulation, BandDistances& distances)
    : triangulation_(triangulation),
      distances_(distances),
      edgeOfPoint_(static_cast<std::size_t>(triangulation.PointCount()), Triangulation::none)
{
    for (int edge = 0; edge < triangulation.HalfEdgeCount(); ++edge)
    {
        if (triangulation.IsInside(edge / 3))
        {
            edgeOfPoint_[static_cast<std::size_t>(triangulation.Start(edge))] = edge;
        }
    }
}

void BandSkeleton::Trace(const std::vector<int>& corners)
{
    std::vector<char> wasStarted(edgeOfPoint_.size());
    for (const int corner : corners)
    {
        char& was = wasStarted[static_cast<std::size_t>(corner)];
        if (was == 0)
        {
            was = 1;
            StartAt(corner);
        }
    }
    FollowAll();
}

void BandSkeleton::TraceFrom(const std::vector<LinePlace>& places)
{
    for (const LinePlace& line : places)
    {
        const int triangle = TriangleAt(line.place);
        const std::size_t node = NodeNear(line.place);
        if (triangle == Triangulation::none || node < nodes_.size())
        {
            continue;
        }
        nodes_.push_back({NearestGridPoint(line.place), line.left.At(line.place)});
        slopes_.push_back({line.place, triangle, {line.left, line.right}});
        StartFromNode(node, line.left, line.right, {});
    }
    FollowAll();
}

void BandSkeleton::FollowAll()
{
    // Each line ends or makes a node, and each node takes a few lines. More are a mistake.
    std::size_t left = 16 * (edgeOfPoint_.size() + nodes_.size()) + 64;
    while (!rays_.empty() && left-- > 0)
    {
        const Ray ray = rays_.back();
        rays_.pop_back();
        Follow(ray);
    }
    rays_.clear();
}

void BandSkeleton::StartAt(int corner)
{
    const BandDistances::Corner& shape = distances_.CornerAt(corner);
    constexpr double straight = 1e-4;
    if (std::abs(Cross(shape.before, shape.after)) < straight)
    {
        return;
    }
    const DoublePoint place = PointOf(triangulation_.Point(corner));
    const Slope* last = &shape.slopeBefore;
    for (const Slope& next : shape.between)
    {
        AddRay(corner, place, *last, next);
        last = &next;
    }
    AddRay(corner, place, *last, shape.slopeAfter);
}

/// Starts the line between two slopes at a corner of the base: upward.
void BandSkeleton::AddRay(int from, const DoublePoint& place, const Slope& left, const Slope& right)
{
    const DoublePoint change = left.normal - right.normal;
    const DoublePoint along = {-change.y, change.x};
    const double length = SizeOf(along);
    constexpr double tiny = 1e-6;
    if (length < tiny)
    {
        return;
    }
    const double sign = Dot(left.normal, along) < 0 ? -1 : 1;
    const DoublePoint direction = along * (sign / length);
    const int triangle = TriangleTowards(from, direction);
    if (triangle != Triangulation::none)
    {
        rays_.push_back({from, place, 0, direction, left, right, triangle});
    }
}

/// The triangle at a point of a ring that a direction points into, if it is inside the band.
int BandSkeleton::TriangleTowards(int corner, const DoublePoint& direction) const
{
    const DoublePoint place = PointOf(triangulation_.Point(corner));
    const int first = edgeOfPoint_[static_cast<std::size_t>(corner)];
    const auto isIn = [&](int edge) {
        const DoublePoint right = PointOf(triangulation_.Point(triangulation_.End(edge))) - place;
        const DoublePoint left = PointOf(triangulation_.Point(triangulation_.Apex(edge))) - place;
        return triangulation_.IsInside(edge / 3) && Cross(right, direction) >= 0 &&
               Cross(direction, left) >= 0;
    };
    for (int edge = first; edge != Triangulation::none;)
    {
        if (isIn(edge))
        {
            return edge / 3;
        }
        edge = triangulation_.Twin(Triangulation::Previous(edge));
        if (edge == first)
        {
            return Triangulation::none;
        }
    }
    for (int edge = first; edge != Triangulation::none;)
    {
        if (isIn(edge))
        {
            return edge / 3;
        }
        const int twin = triangulation_.Twin(edge);
        edge = twin == Triangulation::none ? twin : Triangulation::Next(twin);
    }
    return Triangulation::none;
}

/// The length of a line up to the place where it meets a plane; negative when it does not.
double BandSkeleton::LengthUntil(const Ray& ray, const Slope& slope)
{
    const double above = slope.At(ray.place) - ray.height;
    const double closing = ray.Rate() - Dot(slope.normal, ray.direction);
    constexpr double parallel = 1e-9;
    return std::abs(closing) > parallel ? above / closing : -1;
}

/// The surface on both sides of a line, at a length.
BandSkeleton::Sides BandSkeleton::SidesAt(const Ray& ray, double length)
{
    const DoublePoint aside =
        DoublePoint{-ray.direction.y, ray.direction.x} * std::min(probe / 8, length / 8);
    const auto at = [&](const DoublePoint& place) {
        const BandDistances::Walk walk = distances_.WalkFrom(ray.triangle, ray.place, place);
        return walk.contourEdge == Triangulation::none ? distances_.At(walk.triangle, place)
                                                       : distances_.SlopeOf(walk.contourEdge);
    };
    const DoublePoint place = ray.place + ray.direction * length;
    Sides sides = {{at(place + aside), at(place - aside)}, false};
    const auto isOn = [&](int side, const Slope& slope) {
        return sides.surface[side].isPlane && AreSame(sides.surface[side].slope, slope, place);
    };
    sides.areOfRay =
        (isOn(0, ray.left) && isOn(1, ray.right)) || (isOn(0, ray.right) && isOn(1, ray.left));
    return sides;
}

/// Finds where a line ends: the last place that has both of its slopes beside it.
void BandSkeleton::Follow(const Ray& ray)
{
    const double rate = ray.Rate();
    constexpr double level = 1e-6;
    constexpr double veryFar = 4.0 * maxGridCoordinate;
    double length = rate > level    ? (distances_.Span() - ray.height) / rate
                    : rate < -level ? ray.height / -rate
                                    : veryFar;
    length = std::min(length, veryFar);
    length *= distances_.WalkFrom(ray.triangle, ray.place, ray.place + ray.direction * length).part;
    double good = 0;
    double bad = length;
    Slope third;
    bool isAtThird = false;
    bool wasThirdSeen = false;
    const auto beforeEnd = [](double end) { return std::max(end - probe, end / 2); };
    constexpr int maxSteps = 40;
    for (int step = 0; step < maxSteps; ++step)
    {
        const Sides sides = SidesAt(ray, beforeEnd(length));
        if (sides.areOfRay && step == 0)
        {
            EndAtRing(ray, length);
            return;
        }
        if (sides.areOfRay && isAtThird)
        {
            EndAtNode(ray, length, third);
            return;
        }
        (sides.areOfRay ? good : bad) = length;
        isAtThird = false;
        for (const BandDistance& surface : sides.surface)
        {
            if (sides.areOfRay || isAtThird || !IsThird(ray, surface))
            {
                continue;
            }
            third = surface.slope;
            wasThirdSeen = true;
            const double next = LengthUntil(ray, third);
            if (next > good + 1 && next < bad - 1)
            {
                length = next;
                isAtThird = true;
            }
        }
        if (!isAtThird && bad - good < probe / 2)
        {
            // The area of the third slope may be a wedge that is too thin to be found again.
            const double last = beforeEnd(bad);
            const double end = wasThirdSeen ? LengthUntil(ray, third) : -1;
            if (end > 1 && std::abs(end - last) < probe)
            {
                EndAtNode(ray, end, third);
            }
            else
            {
                EndNear(ray, last);
            }
            return;
        }
        length = isAtThird ? length : (good + bad) / 2;
    }
}

bool BandSkeleton::IsThird(const Ray& ray, const BandDistance& surface) const
{
    return surface.isPlane && !AreSame(surface.slope, ray.left, ray.place) &&
           !AreSame(surface.slope, ray.right, ray.place);
}

/// Ends a line that has another slope somewhere around its end.
void BandSkeleton::EndNear(const Ray& ray, double length)
{
    const DoublePoint end = ray.place + ray.direction * length;
    const double height = ray.height + ray.Rate() * length;
    // Where the line's end is probe / 2 away, heights differ by up to 2 probes.
    constexpr double farthest = 3 * probe;
    Slope nearest;
    double distance = farthest;
    constexpr int directions = 12;
    for (int i = 0; i < directions; ++i)
    {
        // Many lines run at multiples of 45 degrees; no way does.
        constexpr double aside = 0.1;
        const double angle = 2 * std::numbers::pi * (i + aside) / directions;
        const DoublePoint place = end + DoublePoint{std::cos(angle), std::sin(angle)} * probe;
        const BandDistances::Walk walk = distances_.WalkFrom(ray.triangle, ray.place, place);
        if (walk.contourEdge != Triangulation::none)
        {
            continue;
        }
        const BandDistance surface = distances_.At(walk.triangle, place);
        const double away = std::abs(surface.slope.At(end) - height);
        if (IsThird(ray, surface) && away < distance)
        {
            nearest = surface.slope;
            distance = away;
        }
    }
    if (distance < farthest)
    {
        // A slope that is nearly the same as one of the line's does not tell exactly where.
        const double exact = LengthUntil(ray, nearest);
        EndAtNode(ray, std::abs(exact - length) < 2 * probe && exact > 1 ? exact : length, nearest);
    }
}

void BandSkeleton::EndAtRing(const Ray& ray, double length)
{
    const DoublePoint place = ray.place + ray.direction * length;
    const BandDistances::Walk walk = distances_.WalkFrom(ray.triangle, ray.place, place);
    const int point = RingPointNear(walk.triangle, place);
    if (point != Triangulation::none)
    {
        lines_.push_back({ray.from, point});
    }
    else
    {
        // The ridge of the widest stroke is as far from the base as the other ring.
        EndNear(ray, length);
    }
}

/// The point of a ring at a place in a triangle, if it is a corner of the triangle or of one beside
/// it.
int BandSkeleton::RingPointNear(int triangle, const DoublePoint& place) const
{
    for (int edge = 3 * triangle; edge < 3 * triangle + 3; ++edge)
    {
        const int twin = triangulation_.Twin(edge);
        for (const int point :
             {triangulation_.Start(edge),
              twin == Triangulation::none ? triangulation_.End(edge) : triangulation_.Apex(twin)})
        {
            if (SizeOf(PointOf(triangulation_.Point(point)) - place) < sameNode)
            {
                return point;
            }
        }
    }
    return Triangulation::none;
}

/// The triangle inside the band that has a place in it, or none.
int BandSkeleton::TriangleAt(const DoublePoint& place) const
{
    for (int triangle = 0; triangle < triangulation_.TriangleCount(); ++triangle)
    {
        bool isIn = triangulation_.IsInside(triangle);
        for (int edge = 3 * triangle; isIn && edge < 3 * triangle + 3; ++edge)
        {
            const DoublePoint start = PointOf(triangulation_.Point(triangulation_.Start(edge)));
            const DoublePoint end = PointOf(triangulation_.Point(triangulation_.End(edge)));
            isIn = Cross(end - start, place - start) >= 0;
        }
        if (isIn)
        {
            return triangle;
        }
    }
    return Triangulation::none;
}

/// The node at a place, or the number of a new one.
std::size_t BandSkeleton::NodeNear(const DoublePoint& place)
{
    const auto cellOf = [](double at) {
        return static_cast<std::int64_t>(std::floor(at / sameNode));
    };
    const auto keyOf = [](std::int64_t x, std::int64_t y) {
        return x * (std::int64_t{1} << 32) + y;
    };
    const std::int64_t x = cellOf(place.x);
    const std::int64_t y = cellOf(place.y);
    for (std::int64_t row = y - 1; row <= y + 1; ++row)
    {
        for (std::int64_t column = x - 1; column <= x + 1; ++column)
        {
            const auto found = nodeInCell_.find(keyOf(column, row));
            if (found != nodeInCell_.end() &&
                SizeOf(slopes_[found->second].place - place) < sameNode)
            {
                return found->second;
            }
        }
    }
    nodeInCell_[keyOf(x, y)] = nodes_.size();
    return nodes_.size();
}

void BandSkeleton::EndAtNode(const Ray& ray, double length, const Slope& third)
{
    const DoublePoint place = ray.place + ray.direction * length;
    const double height = ray.height + ray.Rate() * length;
    const int triangle = distances_.WalkFrom(ray.triangle, ray.place, place).triangle;
    // A line can end at a corner of the other ring: where a stroke vanishes just there.
    const int corner = RingPointNear(triangle, place);
    if (corner != Triangulation::none)
    {
        lines_.push_back({ray.from, corner});
        return;
    }
    const std::size_t node = NodeNear(place);
    if (node == nodes_.size())
    {
        nodes_.push_back({NearestGridPoint(place), height});
        slopes_.push_back({place, triangle, {}});
    }
    const int point = distances_.RingCount() + static_cast<int>(node);
    if (point == ray.from)
    {
        return;
    }
    lines_.push_back({ray.from, point});
    for (const Slope& slope : {ray.left, ray.right, third})
    {
        const std::vector<Slope> known = slopes_[node].slopes;
        if (std::none_of(known.begin(), known.end(), [&](const Slope& other) {
                return AreSame(slope, other, slopes_[node].place);
            }))
        {
            slopes_[node].slopes.push_back(slope);
            for (const Slope& other : known)
            {
                StartFromNode(node, slope, other, ray.direction);
            }
        }
    }
}

void BandSkeleton::MoveNode(std::size_t node)
{
    // Up or down the surface, away from the ring that is nearer.
    constexpr double step = 2;
    const double sign = nodes_[node].height < distances_.Span() / 2 ? 1 : -1;
    const DoublePoint& normal = slopes_[node].slopes.front().normal;
    nodes_[node].place =
        NearestGridPoint(PointOf(nodes_[node].place) + normal * (sign * step / SizeOf(normal)));
}

/// Starts the lines between two slopes, in both directions, that really are there.
void BandSkeleton::StartFromNode(std::size_t node, const Slope& a, const Slope& b,
                                 const DoublePoint& arrival)
{
    const DoublePoint change = a.normal - b.normal;
    const double size = SizeOf(change);
    constexpr double nearlySame = 1e-4;
    if (size < nearlySame)
    {
        return;
    }
    const DoublePoint place = slopes_[node].place;
    const double height = nodes_[node].height;
    for (const double sign : {1.0, -1.0})
    {
        const DoublePoint direction = DoublePoint{-change.y, change.x} * (sign / size);
        constexpr double sameWay = 0.9999;
        if (Dot(direction, arrival) < -sameWay)
        {
            continue;
        }
        // Beside a line there is one of the slopes, and the other on the other side.
        const DoublePoint aside = change * (probe / 8 / size);
        const BandDistance left = Probe(node, direction * probe + aside);
        const BandDistance right = Probe(node, direction * probe - aside);
        if (left.isPlane && right.isPlane &&
            ((AreSame(left.slope, a, place) && AreSame(right.slope, b, place)) ||
             (AreSame(left.slope, b, place) && AreSame(right.slope, a, place))))
        {
            rays_.push_back({distances_.RingCount() + static_cast<int>(node), place, height,
                             direction, a, b, slopes_[node].triangle});
        }
    }
}

/// The surface near a node.
BandDistance BandSkeleton::Probe(std::size_t node, const DoublePoint& way)
{
    const DoublePoint place = slopes_[node].place;
    const BandDistances::Walk walk =
        distances_.WalkFrom(slopes_[node].triangle, place, place + way);
    return walk.contourEdge == Triangulation::none ? distances_.At(walk.triangle, place + way)
                                                   : BandDistance{};
}

}  // namespace orvane::profiles
