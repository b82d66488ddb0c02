// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/DeviceContext.h"

namespace posix
{

/// Copies what OpenGL has drawn on this thread into the bits of the bitmap that it draws into.
void FlushRendering();

/// Lets the context that is current on this thread go, with a copy into the bits, when it draws
/// into this device context.
void EndRenderingInto(HDC dc);

/// Lets this thread's current context, when it draws into this device context, go on in the bitmap
/// that the device context has selected now. The old bitmap gets a copy.
void FollowSelection(HDC dc);

}  // namespace posix
