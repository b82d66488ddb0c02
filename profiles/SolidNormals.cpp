// SPDX-License-Identifier: MIT
#include "profiles/SolidNormals.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

namespace orvane::profiles
{

namespace
{

struct Direction
{
    double x = 0;
    double y = 0;
    double z = 0;

    Direction operator-(const Direction& other) const
    {
        return {x - other.x, y - other.y, z - other.z};
    }
    Direction operator+(const Direction& other) const
    {
        return {x + other.x, y + other.y, z + other.z};
    }
    Direction operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
};

double Dot(const Direction& a, const Direction& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Direction Cross(const Direction& a, const Direction& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double Length(const Direction& direction)
{
    return std::sqrt(Dot(direction, direction));
}

Direction PlaceOf(const std::array<float, 3>& position)
{
    return {position[0], position[1], position[2]};
}

/// A triangle's normal, and its angles in radians.
struct Plane
{
    Direction normal;
    double level = 0;  ///< the length of the normal's part in the plane of the letter
    SolidPart part = SolidPart::Face;
    bool isSliver = false;  ///< so narrow that rounding decides its normal
    double angles[3] = {};
};

Plane PlaneOf(const ProfileSolid& solid, const SolidTriangle& triangle)
{
    constexpr double sliverHeight = 0.00005;  // ems, about 13 grid units
    Direction sides[3];
    double longest = 0;
    for (int i = 0; i < 3; ++i)
    {
        sides[i] = PlaceOf(solid.positions[triangle.corners[(i + 1) % 3]]) -
                   PlaceOf(solid.positions[triangle.corners[i]]);
        longest = std::max(longest, Length(sides[i]));
    }
    Plane plane;
    plane.part = triangle.part;
    const Direction normal = Cross(sides[0], sides[1]);
    const double twiceArea = Length(normal);
    plane.isSliver = twiceArea <= sliverHeight * longest;
    if (twiceArea > 0)
    {
        plane.normal = normal * (1 / twiceArea);
        plane.level = std::sqrt(plane.normal.x * plane.normal.x + plane.normal.y * plane.normal.y);
    }
    for (int i = 0; i < 3 && !plane.isSliver; ++i)
    {
        plane.angles[i] = std::atan2(twiceArea, -Dot(sides[i], sides[(i + 2) % 3]));
    }
    return plane;
}

/// The corners of triangles by position, each as 3 * triangle + corner.
class CornersByPosition
{
public:
    explicit CornersByPosition(const ProfileSolid& solid)
        : starts_(solid.positions.size() + 2), corners_(3 * solid.triangles.size())
    {
        for (const SolidTriangle& triangle : solid.triangles)
        {
            for (const std::uint32_t position : triangle.corners)
            {
                ++starts_[position + 2];
            }
        }
        for (std::size_t i = 2; i < starts_.size(); ++i)
        {
            starts_[i] += starts_[i - 1];
        }
        std::uint32_t corner = 0;
        for (const SolidTriangle& triangle : solid.triangles)
        {
            for (const std::uint32_t position : triangle.corners)
            {
                corners_[starts_[position + 1]++] = corner++;
            }
        }
    }

    std::span<const std::uint32_t> At(std::size_t position) const
    {
        return std::span(corners_).subspan(starts_[position],
                                           starts_[position + 1] - starts_[position]);
    }

private:
    std::vector<std::uint32_t> starts_;  ///< of each position, where its corners begin
    std::vector<std::uint32_t> corners_;
};

/// Decides which triangles around a position are shaded as one surface.
class Smoothness
{
public:
    explicit Smoothness(double angle) : cosine_(std::cos(angle * std::numbers::pi / 180)) {}

    /// Whether two planes meet at a small angle, and turn by a small angle seen from the front,
    /// too: a corner of the outline stays a corner however flat the profile is.
    bool IsSmooth(const Plane& a, const Plane& b) const
    {
        if (Dot(a.normal, b.normal) <= cosine_)
        {
            return false;
        }
        // A plane this level has no direction that could turn.
        constexpr double nearlyLevel = 1e-3;
        const double turn = a.normal.x * b.normal.x + a.normal.y * b.normal.y;
        return a.level < nearlyLevel || b.level < nearlyLevel || turn > cosine_ * a.level * b.level;
    }

private:
    double cosine_;
};

/// The normal of one of the corners at a position. Faces stay flat and walls upright; a profile
/// that meets one of them smoothly takes its normal there.
Direction NormalAt(std::uint32_t corner, std::span<const std::uint32_t> corners,
                   const std::vector<Plane>& planes, const Smoothness& smoothness)
{
    const Plane& own = planes[corner / 3];
    Direction sums[3];  // of faces, walls and profiles
    for (const std::uint32_t other : corners)
    {
        const Plane& plane = planes[other / 3];
        if (own.isSliver || other == corner || smoothness.IsSmooth(own, plane))
        {
            Direction& sum = sums[static_cast<std::size_t>(plane.part)];
            sum = sum + plane.normal * plane.angles[other % 3];
        }
    }
    const std::size_t part = static_cast<std::size_t>(own.part);
    const bool joinsOthers = own.part == SolidPart::Bevel && !own.isSliver;
    for (std::size_t first = joinsOthers ? 0 : part; first <= part; ++first)
    {
        const double length = Length(sums[first]);
        if (length > 0)
        {
            return sums[first] * (1 / length);
        }
    }
    // Only slivers meet here.
    return Length(own.normal) > 0 ? own.normal : Direction{0, 0, 1};
}

}  // namespace

void SetNormals(ProfileSolid& solid, double smoothAngle)
{
    std::vector<Plane> planes;
    planes.reserve(solid.triangles.size());
    for (const SolidTriangle& triangle : solid.triangles)
    {
        planes.push_back(PlaneOf(solid, triangle));
    }
    const CornersByPosition around(solid);
    const Smoothness smoothness(smoothAngle);
    for (std::size_t position = 0; position < solid.positions.size(); ++position)
    {
        const std::span<const std::uint32_t> corners = around.At(position);
        for (const std::uint32_t corner : corners)
        {
            const Direction normal = NormalAt(corner, corners, planes, smoothness);
            solid.triangles[corner / 3].normals[corner % 3] = {static_cast<float>(normal.x),
                                                               static_cast<float>(normal.y),
                                                               static_cast<float>(normal.z)};
        }
    }
}

}  // namespace orvane::profiles
