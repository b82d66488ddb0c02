// SPDX-License-Identifier: MIT
#include "outline/TTPoint.h"

#include <gtest/gtest.h>

TEST(TTPoint, ANewPointIsAllZero)
{
    const TTPoint point;
    EXPECT_EQ(point.GetQuadraticResolution(), 0);
    EXPECT_EQ(point.GetType(), 0);
    EXPECT_EQ(point.GetX(), 0);
    EXPECT_EQ(point.GetY(), 0);
}

TEST(TTPoint, APointMadeFromValuesHasTheResolutionZero)
{
    const TTPoint point(1, -20, 30);
    EXPECT_EQ(point.GetQuadraticResolution(), 0);
    EXPECT_EQ(point.GetType(), 1);
    EXPECT_EQ(point.GetX(), -20);
    EXPECT_EQ(point.GetY(), 30);
}

TEST(TTPoint, TheResolutionKeepsTheLowest8Bits)
{
    TTPoint point;
    point.SetQuadraticResolution(5);
    EXPECT_EQ(point.GetQuadraticResolution(), 5);
    point.SetQuadraticResolution(static_cast<unsigned char>(255));
    EXPECT_EQ(point.GetQuadraticResolution(), 255);
    point.SetQuadraticResolution(static_cast<short>(260));
    EXPECT_EQ(point.GetQuadraticResolution(), 4);
}

TEST(TTPoint, CopiesCarryEverySetField)
{
    TTPoint point;
    point.SetQuadraticResolution(5);
    point.SetType(2);
    point.SetX(-32768);
    point.SetY(32767);
    const TTPoint copy = point;
    TTPoint assigned;
    assigned = copy;
    EXPECT_EQ(assigned.GetQuadraticResolution(), 5);
    EXPECT_EQ(assigned.GetType(), 2);
    EXPECT_EQ(assigned.GetX(), -32768);
    EXPECT_EQ(assigned.GetY(), 32767);
}
