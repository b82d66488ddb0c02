// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace orvane
{

/// The channels of a pixel, in the order in which they lie in memory.
enum class PixelKind
{
    Grey,
    Rgb,
    Rgba,  ///< with straight alpha: the colours are not multiplied by the alpha
    Cmyk   ///< 0 is no ink
};

/// How the pixels of a row lie in memory: without gaps, each channel as an unsigned byte, or as an
/// unsigned number of 16 bits in the byte order of the machine.
struct RowFormat
{
    PixelKind kind = PixelKind::Rgb;
    int channelBits = 8;  ///< 8 or 16

    int Channels() const { return kind == PixelKind::Grey ? 1 : kind == PixelKind::Rgb ? 3 : 4; }
    std::size_t PixelBytes() const
    {
        return static_cast<std::size_t>(Channels()) * static_cast<std::size_t>(channelBits / 8);
    }
    std::size_t RowBytes(int width) const { return PixelBytes() * static_cast<std::size_t>(width); }
};

}  // namespace orvane
