// SPDX-License-Identifier: MIT
#include "contours/Directions.h"

#include "contours/Areas.h"
#include "contours/Crossings.h"
#include "contours/OutlineTrial.h"
#include "tests/support/NativeOutlines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace orvane::contours;

namespace
{

constexpr int em = 1000;

TEST(Directions, WhenNoEdgesMeetTheVotesOfTheTallestEdgesAgreeWithTheNesting)
{
    std::mt19937 random(17);
    int wrong = 0;
    int nested = 0;
    for (int turn = 0; turn < 400; ++turn)
    {
        const NativeOutline outline = RandomShapes(random, 2 + turn % 4, 300, 20, true);
        const FlatOutline flat = Flatten(outline, em);
        if (!EdgesKeepApart(flat))
        {
            continue;
        }
        std::vector<bool> expected = ContoursTheWrongWay(flat);
        if (std::find(expected.begin(), expected.end(), true) == expected.end())
        {
            expected.clear();
        }
        EXPECT_EQ(TryOutline(outline, em).wrongWay, expected) << turn;
        wrong += expected.empty() ? 0 : 1;
        nested += NonZeroArea(flat) != OddArea(flat) ? 1 : 0;
    }
    EXPECT_GT(wrong, 20);
    EXPECT_GT(nested, 10);
}

}  // namespace
