// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The pixels of bitmaps of every bit count.

#include "platform/posix/drawing/BitmapObject.h"

#include <cstdint>
#include <memory>

namespace posix
{

/// Whether the bitmap stores each pixel as the bytes blue, green, red, alpha.
bool IsPlain32(const Bitmap& bitmap);

/// Writes \p count pixels of a row, from the pixel \p first on, as bytes blue, green, red, alpha.
/// Alpha is 255 where the bitmap has none.
void ExpandPixels(const Bitmap& bitmap, const BYTE* row, int first, int count, BYTE* bgra);

/// The way in which channels of 8 bits become channels of fewer bits: rounding or ordered
/// dithering.
enum class Reduction
{
    Round,
    Dither
};

/// The meaning of the pixels of a bitmap of 8 bits or fewer. With Own, a pixel is the index of the
/// nearest colour in the colour table. With OpenGL, the pixel itself holds channels, whatever the
/// table says. Of 8 bits, from the lowest, 3 are red, 3 green and 2 blue; of 4 bits, red, green and
/// blue have 1 each; a pixel of 1 bit has no channels.
enum class Colors
{
    Own,
    OpenGL
};

/// Writes pixels, given as bytes blue, green, red, alpha, into a bitmap. The bitmap must outlive
/// it.
class PixelWriter
{
public:
    PixelWriter(Bitmap& bitmap, Reduction reduction, Colors colors);
    ~PixelWriter();

    /// \param x, y the place of the first pixel, from the lower left corner.
    void Write(int x, int y, int count, const BYTE* bgra);

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// A hash of the bits, by which a change is noticed. It is 0 when all bits are 0.
std::uint64_t HashOfBits(const Bitmap& bitmap);

}  // namespace posix
