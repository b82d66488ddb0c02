// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace orvane
{

/// How solids are drawn with shaders.
struct StudioOptions
{
    /// What surrounds the scene and is mirrored by it: "studio", "sky", "sunset", or the path of a
    /// picture of all directions in the format .hdr.
    std::string environment = "studio";
    double environmentTurn = 0;  ///< degrees about the vertical axis of the picture, -360 to 360
    double exposure = 1;         ///< multiplies all light: 0.01 to 100
    bool hasGround = false;      ///< whether a soft shadow lies on the ground below the scene
};

}  // namespace orvane
