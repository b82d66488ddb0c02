// SPDX-License-Identifier: MIT
#include "platform/Rendering.h"

#include "platform/Errors.h"
#include "platform/OpenGL.h"
#include "tests/support/BitmapDrawing.h"
#include "tests/support/HeadlessContext.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

namespace
{

using Values = std::vector<int>;

TEST(Rendering, ANewContextHasOpenGLsInitialState)
{
    const Drawing drawing(BitmapDescription(30, 20, 24));
    REQUIRE_CONTEXT(drawing);
    EXPECT_EQ(wglGetCurrentContext(), drawing.context);
    EXPECT_EQ(wglGetCurrentDC(), drawing.dc);
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(viewport[2], 30);
    EXPECT_EQ(viewport[3], 20);
    GLint bits = 0;
    glGetIntegerv(GL_DEPTH_BITS, &bits);
    EXPECT_EQ(bits, 24);
    GLfloat color[4] = {1, 1, 1, 1};
    glGetFloatv(GL_COLOR_CLEAR_VALUE, color);
    EXPECT_EQ(color[0], 0);
    GLint depth = -1;
    glGetIntegerv(GL_ATTRIB_STACK_DEPTH, &depth);
    EXPECT_EQ(depth, 0);
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
}

TEST(Rendering, TwentyFourBitsAreBlueGreenRedFromTheLowestRow)
{
    const Drawing drawing(BitmapDescription(3, 2, 24));
    REQUIRE_CONTEXT(drawing);
    ClearTo(1, 0, 0);
    ClearPixelTo(2, 1, 0, 1, 0.2F);
    EXPECT_EQ(drawing.Bytes(0, 3), (Values{0, 0, 0}));
    GdiFlush();
    EXPECT_EQ(drawing.Bytes(0, 9), (Values{0, 0, 255, 0, 0, 255, 0, 0, 255}));
    EXPECT_EQ(drawing.Bytes(12 + 6, 3), (Values{51, 255, 0}));
}

TEST(Rendering, ThirtyTwoBitsAreCopiedToo)
{
    const Drawing drawing(BitmapDescription(2, 2, 32));
    REQUIRE_CONTEXT(drawing);
    ClearTo(1, 0.4F, 0);
    ClearPixelTo(0, 1, 0, 0, 1);
    GdiFlush();
    EXPECT_EQ(drawing.Bytes(0, 3), (Values{0, 102, 255}));
    EXPECT_EQ(drawing.Bytes(8, 3), (Values{255, 0, 0}));
}

TEST(Rendering, ATopDownBitmapBeginsWithTheHighestRow)
{
    for (const int bitCount : {24, 32})
    {
        const Drawing drawing(BitmapDescription(4, -2, bitCount));
        REQUIRE_CONTEXT(drawing);
        ClearPixelTo(0, 1, 0, 0, 1);
        GdiFlush();
        EXPECT_EQ(drawing.Bytes(0, 3), (Values{255, 0, 0}));
    }
}

TEST(Rendering, SixteenBitsFollowTheMasks)
{
    BitmapDescription description(2, 1, 16);
    for (const bool isMasked : {false, true})
    {
        if (isMasked)
        {
            description.SetMasks(0xF800, 0x07E0, 0x001F);
        }
        const Drawing drawing(description);
        REQUIRE_CONTEXT(drawing);
        ClearTo(1, 0, 0);
        ClearPixelTo(1, 0, 0, 1, 1);
        GdiFlush();
        EXPECT_EQ(drawing.Bytes(0, 4),
                  isMasked ? (Values{0x00, 0xF8, 0xFF, 0x07}) : (Values{0x00, 0x7C, 0xFF, 0x03}));
    }
}

TEST(Rendering, EightBitsAreThreeForRedThreeForGreenTwoForBlue)
{
    const Drawing drawing(BitmapDescription(4, 1, 8));
    REQUIRE_CONTEXT(drawing);
    ClearPixelTo(0, 0, 1, 0, 0);
    ClearPixelTo(1, 0, 0, 1, 0);
    ClearPixelTo(2, 0, 0, 0, 1);
    ClearPixelTo(3, 0, 1, 1, 1);
    GdiFlush();
    EXPECT_EQ(drawing.Bytes(0, 4), (Values{7, 56, 192, 255}));
}

TEST(Rendering, FourBitsAreOnePerChannel)
{
    const Drawing drawing(BitmapDescription(3, 1, 4));
    REQUIRE_CONTEXT(drawing);
    ClearTo(1, 0, 0);
    ClearPixelTo(1, 0, 0, 1, 0);
    ClearPixelTo(2, 0, 0, 0, 1);
    GdiFlush();
    EXPECT_EQ(drawing.Bytes(0, 2), (Values{0x12, 0x40}));
}

TEST(Rendering, ColoursOfThePaletteAreNotDithered)
{
    const Drawing drawing(BitmapDescription(16, 16, 8));
    REQUIRE_CONTEXT(drawing);
    for (int i = 0; i < 256; ++i)
    {
        // The palette's own values, by whole-number division.
        const int red = (i & 7) * 255 / 7;
        const int green = ((i >> 3) & 7) * 255 / 7;
        const int blue = (i >> 6) * 255 / 3;
        ClearTo(static_cast<float>(red) / 255, static_cast<float>(green) / 255,
                static_cast<float>(blue) / 255);
        GdiFlush();
        ASSERT_EQ(drawing.Bytes(0, 256), Values(256, i));
    }
}

TEST(Rendering, AGreyIsDitheredInTheRightProportions)
{
    // 100 of 255 in blue is 100 * 3 / 255 = 1.18 levels of 3. Half a step and 13, 14 or 15 of 16
    // make it 2: these three thresholds of sixteen.
    const Drawing drawing(BitmapDescription(4, 4, 8));
    REQUIRE_CONTEXT(drawing);
    ClearTo(0, 0, 100.0F / 255);
    GdiFlush();
    const Values bytes = drawing.Bytes(0, 16);
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), 0x40), 13);
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), 0x80), 3);

    glDisable(GL_DITHER);
    GdiFlush();
    EXPECT_EQ(drawing.Bytes(0, 16), Values(16, 0x40));
}

