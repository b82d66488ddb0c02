// SPDX-License-Identifier: MIT
#include "document/poster/ShownTextures.h"

#include "imaging/TextureMap.h"
#include "orvane/Error.h"
#include "scene/DescendentWalk.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <utility>

namespace orvane
{

ShownTextures::ShownTextures(const ViewObject& view)
{
    if (view.ShouldShowTextures())
    {
        const auto collect = [this](DrawingObject& node) {
            // Asked of a constant node, because a node that is not constant would make a texture.
            if (std::as_const(node).GetTexture()->ShouldTexture())
            {
                textures_.push_back(node.GetTexture());
            }
            return true;
        };
        collect(*view.GetScene());
        VisitDescendents(*view.GetScene(), collect);
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
