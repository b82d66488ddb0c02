// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "solids/SolidMesh.h"

class DrawingObject;

namespace orvane
{

struct MeshBuildOptions
{
    /// Whether vertices are in world coordinates, where the transforms of the node and of all nodes
    /// above it are applied. Otherwise they are in the coordinates of their nodes.
    bool inWorldCoordinates = true;
    /// Whether each letter has groups of its own, in the order of its text. Otherwise a text has
    /// one group for each part and material.
    bool separateLetters = false;
    /// Whether texts with described edges are built as closed solids: those of MakeClosedText
    /// (solids/ClosedText.h). BuildMesh then throws what MakeClosedText throws.
    bool closedTexts = false;
    /// Whether the quadrilaterals of letters are cut along the diagonal along which the software
    /// renderer cuts them in immediate mode, so that a drawing of the mesh has the same colours
    /// between their corners.
    bool renderedDiagonals = false;
};

/// The triangles that drawing a node and everything below it would draw: those of texts, outlines
/// and imported meshes. Boxes, lights and deleted nodes are left out. The normals are those that
/// drawing uses, except that those of imported meshes, which point inward, are turned round, and
/// that a normal of length 0 is replaced by that of its triangle.
///
/// Corners share a vertex within a letter and within an imported mesh. Builds the letters that no
/// drawing has built yet. Needs no OpenGL context.
ORVANE_API SolidMesh BuildMesh(DrawingObject& node, const MeshBuildOptions& options = {});

}  // namespace orvane
