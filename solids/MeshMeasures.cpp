// SPDX-License-Identifier: MIT
#include "solids/MeshMeasures.h"

#include "solids/NodeTransform.h"
#include "solids/PositionWelder.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace orvane
{

namespace
{

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
        MeshPoint points[3];
        std::uint32_t welded[3];
        for (int i = 0; i < 3; ++i)
        {
            const float(&local)[3] = mesh_.vertices[corners[i]].position;
            points[i] = transform_.PositionInWorld(local);
            welded[i] = welder_.NumberOf(local);
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
        const MeshPoint normal = Cross(Minus(points[1], points[0]), Minus(points[2], points[0]));
        doubleArea_ += std::sqrt(Dot(normal, normal));
        sixfoldVolume_ += Dot(Minus(points[0], middle_), normal);
    }

    const SolidMesh& mesh_;
    NodeTransform transform_;
    MeshMeasures measures_;
    MeshPoint middle_ = {};
    double sixfoldVolume_ = 0;
    double doubleArea_ = 0;
    PositionWelder welder_;
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