TEST(Rendering, PixelsAreCopiedWhenTheContextIsMadeNotCurrent)
{
    Drawing drawing(BitmapDescription(2, 2, 24));
    REQUIRE_CONTEXT(drawing);
    ClearTo(0, 0, 1);
    EXPECT_EQ(drawing.bits[0], 0);
    EXPECT_TRUE(wglMakeCurrent(nullptr, nullptr));
    EXPECT_EQ(drawing.bits[0], 255);
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
    EXPECT_EQ(wglGetCurrentDC(), nullptr);
    EXPECT_TRUE(wglMakeCurrent(nullptr, nullptr));
}

TEST(Rendering, PixelsAreCopiedWhenTheCurrentContextIsDeleted)
{
    Drawing drawing(BitmapDescription(2, 2, 24));
    REQUIRE_CONTEXT(drawing);
    ClearTo(0, 0, 1);
    EXPECT_TRUE(wglDeleteContext(drawing.context));
    EXPECT_EQ(drawing.bits[0], 255);
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
    EXPECT_FALSE(wglDeleteContext(drawing.context));
    EXPECT_FALSE(wglMakeCurrent(drawing.dc, drawing.context));
}

TEST(Rendering, PixelsAreCopiedWhenTheDeviceContextIsDeleted)
{
    Drawing drawing(BitmapDescription(2, 2, 24));
    REQUIRE_CONTEXT(drawing);
    ClearTo(0, 0, 1);
    EXPECT_TRUE(DeleteDC(drawing.dc));
    EXPECT_EQ(drawing.bits[0], 255);
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
}

