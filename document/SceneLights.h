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

/// Gives a new scene its two lights, which stay with the camera: a warm, strong one from the upper
/// left (number 1) and a cool, weak one from the right (number 7), which keeps the shaded sides
/// readable. The other lights of the scene stay off.
ORVANE_API void SetFirstLights(SceneObject& scene);

/// Throws Error for a light that the scene does not have.
ORVANE_API void ChangeLights(SceneObject& scene, const LightOptions& options);

}  // namespace orvane
