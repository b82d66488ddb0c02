// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Pixels on their way from and to OpenGL. A context must be current; its state is left as it was.

#include "platform/OpenGL.h"
#include "platform/posix/drawing/BitmapObject.h"

namespace posix
{

/// In place of a colour buffer: the one that the context draws into now.
constexpr GLenum asItIs = 0xFFFFFFFF;

/// Reads OpenGL's pixels into the bits of a bitmap of the surface's size. With GL_DITHER on, it
/// dithers. \p buffer is the surface's colour buffer.
void ReadBits(Bitmap& bitmap, GLenum buffer);

/// Draws the bits of a bitmap of the surface's size. False when the attribute stack has no room.
bool DrawBits(const Bitmap& bitmap, GLenum buffer);

/// Draws rows of blue, green, red, alpha bytes, the lowest first, with their lower left corner at
/// (x, y) from that of the surface. False when the attribute stack has no room.
bool DrawPixels(int x, int y, int width, int height, const BYTE* bgra, GLenum buffer);

}  // namespace posix
