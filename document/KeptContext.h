// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HostContext.h"
#include "platform/Rendering.h"

namespace orvane
{

/// Remembers the current OpenGL context and, at the end of this object's life, makes it current
/// again. It is needed because off-screen drawing makes other contexts current.
class KeptContext
{
public:
    KeptContext();
    ~KeptContext();
    KeptContext(const KeptContext&) = delete;
    KeptContext& operator=(const KeptContext&) = delete;

private:
    HostContextPause pause_;
    bool isAdopted_ = false;  ///< whether this object adopted the host's context
    HDC dc_;
    HGLRC context_;
};

/// While this object lives, the host's current OpenGL context has a device context, which the
/// drawing of bitmaps needs. Does nothing if the current context is one of the library's or was
/// made through neither EGL nor GLX.
class AdoptedContext
{
public:
    /// \param width, height of the surface that the context draws on, in pixels
    AdoptedContext(int width, int height);
    ~AdoptedContext();
    AdoptedContext(const AdoptedContext&) = delete;
    AdoptedContext& operator=(const AdoptedContext&) = delete;

private:
    bool isAdopted_;
};

/// Throws Error unless the OpenGL context that is current on this thread can draw letters: it must
/// have the compatibility profile, and no shader program may be in use.
void CheckCurrentContext();

}  // namespace orvane
