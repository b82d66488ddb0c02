// SPDX-License-Identifier: MIT
#pragma once

class TextureMap;

namespace orvane
{

/// Makes the pixels of a texture map the picture of OpenGL's current texture object, repeated in
/// both directions, with the filters of its quality. Works in contexts without fixed functions,
/// too. Returns false when the texture map is not to be drawn or has no pixels.
bool UploadTexture(TextureMap& texture);

}  // namespace orvane
