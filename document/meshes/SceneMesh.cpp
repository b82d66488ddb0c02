// SPDX-License-Identifier: MIT
#include "document/meshes/SceneMesh.h"

#include "document/TextEncoding.h"
#include "imaging/TextureMap.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "solids/MeshBuilder.h"
#include "solids/NodeTransform.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace orvane
{

namespace
{

bool IsGltf(MeshFormat format)
{
    return format == MeshFormat::Glb || format == MeshFormat::Gltf;
}

/// The transform that takes back another. Has no value when that is not possible.
std::optional<MeshTransform> InverseOf(const MeshTransform& transform)
{
    const std::array<double, 16>& m = transform.matrix;
    const std::array<double, 16> n = transform.ForNormals().matrix;
    const double determinant = std::abs(m[0] * n[0] + m[1] * n[1] + m[2] * n[2]);
    if (!(std::isfinite(determinant) && determinant > 0))
    {
        return std::nullopt;
    }
    MeshTransform inverse;
    for (std::size_t column = 0; column < 3; ++column)
    {
        for (std::size_t row = 0; row < 3; ++row)
        {
            inverse.matrix[4 * column + row] = n[4 * row + column] / determinant;
        }
    }
    const MeshPoint origin = inverse.Apply({-m[12], -m[13], -m[14]}, 0);
    std::copy(origin.begin(), origin.end(), &inverse.matrix[12]);
    return inverse;
}

/// The length of 1 unit of a transform's own coordinates.
double ScaleOf(const MeshTransform& transform)
{
    const std::array<double, 16>& m = transform.matrix;
    return std::hypot(m[8], m[9], m[10]);
}

/// Has no value when the lens is none that a file can describe.
std::optional<MeshCamera> CameraOf(const ProjectionData& lens, const MeshTransform& eye)
{
    const double scale = ScaleOf(eye);
    MeshCamera camera;
    camera.transform = eye.matrix;
    camera.isOrthographic = lens.IsOrthographic() != 0;
    camera.fieldOfView = lens.GetFieldOfViewAngle();
    camera.aspect = lens.GetAspect();
    camera.width = lens.GetOrthographicWidth() * scale;
    camera.height = lens.GetOrthographicHeight() * scale;
    camera.nearest = lens.GetZNear() * scale;
    camera.farthest = lens.GetZFar() * scale;
    const bool canSee = camera.isOrthographic
                            ? camera.width > 0 && camera.height > 0
                            : camera.fieldOfView > 0 && camera.fieldOfView < 180 &&
                                  camera.aspect > 0 && std::isfinite(camera.aspect);
    const bool isFinite = std::isfinite(camera.farthest) && std::isfinite(camera.width) &&
                          std::isfinite(camera.height);
    return canSee && isFinite && camera.nearest > 0 && camera.farthest > camera.nearest
               ? std::optional(camera)
               : std::nullopt;
}

/// The distance from a light to the middle of what it lights, at least a hundredth of an em.
double DistanceOf(const MeshTransform& light, const MeshBounds& bounds)
{
    double square = 0;
    for (std::size_t axis = 0; axis < 3 && !bounds.IsEmpty(); ++axis)
    {
        const double middle = (double{bounds.minimum[axis]} + bounds.maximum[axis]) / 2;
        square += std::pow(light.matrix[12 + axis] - middle, 2);
    }
    return std::max(std::sqrt(square), 0.01);
}

MeshLight LightOf(const LightObject& from, const MeshTransform& transform, const MeshBounds& bounds)
{
    MeshLight light;
    const double cutoff = from.GetSpotCutoffAngle();
    const NamedColor colors = from.GetColors();
    const ColorVector color = colors.GetDiffuseColor();
    light.name = ToUtf8(colors.GetName());
    light.transform = transform.matrix;
    light.color = {color.red, color.green, color.blue};
    light.distance = DistanceOf(transform, bounds);
    if (!from.IsDirectional())
    {
        const bool isSpot = cutoff > 0 && cutoff <= 90;  // OpenGL's other angle is 180: no spot
        light.kind = isSpot ? MeshLight::Kind::Spot : MeshLight::Kind::Point;
        light.coneAngle = isSpot ? cutoff : 0;
    }
    return light;
}

void AddLights(const SceneObject& scene, const MeshTransform& above, MeshScene& result)
{
    const MeshBounds bounds = result.mesh.Bounds();
    for (int i = 0; i < scene.GetLightCount(); ++i)
    {
        const LightObject& light = *scene.GetLightByIndex(i);
        if (light.IsInUse() && light.IsActive())
        {
            result.lights.push_back(LightOf(light, above * TransformOf(light), bounds));
        }
    }
}

}  // namespace

MeshScene MakeMeshScene(const ViewObject& view, MeshFormat format,
                        const MeshFileOptions& fileOptions)
{
    MeshScene result;
    SceneObject& scene = *view.GetScene();
    MeshBuildOptions options;
    options.inWorldCoordinates = !IsGltf(format);
    options.separateLetters = format == MeshFormat::ThreeMf;  // whose objects are lines
    options.closedTexts = fileOptions.solid;
    result.mesh = BuildMesh(scene, options);
    if (!view.ShouldShowTextures())
    {
        for (MeshNode& node : result.mesh.nodes)
        {
            node.texture.reset();
        }
    }
    if (!IsGltf(format))
    {
        return result;
    }
    // The camera stands at the origin of the coordinates that the view's transform leads to.
    const std::optional<MeshTransform> eye = InverseOf(TransformOf(view));
    if (eye)
    {
        result.camera = CameraOf(view.GetProjection(), *eye);
    }
    if (scene.ShouldRotateLightsWithScene())
    {
        AddLights(scene, TransformOf(scene), result);
    }
    else if (eye)
    {
        AddLights(scene, *eye, result);
    }
    return result;
}

}  // namespace orvane
