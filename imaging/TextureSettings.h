// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The named values of a texture map's settings. The settings themselves are plain DWORDs, in
/// memory and in records, because a record may hold a value that has no name here.

#include <cstdint>

namespace orvane
{

/// How OpenGL takes the colour of a point from the texture's pixels. A value without a name draws
/// as Nearest.
enum class TextureQuality : std::uint32_t
{
    Nearest = 0,  ///< the nearest pixel
    Linear = 1,   ///< the weighted mean of the four nearest pixels
    Mipmap = 2    ///< Linear where the texture is enlarged; where it is reduced, Linear in the
                  ///< nearest of several prepared sizes
};

/// Where a scene's background picture lies in the drawn picture. At "its own size" one pixel of the
/// picture takes one pixel, times the scale of the projection. A value without a name draws as
/// Center.
enum class BackgroundPlacement : std::uint32_t
{
    Stretch = 0,  ///< once, from the texture's location to the lower right corner
    Tile = 1,     ///< repeated at its own size, from the texture's location in all directions
    Center = 2,   ///< once, at its own size, in the middle
    // The following numbers are far from the others, so that small numbers without a name go on to
    // draw as Center.
    Cover = 0x1000,   ///< once, in the middle, as small as it may be to leave no edge free
    Contain = 0x1001  ///< once, in the middle, as large as it may be to be seen whole
};

}  // namespace orvane
