// SPDX-License-Identifier: MIT
#include "contours/Areas.h"

#include "tests/support/NativeOutlines.h"

#include <gtest/gtest.h>

#include <vector>

using namespace orvane::contours;

namespace
{

/// The three areas are compared in whole, because all places lie on whole units.
void ExpectAreas(const FlatOutline& flat, double odd, double clockwise, double nonZero)
{
    EXPECT_EQ(OddArea(flat), odd);
    EXPECT_EQ(ClockwiseArea(flat), clockwise);
    EXPECT_EQ(NonZeroArea(flat), nonZero);
}

TEST(Areas, AnOutlineWithoutContoursHasNoArea)
{
    ExpectAreas({}, 0, 0, 0);
}

TEST(Areas, OnlyTheClockwiseAreaDependsOnTheDirectionOfASquare)
{
    ExpectAreas(FlatOf({SquareAt(-30, 20, 100)}), 10000, 10000, 10000);
    ExpectAreas(FlatOf({SquareAt(-30, 20, 100, true)}), 10000, -10000, 10000);
}

TEST(Areas, AHoleThatRunsTheRightWayIsTakenOffByAllThreeRules)
{
    // 100 x 100 - 50 x 50
    ExpectAreas(FlatOf({SquareAt(0, 0, 100), SquareAt(20, 30, 50, true)}), 7500, 7500, 7500);
}

TEST(Areas, AHoleThatRunsTheWrongWayIsAHoleOnlyByTheOddRule)
{
    // The non-zero rule fills the place of the hole; the clockwise area counts it twice.
    ExpectAreas(FlatOf({SquareAt(0, 0, 100), SquareAt(20, 30, 50)}), 7500, 12500, 10000);
}

TEST(Areas, TheNonZeroRuleCountsTheOverlapOfTwoSquaresOnce)
{
    // The squares share 50 x 50. The tessellator refuses edges that cross when nothing makes a
    // vertex for the crossing, so there is no area by the odd rule.
    ExpectAreas(FlatOf({SquareAt(0, 0, 100), SquareAt(50, 50, 100)}), -1, 20000, 17500);
    // In the overlap of squares that run opposite ways, the windings add up to 0.
    ExpectAreas(FlatOf({SquareAt(0, 0, 100), SquareAt(50, 50, 100, true)}), -1, 0, 15000);
}

TEST(Areas, AFigureEightHasTwoHalvesWhoseDirectionsCancel)
{
    // The contour crosses itself at (50, 50): two triangles with a side of 100 and a height of 50.
    ExpectAreas(FlatOf({{{0, 0}, {100, 100}, {100, 0}, {0, 100}}}), -1, 0, 5000);
}

TEST(Areas, MoreVerticesThanAnIndexOf16BitsCanNameHaveNoOddArea)
{
    // A clockwise square with a vertex at each unit of its sides has four times its side vertices.
    const auto squareWithVertices = [](int side) {
        FlatOutline flat;
        const auto add = [&flat](int x, int y) {
            flat.vertices.push_back(
                {{static_cast<std::int16_t>(x), static_cast<std::int16_t>(y)}, {}});
        };
        for (int n = 0; n < side; ++n)
        {
            add(0, n);
        }
        for (int n = 0; n < side; ++n)
        {
            add(n, side);
        }
        for (int n = 0; n < side; ++n)
        {
            add(side, side - n);
        }
        for (int n = 0; n < side; ++n)
        {
            add(side - n, 0);
        }
        flat.sizes = {4 * side};
        return flat;
    };
    EXPECT_EQ(OddArea(squareWithVertices(100)), 10000);
    const FlatOutline tooLarge = squareWithVertices(16384);  // 65,536 vertices
    EXPECT_EQ(OddArea(tooLarge), -1);
    EXPECT_EQ(ClockwiseArea(tooLarge), 16384.0 * 16384.0);
}

}  // namespace
