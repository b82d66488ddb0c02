// SPDX-License-Identifier: MIT
#include "tests/support/BitmapDrawing.h"
#include "tests/support/HeadlessContext.h"

#include <EGL/egl.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

namespace
{

// A function of the EGL that the library has loaded.
template <typename Function>
Function Egl(const char* name)
{
    return reinterpret_cast<Function>(dlsym(dlopen("libEGL.so.1", RTLD_NOW), name));
}
#define EGL_CALL(name) Egl<decltype(&name)>(#name)

// A context and a surface as the host of a window makes them, on the library's display.
class HostWindow
{
public:
    HostWindow(int width, int height)
    {
        // The display is the current one of a context of the library's.
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
                                 EGL_DEPTH_SIZE,
                                 24,
                                 EGL_NONE};
        EGLConfig config = nullptr;
        EGLint count = 0;
        EGL_CALL(eglChooseConfig)(display_, wanted, &config, 1, &count);
        const EGLint size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
        surface_ = EGL_CALL(eglCreatePbufferSurface)(display_, config, size);
        context_ = EGL_CALL(eglCreateContext)(display_, config, EGL_NO_CONTEXT, nullptr);
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

Rgb PixelAt(int x, int y)
{
    GLubyte pixel[4] = {};
    glReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
    return {pixel[0], pixel[1], pixel[2]};
}

TEST(AdoptedContext, AnAdoptedContextIsReportedAsCurrent)
{
    const HostWindow window(8, 6);
    REQUIRE_CONTEXT(window);
    window.MakeCurrent();
    EXPECT_EQ(wglGetCurrentDC(), nullptr);
    const HDC dc = AdoptCurrentContext(8, 6);
    ASSERT_NE(dc, nullptr);
    EXPECT_EQ(wglGetCurrentDC(), dc);
    EXPECT_NE(wglGetCurrentContext(), nullptr);
    PIXELFORMATDESCRIPTOR format{};
    EXPECT_NE(DescribePixelFormat(dc, GetPixelFormat(dc), sizeof format, &format), 0);
    EXPECT_EQ(format.cColorBits, 32);
    EXPECT_EQ(AdoptCurrentContext(8, 6), dc);  // with the next frame
    EXPECT_TRUE(window.IsCurrent());
    ReleaseAdoptedContext();
    EXPECT_EQ(wglGetCurrentDC(), nullptr);
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
    EXPECT_TRUE(window.IsCurrent());  // for the host
    EXPECT_EQ(GetPixelFormat(dc), 0);
    ReleaseAdoptedContext();
}

TEST(AdoptedContext, BitmapsAreDrawnThroughAnAdoptedContext)
{
    const HostWindow window(8, 6);
    REQUIRE_CONTEXT(window);
    window.MakeCurrent();
    const HDC dc = AdoptCurrentContext(8, 6);
    ClearTo(0, 0, 0);
    const BYTE pixel[] = {0, 128, 255, 0};
    EXPECT_EQ(StretchDIBits(dc, 2, 1, 3, 2, 0, 0, 1, 1, pixel, BitmapDescription(1, 1, 24).Info(),
                            DIB_RGB_COLORS, SRCCOPY),
              1);
    const Rgb orange = {255, 128, 0};
    const Rgb black = {0, 0, 0};
    EXPECT_EQ(PixelAt(2, 4), orange);
    EXPECT_EQ(PixelAt(4, 3), orange);
    EXPECT_EQ(PixelAt(5, 3), black);
    EXPECT_EQ(PixelAt(2, 5), black);
    EXPECT_EQ(PixelAt(2, 2), black);
    ReleaseAdoptedContext();
}

TEST(AdoptedContext, AnAdoptedContextCanBeMadeCurrentAgain)
{
    const HostWindow window(4, 4);
    REQUIRE_CONTEXT(window);
    window.MakeCurrent();
    const HDC dc = AdoptCurrentContext(4, 4);
    const HGLRC context = wglGetCurrentContext();
    ClearTo(1, 0, 0);
    {
        const Drawing drawing(BitmapDescription(2, 2, 24));
        ASSERT_TRUE(drawing.IsValid());
        EXPECT_EQ(wglGetCurrentDC(), drawing.dc);
        EXPECT_FALSE(window.IsCurrent());
        ClearTo(0, 0, 1);
        EXPECT_FALSE(wglMakeCurrent(drawing.dc, context));  // not what it draws on
        EXPECT_TRUE(wglMakeCurrent(dc, context));
        EXPECT_EQ(drawing.Bytes(0, 3), (std::vector<int>{255, 0, 0}));
    }
    EXPECT_EQ(wglGetCurrentDC(), dc);
    EXPECT_EQ(wglGetCurrentContext(), context);
    EXPECT_TRUE(window.IsCurrent());
    EXPECT_EQ(PixelAt(0, 0), (Rgb{255, 0, 0}));
    EXPECT_TRUE(wglMakeCurrent(nullptr, nullptr));
    EXPECT_EQ(wglGetCurrentDC(), nullptr);
    EXPECT_FALSE(window.IsCurrent());
    EXPECT_TRUE(wglMakeCurrent(dc, context));
    EXPECT_TRUE(window.IsCurrent());
    ReleaseAdoptedContext();
    EXPECT_FALSE(wglMakeCurrent(dc, context));
}

TEST(AdoptedContext, OnlyAContextOfTheHostCanBeAdopted)
{
    {
        const HeadlessContext library(2, 2);
        REQUIRE_CONTEXT(library);
        EXPECT_EQ(AdoptCurrentContext(2, 2), nullptr);
        EXPECT_EQ(GetLastError(), ERROR_BUSY);
    }
    EXPECT_EQ(AdoptCurrentContext(2, 2), nullptr);
    EXPECT_NE(GetLastErrorText(), "");
    const HostWindow window(2, 2);
    window.MakeCurrent();
    EXPECT_EQ(AdoptCurrentContext(0, 2), nullptr);
}

TEST(AdoptedContext, PixelsAreCopiedFromAContextThatAnAdoptedOneReplaces)
{
    const HostWindow window(2, 2);
    REQUIRE_CONTEXT(window);
    const Drawing drawing(BitmapDescription(2, 2, 24));
    ClearTo(0, 1, 0);
    window.MakeCurrent();
    const HDC dc = AdoptCurrentContext(2, 2);
    EXPECT_EQ(drawing.Bytes(0, 3), (std::vector<int>{0, 255, 0}));
    EXPECT_EQ(wglGetCurrentDC(), dc);
    EXPECT_TRUE(window.IsCurrent());
    ReleaseAdoptedContext();
}

}  // namespace
