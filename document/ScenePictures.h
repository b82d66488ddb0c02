// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"
#include "platform/Export.h"

class DrawingObject;
class SceneObject;

namespace orvane
{

/// Lays a picture on a node as its texture. Throws Error when the file is no BMP picture.
ORVANE_API void SetTexture(DrawingObject& node, const TextureOptions& options);

/// Replaces the background of a scene. Throws Error when the file is no BMP picture.
ORVANE_API void SetBackground(SceneObject& scene, const BackgroundOptions& options);

/// Whether a picture, and not only a colour, is behind the scene.
bool HasBackgroundPicture(const SceneObject& scene);

/// Throws Error when a picture that the scene shows cannot be read.
ORVANE_API void CheckPictures(SceneObject& scene);

}  // namespace orvane
