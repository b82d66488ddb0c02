// SPDX-License-Identifier: MIT
#include "solids/MeshMeasures.h"

#include "solids/NodeTransform.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <unordered_map>

namespace orvane
{

namespace
{

/// A corner's position, comparable bit by bit: 0 and -0 are the same, and not-a-number is equal to
/// itself.
using PositionBits = std::array<std::uint32_t, 3>;

struct PositionHash
{
    std::size_t operator()(const PositionBits& bits) const
    {
        // Odd factors spread the bits of each coordinate over the whole number.
        const std::uint64_t mixed = bits[0] * 0x9E3779B97F4A7C15u ^ bits[1] * 0xC2B2AE3D27D4EB4Fu ^
                                    bits[2] * 0x165667B19E3779F9u;
        return mixed ^ mixed >> 29;
    }
};

PositionBits BitsOf(const float (&position)[3])
{
    PositionBits bits;
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        bits[axis] = std::bit_cast<std::uint32_t>(position[axis] == 0 ? 0.0f : position[axis]);
    }
    return bits;
}

/// Measures the triangles of a node.
class NodeMeasurer
{
public:
    NodeMeasurer(const SolidMesh& mesh, const MeshNode& node)
        : mesh_(mesh), transform_(node.transform)
    {}

    void Add(const MeshGroup& group)
    {
        const std::size_t end = group.firstIndex + group.indexCount;
        for (std::size_t i = group.firstIndex; i + 2 < end; i += 3)
        {
            AddTriangle(&mesh_.indices[i]);
        }
    }

    MeshMeasures Result()
    {
        std::sort(used_.begin(), used_.end());
        measures_.vertices =
            static_cast<std::size_t>(std::unique(used_.begin(), used_.end()) - used_.begin());
        std::sort(forward_.begin(), forward_.end());
        std::sort(backward_.begin(), backward_.end());
        measures_.isClosed = measures_.triangles > 0 && forward_ == backward_;
        measures_.volume = (transform_.IsMirrored() ? -sixfoldVolume_ : sixfoldVolume_) / 6;
        measures_.area = doubleArea_ / 2;
        return measures_;
    }

private:
    void AddTriangle(const std::uint32_t* corners)
    {
        Point3 points[3];
        std::uint32_t welded[3];
        for (int i = 0; i < 3; ++i)
        {
            const float(&local)[3] = mesh_.vertices[corners[i]].position;
            points[i] = transform_.PositionInWorld(local);
            const auto next = static_cast<std::uint32_t>(positions_.size());
            welded[i] = positions_.try_emplace(BitsOf(local), next).first->second;
            used_.push_back(corners[i]);
            const float world[3] = {static_cast<float>(points[i][0]),
                                    static_cast<float>(points[i][1]),
                                    static_cast<float>(points[i][2])};
            measures_.bounds.Include(world);
        }
        for (int i = 0; i < 3; ++i)
        {
            const std::uint32_t a = welded[i];
            const std::uint32_t b = welded[(i + 1) % 3];
            if (a != b)
            {
                const std::uint64_t edge = std::uint64_t{std::min(a, b)} << 32 | std::max(a, b);
                (a < b ? forward_ : backward_).push_back(edge);
            }
        }
        // The volume is summed up about a corner of the node, because about a far origin large
        // tetrahedra would cancel each other out and leave their rounding errors.
        middle_ = measures_.triangles == 0 ? points[0] : middle_;
        ++measures_.triangles;
        const Point3 normal = Cross(Minus(points[1], points[0]), Minus(points[2], points[0]));
        doubleArea_ += std::sqrt(Dot(normal, normal));
        sixfoldVolume_ += Dot(Minus(points[0], middle_), normal);
    }

    const SolidMesh& mesh_;
    NodeTransform transform_;
    MeshMeasures measures_;
    Point3 middle_ = {};
    double sixfoldVolume_ = 0;
    double doubleArea_ = 0;
    std::unordered_map<PositionBits, std::uint32_t, PositionHash> positions_;
    std::vector<std::uint32_t> used_;  ///< vertices, as often as corners are there
    /// The edges by their two positions, the smaller number first: those that lead from the
    /// smaller number to the larger, and the others.
    std::vector<std::uint64_t> forward_;
    std::vector<std::uint64_t> backward_;
};

}  // namespace

SolidMeasures MeasureMesh(const SolidMesh& mesh)
{
    SolidMeasures result;
    std::vector<std::vector<const MeshGroup*>> groups(mesh.nodes.size());
    for (const MeshGroup& group : mesh.groups)
    {
        groups[static_cast<std::size_t>(group.node)].push_back(&group);
    }
    MeshMeasures& all = result.all;
    all.isClosed = !mesh.indices.empty();
    for (std::size_t i = 0; i < mesh.nodes.size(); ++i)
    {
        NodeMeasurer measurer(mesh, mesh.nodes[i]);
        for (const MeshGroup* const group : groups[i])
        {
            measurer.Add(*group);
        }
        const MeshMeasures& node = result.nodes.emplace_back(measurer.Result());
        if (node.triangles == 0)
        {
            continue;
        }
        all.triangles += node.triangles;
        all.vertices += node.vertices;
        all.bounds.Include(
            {node.bounds.minimum[0], node.bounds.minimum[1], node.bounds.minimum[2]});
        all.bounds.Include(
            {node.bounds.maximum[0], node.bounds.maximum[1], node.bounds.maximum[2]});
        all.isClosed = all.isClosed && node.isClosed;
        all.volume += node.volume;
        all.area += node.area;
    }
    return result;
}

}  // namespace orvane
