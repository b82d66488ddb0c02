// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

namespace posix
{

/// An OpenGL context that a host made through EGL or GLX and has current on this thread, with the
/// surfaces that it draws on. The host owns all of them.
class ForeignContext
{
public:
    virtual ~ForeignContext() = default;

    /// Whether this thread has the context current, on any surfaces.
    virtual bool IsCurrent() const = 0;

    /// Makes the context current on its surfaces. False, with the error set, when OpenGL refuses.
    virtual bool MakeCurrent() const = 0;

    /// Leaves this thread without a current context.
    virtual void MakeNotCurrent() const = 0;
};

/// The EGL context that is current on this thread; null when there is none.
std::unique_ptr<ForeignContext> CurrentEglContext();

/// The GLX context that is current on this thread; null when there is none.
std::unique_ptr<ForeignContext> CurrentGlxContext();

}  // namespace posix
