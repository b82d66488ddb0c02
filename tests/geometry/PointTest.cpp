// SPDX-License-Identifier: MIT
#include "geometry/Point.h"

#include "tests/support/ExpectVector.h"

TEST(Point2D, StartsAtTheOrigin)
{
    EXPECT_XY(Point2D(), 0, 0);
}

TEST(Point2D, IsSetAndCopied)
{
    Point2D point(1, 2);
    const Point2D copy(point);
    point.SetPoint(-3, 4);
    EXPECT_XY(copy, 1, 2);
    EXPECT_XY(point, -3, 4);
    point = copy;
    EXPECT_XY(point, 1, 2);
}

TEST(Point2D, CalculatesByComponent)
{
    const Point2D a(10, -20);
    const Point2D b(3, 4);
    EXPECT_XY(a + b, 13, -16);
    EXPECT_XY(a - b, 7, -24);
    EXPECT_XY(-a, -10, 20);
    EXPECT_XY(a * 3, 30, -60);

    Point2D c = a;
    EXPECT_XY(c += b, 13, -16);
    EXPECT_XY(c -= b, 10, -20);
    EXPECT_XY(c *= 2, 20, -40);
    EXPECT_XY(c, 20, -40);
}

TEST(Point2D, DivisionTruncatesTowardZero)
{
    Point2D point(7, -7);
    EXPECT_XY(point /= 2, 3, -3);
}

TEST(Point2D, DividingByMinusOneNegates)
{
    Point2D point(7, -7);
    EXPECT_XY(point /= -1, -7, 7);
}

TEST(Point2D, WrapsAtSixteenBits)
{
    Point2D point(32767, -32768);
    EXPECT_XY(point + Point2D(1, -1), -32768, 32767);
    EXPECT_XY(point * 2, -2, 0);
    EXPECT_XY(-point, -32767, -32768);
    EXPECT_XY(point /= -1, -32767, -32768);
}

TEST(Point, StartsAtTheOrigin)
{
    EXPECT_XYZ(Point(), 0, 0, 0);
}

TEST(Point, IsSetAndCopied)
{
    Point point(1, 2, 3);
    const Point copy(point);
    point.SetPoint(-3, 4, -5);
    EXPECT_XYZ(copy, 1, 2, 3);
    EXPECT_XYZ(point, -3, 4, -5);
    point = copy;
    EXPECT_XYZ(point, 1, 2, 3);
}

TEST(Point, CalculatesByComponent)
{
    const Point a(10, -20, 30);
    const Point b(3, 4, 5);
    EXPECT_XYZ(a + b, 13, -16, 35);
    EXPECT_XYZ(a - b, 7, -24, 25);
    EXPECT_XYZ(-a, -10, 20, -30);
    EXPECT_XYZ(a * 3, 30, -60, 90);

    Point c = a;
    EXPECT_XYZ(c += b, 13, -16, 35);
    EXPECT_XYZ(c -= b, 10, -20, 30);
    EXPECT_XYZ(c *= 2, 20, -40, 60);
    EXPECT_XYZ(c, 20, -40, 60);
}

TEST(Point, DivisionTruncatesTowardZero)
{
    Point point(7, -7, 1);
    EXPECT_XYZ(point /= 2, 3, -3, 0);
}

TEST(Point, DividingByMinusOneNegates)
{
    Point point(7, -7, 1);
    EXPECT_XYZ(point /= -1, -7, 7, -1);
}
