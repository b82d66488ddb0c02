// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"

#include <string>
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
    /// The next drawing tries again to read the textures that were lost.
    ~ShownTextures();
    ShownTextures(const ShownTextures&) = delete;
    ShownTextures& operator=(const ShownTextures&) = delete;

    /// To be called after the drawing: tells which textures could not be read, each file once.
    /// \param warn if empty, throws Error for the first of them
    void TellLost(const MissingPictureFunction& warn) const;

private:
    std::vector<TextureMap*> textures_;
};

/// Tells that a picture could not be read completely while it was drawn. Throws Error when \p warn
/// is empty.
void TellLostPicture(const std::string& file, const MissingPictureFunction& warn);

}  // namespace orvane
