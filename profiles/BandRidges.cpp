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

/// The heights of the corners of a triangle between two rings.
BandRidges::Heights BandRidges::RingHeights(int triangle) const
{
    Heights heights = {};
    for (int i = 0; i < 3; ++i)
    {
        heights[static_cast<std::size_t>(i)] = HeightOf(triangulation_.Start(3 * triangle + i));
    }
    return heights;
}

/// Whether a triangle rises from one of its edges, which belongs to a ring, as steeply as the
/// surface does.
bool BandRidges::IsOnPlane(int triangle, const Heights& heights) const
{
    for (int i = 0; i < 3; ++i)
    {
        const int edge = 3 * triangle + i;
        if (!triangulation_.IsContourEdge(edge))
        {
            continue;
        }
        const DoublePoint from = PlaceOf(triangulation_.Start(edge));
        const DoublePoint way = PlaceOf(triangulation_.End(edge)) - from;
        const double rise = std::abs(heights[static_cast<std::size_t>((i + 2) % 3)] -
                                     heights[static_cast<std::size_t>(i)]);
        const double away =
            Cross(way, PlaceOf(triangulation_.Apex(edge)) - from) / std::sqrt(Dot(way, way));
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
        if (!triangulation_.IsInside(triangle) || IsOnPlane(triangle, RingHeights(triangle)))
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

void BandRidges::AddLines(const BandSkeleton& skeleton)
{
    for (const BandSkeleton::Line& line : skeleton.Lines())
    {
        // A line that rounding has led over a point or another line is left out.
        triangulation_.AddEdge(line.from, line.to, 0);
    }
}

void BandRidges::AddNodes(const BandSkeleton& skeleton, std::vector<RidgePoint>& ridge)
{
    for (const BandSkeleton::Node& node : skeleton.Nodes())
    {
        AddRidge(node.place, node.height, ridge);
    }
}

/// Whether a triangle descends from one of its edges, which belongs to the far ring, as steeply as
/// the surface does.
bool BandRidges::IsOnFarEdge(int triangle, const Heights& heights) const
{
    for (int edge = 3 * triangle; edge < 3 * triangle + 3; ++edge)
    {
        if (triangulation_.IsContourEdge(edge) &&
            distances_.PlaceOf(triangulation_.Start(edge)) == BandDistances::Place::Far)
        {
            return IsOnPlane(triangle, heights);
        }
    }
    return false;
}

/// Whether the corners of a triangle lie in the plane that rises from an edge of the base, and in
/// front of that edge, which must have a corner of the triangle.
bool BandRidges::IsInFrontOfEdge(int triangle, const Heights& heights) const
{
    for (int edge = 3 * triangle; edge < 3 * triangle + 3; ++edge)
    {
        const int point = triangulation_.Start(edge);
        if (distances_.PlaceOf(point) != BandDistances::Place::Base)
        {
            continue;
        }
        const BandDistances::Corner& corner = distances_.CornerAt(point);
        bool isBefore = true;
        bool isAfter = true;
        for (int i = 0; i < 3; ++i)
        {
            const DoublePoint place = PlaceOf(triangulation_.Start(3 * triangle + i));
            const double height = heights[static_cast<std::size_t>(i)];
            const DoublePoint way = place - PlaceOf(point);
            const double before = corner.slopeBefore.At(place);
            const double after = corner.slopeAfter.At(place);
            // Around a gap, the higher one of the planes is the surface.
            const auto isOn = [&](double own, double other, double along, double length) {
                return std::abs(own - height) <= tolerance_ && along <= length + tolerance_ &&
                       (along >= -tolerance_ || (corner.isGap && own >= other - tolerance_));
            };
            isBefore =
                isBefore && isOn(before, after, -Dot(way, corner.before), corner.lengthBefore);
            isAfter = isAfter && isOn(after, before, Dot(way, corner.after), corner.lengthAfter);
        }
        if (isBefore || isAfter)
        {
            return true;
        }
    }
    return false;
}

std::vector<BandSkeleton::LinePlace> BandRidges::MissingLines(const BandSkeleton& skeleton)
{
    std::vector<BandSkeleton::LinePlace> missing;
    for (int triangle = 0; triangle < triangulation_.TriangleCount(); ++triangle)
    {
        if (!triangulation_.IsInside(triangle))
        {
            continue;
        }
        Heights heights = {};
        bool hasNode = false;
        for (int i = 0; i < 3; ++i)
        {
            const int point = triangulation_.Start(3 * triangle + i);
            const bool isNode = distances_.PlaceOf(point) == BandDistances::Place::Ridge;
            hasNode = hasNode || isNode;
            heights[static_cast<std::size_t>(i)] =
                isNode ? skeleton.Nodes()[static_cast<std::size_t>(point - distances_.RingCount())]
                             .height
                       : HeightOf(point);
        }
        if (!(hasNode ? IsOnFarEdge(triangle, heights) || IsInFrontOfEdge(triangle, heights)
                      : IsOnPlane(triangle, heights)))
        {
            AddMissing(triangle, heights, missing);
        }
    }
    return missing;
}

/// Looks for lines between the middle of a triangle and its border, if the surface has another
/// height than the triangle, in the middle or on a chord.
void BandRidges::AddMissing(int triangle, const Heights& heights,
                            std::vector<BandSkeleton::LinePlace>& missing)
{
    std::array<DoublePoint, 3> corners;
    for (int i = 0; i < 3; ++i)
    {
        corners[static_cast<std::size_t>(i)] = PlaceOf(triangulation_.Start(3 * triangle + i));
    }
    // A triangle that is too small to be seen.
    constexpr double smallArea = 1000;  // square grid units
    if (Cross(corners[1] - corners[0], corners[2] - corners[0]) < smallArea)
    {
        return;
    }
    const DoublePoint middle = (corners[0] + corners[1] + corners[2]) / 3;
    const BandDistance inMiddle = distances_.At(triangle, middle);
    const double height = (heights[0] + heights[1] + heights[2]) / 3;
    const bool hasChord =
        IsChord(3 * triangle) || IsChord(3 * triangle + 1) || IsChord(3 * triangle + 2);
    if (!inMiddle.isPlane || (!hasChord && std::abs(inMiddle.distance - height) <= tolerance_))
    {
        return;
    }
    for (const DoublePoint& end :
         {corners[0], corners[1], corners[2], (corners[0] + corners[1]) / 2,
          (corners[1] + corners[2]) / 2, (corners[2] + corners[0]) / 2})
    {
        constexpr double nearlyThere = 0.98;
        const DoublePoint way = (end - middle) * nearlyThere;
        BandDistance beyond = distances_.At(triangle, middle + way);
        constexpr int maxSteps = 20;
        for (int step = 0; step < maxSteps && beyond.isPlane; ++step)
        {
            // Where the planes of the middle and of the place beyond it meet.
            const double above = beyond.slope.At(middle) - inMiddle.distance;
            const double closing = Dot(inMiddle.slope.normal - beyond.slope.normal, way);
            const double part = above / closing;
            if (!(part > 0 && part < 1))
            {
                break;
            }
            const DoublePoint place = middle + way * part;
            const BandDistance there = distances_.At(triangle, place);
            constexpr double sameHeight = 3;
            if (std::abs(there.distance - beyond.slope.At(place)) < sameHeight)
            {
                missing.push_back({place, inMiddle.slope, beyond.slope});
                break;
            }
            beyond = there;
        }
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
