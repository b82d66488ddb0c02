// SPDX-License-Identifier: MIT
#include "outline/VertexArray.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <type_traits>
#include <utility>

namespace
{

Vertex At(int x)
{
    Vertex vertex;
    vertex.point.SetPoint(static_cast<short>(x), 0);
    return vertex;
}

int CapacityOf(const VertexArray& array)
{
    return static_cast<int>((array.SizeOf() - sizeof array) / sizeof(Vertex));
}

void ExpectPoints(const VertexArray& array, std::initializer_list<int> xs)
{
    ASSERT_EQ(array.GetSize(), static_cast<int>(xs.size()));
    int i = 0;
    for (const int x : xs)
    {
        EXPECT_EQ(array[i++].point.x, x);
    }
}

VertexArray Filled(std::initializer_list<int> xs)
{
    VertexArray array;
    for (const int x : xs)
    {
        array.Add(At(x));
    }
    return array;
}

}  // namespace

TEST(VertexArray, GrowsByOneThenInStepsOf32)
{
    VertexArray array;
    EXPECT_EQ(CapacityOf(array), 0);
    EXPECT_EQ(array.Add(At(0)), 0);
    EXPECT_EQ(CapacityOf(array), 1);
    EXPECT_EQ(array.Add(At(1)), 1);
    EXPECT_EQ(CapacityOf(array), 33);
    for (int i = 2; i < 33; ++i)
    {
        array.Add(At(i));
    }
    EXPECT_EQ(CapacityOf(array), 33);
    EXPECT_EQ(array.Add(At(33)), 33);
    EXPECT_EQ(CapacityOf(array), 65);
    for (int i = 0; i < 34; ++i)
    {
        EXPECT_EQ(array[i].point.x, i);
    }
}

TEST(VertexArray, ElementsAreReferencesAndConstElementsCopies)
{
    VertexArray array = Filled({1, 2});
    array[0].point.x = 10;
    array.ElementAt(1).point.x = 20;
    EXPECT_EQ(array.GetAt(0).point.x, 10);
    EXPECT_EQ(array.GetElement(1), &array[1]);
    static_assert(std::is_same_v<decltype(std::as_const(array)[0]), Vertex>);
    ExpectPoints(array, {10, 20});
}

TEST(VertexArray, ShrinkingKeepsTheBlockAndSizeZeroFreesIt)
{
    VertexArray array = Filled({1, 2, 3});
    array.SetSize(1);
    EXPECT_EQ(CapacityOf(array), 33);
    EXPECT_EQ(array.GetUpperBound(), 0);
    array.SetSize(3);
    ExpectPoints(array, {1, 2, 3});
    array.FreeExtra();
    EXPECT_EQ(CapacityOf(array), 3);
    ExpectPoints(array, {1, 2, 3});
    array.RemoveAll();
    EXPECT_EQ(array.GetSize(), 0);
    EXPECT_EQ(CapacityOf(array), 0);
    array.SetSize(2, 5);
    array.SetSize(3);
    EXPECT_EQ(CapacityOf(array), 7);
}

TEST(VertexArray, InsertsAndRemovesInTheMiddle)
{
    VertexArray array = Filled({1, 4});
    array.InsertAt(1, At(2), 2);
    array.SetAt(2, At(3));
    ExpectPoints(array, {1, 2, 3, 4});
    const VertexArray more = Filled({8, 9});
    array.InsertAt(1, &more);
    ExpectPoints(array, {1, 8, 9, 2, 3, 4});
    array.RemoveAt(1, 3);
    ExpectPoints(array, {1, 3, 4});
    array.SetAtGrow(4, At(7));
    ExpectPoints(array, {1, 3, 4, 2, 7});  // slot 3 still has its old element
}

TEST(VertexArray, CopiesHaveTheirOwnElementsAndExactRoom)
{
    VertexArray array = Filled({1, 2, 3});
    VertexArray copy;
    copy.Add(At(9));
    copy = array;
    array[0].point.x = 100;
    ExpectPoints(copy, {1, 2, 3});
    EXPECT_EQ(CapacityOf(copy), 3);
    VertexArray& itself = copy;
    copy = itself;
    ExpectPoints(copy, {1, 2, 3});
}

TEST(VertexArray, AddingAnElementOfTheArrayItselfIsSafe)
{
    VertexArray array = Filled({5});
    array.Add(array[0]);
    ExpectPoints(array, {5, 5});
}
