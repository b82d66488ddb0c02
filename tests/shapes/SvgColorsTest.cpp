// SPDX-License-Identifier: MIT
#include "shapes/SvgColors.h"

#include <gtest/gtest.h>

using orvane::SvgColor;
using orvane::shapes::ParseColor;

TEST(SvgColors, NamesAreThoseOfCss)
{
    EXPECT_EQ(ParseColor("rebeccapurple"), (SvgColor{0x66, 0x33, 0x99}));
    EXPECT_EQ(ParseColor("AliceBlue"), (SvgColor{0xF0, 0xF8, 0xFF}));
    EXPECT_EQ(ParseColor(" yellowgreen "), (SvgColor{0x9A, 0xCD, 0x32}));
    EXPECT_EQ(ParseColor("gray"), ParseColor("grey"));
    EXPECT_EQ(ParseColor("transparent"), (SvgColor{0, 0, 0, 0}));
}

TEST(SvgColors, HexadecimalDigitsOfThreeFourSixAndEight)
{
    EXPECT_EQ(ParseColor("#1a3"), (SvgColor{0x11, 0xAA, 0x33}));
    EXPECT_EQ(ParseColor("#1A38"), (SvgColor{0x11, 0xAA, 0x33, 0x88}));
    EXPECT_EQ(ParseColor("#102030"), (SvgColor{0x10, 0x20, 0x30}));
    EXPECT_EQ(ParseColor("#10203040"), (SvgColor{0x10, 0x20, 0x30, 0x40}));
}

TEST(SvgColors, FunctionsTakeNumbersAndPercentages)
{
    EXPECT_EQ(ParseColor("rgb(255, 128, 0)"), (SvgColor{255, 128, 0}));
    EXPECT_EQ(ParseColor("rgb(100% 50% 0%)"), (SvgColor{255, 128, 0}));
    EXPECT_EQ(ParseColor("rgba(1, 2, 3, 0.5)"), (SvgColor{1, 2, 3, 128}));
    EXPECT_EQ(ParseColor("rgb(1 2 3 / 20%)"), (SvgColor{1, 2, 3, 51}));
    EXPECT_EQ(ParseColor("rgb(300, -5, 0)"), (SvgColor{255, 0, 0}));
}

TEST(SvgColors, HuesGoAroundTheWheel)
{
    EXPECT_EQ(ParseColor("hsl(0, 100%, 50%)"), (SvgColor{255, 0, 0}));
    EXPECT_EQ(ParseColor("hsl(120, 100%, 50%)"), (SvgColor{0, 255, 0}));
    EXPECT_EQ(ParseColor("hsl(-120deg 100% 50%)"), (SvgColor{0, 0, 255}));
    EXPECT_EQ(ParseColor("hsl(60, 100%, 25%)"), (SvgColor{128, 128, 0}));
    EXPECT_EQ(ParseColor("hsla(77, 0%, 20%, 1)"), (SvgColor{51, 51, 51}));
}

TEST(SvgColors, EverythingElseIsNoColor)
{
    for (const char* const text :
         {"", "#", "#12", "#12345", "#12g", "redd", "rgb(1,2)", "rgb(1,2,3", "rgb(1,2,3,4,5)",
          "rgb(a,b,c)", "url(#a)", "rgb(1,2,3) x"})
    {
        EXPECT_FALSE(ParseColor(text)) << text;
    }
}
