// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"
#include "platform/Export.h"

#include <memory>
#include <optional>
#include <string>

class DrawingObject;
class SceneObject;
class ThreeDStudioObject;

namespace orvane
{

/// Reads a 3D Studio file into a node. Throws Error when the file cannot be read or is of another
/// kind.
ORVANE_API void ImportMeshes(ThreeDStudioObject& node, const std::string& path);

/// Moves the middle of a node's bounds to a place; without one, to the right of everything that the
/// scene has. The node is not yet in the scene and has no translation.
void PlaceInScene(SceneObject& scene, DrawingObject& node, const std::optional<Vector3>& at);

/// Makes a node of the meshes of a 3D Studio file, sized, turned about their middle and placed for
/// the scene, to which the caller adds it with AddNode.
/// Throws Error also when the file contains no mesh, or when it is damaged and options.warn is
/// empty.
ORVANE_API std::unique_ptr<DrawingObject> MakeImport(SceneObject& scene, const std::string& path,
                                                     const MeshOptions& options);

}  // namespace orvane
