// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HostContext.h"
#include "platform/Rendering.h"

namespace orvane
{

/// Makes the OpenGL context that is current now current again at the end of this object's life.
/// Off-screen drawing makes other contexts current in between.
class KeptContext
{
public:
    KeptContext();
    ~KeptContext();
    KeptContext(const KeptContext&) = delete;
    KeptContext& operator=(const KeptContext&) = delete;

private:
    HostContextPause pause_;
    bool isAdopted_ = false;  ///< whether the context is a host's, and not one of the library's
    HDC dc_;
    HGLRC context_;
};

/// While this object lives, bitmaps can be drawn into the host's current OpenGL context, which
/// needs a device context. Does nothing if the current context is one of the library's, or was not
/// made with EGL.
class AdoptedContext
{
public:
    /// \param width, height the pixels that the context draws on
    AdoptedContext(int width, int height);
    ~AdoptedContext();
    AdoptedContext(const AdoptedContext&) = delete;
    AdoptedContext& operator=(const AdoptedContext&) = delete;

private:
    bool isAdopted_;
};

/// Throws Error unless a context is current on this thread that can draw letters, which needs the
/// compatibility profile of OpenGL.
void CheckCurrentContext();

}  // namespace orvane
