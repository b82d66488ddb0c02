// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "solids/ShaderView.h"
#include "solids/SolidMesh.h"

#include <memory>

namespace orvane
{

/// Draws meshes in contexts without OpenGL's fixed functions, such as a core profile of OpenGL 3.2
/// or newer. Lights, materials and textures look as the fixed functions draw them with
/// GL_NORMALIZE: light is computed at vertices.
///
///     orvane::MeshBuildOptions options;
///     options.inWorldCoordinates = false;     // as immediate mode, also where nodes are mirrored
///     options.separateLetters = true;         // transparent letters in the order of the text
///     options.renderedDiagonals = true;
///     orvane::ShaderMeshDrawing drawing;
///     drawing.SetMesh(orvane::BuildMesh(scene, options));
///     drawing.Draw(orvane::ShaderViewOf(view));
///
/// Only the triangles are drawn, into the current viewport. The program clears the picture, tests
/// depths and culls, as it does for immediate mode. Backgrounds, boxes, handles and outline mode
/// are not drawn. A material that emits light keeps the ambient and diffuse colours of the group
/// before it, as ApplyMaterial (material/ApplyMaterial.h) says; the first group begins with
/// OpenGL's initial colours.
///
/// The context that is current when the object is made must be current in each function and in the
/// destructor. Use it on one thread at a time.
class ORVANE_API ShaderMeshDrawing
{
public:
    /// Throws Error when the current context is older than OpenGL 3.2.
    ShaderMeshDrawing();
    ~ShaderMeshDrawing();
    ShaderMeshDrawing(const ShaderMeshDrawing&) = delete;
    ShaderMeshDrawing& operator=(const ShaderMeshDrawing&) = delete;

    /// Stores the triangles, materials and textures in the context, in place of those before. The
    /// mesh and the scene that it was built from may change or be deleted afterwards; a changed
    /// scene is seen only when its mesh is built and set again.
    void SetMesh(const SolidMesh& mesh);
    /// Draws the triangles. OpenGL's state is the same afterwards.
    void Draw(const ShaderView& view) const;

private:
    struct Contents;
    std::unique_ptr<Contents> contents_;
};

}  // namespace orvane
