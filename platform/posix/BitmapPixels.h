// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The pixels of bitmaps of every bit count, and their way from and to OpenGL.

#include "platform/OpenGL.h"
#include "platform/posix/Bitmap.h"

#include <cstdint>

namespace posix
{

/// Writes a row as blue, green, red, alpha bytes; alpha is 255 where the bitmap has none.
void ExpandRow(const Bitmap& bitmap, const BYTE* row, BYTE* bgra);

/// Whether fewer bits than 8 a channel are made by ordered dithering or by rounding.
enum class Reduction
{
    Round,
    Dither
};

/// Writes rows of blue, green, red, alpha bytes, the lowest first, into all of the bitmap. The
/// colours of 8 bits are 3-3-2 with red lowest, of 4 bits 1-1-1 with red lowest, whatever the
/// bitmap's colour table. Not for 1 bit.
void StorePixels(Bitmap& bitmap, const BYTE* bgra, Reduction reduction);

/// A number that tells bits apart from changed ones; 0 only for zeros throughout.
std::uint64_t HashOfBits(const Bitmap& bitmap);

// For these two a context must be current whose surface has the bitmap's size. They leave its state
// as it was; \p buffer is the surface's colour buffer.

/// Reads OpenGL's pixels into the bits. With GL_DITHER on, it dithers.
void ReadBits(Bitmap& bitmap, GLenum buffer);

/// Draws the bits. False when the attribute stack has no room.
bool DrawBits(const Bitmap& bitmap, GLenum buffer);

}  // namespace posix
