// SPDX-License-Identifier: MIT
#pragma once

#include "profiles/BandDistances.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace orvane::profiles
{

/// The straight skeleton of a band: the lines where the planes that rise from the edges of its base
/// meet. A line starts at each corner of the base and follows the places at the same distance from
/// two edges. Where a third edge is as near, it ends in a node, from which other lines start.
class BandSkeleton
{
public:
    struct Node
    {
        GridPoint place;
        double height = 0;  ///< the distance from the base, in grid units
    };

    /// A line between two points. Nodes are numbered after the points of the two rings.
    struct Line
    {
        int from;
        int to;
    };

    /// A place on a line that was not found: the surface has a slope on each side of it.
    struct LinePlace
    {
        contours::DoublePoint place;
        Slope left;
        Slope right;
    };

    /// \param triangulation of the two rings alone. Borrowed, as \p distances is.
    BandSkeleton(const Triangulation& triangulation, BandDistances& distances);

    /// Follows the lines from these points of the base, which may be named more than once, and the
    /// lines from the nodes that are found.
    void Trace(const std::vector<int>& corners);
    /// Follows lines in both directions from places on them, and the lines from the nodes that are
    /// found. The triangulation is that of the two rings alone again. Each place becomes a node.
    void TraceFrom(const std::vector<LinePlace>& places);

    /// Moves a node that rounding has put onto a ring or another node, by a grid unit or two.
    void MoveNode(std::size_t node);

    const std::vector<Node>& Nodes() const { return nodes_; }
    const std::vector<Line>& Lines() const { return lines_; }

private:
    /// A line that has not been followed yet.
    struct Ray
    {
        int from;  ///< the point where it starts
        contours::DoublePoint place;
        double height;
        contours::DoublePoint direction;  ///< of unit length
        Slope left;
        Slope right;
        int triangle;  ///< that the line starts in

        /// How much the line rises in a unit of its length.
        double Rate() const { return Dot(left.normal, direction); }
    };

    /// The surface on both sides of a line.
    struct Sides
    {
        BandDistance surface[2];
        bool areOfRay;  ///< they are the two slopes of the line
    };

    struct NodeSlopes
    {
        contours::DoublePoint place;
        int triangle;
        std::vector<Slope> slopes;
    };

    void FollowAll();
    void StartAt(int corner);
    void AddRay(int from, const contours::DoublePoint& place, const Slope& left,
                const Slope& right);
    int TriangleTowards(int corner, const contours::DoublePoint& direction) const;
    void Follow(const Ray& ray);
    static double LengthUntil(const Ray& ray, const Slope& slope);
    Sides SidesAt(const Ray& ray, double length);
    bool IsThird(const Ray& ray, const BandDistance& surface) const;
    void EndNear(const Ray& ray, double length);
    void EndAtRing(const Ray& ray, double length);
    void EndAtNode(const Ray& ray, double length, const Slope& third);
    void StartFromNode(std::size_t node, const Slope& a, const Slope& b,
                       const contours::DoublePoint& arrival);
    BandDistance Probe(std::size_t node, const contours::DoublePoint& way);
    std::size_t NodeNear(const contours::DoublePoint& place);
    int TriangleAt(const contours::DoublePoint& place) const;
    int RingPointNear(int triangle, const contours::DoublePoint& place) const;

    const Triangulation& triangulation_;
    BandDistances& distances_;
    std::vector<int> edgeOfPoint_;  ///< of each point, a half-edge inside that starts there
    std::vector<Node> nodes_;
    std::vector<NodeSlopes> slopes_;  ///< of each node
    std::unordered_map<std::int64_t, std::size_t> nodeInCell_;
    std::vector<Line> lines_;
    std::vector<Ray> rays_;
};

}  // namespace orvane::profiles
