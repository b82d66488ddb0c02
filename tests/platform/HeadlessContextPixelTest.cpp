// SPDX-License-Identifier: MIT
// The helpers of the pixel tests themselves.

#include "tests/support/HeadlessContext.h"

#include "platform/OpenGL.h"
#include "tests/support/BitmapDrawing.h"

#include <gtest/gtest.h>

namespace
{

TEST(HeadlessContext, ReadsDrawnPixels)
{
    const HeadlessContext context(8, 4);
    REQUIRE_CONTEXT(context);
    ClearTo(1, 0.4F, 0);
    ClearPixelTo(7, 3, 0, 0, 1);
    EXPECT_EQ(context.Pixel(0, 0), (Rgb{255, 102, 0}));
    EXPECT_EQ(context.Pixel(7, 3), (Rgb{0, 0, 255}));
    const Picture picture = context.ReadPixels();
    EXPECT_EQ(picture.At(7, 3), (Rgb{0, 0, 255}));
    EXPECT_EQ(picture.CountOther({255, 102, 0}), 1);
    glClear(GL_DEPTH_BUFFER_BIT);
    EXPECT_EQ(context.Depth(3, 3), 1);
}

TEST(HeadlessContext, ThePreviousContextBecomesCurrentAgain)
{
    const HeadlessContext outer(8, 4);
    REQUIRE_CONTEXT(outer);
    ClearTo(1, 0, 0);
    {
        const HeadlessContext inner(2, 2);
        REQUIRE_CONTEXT(inner);
        ClearTo(0, 1, 0);
        EXPECT_EQ(inner.Pixel(0, 0), (Rgb{0, 255, 0}));
    }
    EXPECT_EQ(outer.Pixel(7, 3), (Rgb{255, 0, 0}));
}

TEST(Picture, ADifferenceIsFoundAndSaved)
{
    Picture one{2, 1, {10, 20, 30, 40, 50, 60}};
    Picture other = one;
    other.bytes[4] = 51;
    EXPECT_TRUE(PicturesMatch(one, other, "picture-test"));
    EXPECT_FALSE(PicturesMatch(one, other, "picture-test", 0));
    EXPECT_TRUE(PicturesMatch(one, other, "picture-test", 0, 1));
    const std::string path =
        std::string(ORVANE_BINARY_DIR) + "/differences/picture-test-difference.ppm";
    EXPECT_EQ(Picture::Load(path).bytes, (std::vector<GLubyte>{0, 0, 0, 0, 8, 0}));
    EXPECT_FALSE(PicturesMatch(one, Picture{1, 1, {10, 20, 30}}, "picture-test"));
    EXPECT_EQ(Picture::Load("/nonexistent").width, 0);
}

}  // namespace
