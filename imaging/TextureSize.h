// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace orvane
{

/// A picture's width and height, in pixels, each at least 1.
struct PixelSize
{
    int width;
    int height;

    bool operator==(const PixelSize&) const = default;
};

/// The size that a picture has when it is handed to OpenGL or GLU as a texture: its own, unless
/// that is above limits::maxTextureSide or \p maxPixels. Then each side is cut to the limit, and
/// after that both are reduced in proportion until their product is within \p maxPixels.
PixelSize FitTexture(PixelSize size, std::uint64_t maxPixels);

}  // namespace orvane
