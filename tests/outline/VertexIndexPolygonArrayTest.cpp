// SPDX-License-Identifier: MIT
#include "outline/VertexIndexPolygonArray.h"

#include <gtest/gtest.h>

namespace
{

VertexIndexPolygon Single(unsigned short index)
{
    VertexIndexPolygon polygon;
    polygon.Add(index);
    return polygon;
}

}  // namespace

TEST(VertexIndexPolygonArray, PolygonsAreCopiedWithTheirIndices)
{
    VertexIndexPolygonArray array;
    VertexIndexPolygon polygon = Single(1);
    EXPECT_EQ(array.Add(polygon), 0);
    polygon[0] = 9;
    array.SetAtGrow(1, polygon);
    EXPECT_EQ(array.GetUpperBound(), 1);
    EXPECT_EQ(array[0][0], 1);
    EXPECT_EQ(array.GetElement(1)->GetAt(0), 9);

    VertexIndexPolygonArray copy;
    copy = array;
    array[0][0] = 5;
    EXPECT_EQ(copy[0][0], 1);
}

TEST(VertexIndexPolygonArray, InsertsAndRemoves)
{
    VertexIndexPolygonArray array;
    array.Add(Single(1));
    array.InsertAt(0, Single(2), 2);
    array.InsertAt(1, &array);
    ASSERT_EQ(array.GetSize(), 6);
    EXPECT_EQ(array[3][0], 1);
    array.RemoveAt(0, 3);
    EXPECT_EQ(array[0][0], 1);
    array.SetAt(0, Single(8));
    EXPECT_EQ(array.GetAt(0)[0], 8);
    array.FreeExtra();
    EXPECT_EQ(array.GetSize(), 3);
    array.RemoveAll();
    EXPECT_EQ(array.GetSize(), 0);
}

TEST(VertexIndexPolygonArray, SizeCountsThePolygonsInUse)
{
    VertexIndexPolygonArray array;
    EXPECT_EQ(array.SizeOf(), sizeof array);
    array.Add(Single(1));
    array.Add(Single(2));
    EXPECT_EQ(array.SizeOf(), sizeof array + 2 * Single(1).SizeOf());
    array.SetSize(1);
    EXPECT_EQ(array.SizeOf(), sizeof array + Single(1).SizeOf());
}
