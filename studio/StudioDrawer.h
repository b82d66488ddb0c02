// SPDX-License-Identifier: MIT
#pragma once

#include "material/ApplyMaterial.h"
#include "platform/Export.h"
#include "scene/SolidDrawer.h"
#include "solids/MeshCache.h"
#include "studio/StudioOptions.h"

#include <memory>

namespace orvane
{

class Environment;
class ShaderProgram;

/// Throws OptionError when a number is out of its range.
ORVANE_API void CheckStudioOptions(const StudioOptions& options);

/// Draws solids with shaders: each pixel has the light of the scene's lamps and of an environment,
/// on materials that are metal or not and more or less rough (ToMetallicRoughness). Matrices,
/// lights, textures and blending are those that OpenGL has when a node is drawn, so a solid covers
/// the same pixels as in immediate mode.
///
/// The ambient light of the scene tells how bright the environment is on surfaces that are not
/// mirrors, with that of a new scene as 1.
///
/// A drawer belongs to the context that is current in its constructor. That context must be current
/// at each draw and in the destructor.
class ORVANE_API StudioDrawer final : public SolidDrawer, private MaterialObserver
{
public:
    /// Throws Error when the environment cannot be read, or when OpenGL has no shaders of version
    /// 3.0.
    explicit StudioDrawer(const StudioOptions& options);
    ~StudioDrawer() override;
    StudioDrawer(const StudioDrawer&) = delete;
    StudioDrawer& operator=(const StudioDrawer&) = delete;

    SolidDrawing DrawLetters(OrvFontString& text, DrawingParameters& parameters) override;
    SolidDrawing DrawOutlines(OrvOutlineShape& outlines, DrawingParameters& parameters) override;
    SolidDrawing DrawSurface(TriangularMeshObject& mesh, DrawingParameters& parameters) override;

private:
    void UseMaterial(const ::Color& material) override;
    template <typename DrawNode>
    SolidDrawing Draw(const DrawNode& drawNode);
    void UploadEnvironment(const Environment& environment);

    StudioOptions options_;
    MeshCache cache_;
    std::unique_ptr<ShaderProgram> program_;
    unsigned environment_ = 0;  ///< OpenGL's name of the texture
};

}  // namespace orvane
