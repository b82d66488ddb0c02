// SPDX-License-Identifier: MIT
#include "imaging/TextureSize.h"

#include "platform/Limits.h"

#include <algorithm>
#include <cmath>

namespace orvane
{

PixelSize FitTexture(PixelSize size, std::uint64_t maxPixels)
{
    const int width = std::min(size.width, limits::maxTextureSide);
    const int height = std::min(size.height, limits::maxTextureSide);
    const double pixels = static_cast<double>(width) * height;
    const double allowed = static_cast<double>(maxPixels);
    if (pixels <= allowed)
    {
        return {width, height};
    }
    // A side that would become less than a pixel stays one pixel; the other is reduced for both.
    const double scale = std::sqrt(allowed / pixels);
    const int newWidth = std::max(1, static_cast<int>(width * scale));
    const double tallest = std::min(height * scale, allowed / newWidth);
    const int newHeight = std::max(1, static_cast<int>(tallest));
    return {std::min(newWidth, static_cast<int>(allowed / newHeight)), newHeight};
}

}  // namespace orvane
