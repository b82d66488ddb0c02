// SPDX-License-Identifier: MIT
#pragma once

#include <EGL/egl.h>

#include <string>

namespace posix
{

/// The display that all contexts of the process are made on. It needs no screen.
struct EglSystem
{
    EGLDisplay display;
    EGLConfig plain;    ///< 8 bits for red, green, blue and alpha, 24 for depth
    EGLConfig stencil;  ///< the same with a stencil buffer of 8 bits
    int maximumWidth;   ///< of a surface, in pixels
    int maximumHeight;
};

/// Remembers what is current on this thread and makes it so again at its end.
class KeptCurrent
{
public:
    /// \param display what to let go on when nothing was current.
    explicit KeptCurrent(EGLDisplay display);
    ~KeptCurrent();
    KeptCurrent(const KeptCurrent&) = delete;
    KeptCurrent& operator=(const KeptCurrent&) = delete;

private:
    EGLDisplay display_;
    EGLSurface draw_;
    EGLSurface read_;
    EGLContext context_;
};

/// The system, opened at the first call. Null when there is none, with the reason.
const EglSystem* FindEgl(std::string* reason);

/// An OpenGL context of that configuration, with the lists of \p shared unless it is
/// EGL_NO_CONTEXT. EGL_NO_CONTEXT when there is none.
EGLContext CreateEglContext(EGLDisplay display, EGLConfig config, EGLContext shared);

/// "eglCall: error 0x3000", of the last call on this thread.
std::string EglError(const char* call);

}  // namespace posix
