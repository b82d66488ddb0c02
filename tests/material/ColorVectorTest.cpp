// SPDX-License-Identifier: MIT
#include "material/ColorVector.h"

#include "tests/support/ExpectVector.h"
#include "tests/support/RecordBytes.h"

#include <cmath>

TEST(ColorVector, StartsOpaqueBlack)
{
    EXPECT_RGBA(ColorVector(), 0.0f, 0.0f, 0.0f, 1.0f);
}

TEST(ColorVector, IsSetAndCleared)
{
    ColorVector color(0.1f, 0.2f, 0.3f, 0.4f);
    EXPECT_RGBA(color, 0.1f, 0.2f, 0.3f, 0.4f);
    const ColorVector copy(color);
    color.SetColorVector(5, 6, 7, 8);
    EXPECT_RGBA(color, 5.0f, 6.0f, 7.0f, 8.0f);
    color.Clear();
    EXPECT_RGBA(color, 0.0f, 0.0f, 0.0f, 1.0f);
    color = copy;
    EXPECT_RGBA(color, 0.1f, 0.2f, 0.3f, 0.4f);
}

TEST(ColorVector, IsAnArrayOfFourFloatsFromRedOn)
{
    const ColorVector color(1, 2, 3, 4);
    const float* const floats = &color.red;
    EXPECT_EQ(&color.green, floats + 1);
    EXPECT_EQ(&color.blue, floats + 2);
    EXPECT_EQ(&color.alpha, floats + 3);
}

TEST(ColorVector, TakesAColorRefAndKeepsAlpha)
{
    ColorVector color(0, 0, 0, 0.25f);
    color = 0x00FF8000ul;
    // 128 / 255 as a product with the float 0.003921569, rounded to float.
    EXPECT_RGBA(color, 0.0f, 0x1.010102p-1f, 1.0f, 0.25f);
    color = 0xAB0000FFul;
    EXPECT_RGBA(color, 1.0f, 0.0f, 0.0f, 0.25f);
    color = 51;
    EXPECT_EQ(color.red, 0x1.99999cp-3f);
}

TEST(ColorVector, GivesAColorRefRoundedToTheNearestByte)
{
    EXPECT_EQ(ColorVector(1.0f, 0.5f, 0.0f, 0.3f).GetColorRef(), 0x0080FFul);
    EXPECT_EQ(ColorVector(0.0f, 0.0f, 1.0f, 1.0f).GetColorRef(), 0xFF0000ul);
    // 0.7 * 255 is 178.5 in float, and rounds up.
    EXPECT_EQ(ColorVector(0.7f, 0.0f, 0.0f, 1.0f).GetColorRef(), 179ul);
}

TEST(ColorVector, ColorRefsComeBackUnchanged)
{
    for (unsigned long byte = 0; byte < 256; ++byte)
    {
        const unsigned long colorRef = byte | (255 - byte) << 8 | (byte ^ 0x55) << 16;
        ColorVector color;
        color = colorRef;
        EXPECT_EQ(color.GetColorRef(), colorRef);
    }
}

TEST(ColorVector, ColorRefsOfComponentsOutOfRangeWrap)
{
    // 2 * 255 + 0.5 is 510.5: 0x1FE. -1 * 255 + 0.5 is -254.5: -254 is 0x..02.
    EXPECT_EQ(ColorVector(2.0f, 0.0f, 0.0f, 1.0f).GetColorRef(), 0xFEul);
    EXPECT_EQ(ColorVector(0.0f, -1.0f, 0.0f, 1.0f).GetColorRef(), 0x0200ul);
    // Beyond every integer: the clamped 64 bits are all ones up, all zeros down.
    EXPECT_EQ(ColorVector(1e30f, -1e30f, NAN, 1.0f).GetColorRef(), 0x0000FFul);
    EXPECT_EQ(ColorVector(INFINITY, 0.0f, 0.0f, 1.0f).GetColorRef(), 0x0000FFul);
}

TEST(ColorVector, CalculatesOnAllFourComponents)
{
    const ColorVector a(1, 2, 3, 4);
    const ColorVector b(0.5f, 1, -1, 2);
    EXPECT_RGBA(a + b, 1.5f, 3.0f, 2.0f, 6.0f);
    EXPECT_RGBA(a - b, 0.5f, 1.0f, 4.0f, 2.0f);
    EXPECT_RGBA(a * 2, 2.0f, 4.0f, 6.0f, 8.0f);
    EXPECT_RGBA(a / 2, 0.5f, 1.0f, 1.5f, 2.0f);
    EXPECT_RGBA(-a, -1.0f, -2.0f, -3.0f, -4.0f);

    ColorVector c = a;
    EXPECT_RGBA(c += b, 1.5f, 3.0f, 2.0f, 6.0f);
    EXPECT_RGBA(c -= b, 1.0f, 2.0f, 3.0f, 4.0f);
    EXPECT_RGBA(c *= 2.0f, 2.0f, 4.0f, 6.0f, 8.0f);
    EXPECT_RGBA(c /= 2.0f, 1.0f, 2.0f, 3.0f, 4.0f);
    EXPECT_RGBA(c, 1.0f, 2.0f, 3.0f, 4.0f);
}

TEST(ColorVector, RecordIsFourFloatsWithoutAVersion)
{
    ColorVector color(1, 0.5f, 0, -2);
    const Bytes expected = {0, 0, 0x80, 0x3F, 0, 0, 0, 0x3F, 0, 0, 0, 0, 0, 0, 0, 0xC0};
    EXPECT_EQ(Stored(color), expected);

    ColorVector loaded;
    LoadRecord(loaded, expected);
    EXPECT_RGBA(loaded, 1.0f, 0.5f, 0.0f, -2.0f);
}
