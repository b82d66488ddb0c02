// SPDX-License-Identifier: MIT
#include "tests/support/ClosedSurface.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

using namespace orvane;

std::string WhyNotClosed(const ProfileSolid& solid)
{
    using Edge = std::pair<std::uint32_t, std::uint32_t>;
    std::vector<Edge> edges;
    for (std::size_t i = 0; i < solid.triangles.size(); ++i)
    {
        const std::string name = "triangle " + std::to_string(i);
        const SolidTriangle& triangle = solid.triangles[i];
        for (int corner = 0; corner < 3; ++corner)
        {
            const std::uint32_t from = triangle.corners[corner];
            const std::uint32_t to = triangle.corners[(corner + 1) % 3];
            if (from >= solid.positions.size())
            {
                return name + " has a corner without a position";
            }
            if (from == to)
            {
                return name + " uses a position twice";
            }
            edges.emplace_back(from, to);
            const auto& normal = triangle.normals[corner];
            const double length = std::hypot(normal[0], normal[1], normal[2]);
            if (!(std::abs(length - 1) < 1e-4))
            {
                return name + " has a normal of length " + std::to_string(length);
            }
        }
    }
    std::sort(edges.begin(), edges.end());
    const auto nameOf = [](const Edge& edge) {
        return "the edge from position " + std::to_string(edge.first) + " to " +
               std::to_string(edge.second);
    };
    const auto repeated = std::adjacent_find(edges.begin(), edges.end());
    if (repeated != edges.end())
    {
        return nameOf(*repeated) + " is used twice in the same direction";
    }
    for (const Edge& edge : edges)
    {
        if (!std::binary_search(edges.begin(), edges.end(), Edge(edge.second, edge.first)))
        {
            return nameOf(edge) + " has a triangle on one side only";
        }
    }
    return {};
}
