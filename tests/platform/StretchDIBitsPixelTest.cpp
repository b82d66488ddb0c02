// SPDX-License-Identifier: MIT
#include "tests/support/BitmapDrawing.h"
#include "tests/support/HeadlessContext.h"

#include <gtest/gtest.h>

#include <array>

namespace
{

using Values = std::vector<int>;

// Three by two, 24 bits: red, green, blue above yellow, black, white.
struct Sample
{
    std::array<BYTE, 24> bits = {0, 255, 255, 0, 0,   0, 255, 255, 255, 0, 0, 0,
                                 0, 0,   255, 0, 255, 0, 255, 0,   0,   0, 0, 0};
    BitmapDescription description{3, 2, 24};

    int DrawTo(HDC dc, int x, int y, int width, int height) const
    {
        return StretchDIBits(dc, x, y, width, height, 0, 0, 3, 2, bits.data(), description.Info(),
                             DIB_RGB_COLORS, SRCCOPY);
    }
};

constexpr Rgb red = {255, 0, 0};
constexpr Rgb green = {0, 255, 0};
constexpr Rgb blue = {0, 0, 255};
constexpr Rgb yellow = {255, 255, 0};
constexpr Rgb white = {255, 255, 255};
constexpr Rgb grey = {51, 51, 51};

Rgb PixelAt(int x, int y)
{
    GLubyte pixel[4] = {};
    glReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
    return {pixel[0], pixel[1], pixel[2]};
}

TEST(StretchDIBits, PicturesForABitmapOfAContextGoThroughOpenGL)
{
    const Drawing drawing(BitmapDescription(8, 6, 32));
    REQUIRE_CONTEXT(drawing);
    ClearTo(0.2f, 0.2f, 0.2f);
    const Sample sample;
    EXPECT_EQ(sample.DrawTo(drawing.dc, 1, 2, 3, 2), 2);
    EXPECT_EQ(PixelAt(1, 3), red);
    EXPECT_EQ(PixelAt(2, 3), green);
    EXPECT_EQ(PixelAt(3, 3), blue);
    EXPECT_EQ(PixelAt(1, 2), yellow);
    EXPECT_EQ(PixelAt(3, 2), white);
    EXPECT_EQ(PixelAt(0, 3), grey);
    EXPECT_EQ(PixelAt(1, 4), grey);
    EXPECT_EQ(PixelAt(4, 2), grey);
    GdiFlush();
    EXPECT_EQ(drawing.Bytes(4 * (8 * 3 + 1), 4), (Values{0, 0, 255, 255}));
}

TEST(StretchDIBits, ScalingThroughAContextMatchesScalingIntoBits)
{
    const Sample sample;
    const SelectedBitmap plain(BitmapDescription(11, 7, 32));
    const Drawing drawing(BitmapDescription(11, 7, 32));
    REQUIRE_CONTEXT(drawing);
    for (const auto& [x, y, width, height] :
         {std::array{0, 0, 11, 7}, std::array{-3, -2, 17, 20}, std::array{5, 4, 100, 100},
          std::array{11, 7, -11, -7}, std::array{4, 1, 1, 1}})
    {
        ClearTo(0, 0, 0);
        std::fill_n(plain.bits, 11 * 7 * 4, BYTE{0});
        EXPECT_EQ(sample.DrawTo(drawing.dc, x, y, width, height), 2);
        EXPECT_EQ(sample.DrawTo(plain.dc, x, y, width, height), 2);
        GdiFlush();
        int different = 0;
        for (int i = 0; i < 11 * 7 * 4; ++i)
        {
            different += i % 4 != 3 && plain.bits[i] != drawing.bits[i];
        }
        EXPECT_EQ(different, 0) << x << ' ' << y << ' ' << width << ' ' << height;
    }
}

TEST(StretchDIBits, OpenGLStateNeitherMattersNorChanges)
{
    const Drawing drawing(BitmapDescription(8, 6, 32));
    REQUIRE_CONTEXT(drawing);
    ClearTo(0.2f, 0.2f, 0.2f);
    glEnable(GL_DEPTH_TEST);
    glClearDepth(0);
    glClear(GL_DEPTH_BUFFER_BIT);
    for (const GLenum capability : {GL_BLEND, GL_ALPHA_TEST, GL_LIGHTING, GL_FOG, GL_SCISSOR_TEST,
                                    GL_TEXTURE_2D, GL_STENCIL_TEST, GL_COLOR_LOGIC_OP})
    {
        glEnable(capability);
    }
    glBlendFunc(GL_ZERO, GL_ZERO);
    glAlphaFunc(GL_NEVER, 0);
    glLogicOp(GL_INVERT);
    glColorMask(GL_FALSE, GL_TRUE, GL_FALSE, GL_TRUE);
    glPixelZoom(2, 3);
    glPixelTransferf(GL_RED_BIAS, 0.5f);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 99);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glMatrixMode(GL_PROJECTION);
    glTranslatef(9, 9, 9);
    glRasterPos2i(0, 0);
    GLfloat position[4];
    glGetFloatv(GL_CURRENT_RASTER_POSITION, position);

