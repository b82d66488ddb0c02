// SPDX-License-Identifier: MIT
// Adoption of a context that a host made through GLX. CTest runs these tests on a screen in memory.

#include "orvane/orvane.h"
#include "platform/Rendering.h"
#include "tests/support/BitmapDrawing.h"
#include "tests/support/BmpFile.h"
#include "tests/support/HeadlessContext.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

// Last, because X11's macros change names of the headers above.
#include <GL/glx.h>
#undef None
#undef Bool
#undef Status

namespace
{

/// A GLX context of a host, current on this thread, that draws on a pbuffer.
class GlxHost
{
public:
    GlxHost(int width, int height) : display_(SharedDisplay())
    {
        if (display_ == nullptr)
        {
            return;
        }
        const int wanted[] = {GLX_DRAWABLE_TYPE,
                              GLX_PBUFFER_BIT,
                              GLX_RENDER_TYPE,
                              GLX_RGBA_BIT,
                              GLX_RED_SIZE,
                              8,
                              GLX_GREEN_SIZE,
                              8,
                              GLX_BLUE_SIZE,
                              8,
                              GLX_DEPTH_SIZE,
                              24,
                              0};
        int count = 0;
        GLXFBConfig* const configs =
            glXChooseFBConfig(display_, DefaultScreen(display_), wanted, &count);
        if (count > 0)
        {
            const int size[] = {GLX_PBUFFER_WIDTH, width, GLX_PBUFFER_HEIGHT, height, 0};
            pbuffer_ = glXCreatePbuffer(display_, configs[0], size);
            context_ = glXCreateNewContext(display_, configs[0], GLX_RGBA_TYPE, nullptr, 1);
            glXMakeContextCurrent(display_, pbuffer_, pbuffer_, context_);
        }
        XFree(configs);
    }
    ~GlxHost()
    {
        if (context_ != nullptr)
        {
            glXMakeContextCurrent(display_, 0, 0, nullptr);
            glXDestroyContext(display_, context_);
            glXDestroyPbuffer(display_, pbuffer_);
        }
    }
    GlxHost(const GlxHost&) = delete;
    GlxHost& operator=(const GlxHost&) = delete;

    bool IsValid() const { return IsCurrent(); }
    const char* Reason() const { return "GLX has no context for pbuffers"; }
    bool IsCurrent() const { return context_ != nullptr && glXGetCurrentContext() == context_; }

private:
    /// The connection to the screen, which all tests use, as a host does for all its windows. It
    /// ends with the process.
    static Display* SharedDisplay()
    {
        static Display* const display = XOpenDisplay(nullptr);
        return display;
    }

    Display* display_;
    GLXPbuffer pbuffer_ = 0;
    GLXContext context_ = nullptr;
};

Rgb PixelAt(int x, int y)
{
    GLubyte pixel[4] = {};
    glReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
    return {pixel[0], pixel[1], pixel[2]};
}

class GlxContext : public testing::Test
{
protected:
    void SetUp() override
    {
        if (std::getenv("DISPLAY") == nullptr)
        {
            GTEST_SKIP() << "there is no screen; ctest runs this test on one in memory";
        }
    }
};

TEST_F(GlxContext, BitmapsAreDrawnThroughAnAdoptedContext)
{
    const GlxHost host(8, 6);
    REQUIRE_CONTEXT(host);
    const HDC dc = AdoptCurrentContext(8, 6);
    ASSERT_NE(dc, nullptr);
    EXPECT_EQ(wglGetCurrentDC(), dc);
    EXPECT_EQ(AdoptCurrentContext(8, 6), dc);  // with the next frame
    ClearTo(0, 0, 0);
    const BYTE pixel[] = {0, 128, 255, 0};
    EXPECT_EQ(StretchDIBits(dc, 2, 1, 3, 2, 0, 0, 1, 1, pixel, BitmapDescription(1, 1, 24).Info(),
                            DIB_RGB_COLORS, SRCCOPY),
              1);
    // Rows 1 and 2 from the top of 6 are rows 4 and 3 from the bottom.
    EXPECT_EQ(PixelAt(2, 4), (Rgb{255, 128, 0}));
    EXPECT_EQ(PixelAt(4, 3), (Rgb{255, 128, 0}));
    EXPECT_EQ(PixelAt(5, 3), (Rgb{0, 0, 0}));
    EXPECT_EQ(PixelAt(2, 5), (Rgb{0, 0, 0}));
    ReleaseAdoptedContext();
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
    EXPECT_TRUE(host.IsCurrent());
}

TEST_F(GlxContext, AnAdoptedContextCanBeMadeCurrentAgain)
{
    const GlxHost host(4, 4);
    REQUIRE_CONTEXT(host);
    const HDC dc = AdoptCurrentContext(4, 4);
    const HGLRC context = wglGetCurrentContext();
    ASSERT_NE(context, nullptr);
    ClearTo(1, 0, 0);
    {
        const Drawing drawing(BitmapDescription(2, 2, 24));
        ASSERT_TRUE(drawing.IsValid());
        EXPECT_FALSE(host.IsCurrent());
        ClearTo(0, 0, 1);
        EXPECT_TRUE(wglMakeCurrent(dc, context));
        EXPECT_EQ(drawing.Bytes(0, 3), (std::vector<int>{255, 0, 0}));
    }
    EXPECT_TRUE(host.IsCurrent());
    EXPECT_EQ(PixelAt(0, 0), (Rgb{255, 0, 0}));
    EXPECT_TRUE(wglMakeCurrent(nullptr, nullptr));
    EXPECT_FALSE(host.IsCurrent());
    EXPECT_TRUE(wglMakeCurrent(dc, context));
    EXPECT_TRUE(host.IsCurrent());
    ReleaseAdoptedContext();
    EXPECT_FALSE(wglMakeCurrent(dc, context));
}

TEST_F(GlxContext, ADocumentsBackgroundPictureIsDrawn)
{
    const GlxHost host(64, 32);
    REQUIRE_CONTEXT(host);
    ToolFolder folder;
    folder.Write("two.bmp", AsText(BlueAndRed().File()));
    orvane::Document document;
    orvane::BackgroundOptions background;
    background.file = folder.Path("two.bmp");
    document.SetBackground(background);
    glViewport(0, 0, 64, 32);
    orvane::Draw(document);
    EXPECT_EQ(PixelAt(0, 31), (Rgb{0, 0, 255}));
    EXPECT_EQ(PixelAt(63, 0), (Rgb{255, 0, 0}));
    EXPECT_TRUE(host.IsCurrent());
    EXPECT_EQ(wglGetCurrentContext(), nullptr);  // the adoption has ended
}

}  // namespace
