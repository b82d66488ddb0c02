// SPDX-License-Identifier: MIT
#include "profiles/ProfileSolid.h"

#include "orvane/Error.h"
#include "profiles/EdgeSurface.h"
#include "profiles/SolidNormals.h"

#include <cmath>
#include <utility>

namespace orvane
{

namespace
{

using profiles::Band;
using profiles::EdgeSurface;
using profiles::GridPoint;
using profiles::IndexTriangle;
using profiles::Level;
using profiles::RidgePoint;
using profiles::Ring;
using profiles::RingEdge;

/// Puts the pieces of an edge together.
class SolidBuilder
{
public:
    explicit SolidBuilder(const EdgeSurface& edge) : edge_(edge) {}

    /// A ring of the solid: the index of its first position.
    struct PlacedRing
    {
        const Ring* ring;
        std::uint32_t first;
        double z;
    };

    PlacedRing Place(const Ring& ring, double z)
    {
        const auto first = static_cast<std::uint32_t>(solid_.positions.size());
        for (const GridPoint& point : ring.points)
        {
            AddPosition(point, z);
        }
        return {&ring, first, z};
    }

    void AddFace(const std::vector<IndexTriangle>& triangles, const PlacedRing& ring, bool isBack)
    {
        for (const IndexTriangle& triangle : triangles)
        {
            Add({ring.first + Unsigned(triangle[0]), ring.first + Unsigned(triangle[1]),
                 ring.first + Unsigned(triangle[2])},
                isBack, SolidPart::Face);
        }
    }

    /// A vertical wall between two placements of a ring.
    void AddWall(const PlacedRing& front, const PlacedRing& back, SolidPart part)
    {
        for (const RingEdge& edge : front.ring->edges)
        {
            const std::uint32_t from = Unsigned(edge.from);
            const std::uint32_t to = Unsigned(edge.to);
            Add({front.first + to, front.first + from, back.first + from}, false, part);
            Add({front.first + to, back.first + from, back.first + to}, false, part);
        }
    }

    /// A band whose upper ring is \p upper. On the back of the letter, the upper ring lies behind
    /// the lower one.
    void AddBand(const Band& band, const PlacedRing& upper, const PlacedRing& lower, bool isBack)
    {
        const auto firstRidge = static_cast<std::uint32_t>(solid_.positions.size());
        for (const RidgePoint& point : band.ridge)
        {
            AddPosition(point.place, upper.z + (lower.z - upper.z) * point.fraction);
        }
        const std::uint32_t upperCount = Unsigned(upper.ring->points.size());
        const std::uint32_t ringCount = upperCount + Unsigned(lower.ring->points.size());
        const auto position = [&](int index) {
            const std::uint32_t point = Unsigned(index);
            return point < upperCount  ? upper.first + point
                   : point < ringCount ? lower.first + (point - upperCount)
                                       : firstRidge + (point - ringCount);
        };
        for (const IndexTriangle& triangle : band.triangles)
        {
            Add({position(triangle[0]), position(triangle[1]), position(triangle[2])}, isBack,
                SolidPart::Bevel);
        }
    }

    ProfileSolid Take() { return std::move(solid_); }

private:
    template <typename Number>
    static std::uint32_t Unsigned(Number value)
    {
        return static_cast<std::uint32_t>(value);
    }

    void AddPosition(const GridPoint& point, double z)
    {
        solid_.positions.push_back({static_cast<float>(point.x / edge_.UnitsPerEm()),
                                    static_cast<float>(point.y / edge_.UnitsPerEm()),
                                    static_cast<float>(z)});
    }

    void Add(const std::array<std::uint32_t, 3>& corners, bool turnOver, SolidPart part)
    {
        SolidTriangle& triangle = solid_.triangles.emplace_back();
        triangle.corners = corners;
        if (turnOver)
        {
            std::swap(triangle.corners[1], triangle.corners[2]);
        }
        triangle.part = part;
    }

