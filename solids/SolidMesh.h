// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/MeshVertex.h"
#include "material/NamedColor.h"
#include "platform/Export.h"
#include "solids/UncutSolid.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class DrawingObject;
class TextureMap;

namespace orvane
{

/// Triangles of one node that look alike.
struct MeshGroup
{
    std::size_t firstIndex = 0;  ///< in SolidMesh::indices
    std::size_t indexCount = 0;  ///< three for each triangle
    int node = 0;                ///< in SolidMesh::nodes
    MeshPart part = MeshPart::Face;
    int material = 0;  ///< in SolidMesh::materials
    /// The letter's index in the bytes of its text, that of the first letter for joined letters;
    /// the index of an area of outlines; -1 for a group that is not one solid's.
    int letter = -1;
    int line = -1;  ///< of the letter; the index of the area; -1 as for letter
};

/// A node whose triangles are in a mesh.
struct MeshNode
{
    /// Borrowed; valid for as long as the scene has the node.
    DrawingObject* object = nullptr;
    /// In UTF-8: the characters of a text, the name of the file of outlines without its ending, or
    /// the name that an imported mesh has in its file.
    std::string name;
    /// Leads from the coordinates of this node's vertices to those of the world: 16 numbers as
    /// glMultMatrixd takes them. The identity when the vertices are in world coordinates already.
    std::array<double, 16> transform = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    std::shared_ptr<const TextureMap> texture;  ///< null for a node that is drawn without one
    /// The letters of which MeshBuildOptions::closedTexts could not make what it promises.
    std::vector<UncutSolid> uncut;
};

/// A box with edges along the axes. A new box is empty: its minimum is larger than its maximum.
struct MeshBounds
{
    ORVANE_API MeshBounds();
    ORVANE_API void Include(const float (&position)[3]);
    bool IsEmpty() const { return minimum[0] > maximum[0]; }

    std::array<float, 3> minimum;
    std::array<float, 3> maximum;
};

/// The triangles of texts and meshes. One em of a letter is 1 unit before the node's scale; x runs
/// to the right and y up, and the front faces of letters look to +z. The corners of a triangle run
/// counter-clockwise seen from outside the solid.
///
/// Within a letter and within an imported mesh, corners share a vertex when their positions,
/// normals and texture coordinates are equal.
struct SolidMesh
{
    std::vector<MeshVertex> vertices;
    std::vector<std::uint32_t> indices;  ///< three for each triangle
    std::vector<MeshGroup> groups;       ///< in the order of their indices, without gaps
    std::vector<MeshNode> nodes;
    std::vector<NamedColor> materials;  ///< each once

    std::size_t TriangleCount() const { return indices.size() / 3; }
    /// The box around the vertices that triangles use, in world coordinates.
    ORVANE_API MeshBounds Bounds() const;
};

}  // namespace orvane
