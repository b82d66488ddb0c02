// SPDX-License-Identifier: MIT
#include "contours/Crossings.h"

#include "platform/Limits.h"
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

/// Contours of so many corners each, 3 or 4, all as wide as the others and each above the one
/// before, so that a sweep from the left has all edges open at the end.
FlatOutline Stack(int triangles, int rectangles)
{
    FlatOutline flat;
    short low = -32000;
    for (int n = 0; n < triangles + rectangles; ++n, low += 8)
    {
        const short high = static_cast<short>(low + 4);
        for (const ShortPoint corner : {ShortPoint{-100, low}, {-100, high}, {100, high}})
        {
            flat.vertices.push_back({corner, {}});
        }
        if (n >= triangles)
        {
            flat.vertices.push_back({{100, low}, {}});
        }
        flat.sizes.push_back(n < triangles ? 3 : 4);
    }
    return flat;
}

TEST(Crossings, TheSearchEndsAfterTheMostComparisons)
{
    EXPECT_EQ(orvane::limits::maxEdgeComparisons, 20000000);
    // 6,325 edges are compared 6325 x 6324 / 2 = 19,999,650 times, 6,326 edges 20,005,975 times.
    EXPECT_EQ(CountMeetings(Stack(2107, 1), 0), 0);
    EXPECT_EQ(CountMeetings(Stack(2106, 2), 0), 1);
    // Every triangle has 2 chains, of 2 edges and 1 edge, which are compared twice. So n triangles
    // take 2n(2n - 1) / 2 + 2n comparisons: 3,162 of them 19,999,650, and 3,163 of them 20,012,301.
    EXPECT_TRUE(EdgesKeepApart(Stack(3162, 0)));
    EXPECT_FALSE(EdgesKeepApart(Stack(3163, 0)));
}

TEST(Crossings, OutlinesOf65535VerticesAreSearched)
{
    EXPECT_EQ(orvane::limits::maxOutlineVertices, 65535U);
    // Triangles in 1,000 columns, so that few edges are open at a time.
    FlatOutline flat;
    for (int n = 0; n < 21845; ++n)
    {
        const short x = static_cast<short>(n % 1000 * 60 - 30000);
        const short y = static_cast<short>(n / 1000 * 60);
        flat.vertices.insert(flat.vertices.end(), {{{x, y}, {}},
                                                   {{x, static_cast<short>(y + 30)}, {}},
                                                   {{static_cast<short>(x + 30), y}, {}}});
        flat.sizes.push_back(3);
    }
    ASSERT_EQ(flat.vertices.size(), 65535U);
    EXPECT_EQ(CountMeetings(flat, 9), 0);
    // A fourth corner of the last triangle.
    const short x = flat.vertices.back().point.x;
    flat.vertices.push_back({{x, -10}, {}});
    flat.sizes.back() = 4;
    EXPECT_EQ(CountMeetings(flat, 9), 10);
}

}  // namespace
