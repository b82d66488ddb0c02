// SPDX-License-Identifier: MIT
#include "platform/Errors.h"
#include "platform/Rendering.h"
#include "tests/support/BitmapDrawing.h"

#include <gtest/gtest.h>

namespace
{

TEST(PixelFormats, TheNearestFormatIsChosen)
{
    const SelectedBitmap selected(BitmapDescription(4, 4, 24));
    for (const int bits : {4, 8, 16, 24, 32})
    {
        SCOPED_TRACE(bits);
        PIXELFORMATDESCRIPTOR wanted = Wanted(bits);
        const int format = ChoosePixelFormat(selected.dc, &wanted);
        PIXELFORMATDESCRIPTOR described{};
        EXPECT_EQ(DescribePixelFormat(selected.dc, format, sizeof described, &described),
                  DescribePixelFormat(selected.dc, 1, 0, nullptr));
        EXPECT_EQ(described.nSize, 40);
        EXPECT_EQ(described.cColorBits, bits);
        EXPECT_EQ(described.cDepthBits, 24);
        EXPECT_EQ(described.dwFlags & wanted.dwFlags, wanted.dwFlags);
        EXPECT_EQ(described.cAlphaBits, 0);
        EXPECT_EQ(described.cStencilBits, 0);
        wanted.cAlphaBits = 1;
        wanted.cStencilBits = 1;
        EXPECT_EQ(ChoosePixelFormat(selected.dc, &wanted), format + 3);
    }
    const PIXELFORMATDESCRIPTOR more = Wanted(64);
    EXPECT_EQ(ChoosePixelFormat(selected.dc, &more), 1);
}

TEST(PixelFormats, Format17HasEightBits)
{
    const SelectedBitmap selected(BitmapDescription(4, 4, 8));
    PIXELFORMATDESCRIPTOR described{};
    EXPECT_NE(DescribePixelFormat(selected.dc, 17, sizeof described, &described), 0);
    EXPECT_EQ(described.cColorBits, 8);
    EXPECT_EQ(described.cRedBits, 3);
    EXPECT_EQ(described.cRedShift, 0);
    EXPECT_EQ(described.cGreenShift, 3);
    EXPECT_EQ(described.cBlueBits, 2);
    EXPECT_EQ(described.cBlueShift, 6);
    const PIXELFORMATDESCRIPTOR wanted = Wanted(8);
    EXPECT_EQ(ChoosePixelFormat(selected.dc, &wanted), 17);
}

TEST(PixelFormats, FormatsThatAreNotOfferedAreRefused)
{
    const SelectedBitmap selected(BitmapDescription(4, 4, 24));
    PIXELFORMATDESCRIPTOR wanted = Wanted(24);
    wanted.dwFlags |= PFD_DRAW_TO_WINDOW;
    EXPECT_EQ(ChoosePixelFormat(selected.dc, &wanted), 0);
    wanted = Wanted(24);
    wanted.iPixelType = PFD_TYPE_COLORINDEX;
    EXPECT_EQ(ChoosePixelFormat(selected.dc, &wanted), 0);
    EXPECT_EQ(ChoosePixelFormat(nullptr, &wanted), 0);
    PIXELFORMATDESCRIPTOR described{};
    EXPECT_EQ(DescribePixelFormat(selected.dc, 0, sizeof described, &described), 0);
    EXPECT_EQ(DescribePixelFormat(selected.dc, 21, sizeof described, &described), 0);
    EXPECT_EQ(DescribePixelFormat(selected.dc, 1, 39, &described), 0);
}

TEST(PixelFormats, ADeviceContextKeepsItsFormat)
{
    const SelectedBitmap selected(BitmapDescription(4, 4, 24));
    EXPECT_EQ(GetPixelFormat(selected.dc), 0);
    EXPECT_FALSE(SetPixelFormat(selected.dc, 0, nullptr));
    EXPECT_FALSE(SetPixelFormat(selected.dc, 21, nullptr));
    EXPECT_TRUE(SetPixelFormat(selected.dc, 5, nullptr));
    EXPECT_TRUE(SetPixelFormat(selected.dc, 5, nullptr));
    EXPECT_FALSE(SetPixelFormat(selected.dc, 6, nullptr));
    EXPECT_EQ(GetPixelFormat(selected.dc), 5);
}

}  // namespace
