// SPDX-License-Identifier: MIT
// Edges of contours: finding them among the triangles, and flipping others until they are there.

#include "profiles/Triangulation.h"

namespace orvane::profiles
{

/// Calls \p use with the half-edges that start at a point, until it returns false. An edge of the
/// hull that ends at the point is not among them.
template <typename Use>
void Triangulation::ForEachEdgeFrom(int point, Use use) const
{
    const int first = edgeOfPoint_[Index(point)];
    int edge = first;
    do
    {
        if (!use(edge))
        {
            return;
        }
        edge = Twin(Previous(edge));
    } while (edge != none && edge != first);
    if (edge == first)
    {
        return;
    }
    for (int twin = Twin(first); twin != none; twin = Twin(edge))
    {
        edge = Next(twin);
        if (!use(edge))
        {
            return;
        }
    }
}

int Triangulation::FindEdge(int from, int to) const
{
    int found = none;
    ForEachEdgeFrom(from, [&](int edge) {
        if (End(edge) == to)
        {
            found = edge;
        }
        return found == none;
    });
    return found;
}

Triangulation::Outcome Triangulation::AddEdge(int from, int to, int winding)
{
    int edge = FindEdge(from, to);
    int twin = edge == none ? FindEdge(to, from) : Twin(edge);
    if (edge == none && twin == none)
    {
        const Outcome outcome = FindCrossedEdges(from, to);
        if (outcome != Outcome::Done)
        {
            return outcome;
        }
        FlipCrossedEdges(from, to);
        wasFlipped_ = true;
        edge = FindEdge(from, to);
        twin = Twin(edge);
    }
    for (const int side : {edge, twin})
    {
        if (side == none)
        {
            continue;
        }
        if (IsContourEdge(side))
        {
            return Outcome::Crosses;
        }
        windings_[Index(side)] = static_cast<std::int8_t>(side == edge ? winding : -winding);
    }
    return Outcome::Done;
}

/// Fills crossed_ with the edges that lie between the two points.
Triangulation::Outcome Triangulation::FindCrossedEdges(int from, int to)
{
    const GridPoint& start = Point(from);
    const GridPoint& end = Point(to);
    crossed_.clear();
    int edge = none;
    touchedPoint_ = none;
    ForEachEdgeFrom(from, [&](int candidate) {
        const int right = End(candidate);
        const int left = Apex(candidate);
        const std::int64_t rightTurn = Turn(start, end, Point(right));
        const std::int64_t leftTurn = Turn(start, end, Point(left));
        // With both corners on the line or behind it, the point lies on the way when it lies in the
        // direction of the end.
        for (const int corner : {right, left})
        {
            const std::int64_t turn = corner == right ? rightTurn : leftTurn;
            const GridPoint way = Point(corner) - start;
            const std::int64_t along =
                std::int64_t{way.x} * (end.x - start.x) + std::int64_t{way.y} * (end.y - start.y);
            if (turn == 0 && along > 0)
            {
                touchedPoint_ = corner;
                return false;
            }
        }
        if (rightTurn < 0 && leftTurn > 0)
        {
            edge = Next(candidate);
            return false;
        }
        return true;
    });
    if (touchedPoint_ != none)
    {
        return Outcome::Touches;
    }
    for (;;)
    {
        if (edge == none || IsContourEdge(edge) || Twin(edge) == none)
        {
            return Outcome::Crosses;
        }
        crossed_.push_back({Start(edge), End(edge)});
        const int twin = Twin(edge);
        const int apex = Apex(twin);
        if (apex == to)
        {
            return Outcome::Done;
        }
        const std::int64_t turn = Turn(start, end, Point(apex));
        if (turn == 0)
        {
            touchedPoint_ = apex;
            return Outcome::Touches;
        }
        // The twin runs from the left corner to the right one.
        edge = turn > 0 ? Next(twin) : Previous(twin);
    }
}

/// Flips the edges in crossed_ until none lies between the two points.
void Triangulation::FlipCrossedEdges(int from, int to)
{
    const GridPoint& start = Point(from);
    const GridPoint& end = Point(to);
    for (std::size_t i = 0; i < crossed_.size(); ++i)
    {
        const PointPair pair = crossed_[i];
        const int edge = FindEdge(pair.from, pair.to);
        const int left = Apex(edge);
        const int right = Apex(Twin(edge));
        const bool isConvex = Turn(Point(right), Point(left), Point(pair.from)) > 0 &&
                              Turn(Point(right), Point(left), Point(pair.to)) < 0;
        if (!isConvex)
        {
            crossed_.push_back(pair);
            continue;
        }
        Flip(edge);
        const bool isNextToEnd = left == from || left == to || right == from || right == to;
        if (!isNextToEnd &&
            (Turn(start, end, Point(left)) > 0) != (Turn(start, end, Point(right)) > 0))
        {
            crossed_.push_back({left, right});
        }
    }
}

}  // namespace orvane::profiles
