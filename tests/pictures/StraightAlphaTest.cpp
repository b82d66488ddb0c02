// SPDX-License-Identifier: MIT
#include "pictures/StraightAlpha.h"

#include <gtest/gtest.h>

using orvane::StraightColor;

TEST(StraightAlpha, ColoursAreDividedByTheAlphaAndRounded)
{
    // 100 * 255 / 200 is 127.5, 1 * 255 / 200 is 1.275, and 99 * 255 / 200 is 126.225.
    EXPECT_EQ(StraightColor(100, 200, 255), 128u);
    EXPECT_EQ(StraightColor(1, 200, 255), 1u);
    EXPECT_EQ(StraightColor(99, 200, 255), 126u);
}

TEST(StraightAlpha, OpaquePixelsStayAndInvisibleOnesAreBlack)
{
    EXPECT_EQ(StraightColor(77, 255, 255), 77u);
    EXPECT_EQ(StraightColor(9, 0, 255), 0u);
}

TEST(StraightAlpha, AColourAboveItsAlphaIsCut)
{
    EXPECT_EQ(StraightColor(90, 80, 255), 255u);
}

TEST(StraightAlpha, EveryPairOfBytesIsRoundedToTheNearest)
{
    for (int alpha = 1; alpha < 256; ++alpha)
    {
        for (int color = 0; color <= alpha; ++color)
        {
            const auto straight = static_cast<int>(
                StraightColor(static_cast<unsigned>(color), static_cast<unsigned>(alpha), 255));
            // The distance to the exact quotient, times the alpha, is at most half the alpha.
            const int distance = 2 * (straight * alpha - color * 255);
            EXPECT_LE(distance, alpha);
            EXPECT_GT(distance, -alpha);
        }
    }
}

TEST(StraightAlpha, SixteenBitsAreDividedAlike)
{
    // 1000 * 65535 / 20000 is 3276.75, and 3 * 65535 / 20000 is 9.83.
    EXPECT_EQ(StraightColor(1000, 20000, 65535), 3277u);
    EXPECT_EQ(StraightColor(3, 20000, 65535), 10u);
}
