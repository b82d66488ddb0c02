// SPDX-License-Identifier: MIT
#include "profiles/Triangulation.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace orvane::profiles
{

namespace
{

/// Whether \p d certainly lies inside the circle through the corners of a counter-clockwise
/// triangle. A point closer to the circle than rounding can tell counts as outside, so that flips
/// come to an end.
bool IsInsideCircle(const GridPoint& a, const GridPoint& b, const GridPoint& c, const GridPoint& d)
{
    const double ax = double{1} * a.x - d.x;
    const double ay = double{1} * a.y - d.y;
    const double bx = double{1} * b.x - d.x;
    const double by = double{1} * b.y - d.y;
    const double cx = double{1} * c.x - d.x;
    const double cy = double{1} * c.y - d.y;
    const double aa = ax * ax + ay * ay;
    const double bb = bx * bx + by * by;
    const double cc = cx * cx + cy * cy;
    const double determinant =
        aa * (bx * cy - by * cx) + bb * (cx * ay - cy * ax) + cc * (ax * by - ay * bx);
    const double size = aa * (std::abs(bx * cy) + std::abs(by * cx)) +
                        bb * (std::abs(cx * ay) + std::abs(cy * ax)) +
                        cc * (std::abs(ax * by) + std::abs(ay * bx));
    // A few dozen roundings of at most 2 to the -53rd each, with room to spare.
    constexpr double rounding = 1e-14;
    return determinant > rounding * size;
}

}  // namespace

Triangulation::Outcome Triangulation::Build(std::span<const GridPoint> points)
{
    points_.assign(points.begin(), points.end());
    const std::size_t count = points_.size();
    starts_.clear();
    twins_.clear();
    windings_.clear();
    inside_.clear();
    wasFlipped_ = false;
    touchedPoint_ = none;
    order_.resize(count);
    std::iota(order_.begin(), order_.end(), 0);
    std::sort(order_.begin(), order_.end(), [this](int a, int b) {
        const GridPoint& p = Point(a);
        const GridPoint& q = Point(b);
        return p.x != q.x ? p.x < q.x : p.y < q.y;
    });
    for (std::size_t i = 1; i < count; ++i)
    {
        if (Point(order_[i - 1]) == Point(order_[i]))
        {
            touchedPoint_ = std::max(order_[i - 1], order_[i]);
            return Outcome::Repeats;
        }
    }
    std::size_t first = 2;
    while (first < count && Turn(Point(order_[0]), Point(order_[1]), Point(order_[first])) == 0)
    {
        ++first;
    }
    if (first >= count)
    {
        return Outcome::Flat;
    }

    starts_.reserve(count * 6);
    twins_.reserve(count * 6);
    hullNext_.assign(count, none);
    hullPrevious_.assign(count, none);
    hullEdge_.assign(count, none);
    BuildFirstTriangles(static_cast<int>(first));
    for (std::size_t i = first + 1; i < count; ++i)
    {
        AddOutside(order_[i], order_[i - 1]);
    }
    FindEdgesOfPoints();
    windings_.assign(starts_.size(), 0);
    return Outcome::Done;
}

/// The first \p count points in order lie on one line, and the next point does not: it makes a fan
/// with them.
void Triangulation::BuildFirstTriangles(int count)
{
    const int tip = order_[Index(count)];
    const bool isLeft = Turn(Point(order_[0]), Point(order_[1]), Point(tip)) > 0;
    const auto joinHull = [this](int from, int to, int halfEdge) {
        hullNext_[Index(from)] = to;
        hullPrevious_[Index(to)] = from;
        hullEdge_[Index(from)] = halfEdge;
    };
    int before = none;  // the half-edge of the last triangle that the next one lies behind
    for (int i = 1; i < count; ++i)
    {
        const int a = order_[Index(i - 1)];
        const int b = order_[Index(i)];
        if (isLeft)
        {
            const int edge = AddTriangle(a, b, tip);
            joinHull(a, b, edge);
            Link(edge + 2, before);
            if (before == none)
            {
                joinHull(tip, a, edge + 2);
            }
            before = edge + 1;
        }
        else
        {
            const int edge = AddTriangle(b, a, tip);
            joinHull(b, a, edge);
            Link(edge + 1, before);
            if (before == none)
            {
                joinHull(a, tip, edge + 1);
            }
            before = edge + 2;
        }
    }
    const int last = order_[Index(count - 1)];
    if (isLeft)
    {
        joinHull(last, tip, before);
    }
    else
    {
        joinHull(tip, last, before);
    }
}

/// Joins a point to the edges of the hull that it sees. It lies to the right of all points so far,
/// or above the last one, so it sees an edge beside that one.
void Triangulation::AddOutside(int point, int previous)
{
    const GridPoint& place = Point(point);
    int forward = previous;
    int backward = previous;
    int toPoint = none;    // the new edge of the hull that ends at the point
    int fromPoint = none;  // the new edge of the hull that starts there
    while (Turn(Point(forward), Point(hullNext_[Index(forward)]), place) < 0)
    {
        const int next = hullNext_[Index(forward)];
        const int edge = AddTriangle(forward, point, next);
        Link(edge + 2, hullEdge_[Index(forward)]);
        if (fromPoint == none)
        {
            toPoint = edge;
        }
        else
        {
            Link(edge, fromPoint);
        }
        fromPoint = edge + 1;
        pending_.push_back(edge + 2);
        forward = next;
    }
    while (Turn(Point(hullPrevious_[Index(backward)]), Point(backward), place) < 0)
    {
        const int next = hullPrevious_[Index(backward)];
        const int edge = AddTriangle(next, point, backward);
        Link(edge + 2, hullEdge_[Index(next)]);
        if (toPoint == none)
        {
            fromPoint = edge + 1;
        }
        else
        {
            Link(edge + 1, toPoint);
        }
        toPoint = edge;
        pending_.push_back(edge + 2);
        backward = next;
    }
    hullNext_[Index(backward)] = point;
    hullPrevious_[Index(point)] = backward;
    hullEdge_[Index(backward)] = toPoint;
    hullNext_[Index(point)] = forward;
    hullPrevious_[Index(forward)] = point;
    hullEdge_[Index(point)] = fromPoint;
    FlipPending();
}

int Triangulation::AddTriangle(int a, int b, int c)
{
    const int edge = HalfEdgeCount();
    starts_.insert(starts_.end(), {a, b, c});
    twins_.insert(twins_.end(), {none, none, none});
    return edge;
}

void Triangulation::Link(int a, int b)
{
    twins_[Index(a)] = b;
    if (b != none)
    {
        twins_[Index(b)] = a;
    }
}

bool Triangulation::ShouldFlip(int halfEdge) const
{
    const int twin = Twin(halfEdge);
    // While the hull grows, no contours exist yet.
    if (twin == none || (!windings_.empty() && IsContourEdge(halfEdge)))
    {
        return false;
    }
    return IsInsideCircle(Point(Start(halfEdge)), Point(End(halfEdge)), Point(Apex(halfEdge)),
                          Point(Apex(twin)));
}

void Triangulation::FlipPending()
{
    while (!pending_.empty())
    {
        const int edge = pending_.back();
        pending_.pop_back();
        if (ShouldFlip(edge))
        {
            const int twin = Twin(edge);
            Flip(edge);
            // While points are added, an edge is pending because the new point lies opposite, and
            // it lies opposite of these two now.
            pending_.push_back(edge);
            pending_.push_back(Next(twin));
            if (!windings_.empty())
            {
                pending_.push_back(Next(edge));
                pending_.push_back(twin);
            }
        }
    }
}

/// Replaces the edge between two triangles by the other diagonal of their quadrilateral, which must
/// be convex.
void Triangulation::Flip(int halfEdge)
{
    const int a = halfEdge;
    const int b = Twin(a);
    const int aNext = Next(a);
    const int aLast = Previous(a);
    const int bNext = Next(b);
    const int bLast = Previous(b);
    const int from = starts_[Index(a)];
    const int to = starts_[Index(b)];
    const int left = starts_[Index(aLast)];
    const int right = starts_[Index(bLast)];
    const int outerA = twins_[Index(bLast)];
    const int outerB = twins_[Index(aLast)];
    starts_[Index(a)] = right;
    starts_[Index(b)] = left;
    Link(a, outerA);
    Link(b, outerB);
    Link(aLast, bLast);
    if (windings_.empty())
    {
        if (outerA == none)
        {
            hullEdge_[Index(right)] = a;
        }
        if (outerB == none)
        {
            hullEdge_[Index(left)] = b;
        }
        return;
    }
    windings_[Index(a)] = windings_[Index(bLast)];
    windings_[Index(b)] = windings_[Index(aLast)];
    windings_[Index(aLast)] = 0;
    windings_[Index(bLast)] = 0;
    edgeOfPoint_[Index(from)] = bNext;
    edgeOfPoint_[Index(to)] = aNext;
    edgeOfPoint_[Index(right)] = a;
    edgeOfPoint_[Index(left)] = b;
}

void Triangulation::FindEdgesOfPoints()
{
    edgeOfPoint_.resize(points_.size());
    for (int edge = 0; edge < HalfEdgeCount(); ++edge)
    {
        edgeOfPoint_[Index(Start(edge))] = edge;
    }
}

bool Triangulation::FindInside(int expected)
{
    if (wasFlipped_)
    {
        for (int edge = 0; edge < HalfEdgeCount(); ++edge)
        {
            if (edge < Twin(edge))
            {
                pending_.push_back(edge);
            }
        }
        FlipPending();
    }
    constexpr std::int8_t unknown = 100;
    inside_.assign(Index(TriangleCount()), unknown);
    const auto visit = [&](int edge, int winding) {
        std::int8_t& known = inside_[Index(edge / 3)];
        if (known == unknown)
        {
            known = static_cast<std::int8_t>(winding);
            pending_.push_back(edge / 3);
        }
        return known == winding && (winding == 0 || winding == expected);
    };
    bool isAsExpected = true;
    for (int edge = 0; edge < HalfEdgeCount(); ++edge)
    {
        if (Twin(edge) == none)
        {
            isAsExpected = visit(edge, windings_[Index(edge)]) && isAsExpected;
        }
    }
    while (!pending_.empty())
    {
        const int triangle = pending_.back();
        pending_.pop_back();
        for (int edge = 3 * triangle; edge < 3 * triangle + 3; ++edge)
        {
            const int twin = Twin(edge);
            if (twin != none)
            {
                const int winding = inside_[Index(triangle)] - windings_[Index(edge)];
                isAsExpected = visit(twin, winding) && isAsExpected;
            }
        }
    }
    return isAsExpected;
}

}  // namespace orvane::profiles
