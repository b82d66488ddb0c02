// SPDX-License-Identifier: MIT
#pragma once

#include <EGL/egl.h>

#include <string>

namespace posix
{

/// What the functions of an OpenGL context are.
enum class ContextProfile
{
    FixedFunctions,  ///< those of OpenGL 1.1, and as many newer ones as the system has
    Core             ///< OpenGL 3.2 or newer without the fixed functions
};

/// The EGL display and configurations with which all contexts of the process are made. The display
/// needs no screen.
struct EglSystem
{
    EGLDisplay display;
    EGLConfig plain;    ///< 8 bits for red, green, blue and alpha, 24 for depth
    EGLConfig stencil;  ///< the same with a stencil buffer of 8 bits
    int maximumWidth;   ///< of a surface, pixels
    int maximumHeight;
};

/// Remembers which context is current on this thread and makes it current again when destroyed.
class KeptCurrent
{
public:
    /// \param display used at the end to make the current context not current, if no context was
    /// current at the beginning.
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

/// Returns the system, which the first call opens. Null, with the reason stored, when OpenGL is not
/// available.
const EglSystem* FindEgl(std::string* reason);

/// Makes an OpenGL context of a configuration. It shares lists and textures with \p shared, which
/// may be EGL_NO_CONTEXT. Returns EGL_NO_CONTEXT on failure.
EGLContext CreateEglContext(EGLDisplay display, EGLConfig config, EGLContext shared,
                            ContextProfile profile);

/// The text "eglCall: error 0x3000", with the name \p call and the error of the last EGL call on
/// this thread.
std::string EglError(const char* call);

}  // namespace posix
