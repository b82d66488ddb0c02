// SPDX-License-Identifier: MIT
#include "apps/cli/SceneBuilder.h"

#include "apps/cli/Errors.h"
#include "imaging/MemoryMappedDIB.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <numbers>

namespace
{

constexpr double margin = 0.08;  // of the picture, kept free on each side
constexpr double degree = std::numbers::pi / 180;

// A camera outside of this distance shows a scene made smaller or larger: the depth buffer is fine
// enough there, and nothing comes before the near plane.
constexpr double nearestDistance = 1;
constexpr double farthestDistance = 10;

// Over the camera's shoulders, towards the light.
struct FirstLight
{
    int index;
    const char* name;
    DVector from;
    ColorVector diffuse;
    ColorVector specular;
};

/// Turns a light so that it shines from a direction: its own is its z axis.
void PlaceLight(LightObject& light, const DVector& from)
{
    const DVector zAxis(0.0, 0.0, 1.0);
    DVector direction = from;
    direction.Normalize();
    const double angle = std::acos(std::clamp(zAxis.Dot(direction), -1.0, 1.0)) / degree;
    light.SetRotation(angle, zAxis * direction);
}

/// Throws Failure when there is no such picture.
void CheckPicture(const CString& file)
{
    MemoryMappedDIB picture;
    const int status = picture.Open(file);
    if (status != MemoryMappedDIB::opened)
    {
        std::error_code ignored;
        const std::string& name = file.Text();
        throw Failure(name + ": " +
                      (!std::filesystem::exists(name, ignored)
                           ? "there is no such file"
                           : "no BMP picture that can be read: " + picture.GetRefusal()));
    }
}

/// Binds a file to a texture map, by its whole path, so that the scene can be kept anywhere.
void LoadPicture(TextureMap& texture, const std::string& file)
{
    std::error_code ignored;
    const CString path = std::filesystem::absolute(file, ignored).c_str();
    CheckPicture(path);
    texture.Load(path);
}

void CheckNodeTextures(DrawingObject& node)
{
    if ((node.GetTexture()->textureFlags & TextureMap::Textured) != 0)
    {
        CheckPicture(node.GetTexture()->filename);
    }
    for (int i = 0; i < node.GetChildCount(); ++i)
    {
        CheckNodeTextures(*node.GetChildByIndex(i));
    }
}

/// Moves the camera by what the scene is off the middle, as it appears, in each direction.
void CentreScene(ViewObject& view)
{
    const Vector low = view.GetBoundsLocalMinimum();
    const Vector high = view.GetBoundsLocalMaximum();
    constexpr int rounds = 12;  // each halves the rest at least
    for (int i = 0; i < rounds; ++i)
    {
        double least[2] = {1e30, 1e30};
        double most[2] = {-1e30, -1e30};
        double nearest = 1e30;
        for (int corner = 0; corner < 8; ++corner)
        {
            DVector point((corner & 1) != 0 ? high.x : low.x, (corner & 2) != 0 ? high.y : low.y,
                          (corner & 4) != 0 ? high.z : low.z);
            view.GetTransform()->TransformDVectors(&point, 1);
            const double slopes[2] = {point.x / -point.z, point.y / -point.z};
            for (int axis = 0; axis < 2; ++axis)
            {
                least[axis] = std::min(least[axis], slopes[axis]);
                most[axis] = std::max(most[axis], slopes[axis]);
            }
            nearest = std::min(nearest, -point.z);
        }
        view.Translate(
            DVector(-nearest * (least[0] + most[0]) / 2, -nearest * (least[1] + most[1]) / 2, 0.0));
    }
}

/// Zooms with a lens that sees less by the margin on each side than the camera's.
bool ZoomWithMargin(ViewObject& view)
{
    const double angle = view.GetProjection().GetFieldOfViewAngle();
    view.SetProjectionFieldOfViewAngle(
        2 * std::atan(std::tan(angle / 2 * degree) * (1 - 2 * margin)) / degree);
    const bool moved = view.ZoomExtents() != 0;
    view.SetProjectionFieldOfViewAngle(angle);
    return moved;
}

}  // namespace

DrawingObject& AddNode(SceneObject& scene, std::unique_ptr<DrawingObject> node)
{
    DrawingObject& added = *node.release();
    scene.AddChild(&added);
    return added;
}

