// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// An OpenGL context that a test makes by itself, as the host of a window does.

#include "tests/support/HeadlessContext.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <dlfcn.h>

/// A function of the EGL that the library has loaded.
template <typename Function>
Function Egl(const char* name)
{
    return reinterpret_cast<Function>(dlsym(dlopen("libEGL.so.1", RTLD_NOW), name));
}
#define EGL_CALL(name) Egl<decltype(&name)>(#name)

/// A context and a surface that belong to a host, on the library's display.
class HostWindow
{
public:
    enum class Profile
    {
        Compatibility,
        Core
    };

    HostWindow(int width, int height, Profile profile = Profile::Compatibility)
    {
        // A context of the library knows the display.
        const HeadlessContext library(1, 1);
        if (!library.IsValid())
        {
            return;
        }
        display_ = EGL_CALL(eglGetCurrentDisplay)();
        const EGLint wanted[] = {EGL_SURFACE_TYPE,
                                 EGL_PBUFFER_BIT,
                                 EGL_RENDERABLE_TYPE,
                                 EGL_OPENGL_BIT,
                                 EGL_RED_SIZE,
                                 8,
                                 EGL_GREEN_SIZE,
                                 8,
                                 EGL_BLUE_SIZE,
                                 8,
                                 EGL_ALPHA_SIZE,
                                 8,
                                 EGL_DEPTH_SIZE,
                                 24,
                                 EGL_NONE};
        EGLConfig configs[64];
        EGLint count = 0;
        EGL_CALL(eglChooseConfig)(display_, wanted, configs, 64, &count);
        EGLConfig config = nullptr;
        for (int i = 0; i < count && config == nullptr; ++i)
        {
            // The list begins with configurations of 10 bits, whose pixels are not the library's.
            EGLint red = 0;
            EGL_CALL(eglGetConfigAttrib)(display_, configs[i], EGL_RED_SIZE, &red);
            config = red == 8 ? configs[i] : nullptr;
        }
        const EGLint size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
        const EGLint core[] = {EGL_CONTEXT_MAJOR_VERSION,
                               3,
                               EGL_CONTEXT_MINOR_VERSION,
                               3,
                               EGL_CONTEXT_OPENGL_PROFILE_MASK,
                               EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                               EGL_NONE};
        surface_ = EGL_CALL(eglCreatePbufferSurface)(display_, config, size);
        context_ = EGL_CALL(eglCreateContext)(display_, config, EGL_NO_CONTEXT,
                                              profile == Profile::Core ? core : nullptr);
    }
    ~HostWindow()
    {
        if (display_ != EGL_NO_DISPLAY)
        {
            EGL_CALL(eglMakeCurrent)(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
            EGL_CALL(eglDestroySurface)(display_, surface_);
            EGL_CALL(eglDestroyContext)(display_, context_);
        }
    }
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    bool IsValid() const { return context_ != EGL_NO_CONTEXT; }
    const char* Reason() const { return "no context of a host's own"; }
    void MakeCurrent() const { EGL_CALL(eglMakeCurrent)(display_, surface_, surface_, context_); }
    bool IsCurrent() const { return EGL_CALL(eglGetCurrentContext)() == context_; }

private:
    EGLDisplay display_ = EGL_NO_DISPLAY;
    EGLSurface surface_ = EGL_NO_SURFACE;
    EGLContext context_ = EGL_NO_CONTEXT;
};
