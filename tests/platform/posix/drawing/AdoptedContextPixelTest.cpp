// SPDX-License-Identifier: MIT
#include "tests/support/BitmapDrawing.h"
#include "tests/support/HeadlessContext.h"
#include "tests/support/HostWindow.h"

#include <gtest/gtest.h>

namespace
{

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
