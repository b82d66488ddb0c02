// SPDX-License-Identifier: MIT
#include "outline/VertexIndexPolyline.h"

#include <gtest/gtest.h>

namespace
{

VertexIndexPolyline ThreeIndices()
{
    VertexIndexPolyline polyline;
    unsigned short index = 10;
    for (int i = 0; i < 3; ++i, ++index)
    {
        polyline.SetVertex(i, index);
    }
    return polyline;
}

}  // namespace

TEST(VertexIndexPolyline, PositionsWrapAround)
{
    const VertexIndexPolyline polyline = ThreeIndices();
    EXPECT_EQ(polyline.GetNextVertexIndex(0), 1);
    EXPECT_EQ(polyline.GetNextVertexIndex(2), 0);
    EXPECT_EQ(polyline.GetPreviousVertexIndex(2), 1);
    EXPECT_EQ(polyline.GetPreviousVertexIndex(0), 2);
    EXPECT_EQ(polyline.GetNextVertex(1), 12);
    EXPECT_EQ(polyline.GetNextVertex(2), 10);
    EXPECT_EQ(polyline.GetPreviousVertex(0), 12);
}

TEST(VertexIndexPolyline, PositionsOutOfRangeGiveMinusOneAndVertexZero)
{
    const VertexIndexPolyline polyline = ThreeIndices();
    for (const int outside : {-1, 3, 1000})
    {
        EXPECT_EQ(polyline.GetNextVertexIndex(outside), -1);
        EXPECT_EQ(polyline.GetPreviousVertexIndex(outside), -1);
        EXPECT_EQ(polyline.GetNextVertex(outside), 0);
        EXPECT_EQ(polyline.GetPreviousVertex(outside), 0);
    }
    EXPECT_EQ(VertexIndexPolyline().GetNextVertexIndex(0), -1);
}

TEST(VertexIndexPolyline, MarksAreBitsOfTheirOwn)
{
    VertexIndexPolyline polyline;
    EXPECT_EQ(polyline.polylineFlags, 0u);
    polyline.SetClockwiseWinding();
    EXPECT_EQ(polyline.polylineFlags, 2u);
    EXPECT_EQ(polyline.IsClockwiseWinding(), 2);
    EXPECT_EQ(polyline.IsActive(), 0);
    polyline.SetActive();
    EXPECT_EQ(polyline.IsActive(), 1);
    polyline.ClearClockwiseWinding();
    EXPECT_EQ(polyline.polylineFlags, 1u);
    polyline.ClearActive();
    EXPECT_EQ(polyline.polylineFlags, 0u);
}

TEST(VertexIndexPolyline, RemovingAllKeepsTheMarks)
{
    VertexIndexPolyline polyline = ThreeIndices();
    polyline.SetActive();
    polyline.RemoveAllVerticies();
    EXPECT_EQ(polyline.GetSize(), 0);
    EXPECT_EQ(polyline.IsActive(), 1);
}

TEST(VertexIndexPolyline, PolylineSizeCountsItsArrayTwice)
{
    // The three indices were added one by one, so the capacity grew from 1 to 9.
    EXPECT_EQ(ThreeIndices().SizeOf(),
              sizeof(VertexIndexPolyline) + sizeof(VertexIndexArray) + 9 * sizeof(unsigned short));
}
