// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "solids/SolidMesh.h"

#include <cstddef>
#include <vector>

namespace orvane
{

/// Counts and sizes of triangles, in world coordinates.
struct MeshMeasures
{
    std::size_t triangles = 0;
    std::size_t vertices = 0;  ///< that these triangles use, each once
    MeshBounds bounds;
    /// Whether the triangles enclose a space without a gap: there are triangles, and every edge
    /// from one corner to another is met by an edge of the opposite direction. Corners are the same
    /// when their positions are equal, whatever their normals and texture coordinates are.
    bool isClosed = false;
    /// The enclosed volume, in cubes of the unit of length. It is negative when the triangles run
    /// clockwise seen from outside, and says nothing when the mesh is not closed.
    double volume = 0;
    double area = 0;  ///< of the triangles, in squares of the unit of length
};

/// The measures of a mesh by its nodes, and of all nodes together.
struct SolidMeasures
{
    /// Closed when every node with triangles is closed. Spaces that two nodes both enclose are
    /// counted twice in the volume.
    MeshMeasures all;
    std::vector<MeshMeasures> nodes;  ///< in the order of SolidMesh::nodes
};

ORVANE_API SolidMeasures MeasureMesh(const SolidMesh& mesh);

}  // namespace orvane
