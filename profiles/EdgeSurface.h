// SPDX-License-Identifier: MIT
#pragma once

#include "profiles/BandSkeleton.h"
#include "profiles/EdgeProfile.h"
#include "profiles/RegionOffsets.h"
#include "profiles/Triangulation.h"

#include <array>
#include <span>
#include <vector>

namespace orvane::profiles
{

/// A ring of an edge. Levels of the same offset share their ring.
struct Level
{
    std::size_t ring = 0;  ///< in EdgeSurface::Rings()
    double height = 0;     ///< in ems; 0 in the plane of the face, negative behind it
};

/// A triangle, as three points.
using IndexTriangle = std::array<int, 3>;

/// A point of a ridge or a valley, between two rings.
struct RidgePoint
{
    GridPoint place;
    double fraction = 0;  ///< of the way from the upper level to the lower one
};

/// The surface between two levels that have different offsets. Points are numbered: first those of
/// the upper ring, then those of the lower ring, then the ridge points.
struct Band
{
    std::vector<IndexTriangle> triangles;  ///< counter-clockwise from outside of the solid
    std::vector<RidgePoint> ridge;
};

/// The edge of a letter from its face to its wall, as levels and the bands between them. It is
/// computed once and used for the front of the letter, the back, or both.
///
/// The band between two levels fills the area between their rings. Each edge of a ring is an edge
/// of one triangle above and of one below, so that bands, walls and faces fit together. Where a
/// stroke vanishes between two levels, or two strokes meet, the band has ridges; see BandRidges.
class EdgeSurface
{
public:
    /// Which levels' rings are filled.
    enum class Faces
    {
        First,
        Both  ///< the first and the last
    };

    /// Throws Error when the profile or a coordinate of the region is wrong, and when no offset
    /// near one that is needed has a border that can be filled.
    EdgeSurface(const PlaneRegion& region, const EdgeProfile& profile, Faces faces);

    double UnitsPerEm() const { return offsets_.UnitsPerEm(); }
    /// From the face to the wall; at least one.
    const std::vector<Level>& Levels() const { return levels_; }
    const Ring& RingOf(const Level& level) const { return rings_[level.ring]; }
    /// The band between level \p index and the next; empty where they share a ring.
    const Band& BandBelow(std::size_t index) const { return bands_[index]; }
    /// The triangles that fill the area of the first level's ring, and of the last level's if that
    /// was asked for; counter-clockwise seen from the front.
    const std::vector<IndexTriangle>& FirstFill() const { return firstFill_; }
    const std::vector<IndexTriangle>& LastFill() const { return lastFill_; }

private:
    /// Of a ring: the offset that it was made for and the one that it has, in grid units. They
    /// differ when the first one's border could not be filled.
    struct FoundRing
    {
        double wanted;
        double actual;
        int tries;
    };

    void AddLevels(const EdgeProfile& profile);
    std::size_t RingAt(double offset);
    void FindBands();
    /// Computes a band. Returns false when the two rings cannot be joined.
    bool FindBand(std::size_t index);
    /// Triangulates the band between two rings, with nodes in it. Returns false when they cannot be
    /// joined.
    bool Join(const Ring& upper, const Ring& lower, int winding,
              std::span<const BandSkeleton::Node> nodes);
    bool JoinWithNodes(const Ring& upper, const Ring& lower, int winding, BandSkeleton& skeleton);
    void TryNextOffset(std::size_t ring);
    /// Finds triangles that fill a ring. Returns false when it meets itself.
    bool Fill(const Ring& ring, std::vector<IndexTriangle>& triangles);

    RegionOffsets offsets_;
    Faces faces_;
    std::vector<FoundRing> found_;  ///< of each ring
    std::vector<Ring> rings_;
    std::vector<Level> levels_;
    std::vector<Band> bands_;
    std::vector<IndexTriangle> firstFill_;
    std::vector<IndexTriangle> lastFill_;
    Triangulation triangulation_;    ///< of the band that is being computed
    std::vector<GridPoint> points_;  ///< of that band
};

}  // namespace orvane::profiles
