// SPDX-License-Identifier: MIT
#pragma once

#include "profiles/EdgeProfile.h"
#include "profiles/GridPoint.h"
#include "profiles/PlaneRegion.h"

#include <vector>

namespace orvane::profiles
{

/// An edge of a ring, as indices of its points, with the area on its left.
struct RingEdge
{
    int from;
    int to;
};

/// The border of an area: all its contours, outer ones counter-clockwise and holes clockwise.
struct Ring
{
    std::vector<GridPoint> points;
    std::vector<RingEdge> edges;
};

/// The grid that a region is computed on. There are 2 to the 18th units in an em, about 260,000.
/// Regions larger than 32 ems take the next smaller powers of two, so that no coordinate is greater
/// than maxGridCoordinate.
struct Grid
{
    double unitsPerEm = 0;

    /// \param reach the largest offset from the region, in ems
    Grid(const PlaneRegion& region, double reach);
};

/// A region and the areas that have a given distance from it. Offsets are exact up to the rounding
/// of corners to the grid, about one unit.
class RegionOffsets
{
public:
    /// Throws Error when a coordinate is not a number or the region is larger than
    /// limits::maxRegionSide.
    /// \param reach the largest offset that will be asked for, in ems
    RegionOffsets(const PlaneRegion& region, ProfileCorners corners, double reach);

    double UnitsPerEm() const { return grid_.unitsPerEm; }

    /// Radians between the points of an arc; 0 when rings go around corners in tips.
    double ArcStep() const { return corners_ == ProfileCorners::Round ? arcStep_ : 0; }

    /// The border of the area that is grown by an offset, in grid units, or shrunk by a negative
    /// one. Empty when nothing is left. Of two offsets, the larger one's area contains the other's;
    /// the borders are apart when the offsets differ by at least minSeparation.
    Ring At(double offset) const;

    /// The smallest inward offset, in grid units, at which nothing is left of the region; up to 2
    /// units more.
    double MiddleOffset() const;

    /// Grid units; see At.
    static constexpr double minSeparation = 16;

private:
    /// A corner of the region's contours.
    struct Corner
    {
        contours::DoublePoint place;
        contours::DoublePoint normalBefore;  ///< of the edge that arrives, out of the area
        contours::DoublePoint normalAfter;   ///< of the edge that leaves
        double lengthAfter = 0;              ///< of the edge that leaves
        double sine = 0;                     ///< of the turn; positive to the left
        double cosine = 0;                   ///< of the turn
    };

    enum class Join
    {
        Tip,     ///< both edges are prolonged or cut to where they meet
        CutTip,  ///< the tip is cut off at the offset
        Arc,
        Through  ///< the edges end apart, and the ring goes back to the corner in between
    };

    Join JoinAt(const Corner& corner, double offset) const;
    void AddJoin(const Corner& corner, Join join, double offset,
                 std::vector<contours::DoublePoint>& path) const;
    std::vector<contours::DoublePoint> OffsetContour(const std::vector<Corner>& corners,
                                                     double offset) const;

    Grid grid_;
    ProfileCorners corners_;
    double arcStep_;  ///< radians between the points of an arc, the same for every offset
    std::vector<std::vector<Corner>> contours_;
};

}  // namespace orvane::profiles
