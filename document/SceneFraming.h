// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"
#include "platform/Export.h"

#include <memory>
#include <optional>
#include <string>

class DrawingObject;
class SceneObject;
class ViewObject;

namespace orvane
{

/// Adds a node to a scene, which owns the node from then on. The node keeps its transform.
ORVANE_API DrawingObject& AddNode(SceneObject& scene, std::unique_ptr<DrawingObject> node);

/// Throws OptionError when a number of the options is out of its range.
ORVANE_API void CheckCameraOptions(const CameraOptions& options);
/// Throws OptionError when a side is not 1 to 100000 pixels.
ORVANE_API void CheckSize(const Size& size);

/// Points the camera at the scene. In a picture of that size, the scene is then in the middle and
/// as large as possible, while at least 8 % of the width or height stays free on each side.
ORVANE_API void FrameScene(ViewObject& view, const CameraOptions& options, const Size& size);

/// Sets up a view for a picture of another size. A picture that is narrower, for its height, than
/// the framed picture shows the same width of the scene; a wider picture shows the same height of
/// the scene.
ORVANE_API void SizeView(ViewObject& view, const Size& size);

/// The size of the picture that the view was framed for; no value when the view was never framed.
/// The size may come from a damaged file and be larger than a picture can be.
ORVANE_API std::optional<Size> FramedSize(const ViewObject& view);

/// The size of a picture for which no size is given: FramedSize, or defaultPictureSize. Throws
/// Error when a side is longer than limits::maxPictureSide.
/// \param path of the scene's file, for the Error
ORVANE_API Size UnaskedSize(const ViewObject& view, const std::string& path);

}  // namespace orvane
