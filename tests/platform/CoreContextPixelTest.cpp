// SPDX-License-Identifier: MIT
// Contexts of a core profile, which have no fixed functions.
#include "platform/Errors.h"
#include "platform/Rendering.h"
#include "tests/support/BitmapDrawing.h"
#include "tests/support/HeadlessContext.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace
{

using Values = std::vector<int>;

constexpr GLenum profileMask = 0x9126;
constexpr GLint coreProfileBit = 1;

GLenum NewestError()
{
    GLenum error = GL_NO_ERROR;
    for (GLenum next = glGetError(); next != GL_NO_ERROR; next = glGetError())
    {
        error = next;
    }
    return error;
}

TEST(CoreContext, HasACoreProfileOfVersionThreePointTwoOrNewer)
{
    const Drawing drawing(BitmapDescription(4, 3, 32), &CreateCoreContext);
    REQUIRE_CONTEXT(drawing);
    EXPECT_EQ(wglGetCurrentContext(), drawing.context);
    EXPECT_GE(std::atof(reinterpret_cast<const char*>(glGetString(GL_VERSION))), 3.2);
    GLint profile = 0;
    glGetIntegerv(profileMask, &profile);
    EXPECT_EQ(profile & coreProfileBit, coreProfileBit);
    EXPECT_EQ(NewestError(), GLenum{GL_NO_ERROR}) << "making it current left an error";
    glPushMatrix();
    EXPECT_EQ(NewestError(), GLenum{GL_INVALID_OPERATION}) << "it has fixed functions";
}

TEST(CoreContext, DrawsIntoTheBitsOfEveryBitmap)
{
    for (const int bitCount : {24, 32})
    {
        const Drawing drawing(BitmapDescription(3, 2, bitCount), &CreateCoreContext);
        REQUIRE_CONTEXT(drawing);
        ClearTo(1, 0, 0);
        ClearPixelTo(1, 1, 0, 1, 0.2F);
        GdiFlush();
        constexpr int rowBytes = 12;  // of both; with 24 bits a pixel, three of them are padding
        EXPECT_EQ(drawing.Bytes(0, 3), (Values{0, 0, 255}));
        EXPECT_EQ(drawing.Bytes(rowBytes + bitCount / 8, 3), (Values{51, 255, 0}));
        EXPECT_EQ(NewestError(), GLenum{GL_NO_ERROR});
    }
}

TEST(CoreContext, BeginsWithACopyOfTheBits)
{
    const Drawing drawing(BitmapDescription(3, 2, 24), &CreateCoreContext);
    REQUIRE_CONTEXT(drawing);
    ClearTo(0, 0, 0);
    wglMakeCurrent(nullptr, nullptr);
    drawing.bits[0] = 10;       // blue of the lower left pixel
    drawing.bits[12 + 4] = 70;  // green of the pixel above its neighbour
    ASSERT_TRUE(wglMakeCurrent(drawing.dc, drawing.context));
    const auto pixelAt = [](int x, int y) {
        GLubyte pixel[4] = {};
        glReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
        return Rgb{pixel[0], pixel[1], pixel[2]};
    };
    EXPECT_EQ(pixelAt(0, 0), (Rgb{0, 0, 10}));
    EXPECT_EQ(pixelAt(1, 1), (Rgb{0, 70, 0}));
    EXPECT_EQ(pixelAt(2, 1), (Rgb{0, 0, 0}));
    EXPECT_EQ(NewestError(), GLenum{GL_NO_ERROR});
}

TEST(CoreContext, PicturesGoThroughOpenGLAndChangeNoState)
{
    const Drawing drawing(BitmapDescription(4, 3, 32), &CreateCoreContext);
    REQUIRE_CONTEXT(drawing);
    ClearTo(0.2F, 0.2F, 0.2F);
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, 1, 1);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 7);
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    // One row of two pixels, red and blue, at 1, 1 from the top.
    const BYTE bits[8] = {0, 0, 255, 255, 0, 0, 0, 0};
    const BitmapDescription description(2, 1, 24);
    EXPECT_EQ(StretchDIBits(drawing.dc, 1, 1, 2, 1, 0, 0, 2, 1, bits, description.Info(),
                            DIB_RGB_COLORS, SRCCOPY),
              1);
    GdiFlush();
    EXPECT_EQ(drawing.Bytes(4 * 4, 4 * 4 - 1),
              (Values{51, 51, 51, 255, 0, 0, 255, 255, 255, 0, 0, 255, 51, 51, 51}));
    EXPECT_EQ(drawing.Bytes(0, 3), (Values{51, 51, 51}));
    EXPECT_EQ(glIsEnabled(GL_SCISSOR_TEST), GL_TRUE);
    const struct
    {
        GLenum name;
        GLint value;
    } expected[] = {{GL_UNPACK_ALIGNMENT, 1},
                    {GL_UNPACK_ROW_LENGTH, 7},
                    {GL_TEXTURE_BINDING_2D, static_cast<GLint>(texture)}};
    for (const auto& each : expected)
    {
        GLint value = -1;
        glGetIntegerv(each.name, &value);
        EXPECT_EQ(value, each.value) << each.name;
    }
    EXPECT_EQ(NewestError(), GLenum{GL_NO_ERROR});
}

TEST(CoreContext, SharesTexturesWithAContextOfTheSameProfile)
{
    const Drawing drawing(BitmapDescription(2, 2, 32), &CreateCoreContext);
    REQUIRE_CONTEXT(drawing);
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    HGLRC second = CreateCoreContext(drawing.dc);
    ASSERT_TRUE(wglShareLists(drawing.context, second));
    ASSERT_TRUE(wglMakeCurrent(drawing.dc, second));
    EXPECT_EQ(glIsTexture(texture), GL_TRUE);
    GLint profile = 0;
    glGetIntegerv(profileMask, &profile);
    EXPECT_EQ(profile & coreProfileBit, coreProfileBit);
    wglDeleteContext(second);
}

TEST(CoreContext, ABitmapThatCannotBeDrawnIntoGetsNone)
{
    const SelectedBitmap noFormat(BitmapDescription(2, 2, 24));
    EXPECT_EQ(CreateCoreContext(noFormat.dc), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PIXEL_FORMAT);
    EXPECT_EQ(CreateCoreContext(nullptr), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

}  // namespace
