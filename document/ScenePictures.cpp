// SPDX-License-Identifier: MIT
#include "document/ScenePictures.h"

#include "document/Colors.h"
#include "document/OptionRange.h"
#include "imaging/MemoryMappedDIB.h"
#include "orvane/Error.h"
#include "scene/SceneObject.h"

#include <filesystem>
#include <system_error>

namespace orvane
{

namespace
{

/// Throws Error unless the file is a BMP picture that can be read.
void CheckPicture(const CString& file)
{
    MemoryMappedDIB picture;
    const int status = picture.Open(file);
    if (status != MemoryMappedDIB::opened)
    {
        std::error_code ignored;
        const std::string& name = file.Text();
        throw Error(name, !std::filesystem::exists(name, ignored)
                              ? "there is no such file"
                              : "not a readable BMP picture: " + picture.GetRefusal());
    }
}

/// Checks a BMP picture and returns its absolute path, by which a scene finds the picture wherever
/// the scene is saved.
CString CheckedAbsolutePath(const std::string& file)
{
    std::error_code ignored;
    CString path = std::filesystem::absolute(file, ignored).c_str();
    CheckPicture(path);
    return path;
}

void CheckNodePictures(DrawingObject& node)
{
    if ((node.GetTexture()->textureFlags & TextureMap::Textured) != 0)
    {
        CheckPicture(node.GetTexture()->filename);
    }
    for (int i = 0; i < node.GetChildCount(); ++i)
    {
        CheckNodePictures(*node.GetChildByIndex(i));
    }
}

}  // namespace

void SetTexture(DrawingObject& node, const TextureOptions& options)
{
    CheckRange("repeat", options.repeat, 0.001, 1000);
    const CString path = CheckedAbsolutePath(options.file);
    TextureMap& texture = *node.GetTexture();
    texture.Load(path);
    texture.textureFlags |= TextureMap::Textured;
    texture.SetQuality(static_cast<unsigned long>(options.quality));
    texture.SetRepeatRate(options.repeat);
    options.scalesWithText ? texture.SetScaleWithObject() : texture.ClearScaleWithObject();
    node.SetTextureEnabled();
}

void SetBackground(SceneObject& scene, const BackgroundOptions& options)
{
    const CString path = options.file.empty() ? CString() : CheckedAbsolutePath(options.file);
    scene.SetBackgroundColor(ToColorVector(options.color));
    TextureMap& texture = *scene.GetTexture();
    texture.Reset();
    if (!path.IsEmpty())
    {
        texture.Load(path);
        texture.placement = static_cast<DWORD>(options.placement);
        texture.SetHorizontalLocation(options.x);
        texture.SetVerticalLocation(options.y);
    }
}

bool HasBackgroundPicture(const SceneObject& scene)
{
    return (scene.GetTexture()->textureFlags & TextureMap::Valid) != 0;
}

void CheckPictures(SceneObject& scene)
{
    CheckNodePictures(scene);
    if (HasBackgroundPicture(scene))
    {
        CheckPicture(scene.GetTexture()->filename);
    }
}

}  // namespace orvane
