// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Small meshes of triangles in memory, for tests of what measures and writes them.

#include "solids/SolidMesh.h"

#include <cstdint>

/// Adds a square to a mesh, as a group of two triangles that run counter-clockwise seen from where
/// the normal points. The corners are origin, origin + right, origin + right + up and origin + up,
/// with the texture coordinates (0, 0), (1, 0), (1, 1) and (0, 1).
inline void AddSquare(orvane::SolidMesh& mesh, int node, orvane::MeshPart part, int material,
                      const float (&origin)[3], const float (&right)[3], const float (&up)[3])
{
    const auto first = static_cast<std::uint32_t>(mesh.vertices.size());
    for (int corner = 0; corner < 4; ++corner)
    {
        const float u = corner == 1 || corner == 2 ? 1 : 0;
        const float v = corner >= 2 ? 1 : 0;
        orvane::MeshVertex vertex = {};
        for (int axis = 0; axis < 3; ++axis)
        {
            const int y = (axis + 1) % 3;
            const int z = (axis + 2) % 3;
            vertex.position[axis] = origin[axis] + u * right[axis] + v * up[axis];
            vertex.normal[axis] = right[y] * up[z] - right[z] * up[y];
        }
        vertex.texture[0] = u;
        vertex.texture[1] = v;
        mesh.vertices.push_back(vertex);
    }
    orvane::MeshGroup group;
    group.firstIndex = mesh.indices.size();
    group.indexCount = 6;
    group.node = node;
    group.part = part;
    group.material = material;
    mesh.groups.push_back(group);
    for (const std::uint32_t corner : {0, 1, 2, 0, 2, 3})
    {
        mesh.indices.push_back(first + corner);
    }
}

/// A node with the cube from (0, 0, 0) to (1, 1, 1). Its front and back are faces of material 0,
/// its four sides edges of material 1.
inline orvane::MeshNode& AddCube(orvane::SolidMesh& mesh, const char* name)
{
    using orvane::MeshPart;
    const int node = static_cast<int>(mesh.nodes.size());
    mesh.nodes.emplace_back().name = name;
    if (mesh.materials.empty())
    {
        NamedColor& face = mesh.materials.emplace_back("Face");
        face.SetDiffuseColor(ColorVector(1, 0, 0, 1));
        face.SetSpecularColor(ColorVector(0.25f, 0.25f, 0.25f, 1));
        NamedColor& edge = mesh.materials.emplace_back("Edge");
        edge.SetDiffuseColor(ColorVector(0, 0, 1, 0.5f));
        edge.SetSpecularColor(ColorVector(0, 0, 0, 1));
    }
    AddSquare(mesh, node, MeshPart::Face, 0, {0, 0, 1}, {1, 0, 0}, {0, 1, 0});
    AddSquare(mesh, node, MeshPart::Face, 0, {1, 0, 0}, {-1, 0, 0}, {0, 1, 0});
    AddSquare(mesh, node, MeshPart::Edge, 1, {1, 0, 1}, {0, 0, -1}, {0, 1, 0});
    AddSquare(mesh, node, MeshPart::Edge, 1, {0, 0, 0}, {0, 0, 1}, {0, 1, 0});
    AddSquare(mesh, node, MeshPart::Edge, 1, {0, 1, 1}, {1, 0, 0}, {0, 0, -1});
    AddSquare(mesh, node, MeshPart::Edge, 1, {0, 0, 0}, {1, 0, 0}, {0, 0, 1});
    return mesh.nodes.back();
}

/// One red triangle with the corners (0, 0, 0), (1, 0, 0) and (0, 1, 0), which faces +z.
inline orvane::SolidMesh OneTriangle()
{
    orvane::SolidMesh mesh;
    mesh.vertices = {{{0, 0, 0}, {0, 0, 1}, {0, 0}},
                     {{1, 0, 0}, {0, 0, 1}, {1, 0}},
                     {{0, 1, 0}, {0, 0, 1}, {0, 1}}};
    mesh.indices = {0, 1, 2};
    mesh.nodes.resize(1);
    mesh.nodes[0].name = "triangle";
    mesh.groups.resize(1);
    mesh.groups[0].indexCount = 3;
    mesh.materials.emplace_back("Face").SetDiffuseColor(ColorVector(1, 0, 0, 1));
    return mesh;
}
