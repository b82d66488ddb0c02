// SPDX-License-Identifier: MIT
#include "document/poster/ShownTextures.h"

#include "imaging/TextureMap.h"
#include "orvane/Error.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <utility>

namespace orvane
{

namespace
{

void Collect(DrawingObject& node, std::vector<TextureMap*>& textures)
{
    // Asked of a constant node, because a node that is not constant would make a texture.
    if (std::as_const(node).GetTexture()->ShouldTexture())
    {
        textures.push_back(node.GetTexture());
    }
    for (int i = 0; i < node.GetChildCount(); ++i)
    {
        Collect(*node.GetChildByIndex(i), textures);
    }
}

}  // namespace

ShownTextures::ShownTextures(const ViewObject& view)
{
    if (view.ShouldShowTextures())
    {
        Collect(*view.GetScene(), textures_);
    }
}

void ShownTextures::ThrowIfLost() const
{
    // The drawing clears the flag of a texture that has no pixels.
    const TextureMap* lost = nullptr;
    for (TextureMap* const texture : textures_)
    {
        if (!texture->ShouldTexture())
        {
            texture->textureFlags |= TextureMap::Valid;
            lost = lost != nullptr ? lost : texture;
        }
    }
    if (lost != nullptr)
    {
        throw Error(lost->filename.Text(), "the texture could not be read when it was drawn");
    }
}

}  // namespace orvane
