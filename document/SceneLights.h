// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"
#include "platform/Export.h"

class SceneObject;

namespace orvane
{

/// The ambient light of a new scene, and whether its lights turn with the scene or the camera.
inline constexpr Color firstAmbientColor{0.34f, 0.35f, 0.38f, 1};
inline constexpr LightsFollow firstLightsFollow = LightsFollow::Camera;

/// Sets the ambient light of a new scene, and the colours and directions of the two lights that are
/// on in it. The lights stay with the camera. Light 1 is warm and strong and shines from the upper
/// left. Light 7 is cool and weak and shines from the right, which keeps the shaded sides readable.
ORVANE_API void SetFirstLights(SceneObject& scene);

/// Throws Error for a light that the scene does not have.
ORVANE_API void ChangeLights(SceneObject& scene, const LightOptions& options);

}  // namespace orvane
