// SPDX-License-Identifier: MIT
#include "document/poster/ShownTextures.h"

#include "imaging/TextureMap.h"
#include "orvane/Error.h"
#include "scene/DescendentWalk.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <set>
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

ShownTextures::~ShownTextures()
{
    for (TextureMap* const texture : textures_)
    {
        texture->textureFlags |= TextureMap::Valid;
    }
}

void ShownTextures::TellLost(const MissingPictureFunction& warn) const
{
    // The drawing clears the flag of a texture that has no pixels.
    std::set<std::string> lost;
    for (const TextureMap* const texture : textures_)
    {
        if (!texture->ShouldTexture())
        {
            lost.insert(texture->filename.Text());
        }
    }
    for (const std::string& file : lost)
    {
        TellLostPicture(file, warn);
    }
}

void TellLostPicture(const std::string& file, const MissingPictureFunction& warn)
{
    if (!warn)
    {
        throw Error(file, "the picture could not be read completely when it was drawn");
    }
    warn({file, MissingPicture::Reason::Unreadable});
}

}  // namespace orvane
