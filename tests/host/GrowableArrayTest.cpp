// SPDX-License-Identifier: MIT
#include "host/GrowableArray.h"

#include "tests/support/RecordBytes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace
{

/// An array whose fields the tests see.
template <int Step>
class OpenArray : public GrowableArray<int, Step>
{
public:
    OpenArray() = default;
    OpenArray(std::initializer_list<int> values)
    {
        for (const int value : values)
        {
            this->Add(value);
        }
    }

    std::vector<int> Values() const { return {this->data.get(), this->data.get() + this->size}; }
    using GrowableArray<int, Step>::data;
    using GrowableArray<int, Step>::growBy;
    using GrowableArray<int, Step>::maxSize;
    using GrowableArray<int, Step>::ReadElements;
};

using Array = OpenArray<-1>;
using Values = std::vector<int>;

}  // namespace

TEST(GrowableArray, StartsEmptyWithoutABlock)
{
    const Array array;
    EXPECT_EQ(array.GetSize(), 0);
    EXPECT_EQ(array.GetUpperBound(), -1);
    EXPECT_EQ(array.maxSize, 0);
    EXPECT_EQ(array.growBy, 0);
    EXPECT_EQ(array.data, nullptr);
}

TEST(GrowableArray, FirstAllocationIsExact)
{
    Array array;
    array.SetSize(5, 100);
    EXPECT_EQ(array.GetSize(), 5);
    EXPECT_EQ(array.maxSize, 5);
    EXPECT_EQ(array.growBy, 100);
    EXPECT_EQ(array.Values(), Values(5, 0));
}

TEST(GrowableArray, GrowsByAtLeastTheGrowBy)
{
    Array array;
    array.SetSize(5, 10);
    array.SetSize(6);
    EXPECT_EQ(array.maxSize, 15);  // 5 + 10
    array.SetSize(40);
    EXPECT_EQ(array.maxSize, 40);  // more than 15 + 10
    EXPECT_EQ(array.growBy, 10);
}

TEST(GrowableArray, GrowByOfZeroGrowsExactly)
{
    Array array;
    for (int size = 1; size <= 4; ++size)
    {
        array.Add(size);
        EXPECT_EQ(array.maxSize, size);
    }
    EXPECT_EQ(array.Values(), (Values{1, 2, 3, 4}));
}

TEST(GrowableArray, GrowByOfMinusOneKeepsTheStoredOne)
{
    Array array;
    array.SetSize(1, 7);
    array.SetSize(2, -1);
    EXPECT_EQ(array.growBy, 7);
    array.SetSize(2, 0);
    EXPECT_EQ(array.growBy, 0);
}

TEST(GrowableArray, StoredGrowByOfMinusOneGrowsGeometrically)
{
    Array array;
    array.growBy = -1;
    array.SetSize(100);
    EXPECT_EQ(array.maxSize, 100);
    int allocations = 0;
    for (int i = 0; i < 100000; ++i)
    {
        const int capacity = array.maxSize;
        array.Add(i);
        allocations += array.maxSize != capacity;
    }
    EXPECT_EQ(array.growBy, -1);
    EXPECT_LT(allocations, 25);
}

TEST(GrowableArray, SetAtGrowHandsOnItsStep)
{
    OpenArray<32> array;
    array.Add(1);
    EXPECT_EQ(array.maxSize, 1);  // the step is only stored
    array.Add(2);
    EXPECT_EQ(array.maxSize, 33);
    for (int i = 3; i <= 34; ++i)
    {
        array.Add(i);
    }
    EXPECT_EQ(array.maxSize, 65);
    EXPECT_EQ(array.growBy, 32);
}

TEST(GrowableArray, SizeZeroFreesTheBlockAndKeepsTheGrowBy)
{
    Array array;
    array.SetSize(5, 10);
    array.SetSize(0);
    EXPECT_EQ(array.data, nullptr);
    EXPECT_EQ(array.maxSize, 0);
    EXPECT_EQ(array.growBy, 10);
    array.SetSize(3);
    EXPECT_EQ(array.maxSize, 3);
    array.SetSize(-1);
    EXPECT_EQ(array.GetSize(), 0);
    array.SetSize(3);
    array.RemoveAll();
    EXPECT_EQ(array.data, nullptr);
}

TEST(GrowableArray, ShrinkingKeepsTheSurplusElements)
{
    Array array{1, 2, 3, 4};
    array.SetSize(1);
    EXPECT_EQ(array.Values(), Values{1});
    EXPECT_EQ(array.maxSize, 4);
    array.SetSize(4);
    EXPECT_EQ(array.Values(), (Values{1, 2, 3, 4}));
}

TEST(GrowableArray, FreeExtraGivesTheBlockTheSizeInUse)
{
    Array array;
    array.SetSize(2, 50);
    array.Add(9);
    EXPECT_EQ(array.maxSize, 52);
    array.FreeExtra();
    EXPECT_EQ(array.maxSize, 3);
    EXPECT_EQ(array.Values(), (Values{0, 0, 9}));
    array.RemoveAt(0, 3);
    array.FreeExtra();
    EXPECT_EQ(array.data, nullptr);
    EXPECT_EQ(array.maxSize, 0);
}

TEST(GrowableArray, SetAtGrowReachesBehindTheEnd)
{
    Array array{1};
    array.SetAtGrow(3, 4);
    EXPECT_EQ(array.Values(), (Values{1, 0, 0, 4}));
    array.SetAtGrow(0, 9);
    EXPECT_EQ(array.Values(), (Values{9, 0, 0, 4}));
    EXPECT_EQ(array.Add(5), 4);
}

