// SPDX-License-Identifier: MIT
#pragma once

#include "profiles/RegionOffsets.h"
#include "profiles/Triangulation.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace orvane::profiles
{

/// A plane over the plane of letters that rises from a line, by one unit a unit or, in an arc, a
/// little more. Its height at a place is the offset at which a ring reaches the place, negative
/// behind the line; grid units.
struct Slope
{
    contours::DoublePoint normal;  ///< the direction in which it rises; its length is the rise
    double level = 0;              ///< of the line: its points have this product with the normal

    double At(const contours::DoublePoint& place) const { return Dot(normal, place) - level; }
};

/// How far a place in a band is from the band's base.
struct BandDistance
{
    double distance = 0;   ///< grid units
    Slope slope;           ///< the plane on which the surface lies there
    bool isPlane = false;  ///< false where nothing of the base is near
};

/// Distances inside a band from its base, the ring whose offset is nearer to 0. The other ring is
/// made of the places that have a certain distance; the distances in between are the heights of the
/// surface. Ways that leave the band do not count.
class BandDistances
{
public:
    struct Side
    {
        const Ring& ring;
        double offset;  ///< in grid units
    };

    /// A straight way through the triangles of the band.
    struct Walk
    {
        int triangle;     ///< in which the way ends
        double part;      ///< of the way that lies in the band
        int contourEdge;  ///< where it leaves the band, or none
    };

    enum class Place
    {
        Base,
        Far,   ///< on the other ring
        Ridge  ///< a point that was added to the triangulation
    };

    /// A corner of the base, with directions and slopes of unit length.
    struct Corner
    {
        contours::DoublePoint before;  ///< the direction of the edge that arrives
        contours::DoublePoint after;   ///< the direction of the edge that leaves
        double lengthBefore = 0;       ///< of the edge that arrives, in grid units
        double lengthAfter = 0;        ///< of the edge that leaves
        Slope slopeBefore;
        Slope slopeAfter;
        bool isGap = false;  ///< the surface goes around the corner, in a tip or an arc
        /// Between the two: that of the cut of a tip that is cut off, or those of an arc.
        std::vector<Slope> between;
    };

    /// \param triangulation of the band, after FindInside. Its points are those of the upper ring,
    /// those of the lower ring, and others. Borrowed; it may be changed later.
    /// \param lower its offset does not have the other sign than that of \p upper
    /// \param arcStep radians between the points of an arc; 0 when rings go around corners in tips
    BandDistances(const Triangulation& triangulation, const Side& upper, const Side& lower,
                  double arcStep);

    /// The distance of a place in \p triangle, which lies inside the band.
    BandDistance At(int triangle, const contours::DoublePoint& place);

    Walk WalkFrom(int triangle, const contours::DoublePoint& from,
                  const contours::DoublePoint& to) const;

    Place PlaceOf(int point) const;
    /// The plane that rises from an edge of the base, as at the edge itself.
    BandDistance SlopeOf(int halfEdge) const;
    /// The corner at a point of the base.
    const Corner& CornerAt(int point) const
    {
        return corners_[static_cast<std::size_t>(isBaseUpper_ ? point : point - upperCount_)];
    }
    int RingCount() const { return ringCount_; }
    /// The difference of the two rings' offsets, in grid units.
    double Span() const { return span_; }
    bool IsBaseUpper() const { return isBaseUpper_; }

private:
    /// A triangle to look at, and the distance of the edge that leads into it.
    struct Visit
    {
        int triangle;
        double distance;
    };

    void FindCorners(const Ring& base, bool grows, double arcStep);
    void ShapeGap(Corner& gap, int point, double side, double arcStep);
    void LookAtEdge(int halfEdge, const contours::DoublePoint& place, BandDistance& nearest) const;
    std::int64_t CellOf(const contours::DoublePoint& place, int right, int up) const;
    void LookAtTips(int triangle, const contours::DoublePoint& place, BandDistance& nearest) const;
    void LookAtCorner(int point, const contours::DoublePoint& place, BandDistance& nearest) const;
    double DistanceToEdge(int halfEdge, const contours::DoublePoint& place) const;

    const Triangulation& triangulation_;
    int upperCount_;
    int ringCount_;  ///< points of both rings
    bool isBaseUpper_;
    double span_;
    std::vector<Corner> corners_;  ///< of each point of the base
    /// The corners whose tips reach far, by the cells of a grid.
    std::unordered_map<std::int64_t, std::vector<int>> tips_;
    std::vector<int> visited_;    ///< of each triangle, the search that came to it last
    std::vector<Visit> toVisit_;  ///< the nearest come first, about
    int searches_ = 0;
};

}  // namespace orvane::profiles
