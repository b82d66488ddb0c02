// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The pixels of bitmaps of every bit count.

#include "platform/posix/drawing/BitmapObject.h"

#include <cstdint>
#include <memory>

namespace posix
{

/// Whether pixels are blue, green, red, alpha bytes already.
bool IsPlain32(const Bitmap& bitmap);

/// Writes pixels of a row as blue, green, red, alpha bytes; alpha is 255 where the bitmap has none.
void ExpandPixels(const Bitmap& bitmap, const BYTE* row, int first, int count, BYTE* bgra);

/// Whether fewer bits than 8 a channel are made by ordered dithering or by rounding.
enum class Reduction
{
    Round,
    Dither
};

/// The colours of a bitmap of 8 bits or fewer: those of its table, of which the nearest is taken,
/// or, whatever the table, those that OpenGL draws: 3-3-2 with red lowest, with 4 bits 1-1-1 with
/// red lowest, none with 1 bit.
enum class Colors
{
    Own,
    OpenGL
};

/// Turns blue, green, red, alpha bytes into the pixels of a bitmap, which must outlive it.
class PixelWriter
{
public:
    PixelWriter(Bitmap& bitmap, Reduction reduction, Colors colors);
    ~PixelWriter();

    /// \param x, y where the first one goes, from the lower left.
    void Write(int x, int y, int count, const BYTE* bgra);

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// A number that tells bits apart from changed ones; 0 only for zeros throughout.
std::uint64_t HashOfBits(const Bitmap& bitmap);

}  // namespace posix