    const Sample sample;
    EXPECT_EQ(sample.DrawTo(drawing.dc, 0, 0, 8, 6), 2);

    GLint value = 0;
    glGetIntegerv(GL_UNPACK_ROW_LENGTH, &value);
    EXPECT_EQ(value, 99);
    glGetIntegerv(GL_MATRIX_MODE, &value);
    EXPECT_EQ(value, GL_PROJECTION);
    GLfloat number = 0;
    glGetFloatv(GL_ZOOM_X, &number);
    EXPECT_EQ(number, 2);
    glGetFloatv(GL_RED_BIAS, &number);
    EXPECT_EQ(number, 0.5f);
    GLboolean mask[4];
    glGetBooleanv(GL_COLOR_WRITEMASK, mask);
    EXPECT_FALSE(mask[0]);
    GLfloat after[4];
    glGetFloatv(GL_CURRENT_RASTER_POSITION, after);
    EXPECT_EQ(after[0], position[0]);
    for (const GLenum capability : {GL_BLEND, GL_ALPHA_TEST, GL_LIGHTING, GL_FOG, GL_SCISSOR_TEST,
                                    GL_TEXTURE_2D, GL_STENCIL_TEST, GL_COLOR_LOGIC_OP})
    {
        EXPECT_TRUE(glIsEnabled(capability));
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    glPixelTransferf(GL_RED_BIAS, 0);
    EXPECT_EQ(PixelAt(0, 5), red);
    EXPECT_EQ(PixelAt(7, 0), white);
    GLfloat depth = 1;
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glReadPixels(0, 0, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
    EXPECT_EQ(depth, 0);
}

TEST(StretchDIBits, PicturesFromABitmapOfAContextShowTheDrawnPixels)
{
    const Drawing drawing(BitmapDescription(4, 4, 24));
    REQUIRE_CONTEXT(drawing);
    const SelectedBitmap target(BitmapDescription(4, 4, 24));
    ClearTo(0, 0, 1);
    EXPECT_EQ(StretchDIBits(target.dc, 0, 0, 4, 4, 0, 0, 4, 4, drawing.bits,
                            BitmapDescription(4, 4, 24).Info(), DIB_RGB_COLORS, SRCCOPY),
              4);
    EXPECT_EQ(target.Bytes(0, 3), (Values{255, 0, 0}));
    ClearTo(0, 1, 0);
    EXPECT_EQ(SetDIBits(nullptr, target.bitmap, 0, 4, drawing.bits,
                        BitmapDescription(4, 4, 24).Info(), DIB_RGB_COLORS),
              4);
    EXPECT_EQ(target.Bytes(0, 3), (Values{0, 255, 0}));
}

TEST(SetDIBits, RowsForABitmapOfAContextGoThroughOpenGL)
{
    const Drawing drawing(BitmapDescription(3, 2, 24));
    REQUIRE_CONTEXT(drawing);
    ClearTo(0, 0, 0);
    const Sample sample;
    EXPECT_EQ(SetDIBits(nullptr, drawing.bitmap, 0, 2, sample.bits.data(),
                        sample.description.Info(), DIB_RGB_COLORS),
              2);
    EXPECT_EQ(PixelAt(0, 1), red);
    GdiFlush();
    EXPECT_EQ(drawing.Bytes(0, 3), (Values{0, 255, 255}));
}

TEST(StretchDIBits, OtherBitmapsAreNotDrawnThroughTheCurrentContext)
{
    const SelectedBitmap target(BitmapDescription(3, 2, 24));
    const Drawing drawing(BitmapDescription(3, 2, 24));
    REQUIRE_CONTEXT(drawing);
    ClearTo(0, 0, 0);
    const Sample sample;
    EXPECT_EQ(sample.DrawTo(target.dc, 0, 0, 3, 2), 2);
    EXPECT_EQ(target.Bytes(0, 3), (Values{0, 255, 255}));
    EXPECT_EQ(PixelAt(0, 1), (Rgb{0, 0, 0}));
}

}  // namespace
