// SPDX-License-Identifier: MIT
#include "contours/NativeOutline.h"

#include "platform/Limits.h"
#include "tests/support/NativeOutlines.h"

#include <gtest/gtest.h>

using namespace orvane::contours;

namespace
{

TEST(NativeOutline, ReversingAffectsOnlyTheMarkedContours)
{
    const NativeOutline outline = MakeOutline({RoundAt(0, 0, 300), SquareAt(400, 0, 100)});
    const NativeOutline turned = Reversed(outline, {true, false});
    EXPECT_EQ(turned, MakeOutline({RoundAt(0, 0, 300, true), SquareAt(400, 0, 100)}));
    EXPECT_EQ(Reversed(turned, {true, false}), outline);
}

TEST(NativeOutline, AContourThatWouldEndWithAControlPointEndsWithItsStart)
{
    NativeOutline outline;
    outline.points = {{0, 0, true}, {64, 128, false}};
    outline.CloseContour();
    EXPECT_EQ(outline.points,
              (std::vector<NativePoint>{{0, 0, true}, {64, 128, false}, {0, 0, true}}));
    EXPECT_EQ(outline.ends, std::vector<std::size_t>{3});
    EXPECT_EQ(outline.FirstOf(0), 0u);
    EXPECT_EQ(outline.FirstOf(1), 3u);
}

TEST(NativeOutline, AContourOfOnePointIsDropped)
{
    NativeOutline outline = MakeOutline({SquareAt(0, 0, 10)});
    const NativeOutline square = outline;
    outline.points.push_back({640, 640, true});
    outline.CloseContour();
    EXPECT_EQ(outline, square);
}

TEST(NativeOutline, ScaledCoordinatesAreRoundedHalvesAwayFromZero)
{
    NativeOutline outline;
    outline.points = {{3, -3, true}, {1000, -1001, true}};
    outline.CloseContour();
    // 3 / 2 is 1.5, 1000 / 2 is 500 and 1001 / 2 is 500.5.
    EXPECT_EQ(Scaled(outline, 500, 1000).points,
              (std::vector<NativePoint>{{2, -2, true}, {500, -501, true}}));
    EXPECT_EQ(Scaled(outline, 1000, 1000), outline);
}

TEST(NativeOutline, CoordinatesOfUnitsAreRoundedAndLimited)
{
    EXPECT_EQ(CoordinateOf(2.5), 3 * 64);
    EXPECT_EQ(CoordinateOf(-2.5), -3 * 64);
    EXPECT_EQ(orvane::limits::maxOutlineCoordinate, 16777216);
    EXPECT_EQ(CoordinateOf(16777216), 16777216 * 64);
    EXPECT_EQ(CoordinateOf(16777217), 16777216 * 64);
    EXPECT_EQ(CoordinateOf(-16777216), -16777216 * 64);
    EXPECT_EQ(CoordinateOf(-16777217), -16777216 * 64);
    EXPECT_EQ(CoordinateOf(1e30), 16777216 * 64);
    EXPECT_EQ(CoordinateOf(-1e30), -16777216 * 64);
    EXPECT_EQ(WholeUnits(-1), -1);
    EXPECT_EQ(WholeUnits(127), 1);
}

}  // namespace
