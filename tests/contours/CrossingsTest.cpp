// SPDX-License-Identifier: MIT
#include "contours/Crossings.h"

#include "tests/support/NativeOutlines.h"

#include <gtest/gtest.h>

#include <random>

using namespace orvane::contours;

namespace
{

constexpr int em = 1000;

TEST(Crossings, MeetingsAreCountedUpToTheLimit)
{
    EXPECT_EQ(CountMeetings(Flatten(MakeOutline({SquareAt(0, 0, 100)}), em), 9), 0);
    EXPECT_EQ(CountMeetings(
                  Flatten(MakeOutline({SquareAt(0, 0, 100), SquareAt(20, 20, 40, true)}), em), 9),
              0);
    // Two sides of the first square each cross one side of the second.
    EXPECT_EQ(
        CountMeetings(Flatten(MakeOutline({SquareAt(0, 0, 100), SquareAt(50, 50, 100)}), em), 9),
        2);
    // With the limit 0, the count stops at 1.
    EXPECT_EQ(
        CountMeetings(Flatten(MakeOutline({SquareAt(0, 0, 100), SquareAt(50, 50, 100)}), em), 0),
        1);
}

TEST(Crossings, ContoursThatTouchAtAPointOrAlongAnEdgeMeet)
{
    const auto meet = [](const std::vector<std::vector<OutlineAt>>& contours) {
        return CountMeetings(Flatten(MakeOutline(contours), em), 0) != 0;
    };
    EXPECT_TRUE(meet({SquareAt(0, 0, 100), SquareAt(100, 100, 50)}));
    EXPECT_TRUE(meet({SquareAt(0, 0, 100), SquareAt(100, 20, 50)}));
    EXPECT_FALSE(meet({SquareAt(0, 0, 100), SquareAt(101, 20, 50)}));
    // A corner lies on the middle of a slanted edge.
    EXPECT_TRUE(meet({{{0, 0}, {100, 200}, {200, 0}}, {{50, 100}, {0, 150}, {0, 100}}}));
    // A contour that turns back on itself, a contour of two points, and a contour that crosses
    // itself
    EXPECT_TRUE(meet({{{0, 0}, {0, 100}, {100, 100}, {50, 100}}}));
    EXPECT_TRUE(meet({{{0, 0}, {100, 100}}}));
    EXPECT_TRUE(meet({{{0, 0}, {100, 100}, {100, 0}, {0, 100}}}));
}

TEST(Crossings, EdgesKeepApartExactlyWhenNoneMeet)
{
    std::mt19937 random(13);
    int apart = 0;
    for (int turn = 0; turn < 3000; ++turn)
    {
        const FlatOutline flat = Flatten(RandomOutline(random, 1 + turn % 2, 3 + turn % 3), em);
        ASSERT_EQ(EdgesKeepApart(flat), CountMeetings(flat, 0) == 0) << turn;
        apart += EdgesKeepApart(flat) ? 1 : 0;
    }
    EXPECT_GT(apart, 300);
    for (const bool turned : {false, true})
    {
        // Vertical and horizontal edges, in chains of both directions
        EXPECT_TRUE(EdgesKeepApart(
            Flatten(MakeOutline({SquareAt(0, 0, 100, turned), RoundAt(300, 0, 100, turned)}), em)));
    }
}

}  // namespace
