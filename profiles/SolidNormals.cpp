// SPDX-License-Identifier: MIT
#include "profiles/SolidNormals.h"

#include <cmath>
#include <numbers>
#include <utility>

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
    double angles[3] = {};
};

Plane PlaneOf(const ProfileSolid& solid, const SolidTriangle& triangle)
{
    Direction sides[3];
    for (int i = 0; i < 3; ++i)
    {
        sides[i] = PlaceOf(solid.positions[triangle.corners[(i + 1) % 3]]) -
                   PlaceOf(solid.positions[triangle.corners[i]]);
    }
    Plane plane;
    const Direction normal = Cross(sides[0], sides[1]);
    const double twiceArea = Length(normal);
    if (twiceArea > 0)
    {
        plane.normal = normal * (1 / twiceArea);
        for (int i = 0; i < 3; ++i)
        {
            plane.angles[i] = std::atan2(twiceArea, -Dot(sides[i], sides[(i + 2) % 3]));
        }
    }
    return plane;
}

/// Lists the corners of triangles by position: those of position p are in corners from starts[p] to
/// starts[p + 1], each as 3 * triangle + corner.
struct CornersByPosition
{
    std::vector<std::uint32_t> starts;
    std::vector<std::uint32_t> corners;

    explicit CornersByPosition(const ProfileSolid& solid)
        : starts(solid.positions.size() + 2), corners(3 * solid.triangles.size())
    {
        for (const SolidTriangle& triangle : solid.triangles)
        {
            for (const std::uint32_t position : triangle.corners)
            {
                ++starts[position + 2];
            }
        }
        for (std::size_t i = 2; i < starts.size(); ++i)
        {
            starts[i] += starts[i - 1];
        }
        std::uint32_t corner = 0;
        for (const SolidTriangle& triangle : solid.triangles)
        {
            for (const std::uint32_t position : triangle.corners)
            {
                corners[starts[position + 1]++] = corner++;
            }
        }
    }
};

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
    const double limit = std::cos(smoothAngle * std::numbers::pi / 180);
    for (std::size_t position = 0; position < solid.positions.size(); ++position)
    {
        const std::uint32_t first = around.starts[position];
        const std::uint32_t last = around.starts[position + 1];
        for (std::uint32_t i = first; i < last; ++i)
        {
            const std::uint32_t corner = around.corners[i];
            const Direction& own = planes[corner / 3].normal;
            Direction sum;
            for (std::uint32_t j = first; j < last; ++j)
            {
                const std::uint32_t other = around.corners[j];
                const Plane& plane = planes[other / 3];
                if (j == i || Dot(own, plane.normal) > limit)
                {
                    sum = sum - plane.normal * -plane.angles[other % 3];
                }
            }
            const double length = Length(sum);
            // A triangle without area has no normal of its own: any will do.
            const Direction normal = length > 0 ? sum * (1 / length) : Direction{0, 0, 1};
            solid.triangles[corner / 3].normals[corner % 3] = {static_cast<float>(normal.x),
                                                               static_cast<float>(normal.y),
                                                               static_cast<float>(normal.z)};
        }
    }
}

}  // namespace orvane::profiles