TEST(Rendering, PixelsAreCopiedWhenAnotherContextIsMadeCurrent)
{
    Drawing one(BitmapDescription(2, 2, 24));
    REQUIRE_CONTEXT(one);
    ClearTo(0, 0, 1);
    const Drawing other(BitmapDescription(4, 4, 32));
    REQUIRE_CONTEXT(other);
    EXPECT_EQ(one.bits[0], 255);
    ClearTo(0, 1, 0);
    EXPECT_TRUE(wglMakeCurrent(one.dc, one.context));
    EXPECT_EQ(other.bits[1], 255);
    GLubyte pixel[4] = {};
    glReadPixels(0, 0, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
    EXPECT_EQ(pixel[2], 255);
    EXPECT_EQ(pixel[1], 0);
}

TEST(Rendering, DrawingGoesToANewlySelectedBitmap)
{
    Drawing drawing(BitmapDescription(2, 2, 24));
    REQUIRE_CONTEXT(drawing);
    ClearTo(0, 0, 1);
    BYTE* bits = nullptr;
    const BitmapDescription larger(8, 8, 24);
    const HBITMAP other = CreateDIBSection(nullptr, larger.Info(), DIB_RGB_COLORS,
                                           reinterpret_cast<void**>(&bits), nullptr, 0);
    EXPECT_EQ(SelectObject(drawing.dc, other), drawing.bitmap);
    EXPECT_EQ(drawing.bits[0], 255);
    EXPECT_EQ(wglGetCurrentContext(), drawing.context);
    ClearTo(0, 1, 0);
    GdiFlush();
    EXPECT_EQ(bits[7 * 24 + 7 * 3 + 1], 255);
    EXPECT_EQ(drawing.bits[0], 255);
    // The first bitmap of all cannot be drawn into.
    EXPECT_EQ(SelectObject(drawing.dc, drawing.previous), other);
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
    EXPECT_TRUE(DeleteObject(other));
}

TEST(Rendering, DrawingStartsFromTheBitmapsBits)
{
    const int bitCounts[] = {4, 8, 16, 24, 32};
    for (const int bitCount : bitCounts)
    {
        SCOPED_TRACE(bitCount);
        BitmapDescription description(4, 2, bitCount);
        description.colors[1] = {255, 102, 0, 0};
        Drawing drawing(description);
        REQUIRE_CONTEXT(drawing);
        wglMakeCurrent(nullptr, nullptr);
        // The second pixel of the upper row: blue full, green 0.4 and red none where that exists.
        BYTE* const row = drawing.bits + 4 * ((4 * bitCount + 31) / 32);
        switch (bitCount)
        {
            case 4:
                row[0] = 0x01;
                break;
            case 8:
                row[1] = 1;
                break;
            case 16:
                row[2] = 0x1F;
                row[3] = 0x01;  // green 8 of 31
                break;
            default:
                row[bitCount / 8] = 255;
                row[bitCount / 8 + 1] = 102;
        }
        ASSERT_TRUE(wglMakeCurrent(drawing.dc, drawing.context));
        GLubyte pixel[4] = {};
        glReadPixels(1, 1, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
        EXPECT_EQ(pixel[0], 0);
        EXPECT_EQ(pixel[1], bitCount == 16 ? 8 * 255 / 31 : 102);
        EXPECT_EQ(pixel[2], 255);
        glReadPixels(0, 1, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
        EXPECT_EQ(pixel[2], 0);
        EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
    }
}

TEST(Rendering, CopyingDisturbsNoState)
{
    const Drawing drawing(BitmapDescription(3, 3, 24));
    REQUIRE_CONTEXT(drawing);
    ClearTo(0, 0.4F, 1);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glPixelStorei(GL_PACK_ROW_LENGTH, 100);
    glPixelStorei(GL_PACK_SKIP_PIXELS, 7);
    glPixelTransferf(GL_GREEN_SCALE, 0);
    glPixelTransferf(GL_RED_BIAS, 1);
    for (int i = 0; i < 16; ++i)
    {
        glPushAttrib(GL_ALL_ATTRIB_BITS);  // until the stack is full
    }
    GdiFlush();
    EXPECT_EQ(drawing.Bytes(0, 3), (Values{255, 102, 0}));
    GLint value = 0;
    glGetIntegerv(GL_PACK_ALIGNMENT, &value);
    EXPECT_EQ(value, 1);
    glGetIntegerv(GL_PACK_ROW_LENGTH, &value);
    EXPECT_EQ(value, 100);
    GLfloat scale = 1;
    glGetFloatv(GL_GREEN_SCALE, &scale);
    EXPECT_EQ(scale, 0);
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
}

TEST(Rendering, StateAndDepthSurviveUntilAContextIsCurrentAgain)
{
    Drawing drawing(BitmapDescription(2, 2, 24));
    REQUIRE_CONTEXT(drawing);
    glEnable(GL_DEPTH_TEST);
    glClearDepth(0.25);
    glClear(GL_DEPTH_BUFFER_BIT);
    glColorMask(GL_FALSE, GL_TRUE, GL_TRUE, GL_TRUE);
    wglMakeCurrent(nullptr, nullptr);
    drawing.bits[2] = 255;  // red, so that the bits are drawn
    ASSERT_TRUE(wglMakeCurrent(drawing.dc, drawing.context));
    GLfloat depth = 0;
    glReadPixels(0, 0, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
    EXPECT_NEAR(depth, 0.25F, 1e-6F);
    GLubyte pixel[4] = {};
    glReadPixels(0, 0, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
    EXPECT_EQ(pixel[0], 255);
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    GLboolean mask[4] = {};
    glGetBooleanv(GL_COLOR_WRITEMASK, mask);
    EXPECT_EQ(mask[0], GL_FALSE);
}

TEST(Rendering, TwoContextsCanDrawIntoOneBitmapInTurn)
{
    Drawing drawing(BitmapDescription(4, 4, 24));
    REQUIRE_CONTEXT(drawing);
    const HGLRC second = wglCreateContext(drawing.dc);
    ClearTo(0, 0, 1);
    ASSERT_TRUE(wglMakeCurrent(drawing.dc, second));
    ClearPixelTo(1, 1, 0, 1, 0);
    ASSERT_TRUE(wglMakeCurrent(drawing.dc, drawing.context));
    ClearPixelTo(2, 2, 1, 0, 0);
    GdiFlush();
    EXPECT_EQ(drawing.Bytes(0, 3), (Values{255, 0, 0}));
    EXPECT_EQ(drawing.Bytes(12 + 3, 3), (Values{0, 255, 0}));
    EXPECT_EQ(drawing.Bytes(2 * 12 + 6, 3), (Values{0, 0, 255}));
    EXPECT_TRUE(wglDeleteContext(second));
}

TEST(Rendering, AContextIsCurrentOnOneThread)
{
    Drawing drawing(BitmapDescription(2, 2, 24));
    REQUIRE_CONTEXT(drawing);
    BOOL made = TRUE;
    BOOL deleted = TRUE;
    DWORD error = 0;
    std::thread([&] {
        made = wglMakeCurrent(drawing.dc, drawing.context);
        error = GetLastError();
        deleted = wglDeleteContext(drawing.context);
    }).join();
    EXPECT_FALSE(made);
    EXPECT_EQ(error, ERROR_BUSY);
    EXPECT_FALSE(deleted);
}

TEST(Rendering, AContextCanBeUsedAgainAfterItsThreadEnds)
{
    Drawing drawing(BitmapDescription(2, 2, 24));
    REQUIRE_CONTEXT(drawing);
    wglMakeCurrent(nullptr, nullptr);
    std::thread([&] {
        wglMakeCurrent(drawing.dc, drawing.context);
        ClearTo(0, 0, 1);
    }).join();
    EXPECT_EQ(drawing.bits[0], 255);
    EXPECT_TRUE(wglMakeCurrent(drawing.dc, drawing.context));
}

TEST(Rendering, ThreadsDrawAtTheSameTime)
{
    const Drawing probe(BitmapDescription(2, 2, 24));
    REQUIRE_CONTEXT(probe);
    std::vector<std::thread> threads;
    int wrong[4] = {-1, -1, -1, -1};
    for (int i = 0; i < 4; ++i)
    {
        threads.emplace_back([i, &wrong] {
            const Drawing drawing(BitmapDescription(64, 64, 32));
            wrong[i] = 0;
            for (int round = 0; round < 20; ++round)
            {
                const int level = (40 * i + round) % 256;
                ClearTo(0, 0, static_cast<float>(level) / 255);
                GdiFlush();
                wrong[i] += drawing.bits[0] == level ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    EXPECT_EQ(Values(wrong, wrong + 4), Values(4, 0));
}

TEST(Rendering, SharedListsCanBeCalledFromBothContexts)
{
    Drawing drawing(BitmapDescription(2, 2, 24));
    REQUIRE_CONTEXT(drawing);
    const HGLRC second = wglCreateContext(drawing.dc);
    EXPECT_TRUE(wglShareLists(drawing.context, second));
    const GLuint list = glGenLists(1);
    glNewList(list, GL_COMPILE);
    ClearTo(0, 0, 1);
    glEndList();
    glFinish();
    ASSERT_TRUE(wglMakeCurrent(drawing.dc, second));
    EXPECT_TRUE(glIsList(list));
    glCallList(list);
    GdiFlush();
    EXPECT_EQ(drawing.bits[0], 255);
    EXPECT_FALSE(wglShareLists(drawing.context, second));
    EXPECT_FALSE(wglShareLists(drawing.context, nullptr));
    wglDeleteContext(second);
}

TEST(Rendering, ABitmapThatCannotBeDrawnIntoGetsNoContext)
{
    const SelectedBitmap noFormat(BitmapDescription(2, 2, 24));
    EXPECT_EQ(wglCreateContext(noFormat.dc), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PIXEL_FORMAT);
    const SelectedBitmap oneBit(BitmapDescription(2, 2, 1));
    SetPixelFormat(oneBit.dc, 1, nullptr);
    EXPECT_EQ(wglCreateContext(oneBit.dc), nullptr);
    EXPECT_EQ(wglCreateContext(nullptr), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST(Rendering, AnotherPixelFormatIsRefused)
{
    Drawing drawing(BitmapDescription(2, 2, 24));
    REQUIRE_CONTEXT(drawing);
    const SelectedBitmap other(BitmapDescription(2, 2, 32));
    EXPECT_FALSE(wglMakeCurrent(other.dc, drawing.context));
    SetPixelFormat(other.dc, 1, nullptr);
    EXPECT_FALSE(wglMakeCurrent(other.dc, drawing.context));
    EXPECT_FALSE(wglMakeCurrent(nullptr, drawing.context));
    EXPECT_EQ(wglGetCurrentContext(), drawing.context);
}

TEST(Rendering, ATooLargeBitmapIsRefusedWithAReason)
{
    const Drawing probe(BitmapDescription(2, 2, 24));
    REQUIRE_CONTEXT(probe);
    const Drawing drawing(BitmapDescription(400000, 1, 8));
    EXPECT_EQ(drawing.context, nullptr);
    EXPECT_EQ(drawing.Reason().find("400000 x 1 pixels: "), 0U) << drawing.Reason();
    EXPECT_EQ(wglGetCurrentContext(), probe.context);
}

}  // namespace
