// SPDX-License-Identifier: MIT
#include "outline/TTContour.h"

#include "tests/support/GlyphShapes.h"

#include <gtest/gtest.h>

TEST(TTContour, ANewContourHasNoPoints)
{
    const TTContour contour;
    EXPECT_EQ(contour.GetPointCount(), 0);
    EXPECT_EQ(contour.GetPoints(), nullptr);
    EXPECT_EQ(contour.GetOffCurvePointCount(), 0);
    EXPECT_EQ(contour.SizeOf(), sizeof(TTContour));
}

TEST(TTContour, SettingTheCountGivesDefaultPoints)
{
    TTContour contour = MakeContour({On(1, 2)});
    contour.SetPointCount(3);
    EXPECT_EQ(contour.GetPointCount(), 3);
    EXPECT_EQ(contour.GetPoints()[0].GetType(), 0);
    EXPECT_EQ(contour.GetPoints()[0].GetX(), 0);
    contour.SetPointCount(0);
    EXPECT_EQ(contour.GetPoints(), nullptr);
}

TEST(TTContour, OffCurvePointsAreThoseOfTypeOne)
{
    TTContour contour = MakeContour({On(0, 0), Off(1, 1), Off(2, 2), On(3, 3), On(4, 4)});
    contour.GetPoints()[4].SetType(0);
    EXPECT_EQ(contour.GetOffCurvePointCount(), 2);
}

TEST(TTContour, SizeIsThatOfTheObjectAndItsPoints)
{
    EXPECT_EQ(MakeContour({On(0, 0), On(1, 1)}).SizeOf(), sizeof(TTContour) + 2 * sizeof(TTPoint));
}

TEST(TTContour, CopiesShareTheirPointsUntilOneIsResized)
{
    TTContour copy;
    {
        TTContour contour = MakeContour({On(1, 2), On(3, 4)});
        copy = contour;
        EXPECT_EQ(copy.GetPoints(), contour.GetPoints());
        contour.GetPoints()[1].SetX(30);
        contour.SetPointCount(5);
        EXPECT_EQ(copy.GetPointCount(), 2);
        EXPECT_NE(copy.GetPoints(), contour.GetPoints());
    }
    EXPECT_EQ(copy.GetPoints()[1].GetX(), 30);
}
