// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/drawing/GdiObjects.h"

#include <optional>

namespace posix
{

/// Copies what OpenGL has drawn on this thread into the bits of the bitmap that it draws into.
void FlushRendering();

/// The same, when these bits are among what it draws into.
void FlushRenderingOf(const void* bits);

/// What OpenGL draws on, pixels.
struct SurfaceSize
{
    int width;
    int height;
};

/// What the context that is current on this thread draws on, when it draws into this bitmap or,
/// adopted, into this device context (which may be null).
std::optional<SurfaceSize> RenderedSurface(HDC dc, const Bitmap* bitmap);

/// Draws pixels through that context: see DrawPixels.
void DrawRendered(int x, int y, int width, int height, const BYTE* bgra);

/// Lets the context that is current on this thread go, with a copy into the bits, when it draws
/// into this device context.
void EndRenderingInto(HDC dc);

/// Lets this thread's current context, when it draws into this device context, go on in the bitmap
/// that the device context has selected now. The old bitmap gets a copy.
void FollowSelection(HDC dc);

}  // namespace posix
