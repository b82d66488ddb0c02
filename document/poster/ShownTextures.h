// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

class TextureMap;
class ViewObject;

namespace orvane
{

/// The textures that a drawing shows. A texture whose file cannot be read while it is drawn would
/// be left out of the picture without a word.
class ShownTextures
{
public:
    /// To be made before the drawing. The textures of the view's scene are borrowed.
    explicit ShownTextures(const ViewObject& view);

    /// To be called after the drawing. Throws Error when a texture could not be read. The next
    /// drawing tries again to read it.
    void ThrowIfLost() const;

private:
    std::vector<TextureMap*> textures_;
};

}  // namespace orvane
