// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HostContext.h"
#include "platform/Rendering.h"

namespace orvane
{

/// Remembers the OpenGL context that is current on this thread and makes it current again at its
/// end. Off-screen drawing makes contexts of its own current in between.
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

/// Makes a device context of the host's current context, which bitmaps can be drawn through, for as
/// long as this object lives. Does nothing when the current context is one of the library's, or was
/// not made with EGL.
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
