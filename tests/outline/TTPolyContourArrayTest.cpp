// SPDX-License-Identifier: MIT
#include "outline/TTPolyContourArray.h"

#include <gtest/gtest.h>

namespace
{

TTPolyContour Starting(int first)
{
    TTPolyContour contour;
    contour.SetFirstVertexIndex(first);
    return contour;
}

}  // namespace

TEST(TTPolyContourArray, HasTheMembersOfEveryArray)
{
    TTPolyContourArray array;
    EXPECT_EQ(array.Add(Starting(1)), 0);
    array.SetAtGrow(1, Starting(4));
    array.InsertAt(1, Starting(2), 2);
    array.GetElement(2)->SetFirstVertexIndex(3);
    const TTPolyContourArray copy = array;
    array.InsertAt(4, &copy);
    ASSERT_EQ(array.GetSize(), 8);
    for (int i = 0; i < 8; ++i)
    {
        EXPECT_EQ(array[i].GetFirstVertexIndex(), i % 4 + 1);
        EXPECT_EQ(array.GetAt(i).GetFirstVertexIndex(), i % 4 + 1);
    }
    array.RemoveAt(0, 7);
    EXPECT_EQ(array.GetUpperBound(), 0);
    EXPECT_EQ(array[0].GetFirstVertexIndex(), 4);
    array.FreeExtra();
    EXPECT_EQ(array.SizeOf(), sizeof array + sizeof(TTPolyContour));
    array.RemoveAll();
    EXPECT_EQ(array.SizeOf(), sizeof array);
}

TEST(TTPolyContourArray, IndexingGivesCopies)
{
    TTPolyContourArray array;
    array.Add(Starting(1));
    array[0].SetFirstVertexIndex(9);
    EXPECT_EQ(array[0].GetFirstVertexIndex(), 1);
}

TEST(TTPolyContourArray, GrowsByExactlyTheNeedUntilGrowByIsSet)
{
    TTPolyContourArray array;
    array.SetSize(2);
    array.Add(Starting(0));
    EXPECT_EQ(array.SizeOf(), sizeof array + 3 * sizeof(TTPolyContour));
    array.SetSize(4, 10);
    EXPECT_EQ(array.SizeOf(), sizeof array + 13 * sizeof(TTPolyContour));
}
