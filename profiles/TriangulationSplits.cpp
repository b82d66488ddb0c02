// SPDX-License-Identifier: MIT
// Points that are added to a finished triangulation.

#include "profiles/Triangulation.h"

namespace orvane::profiles
{

int Triangulation::SplitEdge(int halfEdge, const GridPoint& place)
{
    const int a = halfEdge;
    const int b = Twin(a);
    const int from = Start(a);
    const int to = End(a);
    const int left = Apex(a);
    const int right = Apex(b);
    if (Turn(Point(from), place, Point(left)) <= 0 || Turn(place, Point(to), Point(left)) <= 0 ||
        Turn(Point(to), place, Point(right)) <= 0 || Turn(place, Point(from), Point(right)) <= 0)
    {
        return none;
    }
    const int point = PointCount();
    points_.push_back(place);
    const int aNext = Next(a);
    const int bLast = Previous(b);
    const int outerLeft = Twin(aNext);
    const int outerRight = Twin(bLast);
    const std::int8_t windingLeft = windings_[Index(aNext)];
    const std::int8_t windingRight = windings_[Index(bLast)];
    // The old triangles keep the half of the edge that starts at from.
    const int newLeft = AddTriangle(point, to, left);
    const int newRight = AddTriangle(to, point, right);
    windings_.resize(starts_.size(), 0);
    inside_.resize(Index(TriangleCount()), inside_[Index(a / 3)]);
    starts_[Index(aNext)] = point;
    starts_[Index(b)] = point;
    Link(newLeft, newRight);
    Link(newLeft + 1, outerLeft);
    windings_[Index(newLeft + 1)] = windingLeft;
    Link(newLeft + 2, aNext);
    windings_[Index(aNext)] = 0;
    Link(newRight + 2, outerRight);
    windings_[Index(newRight + 2)] = windingRight;
    Link(newRight + 1, bLast);
    windings_[Index(bLast)] = 0;
    return point;
}

int Triangulation::SplitTriangle(int triangle, const GridPoint& place)
{
    const int edge = 3 * triangle;
    const int a = Start(edge);
    const int b = Start(edge + 1);
    const int c = Start(edge + 2);
    if (Turn(Point(a), Point(b), place) <= 0 || Turn(Point(b), Point(c), place) <= 0 ||
        Turn(Point(c), Point(a), place) <= 0)
    {
        return none;
    }
    const int point = PointCount();
    points_.push_back(place);
    const int outerB = Twin(edge + 1);
    const int outerC = Twin(edge + 2);
    const std::int8_t windingB = windings_[Index(edge + 1)];
    const std::int8_t windingC = windings_[Index(edge + 2)];
    const int second = AddTriangle(b, c, point);
    const int third = AddTriangle(c, a, point);
    windings_.resize(starts_.size(), 0);
    inside_.resize(Index(TriangleCount()), inside_[Index(triangle)]);
    starts_[Index(edge + 2)] = point;
    Link(second, outerB);
    windings_[Index(second)] = windingB;
    Link(third, outerC);
    windings_[Index(third)] = windingC;
    windings_[Index(edge + 1)] = 0;
    windings_[Index(edge + 2)] = 0;
    Link(edge + 1, second + 2);
    Link(second + 1, third + 2);
    Link(third + 1, edge + 2);
    return point;
}

}  // namespace orvane::profiles
