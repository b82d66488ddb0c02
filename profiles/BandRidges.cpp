// SPDX-License-Identifier: MIT
#include "profiles/BandRidges.h"

#include <algorithm>
#include <cmath>

namespace orvane::profiles
{

using contours::DoublePoint;

BandRidges::BandRidges(Triangulation& triangulation, const BandDistances::Side& upper,
                       const BandDistances::Side& lower, double arcStep, double unitsPerEm)
    : triangulation_(triangulation),
      distances_(triangulation, upper, lower, arcStep),
      // 1/5000 em is less than a tenth of a pixel of the largest letters on a screen.
      tolerance_(std::max(4.0, std::min(unitsPerEm / 5000, distances_.Span() / 100)))
{}

double BandRidges::HeightOf(int point) const
{
    return distances_.PlaceOf(point) == BandDistances::Place::Base ? 0 : distances_.Span();
}

DoublePoint BandRidges::PlaceOf(int point) const
{
    return PointOf(triangulation_.Point(point));
}

bool BandRidges::IsChord(int halfEdge) const
{
    const auto place = distances_.PlaceOf(triangulation_.Start(halfEdge));
    return triangulation_.IsInside(halfEdge / 3) && !triangulation_.IsContourEdge(halfEdge) &&
           place != BandDistances::Place::Ridge &&
           place == distances_.PlaceOf(triangulation_.End(halfEdge));
}

/// Whether a triangle between two rings rises from one of its edges, which belongs to a ring, as
/// steeply as the surface does.
bool BandRidges::IsOnPlane(int triangle) const
{
    for (int edge = 3 * triangle; edge < 3 * triangle + 3; ++edge)
    {
        if (!triangulation_.IsContourEdge(edge))
        {
            continue;
        }
        const int start = triangulation_.Start(edge);
        const DoublePoint from = PlaceOf(start);
        const DoublePoint way = PlaceOf(triangulation_.End(edge)) - from;
        const int apex = triangulation_.Apex(edge);
        const double rise = std::abs(HeightOf(apex) - HeightOf(start));
        const double away = Cross(way, PlaceOf(apex) - from) / std::sqrt(Dot(way, way));
        if (std::abs(rise - away) <= tolerance_)
        {
            return true;
        }
    }
    return false;
}

/// The corners of the base at triangles that are wrong, and at their neighbours.
std::vector<int> BandRidges::CornersToTrace() const
{
    std::vector<int> corners;
    for (int triangle = 0; triangle < triangulation_.TriangleCount(); ++triangle)
    {
        if (!triangulation_.IsInside(triangle) || IsOnPlane(triangle))
        {
            continue;
        }
        for (int edge = 3 * triangle; edge < 3 * triangle + 3; ++edge)
        {
            if (distances_.PlaceOf(triangulation_.Start(edge)) == BandDistances::Place::Base)
            {
                corners.push_back(triangulation_.Start(edge));
            }
            const int twin = triangulation_.Twin(edge);
            if (!triangulation_.IsContourEdge(edge) &&
                distances_.PlaceOf(triangulation_.Apex(twin)) == BandDistances::Place::Base)
            {
                corners.push_back(triangulation_.Apex(twin));
            }
        }
    }
    return corners;
}

BandSkeleton BandRidges::FindSkeleton()
{
    BandSkeleton skeleton(triangulation_, distances_);
    skeleton.Trace(CornersToTrace());
    return skeleton;
}

void BandRidges::AddSkeleton(const BandSkeleton& skeleton, std::vector<RidgePoint>& ridge)
{
    for (const BandSkeleton::Line& line : skeleton.Lines())
    {
        // A line that rounding has led over a point or another line is left out.
        triangulation_.AddEdge(line.from, line.to, 0);
    }
    for (const BandSkeleton::Node& node : skeleton.Nodes())
    {
        AddRidge(node.place, node.height, ridge);
    }
}

void BandRidges::AddRidge(const GridPoint& place, double distance, std::vector<RidgePoint>& ridge)
{
    // No triangle between ridge points lies level with a ring.
    constexpr double least = 1e-5;
    const double part = std::clamp(distance / distances_.Span(), least, 1 - least);
    ridge.push_back({place, distances_.IsBaseUpper() ? part : 1 - part});
}

void BandRidges::CutChords(std::vector<RidgePoint>& ridge)
{
    const auto add = [&](int point, const GridPoint& place, double distance) {
        if (point != Triangulation::none)
        {
            AddRidge(place, distance, ridge);
        }
    };
    const int count = triangulation_.TriangleCount();
    for (int triangle = 0; triangle < count; ++triangle)
    {
        const int edge = 3 * triangle;
        if (IsChord(edge) && IsChord(edge + 1) && IsChord(edge + 2))
        {
            const GridPoint place = NearestGridPoint((PlaceOf(triangulation_.Start(edge)) +
                                                      PlaceOf(triangulation_.Start(edge + 1)) +
                                                      PlaceOf(triangulation_.Start(edge + 2))) /
                                                     3);
            const double distance = distances_.At(triangle, PointOf(place)).distance;
            add(triangulation_.SplitTriangle(triangle, place), place, distance);
        }
    }
    // Splitting appends half-edges, which are looked at in their turn.
    for (int edge = 0; edge < triangulation_.HalfEdgeCount(); ++edge)
    {
        if (IsChord(edge))
        {
            const GridPoint place = NearestGridPoint(
                (PlaceOf(triangulation_.Start(edge)) + PlaceOf(triangulation_.End(edge))) / 2);
            const double distance = distances_.At(edge / 3, PointOf(place)).distance;
            add(triangulation_.SplitEdge(edge, place), place, distance);
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
