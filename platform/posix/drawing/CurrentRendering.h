// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The calls that bitmaps and device contexts make to the OpenGL context that is current on this
/// thread.

#include "platform/posix/drawing/GdiObjects.h"

#include <optional>

namespace posix
{

/// Copies the pixels that OpenGL has drawn on this thread into the bits of the bitmap that it draws
/// into.
void FlushRendering();

/// The same, but only when \p bits points into the bits of that bitmap.
void FlushRenderingOf(const void* bits);

/// The size of the surface that a context draws on, in pixels.
struct SurfaceSize
{
    int width;
    int height;
};

/// The size of the current context's surface, if the context draws into this bitmap, or if it is
/// adopted and has this device context. Otherwise no value. Both parameters may be null.
std::optional<SurfaceSize> RenderedSurface(HDC dc, const Bitmap* bitmap);

/// Draws pixels through the current context. See DrawPixels.
void DrawRendered(int x, int y, int width, int height, const BYTE* bgra);

/// If the current context draws into this device context, copies its pixels into the bits and makes
/// it not current.
void EndRenderingInto(HDC dc);

/// If the current context draws into this device context, copies its pixels into the bits and lets
/// it draw into the bitmap that the device context has selected now.
void FollowSelection(HDC dc);

}  // namespace posix
