// SPDX-License-Identifier: MIT
#pragma once

#include "exchange/MeshScene.h"
#include "platform/Export.h"

class ViewObject;

namespace orvane
{

/// What a mesh file in a format gets of a scene: the triangles of everything that the view's scene
/// draws, with the textures that the view shows, the view as the camera, and the lights that are
/// on. It is in world coordinates, where an em is 1 unit long; see PlaceScene.
/// Throws Error when MeshFileOptions::solid is set and edges are wider than a profile can be.
ORVANE_API MeshScene MakeMeshScene(const ViewObject& view, MeshFormat format,
                                   const MeshFileOptions& options);

}  // namespace orvane
