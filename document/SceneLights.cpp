// SPDX-License-Identifier: MIT
#include "document/SceneLights.h"

#include "document/Colors.h"
#include "orvane/Error.h"
#include "scene/SceneObject.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

namespace orvane
{

namespace
{

struct FirstLight
{
    int index;
    const char* name;
    DVector from;  ///< points towards the light; its length does not matter
    ColorVector diffuse;
    ColorVector specular;
};

/// Turns a light so that it shines from a direction. A light shines along its own negative z axis.
void PlaceLight(LightObject& light, const DVector& from)
{
    constexpr double degree = std::numbers::pi / 180;
    const DVector zAxis(0.0, 0.0, 1.0);
    DVector direction = from;
    direction.Normalize();
    const double angle = std::acos(std::clamp(zAxis.Dot(direction), -1.0, 1.0)) / degree;
    light.SetRotation(angle, zAxis * direction);
}

LightObject& LightAt(const SceneObject& scene, int index)
{
    LightObject* const light = scene.GetLightByIndex(index);
    if (light == nullptr)
    {
        throw Error("light " + std::to_string(index),
                    "the scene has only lights 0 to " + std::to_string(scene.GetLightCount() - 1));
    }
    return *light;
}

}  // namespace

void SetFirstLights(SceneObject& scene)
{
    static const FirstLight lights[] = {
        {1, "Key", DVector(-0.35, 0.75, 1.0), {0.76f, 0.75f, 0.72f, 1}, {0.7f, 0.69f, 0.66f, 1}},
        {7, "Fill", DVector(0.9, -0.15, 0.35), {0.31f, 0.32f, 0.36f, 1}, {0.25f, 0.28f, 0.34f, 1}},
    };
    LightOptions around;
    around.follow = firstLightsFollow;
    around.ambient = firstAmbientColor;
    ChangeLights(scene, around);
    for (const FirstLight& first : lights)
    {
        LightObject& light = *scene.GetLightByIndex(first.index);
        NamedColor colors = light.GetColors();
        colors.SetName(first.name);
        colors.SetDiffuseColor(first.diffuse);
        colors.SetSpecularColor(first.specular);
        light.SetColors(colors);
        PlaceLight(light, first.from);
    }
}

void ChangeLights(SceneObject& scene, const LightOptions& options)
{
    for (const LightChange& change : options.changes)
    {
        LightAt(scene, change.index);
    }
    if (options.follow)
    {
        *options.follow == LightsFollow::Scene ? scene.SetRotateLightsWithScene()
                                               : scene.ClearRotateLightsWithScene();
    }
    if (options.ambient)
    {
        scene.SetGlobalAmbientColor(ToColorVector(*options.ambient));
    }
    for (const LightChange& change : options.changes)
    {
        LightObject& light = LightAt(scene, change.index);
        if (!change.on)
        {
            light.ClearInUse();
            continue;
        }
        light.SetInUse();
        light.SetActive();
        if (change.color)
        {
            NamedColor colors = light.GetColors();
            colors.SetDiffuseColor(ToColorVector(*change.color));
            colors.SetSpecularColor(ToColorVector(*change.color));
            light.SetColors(colors);
        }
    }
}

}  // namespace orvane
