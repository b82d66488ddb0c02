// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <array>
#include <vector>

class ViewObject;

namespace orvane
{

/// A light as OpenGL's fixed functions know it, in the coordinates of the eye.
struct ShaderLight
{
    std::array<float, 4> ambient = {0, 0, 0, 1};
    std::array<float, 4> diffuse = {1, 1, 1, 1};
    std::array<float, 4> specular = {1, 1, 1, 1};
    /// The place of the light. With 0 as the last number, the direction to a light that is
    /// infinitely far away.
    std::array<float, 4> position = {0, 0, 1, 0};
    std::array<float, 3> spotDirection = {0, 0, -1};  ///< of length 1
    float spotCutoff = 180;                           ///< degrees, 0 to 90; 180 without a cone
    float spotExponent = 0;
};

/// What a mesh is drawn with besides its triangles and materials: the camera and the lights. The
/// matrices are 16 numbers as glLoadMatrixd takes them.
struct ShaderView
{
    /// The most lights that can be drawn with. Further ones are left out.
    static constexpr std::size_t maxLights = 8;

    std::array<double, 16> projection = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    /// From the coordinates of the world to those of the eye.
    std::array<double, 16> camera = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    std::array<float, 4> globalAmbient = {0.2f, 0.2f, 0.2f, 1};
    bool hasLocalViewer = false;  ///< highlights are seen from the eye, not from infinitely far
    std::vector<ShaderLight> lights;
};

/// The camera and the lights that ViewObject::Draw would set. The view has a scene.
ORVANE_API ShaderView ShaderViewOf(const ViewObject& view);

}  // namespace orvane
