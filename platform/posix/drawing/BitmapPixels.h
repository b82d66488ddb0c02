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

/// How channels of 8 bits become channels of fewer bits: by rounding or by ordered dithering.
enum class Reduction
{
    Round,
    Dither
};

/// The meaning of the pixels of a bitmap of 8 bits or fewer. Own: indices of the colour table,
/// where the nearest colour is taken. OpenGL: channels in the pixel itself, whatever the table
/// says; with 8 bits, from the lowest, 3 for red, 3 for green and 2 for blue, with 4 bits 1 for
/// each, and with 1 bit none.
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
