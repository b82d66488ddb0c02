// SPDX-License-Identifier: MIT
#pragma once

#include "profiles/BandDistances.h"
#include "profiles/BandSkeleton.h"
#include "profiles/EdgeSurface.h"

#include <array>
#include <vector>

namespace orvane::profiles
{

/// The ridges and valleys of a band. The surface over a band is made of planes, one for each edge
/// of the base; they meet in the lines of the straight skeleton. Where the triangles of a band are
/// not parts of these planes, the band is triangulated again with the skeleton's nodes as points
/// and its lines as edges.
class BandRidges
{
public:
    /// The parameters are those of BandDistances. The triangulation is changed by the other
    /// functions.
    BandRidges(Triangulation& triangulation, const BandDistances::Side& upper,
               const BandDistances::Side& lower, double arcStep, double unitsPerEm);

    /// The part of the skeleton around the triangles that are not parts of the planes.
    BandSkeleton FindSkeleton();
    /// Makes lines edges of triangles. The triangulation has the nodes as points after those of the
    /// rings.
    void AddLines(const BandSkeleton& skeleton);
    /// After AddLines: places on lines of the skeleton that were not found, in the triangles that
    /// are not parts of the surface.
    std::vector<BandSkeleton::LinePlace> MissingLines(const BandSkeleton& skeleton);
    /// Appends the nodes to \p ridge.
    void AddNodes(const BandSkeleton& skeleton, std::vector<RidgePoint>& ridge);
    /// Puts points on the edges that still join two points of the same ring, and appends them to
    /// \p ridge. An edge stays when no place on it is left on the grid.
    void CutChords(std::vector<RidgePoint>& ridge);

private:
    double HeightOf(int point) const;
    contours::DoublePoint PlaceOf(int point) const;
    bool IsChord(int halfEdge) const;
    /// Of the corners of a triangle: their distances from the base, in grid units.
    using Heights = std::array<double, 3>;
    Heights RingHeights(int triangle) const;
    bool IsOnPlane(int triangle, const Heights& heights) const;
    bool IsOnFarEdge(int triangle, const Heights& heights) const;
    std::vector<int> CornersToTrace() const;
    bool IsInFrontOfEdge(int triangle, const Heights& heights) const;
    void AddMissing(int triangle, const Heights& heights,
                    std::vector<BandSkeleton::LinePlace>& missing);
    void AddRidge(const GridPoint& place, double distance, std::vector<RidgePoint>& ridge);

    Triangulation& triangulation_;
    BandDistances distances_;
    double tolerance_;  ///< of heights, in grid units
};

/// Appends the triangles inside, and turns them over if asked to.
void AppendInside(const Triangulation& triangulation, bool turnOver,
                  std::vector<IndexTriangle>& triangles);

}  // namespace orvane::profiles