    const EdgeSurface& edge_;
    ProfileSolid solid_;
};

using PlacedRing = SolidBuilder::PlacedRing;

/// Adds the levels of a profile, from its face to its wall. Returns the last ring.
PlacedRing AddProfile(SolidBuilder& builder, const EdgeSurface& edge, double depth, bool isBack)
{
    const auto zOf = [&](const Level& level) {
        return isBack ? -depth - level.height : level.height;
    };
    const std::vector<Level>& levels = edge.Levels();
    PlacedRing upper = builder.Place(edge.RingOf(levels[0]), zOf(levels[0]));
    builder.AddFace(edge.FirstFill(), upper, isBack);
    for (std::size_t i = 1; i < levels.size(); ++i)
    {
        const PlacedRing lower = builder.Place(edge.RingOf(levels[i]), zOf(levels[i]));
        if (levels[i].ring != levels[i - 1].ring)
        {
            builder.AddBand(edge.BandBelow(i - 1), upper, lower, isBack);
        }
        else if (isBack)
        {
            builder.AddWall(lower, upper, SolidPart::Bevel);
        }
        else
        {
            builder.AddWall(upper, lower, SolidPart::Bevel);
        }
        upper = lower;
    }
    return upper;
}

void CheckOptions(const EdgeProfile& profile, const ProfileSolidOptions& options)
{
    if (!(options.depth > 0) || !std::isfinite(options.depth))
    {
        throw Error("depth", std::to_string(options.depth), "more than 0 em");
    }
    if (!(options.smoothAngle >= 0 && options.smoothAngle <= 180))
    {
        throw Error("smoothAngle", std::to_string(options.smoothAngle), "0 to 180 degrees");
    }
    const double profiles = options.sides == ProfileSides::Both ? 2 : 1;
    const double needed = -profiles * profile.steps.back().height;
    if (options.depth < needed)
    {
        throw Error("depth", std::to_string(options.depth) + " em",
                    "at least " + std::to_string(needed) + " em, the depth of the profile" +
                        (profiles == 2 ? "s of both faces" : ""));
    }
}

}  // namespace

ProfileSolid BuildProfileSolid(const PlaneRegion& region, const EdgeProfile& profile,
                               const ProfileSolidOptions& options)
{
    CheckProfile(profile);
    CheckOptions(profile, options);
    const bool isBoth = options.sides == ProfileSides::Both;
    const EdgeSurface edge(region, profile,
                           isBoth ? EdgeSurface::Faces::First : EdgeSurface::Faces::Both);
    SolidBuilder builder(edge);
    const double depth = options.depth;
    const Ring& wall = edge.RingOf(edge.Levels().back());
    PlacedRing front = {};
    PlacedRing back = {};
    if (options.sides == ProfileSides::Back)
    {
        front = builder.Place(wall, 0);
        builder.AddFace(edge.LastFill(), front, false);
    }
    else
    {
        front = AddProfile(builder, edge, depth, false);
    }
    if (options.sides == ProfileSides::Front)
    {
        back = builder.Place(wall, -depth);
        builder.AddFace(edge.LastFill(), back, true);
    }
    else
    {
        back = AddProfile(builder, edge, depth, true);
    }
    builder.AddWall(front, back, SolidPart::Edge);
    ProfileSolid solid = builder.Take();
    profiles::SetNormals(solid, options.smoothAngle);
    return solid;
}

double VolumeOf(const ProfileSolid& solid)
{
    double sixTimes = 0;
    for (const SolidTriangle& triangle : solid.triangles)
    {
        const auto& a = solid.positions[triangle.corners[0]];
        const auto& b = solid.positions[triangle.corners[1]];
        const auto& c = solid.positions[triangle.corners[2]];
        sixTimes += double{a[0]} * (double{b[1]} * c[2] - double{b[2]} * c[1]) +
                    double{a[1]} * (double{b[2]} * c[0] - double{b[0]} * c[2]) +
                    double{a[2]} * (double{b[0]} * c[1] - double{b[1]} * c[0]);
    }
    return sixTimes / 6;
}

}  // namespace orvane
