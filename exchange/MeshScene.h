// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"
#include "platform/Export.h"
#include "solids/SolidMesh.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace orvane
{

/// A camera that looks along its own -z axis, with y up.
struct MeshCamera
{
    std::array<double, 16> transform = {};  ///< to the world, as MeshNode::transform
    bool isOrthographic = false;
    double fieldOfView = 0;  ///< vertical, degrees; of a camera with perspective
    double aspect = 1;       ///< the width divided by the height; of a camera with perspective
    double width = 0;        ///< of what an orthographic camera sees, in world units
    double height = 0;
    double nearest = 0;   ///< distance of the near clipping plane, in world units
    double farthest = 0;  ///< distance of the far clipping plane
};

/// A light that shines along its own -z axis.
struct MeshLight
{
    enum class Kind
    {
        Directional,
        Point,
        Spot
    };

    Kind kind = Kind::Directional;
    std::string name;                       ///< in UTF-8
    std::array<double, 16> transform = {};  ///< to the world, as MeshNode::transform
    std::array<float, 3> color = {};        ///< red, green and blue, as drawn on a screen
    double distance = 1;   ///< to what is lit, in world units; of a light with a place
    double coneAngle = 0;  ///< degrees between the axis of a spot and its edge
};

/// What a mesh file can hold: the triangles and, where the format knows them, a camera and lights.
struct MeshScene
{
    SolidMesh mesh;
    std::optional<MeshCamera> camera;
    std::vector<MeshLight> lights;
};

/// Brings a scene into the unit and the axes of a file, by changing the transforms of its nodes,
/// its camera and its lights. An em becomes MeshFileOptions::em units long. A format whose files
/// are in metres gets metres: glTF.
/// Throws OptionError when an option has a value that makes no sense or that the format cannot
/// hold.
ORVANE_API void PlaceScene(MeshScene& scene, MeshFormat format, const MeshFileOptions& options);

}  // namespace orvane
