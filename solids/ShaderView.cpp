// SPDX-License-Identifier: MIT
#include "solids/ShaderView.h"

#include "platform/OpenGL.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "solids/NodeTransform.h"

#include <algorithm>

namespace orvane
{

namespace
{

/// The matrix that ProjectionData::ApplyVolume multiplies OpenGL's by.
std::array<double, 16> VolumeOf(const ProjectionData& lens)
{
    const double width = lens.GetViewRight() - lens.GetViewLeft();
    const double height = lens.GetViewTop() - lens.GetViewBottom();
    const double depth = lens.GetZFar() - lens.GetZNear();
    const double middleX = (lens.GetViewRight() + lens.GetViewLeft()) / width;
    const double middleY = (lens.GetViewTop() + lens.GetViewBottom()) / height;
    const double middleZ = (lens.GetZFar() + lens.GetZNear()) / depth;
    std::array<double, 16> matrix = {};
    if (lens.IsOrthographic() != 0)
    {
        matrix[0] = 2 / width;
        matrix[5] = 2 / height;
        matrix[10] = -2 / depth;
        matrix[12] = -middleX;
        matrix[13] = -middleY;
        matrix[14] = -middleZ;
        matrix[15] = 1;
        return matrix;
    }
    matrix[0] = 2 * lens.GetZNear() / width;
    matrix[5] = 2 * lens.GetZNear() / height;
    matrix[8] = middleX;
    matrix[9] = middleY;
    matrix[10] = -middleZ;
    matrix[11] = -1;
    matrix[14] = -2 * lens.GetZFar() * lens.GetZNear() / depth;
    return matrix;
}

std::array<float, 4> NumbersOf(const ColorVector& color)
{
    return {color.red, color.green, color.blue, color.alpha};
}

/// \param place leads from the light's own coordinates to those of the eye
ShaderLight LightOf(const LightObject& from, const MeshTransform& place)
{
    ShaderLight light;
    const NamedColor colors = from.GetColors();
    light.ambient = NumbersOf(colors.GetAmbientColor());
    light.diffuse = NumbersOf(colors.GetDiffuseColor());
    light.specular = NumbersOf(colors.GetSpecularColor());
    const bool hasPlace = from.IsDirectional() == 0;
    const MeshPoint position = hasPlace ? place.Apply({0, 0, 0}) : place.Apply({0, 0, 1}, 0);
    const MeshPoint direction = Unit(place.Apply({0, 0, -1}, 0));
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        light.position[axis] = static_cast<float>(position[axis]);
        light.spotDirection[axis] = static_cast<float>(direction[axis]);
    }
    light.position[3] = hasPlace ? 1.0f : 0.0f;
    light.spotCutoff = static_cast<float>(from.GetSpotCutoffAngle());
    light.spotExponent = static_cast<float>(from.GetSpotExponent());
    return light;
}

}  // namespace

ShaderView ShaderViewOf(const ViewObject& view)
{
    const SceneObject& scene = *view.GetScene();
    const MeshTransform camera = TransformOf(view);
    const MeshTransform aboveLights =
        scene.ShouldRotateLightsWithScene() != 0 ? camera * TransformOf(scene) : MeshTransform();
    ShaderView result;
    result.projection = VolumeOf(view.GetProjection());
    result.camera = camera.matrix;
    result.globalAmbient = NumbersOf(scene.GetGlobalAmbientColor());
    result.hasLocalViewer = scene.IsLightingLocalViewer() != 0;
    for (int i = 0; i < scene.GetLightCount(); ++i)
    {
        const LightObject& light = *scene.GetLightByIndex(i);
        const bool hasNumber = light.GetLightNumber() >= GL_LIGHT0 &&
                               light.GetLightNumber() - GL_LIGHT0 < ShaderView::maxLights;
        if (light.IsInUse() && light.IsActive() && hasNumber)
        {
            result.lights.push_back(LightOf(light, aboveLights * TransformOf(light)));
        }
    }
    return result;
}

}  // namespace orvane