TEST(GrowableArray, AddsItsOwnElement)
{
    GrowableArray<std::string> array;
    array.Add("a text too long to be kept inside the string object itself");
    for (int i = 0; i < 10; ++i)
    {
        array.Add(*array.GetElement(0));
    }
    EXPECT_EQ(array.GetAt(10), "a text too long to be kept inside the string object itself");
}

TEST(GrowableArray, InsertsCopiesAndMovesTheRestUp)
{
    Array array{1, 2, 3};
    array.InsertAt(1, 9, 2);
    EXPECT_EQ(array.Values(), (Values{1, 9, 9, 2, 3}));
    array.InsertAt(5, 7);
    EXPECT_EQ(array.Values(), (Values{1, 9, 9, 2, 3, 7}));
    array.InsertAt(8, 6, 1);
    EXPECT_EQ(array.Values(), (Values{1, 9, 9, 2, 3, 7, 0, 0, 6}));
    array.InsertAt(0, 5, 0);
    EXPECT_EQ(array.GetSize(), 9);
}

TEST(GrowableArray, InsertsItsOwnElement)
{
    Array array{1, 2, 3};
    array.InsertAt(0, *array.GetElement(2), 3);
    EXPECT_EQ(array.Values(), (Values{3, 3, 3, 1, 2, 3}));
}

TEST(GrowableArray, InsertsAnotherArrayAndItself)
{
    Array array{1, 2, 3};
    const Array other{8, 9};
    array.InsertAt(1, &other);
    EXPECT_EQ(array.Values(), (Values{1, 8, 9, 2, 3}));
    array.InsertAt(2, &array);
    EXPECT_EQ(array.Values(), (Values{1, 8, 1, 8, 9, 2, 3, 9, 2, 3}));
    const Array none;
    array.InsertAt(50, &none);
    EXPECT_EQ(array.GetSize(), 10);
}

TEST(GrowableArray, RemovesAndKeepsTheCapacity)
{
    Array array{1, 2, 3, 4};
    array.RemoveAt(1, 2);
    EXPECT_EQ(array.Values(), (Values{1, 4}));
    EXPECT_EQ(array.maxSize, 4);
    array.RemoveAt(1);
    EXPECT_EQ(array.Values(), Values{1});
}

TEST(GrowableArray, CopiesHaveExactlyTheirSizeAndTheirOwnGrowBy)
{
    Array array;
    array.SetSize(2, 50);
    array.Add(7);
    Array copy;
    copy.SetSize(9, 4);
    copy = array;
    EXPECT_EQ(copy.Values(), (Values{0, 0, 7}));
    EXPECT_EQ(copy.maxSize, 3);
    EXPECT_EQ(copy.growBy, 4);
    copy.SetAt(0, 1);
    EXPECT_EQ(array[0], 0);

    const Array& same = array;
    array = same;
    EXPECT_EQ(array.Values(), (Values{0, 0, 7}));
    EXPECT_EQ(array.maxSize, 52);
    const Array constructed(array);
    EXPECT_EQ(constructed.maxSize, 3);
}

TEST(GrowableArray, InsertingNothingBeyondTheEndGrowsUpToTheIndex)
{
    Array array;
    array.InsertAt(5, 1, 0);
    EXPECT_EQ(array.Values(), Values(5, 0));
    array.InsertAt(2, 1, 0);
    array.InsertAt(7, 1, -1);
    EXPECT_EQ(array.Values(), Values(5, 0));
}

TEST(GrowableArray, ReadingMakesRoomAsElementsArrive)
{
    Array array{5};
    int served = 0;
    const auto serve = [&](int& element) {
        EXPECT_LE(array.maxSize, served * 2 + 64);
        if (served == 1000)
        {
            AfxThrowArchiveException(CArchiveException::endOfFile);
        }
        element = served++;
    };
    EXPECT_THROW(array.ReadElements(0x7FFFFFFF, serve), CArchiveException);

    served = 0;
    array.RemoveAll();
    array.ReadElements(300, serve);
    EXPECT_EQ(array.GetSize(), 300);
    EXPECT_EQ(array.maxSize, 300);
    EXPECT_EQ(array[299], 299);
}

TEST(GrowableArray, ReadingLeavesTheBlockThatSetSizeWould)
{
    Array array{1, 2, 3, 4, 5};
    const auto serve = [](int& element) { element = 7; };
    array.ReadElements(2, serve);
    EXPECT_EQ(array.Values(), (Values{7, 7}));
    EXPECT_EQ(array.maxSize, 5);  // as after any shrinking
    array.growBy = 10;
    array.ReadElements(6, serve);
    EXPECT_EQ(array.maxSize, 15);  // 5 + 10
    array.ReadElements(0, serve);
    EXPECT_EQ(array.maxSize, 0);
    EXPECT_EQ(array.data, nullptr);
}

TEST(GrowableArray, ImpossibleCountsAreRefused)
{
    Array array;
    const auto serve = [](int&) { FAIL(); };
    for (const std::int64_t count : {std::int64_t{-1}, std::int64_t{0x80000000}})
    {
        try
        {
            array.ReadElements(count, serve);
            FAIL();
        }
        catch (const CArchiveException& exception)
        {
            EXPECT_EQ(exception.m_cause, CArchiveException::badIndex);
        }
    }
    array.ReadElements(0, serve);
    EXPECT_EQ(array.GetSize(), 0);
}
