// SPDX-License-Identifier: MIT
#include "outline/VertexIndexArray.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{

VertexIndexArray Filled(const std::vector<unsigned short>& indices)
{
    VertexIndexArray array;
    for (const unsigned short index : indices)
    {
        array.Add(index);
    }
    return array;
}

std::vector<unsigned short> Contents(const VertexIndexArray& array)
{
    std::vector<unsigned short> indices;
    for (int i = 0; i < array.GetSize(); ++i)
    {
        indices.push_back(array[i]);
    }
    return indices;
}

int CapacityOf(const VertexIndexArray& array)
{
    return static_cast<int>((array.SizeOf() - sizeof array) / sizeof(unsigned short));
}

using Indices = std::vector<unsigned short>;

}  // namespace

TEST(VertexIndexArray, GrowsByOneThenInStepsOf8)
{
    VertexIndexArray array;
    array.Add(0);
    EXPECT_EQ(CapacityOf(array), 1);
    array.Add(1);
    EXPECT_EQ(CapacityOf(array), 9);
    for (unsigned short i = 2; i < 10; ++i)
    {
        array.Add(i);
    }
    EXPECT_EQ(CapacityOf(array), 17);
    EXPECT_EQ(Contents(array), (Indices{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(VertexIndexArray, ReverseDataReversesTheIndicesAndFreesSpareRoom)
{
    VertexIndexArray array = Filled({1, 2, 3});
    array.ReverseData();
    EXPECT_EQ(Contents(array), (Indices{3, 2, 1}));
    EXPECT_EQ(CapacityOf(array), 3);
}

TEST(VertexIndexArray, ReverseDataOfAnEmptyArrayFreesTheBlock)
{
    VertexIndexArray array = Filled({1, 2});
    array.RemoveAt(0, 2);
    EXPECT_EQ(CapacityOf(array), 9);
    array.ReverseData();
    EXPECT_EQ(array.GetSize(), 0);
    EXPECT_EQ(CapacityOf(array), 0);
    array.ReverseData();
    EXPECT_EQ(array.GetSize(), 0);
}

TEST(VertexIndexArray, ElementsAreReferences)
{
    VertexIndexArray array = Filled({1, 65535});
    array[0] = 7;
    array.ElementAt(1) -= 1;
    EXPECT_EQ(Contents(array), (Indices{7, 65534}));
    EXPECT_EQ(*array.GetElement(1), 65534);
    EXPECT_EQ(array.GetAt(0), 7);
}

TEST(VertexIndexArray, InsertsRemovesAndCopies)
{
    VertexIndexArray array = Filled({1, 4});
    array.InsertAt(1, 2, 2);
    array.SetAt(2, 3);
    array.InsertAt(0, &array);
    EXPECT_EQ(Contents(array), (Indices{1, 2, 3, 4, 1, 2, 3, 4}));
    array.RemoveAt(1, 6);
    EXPECT_EQ(Contents(array), (Indices{1, 4}));
    VertexIndexArray copy;
    copy = array;
    array.RemoveAll();
    EXPECT_EQ(Contents(copy), (Indices{1, 4}));
    EXPECT_EQ(CapacityOf(copy), 2);
    EXPECT_EQ(copy.GetUpperBound(), 1);
}
