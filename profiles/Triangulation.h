// SPDX-License-Identifier: MIT
#pragma once

#include "profiles/GridPoint.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace orvane::profiles
{

/// A constrained Delaunay triangulation of points on the grid. Build triangulates the convex hull
/// of the points, AddEdge makes edges of contours edges of triangles, and FindInside tells which
/// triangles lie in the area that the contours enclose. All decisions about order are exact, and no
/// step moves, adds or merges a point, except the two Split functions, which are told to.
///
/// A half-edge is one side of one triangle: half-edge h belongs to triangle h / 3, starts at point
/// Start(h), and has the triangle on its left. Half-edges of a triangle follow each other
/// counter-clockwise.
class Triangulation
{
public:
    static constexpr int none = -1;

    enum class Outcome
    {
        Done,
        Flat,     ///< all points lie on one line
        Repeats,  ///< two points lie at the same place; TouchedPoint() is the one added later
        Crosses,  ///< the edge crosses or repeats an edge that was added before
        Touches   ///< the edge runs through a point; TouchedPoint() tells which
    };

    /// Starts anew with these points, which are copied.
    Outcome Build(std::span<const GridPoint> points);

    /// Makes an edge of a contour an edge of two triangles.
    /// \param winding what is added to the winding on the left of the way: 1, or -1 for a contour
    /// whose area is taken away. 0 makes an edge of no contour, after FindInside only, because that
    /// may flip it.
    Outcome AddEdge(int from, int to, int winding);
    /// The point that kept the last Build or AddEdge from being done, or none.
    int TouchedPoint() const { return touchedPoint_; }

    /// Computes the winding of every triangle from the edges that were added, which must be closed
    /// contours, and improves the shapes of triangles as far as these edges allow. Returns false
    /// when a winding is neither 0 nor \p expected.
    bool FindInside(int expected);
    /// After FindInside: whether a triangle has the expected winding.
    bool IsInside(int triangle) const { return inside_[Index(triangle)] != 0; }

    int TriangleCount() const { return static_cast<int>(starts_.size()) / 3; }
    int HalfEdgeCount() const { return static_cast<int>(starts_.size()); }
    int Start(int halfEdge) const { return starts_[Index(halfEdge)]; }
    int End(int halfEdge) const { return starts_[Index(Next(halfEdge))]; }
    int Apex(int halfEdge) const { return starts_[Index(Previous(halfEdge))]; }
    /// The half-edge on the other side, or none at the border of the hull.
    int Twin(int halfEdge) const { return twins_[Index(halfEdge)]; }
    bool IsContourEdge(int halfEdge) const { return windings_[Index(halfEdge)] != 0; }
    static int Next(int halfEdge) { return halfEdge % 3 == 2 ? halfEdge - 2 : halfEdge + 1; }
    static int Previous(int halfEdge) { return halfEdge % 3 == 0 ? halfEdge + 2 : halfEdge - 1; }

    int PointCount() const { return static_cast<int>(points_.size()); }
    const GridPoint& Point(int index) const { return points_[Index(index)]; }

    /// Adds a point on or beside the middle of an edge that no contour has, and cuts the two
    /// triangles beside it into four. Both must be inside. Returns the point's index, or none when
    /// a triangle would have no area or turn over; nothing has changed then.
    int SplitEdge(int halfEdge, const GridPoint& place);
    /// Adds a point inside a triangle and cuts it into three. Returns none as SplitEdge does.
    int SplitTriangle(int triangle, const GridPoint& place);

private:
    static std::size_t Index(int value) { return static_cast<std::size_t>(value); }

    void BuildFirstTriangles(int count);
    void AddOutside(int point, int previous);
    int AddTriangle(int a, int b, int c);
    void Link(int a, int b);
    /// Flips edges until every circle through the corners of a triangle is empty, starting with the
    /// half-edges in pending_.
    void FlipPending();
    bool ShouldFlip(int halfEdge) const;
    void Flip(int halfEdge);
    void FindEdgesOfPoints();
    /// The half-edge from one point to another, or none.
    int FindEdge(int from, int to) const;
    template <typename Use>
    void ForEachEdgeFrom(int point, Use use) const;
    Outcome FindCrossedEdges(int from, int to);
    void FlipCrossedEdges(int from, int to);

    struct PointPair
    {
        int from;
        int to;
    };

    std::vector<GridPoint> points_;
    std::vector<int> starts_;            ///< of each half-edge
    std::vector<int> twins_;             ///< of each half-edge
    std::vector<std::int8_t> windings_;  ///< of each half-edge; 0 for an edge of no contour
    std::vector<std::int8_t> inside_;    ///< of each triangle
    std::vector<int> edgeOfPoint_;       ///< of each point, a half-edge that starts there
    std::vector<int> order_;             ///< the points from left to right
    std::vector<int> hullNext_;          ///< of each point of the hull, counter-clockwise
    std::vector<int> hullPrevious_;      ///< of each point of the hull
    std::vector<int> hullEdge_;          ///< of each point of the hull, the half-edge to the next
    std::vector<int> pending_;           ///< half-edges that may have to be flipped
    std::vector<PointPair> crossed_;     ///< edges between an edge and its place
    int touchedPoint_ = none;
    bool wasFlipped_ = false;  ///< by AddEdge
};

}  // namespace orvane::profiles