void SetFirstLights(SceneObject& scene)
{
    static const FirstLight lights[] = {
        {1, "Key", DVector(-0.35, 0.75, 1.0), {0.76f, 0.75f, 0.72f, 1}, {0.7f, 0.69f, 0.66f, 1}},
        {7, "Fill", DVector(0.9, -0.15, 0.35), {0.31f, 0.32f, 0.36f, 1}, {0.25f, 0.28f, 0.34f, 1}},
    };
    scene.ClearRotateLightsWithScene();
    scene.SetGlobalAmbientColor({0.34f, 0.35f, 0.38f, 1});
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

void ChangeLights(SceneObject& scene, const LightLook& look)
{
    if (look.followScene)
    {
        *look.followScene ? scene.SetRotateLightsWithScene() : scene.ClearRotateLightsWithScene();
    }
    if (look.ambient)
    {
        scene.SetGlobalAmbientColor(*look.ambient);
    }
    for (const LightChange& change : look.changes)
    {
        LightObject* const light = scene.GetLightByIndex(change.index);
        if (light == nullptr)
        {
            throw Failure("--light: the scene has lights 0 to " +
                          std::to_string(scene.GetLightCount() - 1) + ", found " +
                          std::to_string(change.index));
        }
        if (!change.on)
        {
            light->ClearInUse();
            continue;
        }
        light->SetInUse();
        light->SetActive();
        if (change.color)
        {
            NamedColor colors = light->GetColors();
            colors.SetDiffuseColor(*change.color);
            colors.SetSpecularColor(*change.color);
            light->SetColors(colors);
        }
    }
}

void SetTexture(DrawingObject& node, const TextureLook& look)
{
    TextureMap& texture = *node.GetTexture();
    LoadPicture(texture, look.file);
    texture.textureFlags |= TextureMap::Textured;
    texture.SetQuality(static_cast<unsigned long>(look.quality));
    texture.SetRepeatRate(look.repeat);
    look.scales ? texture.SetScaleWithObject() : texture.ClearScaleWithObject();
    node.SetTextureEnabled();
}

void SetBackground(SceneObject& scene, const BackgroundLook& look)
{
    scene.SetBackgroundColor(look.color);
    TextureMap& texture = *scene.GetTexture();
    texture.Reset();
    if (!look.file.empty())
    {
        LoadPicture(texture, look.file);
        texture.placement = static_cast<DWORD>(look.placement);
        texture.SetHorizontalLocation(look.x);
        texture.SetVerticalLocation(look.y);
    }
}

void CheckTextures(SceneObject& scene)
{
    CheckNodeTextures(scene);
    if ((scene.GetTexture()->textureFlags & TextureMap::Valid) != 0)
    {
        CheckPicture(scene.GetTexture()->filename);
    }
}

void FrameScene(ViewObject& view, const CameraLook& look, int width, int height)
{
    CoordinateTransform turned;
    turned.Rotate(look.turn[2], DVector(0.0, 0.0, 1.0));
    turned.Rotate(look.turn[1], DVector(0.0, 1.0, 0.0));
    turned.Rotate(look.turn[0], DVector(1.0, 0.0, 0.0));
    view.SetTransform(turned);
    view.SetUnscaledSize(width, height);
    view.SetViewSize(width, height);
    if (look.lensLength)
    {
        view.SetProjectionLensLength(*look.lensLength);
    }
    else
    {
        view.SetProjectionFieldOfViewAngle(look.fieldOfView);
    }
    look.orthographic ? view.SetProjectionOrthographic() : view.ClearProjectionOrthographic();

    if (ZoomWithMargin(view))
    {
        // From the camera, which looks along -z from the origin, to the scene's front.
        view.CalculateBounds();
        const double distance = -view.GetBoundsGlobalMaximum().z;
        const double wanted = std::clamp(distance, nearestDistance, farthestDistance);
        if (wanted != distance && distance > 0)
        {
            const double factor = wanted / distance;
            view.GetTransform()->SetScale(DVector(factor, factor, factor));
            ZoomWithMargin(view);
        }
        if (look.orthographic)
        {
            view.SetProjectionOrthographicWidth(view.GetProjectionOrthographicWidth() /
                                                (1 - 2 * margin));
        }
        else
        {
            CentreScene(view);
        }
    }
    view.SaveReferenceAspect();
}

void SizeView(ViewObject& view, int width, int height)
{
    const ProjectionData lens = view.GetProjection();
    view.SetUnscaledSize(width, height);
    const bool framedForThis = view.GetProjection().GetAspect() == lens.GetReferenceAspect();
    if (!framedForThis && lens.referenceHeight > 0)
    {
        view.Resize(width, height);
    }
    view.SetViewSize(width, height);
}

std::array<int, 2> FramedSize(const ViewObject& view)
{
    const ProjectionData lens = view.GetProjection();
    const double height = lens.referenceHeight;
    const double width = std::round(height * lens.GetReferenceAspect());
    if (!(height >= 1 && height <= 1e6 && width >= 1 && width <= 1e6))
    {
        return {0, 0};
    }
    return {static_cast<int>(width), static_cast<int>(height)};
}
