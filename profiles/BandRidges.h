// SPDX-License-Identifier: MIT
#pragma once

#include "profiles/EdgeSurface.h"
#include "profiles/Triangulation.h"

#include <vector>

namespace orvane::profiles
{

/// The ridges and valleys of a band. Where a stroke vanishes between two rings, or strokes meet,
/// the triangulation of the band has chords: edges inside it that join two points of the same ring.
/// A triangle between chords would be level. Its true height follows from the distance to the base,
/// the ring whose offset is nearer to 0, because the other ring is made of the places that have a
/// certain distance from it.
class BandRidges
{
public:
    struct Side
    {
        const Ring& ring;
        double offset;  ///< in grid units
    };

    /// \param triangulation of the band, after FindInside. Its points are those of the upper ring
    /// and then those of the lower ring. Borrowed, as the rings are.
    /// \param lower its offset does not have the other sign than that of \p upper
    BandRidges(Triangulation& triangulation, const Side& upper, const Side& lower,
               ProfileCorners corners, double unitsPerEm);

    /// Offsets where levels should be put into the band, in the order from the upper ring to the
    /// lower one; empty when its chords matter too little. A level just short of the place where a
    /// stroke vanishes leaves a narrow strip, which ridge points describe well.
    std::vector<double> Cuts();

    /// Puts a ridge point on the middle of each chord and into each triangle between three chords.
    void AddPoints(std::vector<RidgePoint>& ridge);

private:
    enum class Place
    {
        Upper,
        Lower,
        Ridge
    };

    /// A triangle whose plane is not where the surface should be.
    struct WrongTriangle
    {
        double distance;  ///< from the base, of the farthest place that was looked at; grid units
        double volume;    ///< between the triangle and the surface, about
    };

    struct PointPair
    {
        int before;
        int after;
    };

    Place PlaceOf(int point) const;
    bool IsChord(int halfEdge) const;
    /// The distance of a place in a triangle from the edges of the base, along ways inside the
    /// band.
    double DistanceToBase(int triangle, const GridPoint& place);
    double DistanceToEdge(int halfEdge, const GridPoint& place) const;
    double DistanceToTip(int point, const GridPoint& place) const;
    double FractionAt(double distance) const;
    std::vector<WrongTriangle> WrongTriangles();
    WrongTriangle JudgeLevel(int triangle, double area, Place ring);
    WrongTriangle JudgeSloping(int triangle, double area);

    Triangulation& triangulation_;
    int upperCount_;
    int ringCount_;  ///< points of both rings
    bool isMitred_;
    int firstOfBase_;                ///< the number of the base's first point
    std::vector<PointPair> beside_;  ///< of each point of the base: those before and after it
    double unitsPerEm_;
    double from_;
    double to_;
    Place base_;
    std::vector<int> visited_;  ///< of each triangle, the search that came to it last
    std::vector<int> toVisit_;
    int searches_ = 0;
};

/// Appends the triangles inside, and turns them over if asked to.
void AppendInside(const Triangulation& triangulation, bool turnOver,
                  std::vector<IndexTriangle>& triangles);

}  // namespace orvane::profiles
