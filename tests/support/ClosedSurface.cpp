// SPDX-License-Identifier: MIT
#include "tests/support/ClosedSurface.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <vector>

using namespace orvane;

std::string WhyNotClosed(const ProfileSolid& solid)
{
    const std::size_t count = solid.positions.size();
    // The edges in the order of their starts; starts[i] is the first one from position i.
    std::vector<std::uint32_t> starts(count + 2);
    for (std::size_t i = 0; i < solid.triangles.size(); ++i)
    {
        const auto name = [i] { return "triangle " + std::to_string(i); };
        const SolidTriangle& triangle = solid.triangles[i];
        for (int corner = 0; corner < 3; ++corner)
        {
            const std::uint32_t from = triangle.corners[corner];
            if (from >= count)
            {
                return name() + " has a corner without a position";
            }
            if (from == triangle.corners[(corner + 1) % 3])
            {
                return name() + " uses a position twice";
            }
            ++starts[from + 2];
            const auto& normal = triangle.normals[corner];
            const float square =
                normal[0] * normal[0] + normal[1] * normal[1] + normal[2] * normal[2];
            if (!(std::abs(square - 1) < 2e-4F))
            {
                return name() + " has a normal of length " + std::to_string(std::sqrt(square));
            }
        }
    }
    std::partial_sum(starts.begin(), starts.end(), starts.begin());
    std::vector<std::uint32_t> ends(3 * solid.triangles.size());
    for (const SolidTriangle& triangle : solid.triangles)
    {
        for (int corner = 0; corner < 3; ++corner)
        {
            ends[starts[triangle.corners[corner] + 1]++] = triangle.corners[(corner + 1) % 3];
        }
    }
    const auto edgesBetween = [&](std::uint32_t from, std::uint32_t to) {
        return std::count(ends.begin() + starts[from], ends.begin() + starts[from + 1], to);
    };
    for (std::uint32_t from = 0; from < count; ++from)
    {
        for (std::uint32_t i = starts[from]; i < starts[from + 1]; ++i)
        {
            const auto name = [&] {
                return "the edge from position " + std::to_string(from) + " to " +
                       std::to_string(ends[i]);
            };
            if (edgesBetween(from, ends[i]) != 1)
            {
                return name() + " is used twice in the same direction";
            }
            if (edgesBetween(ends[i], from) != 1)
            {
                return name() + " has a triangle on one side only";
            }
        }
    }
    return {};
}
