// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Copying of pixels from and to OpenGL. A context of the given profile must be current; its state
/// stays as it was.

#include "platform/OpenGL.h"
#include "platform/posix/drawing/BitmapObject.h"
#include "platform/posix/drawing/EglSystem.h"

namespace posix
{

/// Stands for the colour buffer that the context draws into now.
constexpr GLenum currentBuffer = 0xFFFFFFFF;

/// Copies OpenGL's pixels into the bits of a bitmap of the surface's size. If GL_DITHER is enabled,
/// channels of fewer than 8 bits are dithered. \p buffer is the surface's colour buffer.
void ReadBits(Bitmap& bitmap, GLenum buffer, ContextProfile profile);

/// Draws the bits of a bitmap of the surface's size. False when OpenGL's attribute stack is full.
bool DrawBits(const Bitmap& bitmap, GLenum buffer, ContextProfile profile);

/// Draws rows of pixels, each pixel as bytes blue, green, red, alpha, with the lowest row first.
/// Their lower left corner is placed at (x, y), counted from that of the surface. False when
/// OpenGL's attribute stack is full.
bool DrawPixels(int x, int y, int width, int height, const BYTE* bgra, GLenum buffer,
                ContextProfile profile);

}  // namespace posix
