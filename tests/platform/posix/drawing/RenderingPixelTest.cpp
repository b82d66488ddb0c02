// SPDX-License-Identifier: MIT
#include "tests/support/BitmapDrawing.h"
#include "tests/support/HeadlessContext.h"

#include <EGL/egl.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace
{

// The EGL that the library has loaded.
struct Egl
{
    template <typename Function>
    static Function Find(const char* name)
    {
        return reinterpret_cast<Function>(dlsym(dlopen("libEGL.so.1", RTLD_NOW), name));
    }

    const decltype(&eglMakeCurrent) makeCurrent = Find<decltype(&eglMakeCurrent)>("eglMakeCurrent");
    const decltype(&eglGetCurrentDisplay) getCurrentDisplay =
        Find<decltype(&eglGetCurrentDisplay)>("eglGetCurrentDisplay");
    const decltype(&eglGetCurrentContext) getCurrentContext =
        Find<decltype(&eglGetCurrentContext)>("eglGetCurrentContext");
};

// A host's own context, of whatever kind, may become current behind the library's back.
TEST(Rendering, PixelsAreCopiedFromAContextThatTheHostReplaced)
{
    Drawing drawing(BitmapDescription(2, 2, 24));
    REQUIRE_CONTEXT(drawing);
    const Egl egl;
    ClearTo(0, 0, 1);
    egl.makeCurrent(egl.getCurrentDisplay(), EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    GdiFlush();
    EXPECT_EQ(drawing.bits[0], 255);
    EXPECT_EQ(egl.getCurrentContext(), EGL_NO_CONTEXT);
    EXPECT_TRUE(wglMakeCurrent(drawing.dc, drawing.context));
    GLint bits = 0;
    glGetIntegerv(GL_RED_BITS, &bits);
    EXPECT_EQ(bits, 8);
}

using RenderingDeathTest = testing::Test;

TEST(RenderingDeathTest, WithoutOpenGLAnErrorIsReported)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            // No vendor's library is found then.
            setenv("__EGL_VENDOR_LIBRARY_FILENAMES", "/dev/null", 1);
            const Drawing drawing(BitmapDescription(2, 2, 24));
            const HeadlessContext headless(2, 2);
            const bool isRefused = drawing.context == nullptr &&
                                   GetLastError() == ERROR_NO_RENDERING && !headless.IsValid();
            std::fprintf(stderr, "%s\n", drawing.Reason().c_str());
            std::exit(isRefused ? 0 : 1);
        },
        testing::ExitedWithCode(0), "no OpenGL: .*default display: ");
}

}  // namespace
