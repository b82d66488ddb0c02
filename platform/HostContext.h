// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// An OpenGL context that a host made current by other means than the platform's own.

#include <memory>

namespace orvane
{

/// Takes the host's GLX context away from this thread and makes it current again at the end. The
/// platform draws off screen with EGL, and EGL refuses to make its contexts current while a GLX
/// context is current. Does nothing when no GLX context is current, because EGL's own contexts can
/// replace each other.
class HostContextPause
{
public:
    HostContextPause();
    ~HostContextPause();
    HostContextPause(const HostContextPause&) = delete;
    HostContextPause& operator=(const HostContextPause&) = delete;

private:
    struct Paused;
    std::unique_ptr<Paused> paused_;  // null when nothing was paused
};

}  // namespace orvane
