// SPDX-License-Identifier: MIT
#include "geometry/VectorArray.h"

#include "tests/support/ExpectVector.h"
#include "tests/support/RecordBytes.h"

namespace
{
/// Shows what the array keeps to itself.
class OpenVectorArray : public VectorArray
{
public:
    using VectorArray::growBy;
    using VectorArray::maxSize;

    /// One element (x, 0, 0) for each number.
    void Fill(std::initializer_list<float> numbers)
    {
        SetSize(0);
        for (const float x : numbers)
        {
            Add(Vector(x, 0.0f, 0.0f));
        }
    }

    std::vector<float> Numbers() const
    {
        std::vector<float> numbers;
        for (int i = 0; i < GetSize(); ++i)
        {
            numbers.push_back(GetAt(i).x);
        }
        return numbers;
    }
};

using Numbers = std::vector<float>;
}  // namespace

TEST(VectorArray, StartsEmpty)
{
    const OpenVectorArray array;
    EXPECT_EQ(array.GetSize(), 0);
    EXPECT_EQ(array.GetUpperBound(), -1);
    EXPECT_EQ(array.maxSize, 0);
    EXPECT_EQ(array.growBy, 0);
}

TEST(VectorArray, ReallocatesOnEachAddUntilItHasAGrowBy)
{
    OpenVectorArray array;
    EXPECT_EQ(array.Add(Vector(1, 2, 3)), 0);
    EXPECT_EQ(array.maxSize, 1);
    EXPECT_EQ(array.Add(Vector(4, 5, 6)), 1);
    EXPECT_EQ(array.maxSize, 2);

    array.SetSize(2, 5);
    EXPECT_EQ(array.Add(Vector(7, 8, 9)), 2);
    EXPECT_EQ(array.maxSize, 7);
    EXPECT_EQ(array.growBy, 5);
    EXPECT_XYZ(array[0], 1.0f, 2.0f, 3.0f);
    EXPECT_XYZ(array.GetAt(2), 7.0f, 8.0f, 9.0f);
}

TEST(VectorArray, AllocatesExactlyTheFirstSizeAndThenAtLeastAGrowByMore)
{
    OpenVectorArray array;
    array.SetSize(3, 10);
    EXPECT_EQ(array.maxSize, 3);
    array.SetSize(4, -1);
    EXPECT_EQ(array.maxSize, 13);
    array.SetSize(40);
    EXPECT_EQ(array.maxSize, 40);
    array.SetSize(0);
    EXPECT_EQ(array.maxSize, 0);
}

TEST(VectorArray, ShrinkingAndGrowingWithinTheCapacityShowsTheKeptElements)
{
    OpenVectorArray array;
    array.Fill({1, 2, 3});
    array.SetSize(1);
    EXPECT_EQ(array.maxSize, 3);
    array.SetSize(3);
    EXPECT_EQ(array.Numbers(), (Numbers{1, 2, 3}));
}

TEST(VectorArray, FreeExtraDropsTheSurplus)
{
    OpenVectorArray array;
    array.Fill({1, 2, 3});
    array.SetSize(1);
    array.FreeExtra();
    EXPECT_EQ(array.maxSize, 1);
    EXPECT_EQ(array.Numbers(), (Numbers{1}));
    array.RemoveAt(0);
    EXPECT_EQ(array.maxSize, 1);
    array.FreeExtra();
    EXPECT_EQ(array.maxSize, 0);
}

TEST(VectorArray, GetElementPointsIntoTheArray)
{
    VectorArray array;
    array.Add(Vector(1, 2, 3));
    array.GetElement(0)->y = 20.0f;
    EXPECT_XYZ(array[0], 1.0f, 20.0f, 3.0f);
    array.SetAt(0, Vector(4, 5, 6));
    EXPECT_XYZ(*array.GetElement(0), 4.0f, 5.0f, 6.0f);
}

TEST(VectorArray, SetAtGrowGrowsUpToTheIndex)
{
    VectorArray array;
    array.SetAtGrow(2, Vector(1, 2, 3));
    EXPECT_EQ(array.GetUpperBound(), 2);
    EXPECT_XYZ(array[0], 0.0f, 0.0f, 0.0f);
    EXPECT_XYZ(array[2], 1.0f, 2.0f, 3.0f);
    array.SetAtGrow(0, Vector(4, 5, 6));
    EXPECT_EQ(array.GetSize(), 3);
    EXPECT_XYZ(array[0], 4.0f, 5.0f, 6.0f);
}

TEST(VectorArray, AddingAnElementOfItsOwnIsSafe)
{
    OpenVectorArray array;
    array.Fill({5});
    array.Add(*array.GetElement(0));
    array.InsertAt(0, *array.GetElement(1), 2);
    EXPECT_EQ(array.Numbers(), (Numbers{5, 5, 5, 5}));
}

TEST(VectorArray, InsertAtMovesTheTailUp)
{
    OpenVectorArray array;
    array.Fill({1, 2, 3});
    array.InsertAt(1, Vector(9, 0, 0), 2);
    EXPECT_EQ(array.Numbers(), (Numbers{1, 9, 9, 2, 3}));
}

TEST(VectorArray, InsertAtBeyondTheEndGrowsUpToTheIndex)
{
    OpenVectorArray array;
    array.Fill({1});
    array.InsertAt(3, Vector(9, 0, 0), 2);
    EXPECT_EQ(array.Numbers(), (Numbers{1, 0, 0, 9, 9}));
}

TEST(VectorArray, InsertsAnotherArrayInItsOrder)
{
    OpenVectorArray array;
    array.Fill({1, 2});
    OpenVectorArray other;
    other.Fill({7, 8, 9});
    array.InsertAt(1, &other);
    EXPECT_EQ(array.Numbers(), (Numbers{1, 7, 8, 9, 2}));

    VectorArray empty;
    array.InsertAt(0, &empty);
    EXPECT_EQ(array.GetSize(), 5);
}

TEST(VectorArray, RemoveAtMovesTheTailDownAndKeepsTheCapacity)
{
    OpenVectorArray array;
    array.Fill({1, 2, 3, 4, 5});
    array.RemoveAt(1, 2);
    EXPECT_EQ(array.Numbers(), (Numbers{1, 4, 5}));
    EXPECT_EQ(array.maxSize, 5);
    array.RemoveAll();
    EXPECT_EQ(array.GetSize(), 0);
    EXPECT_EQ(array.maxSize, 0);
}

TEST(VectorArray, AssignmentCopiesElementsExactlyAndNotTheGrowBy)
{
    OpenVectorArray source;
    source.Fill({1, 2, 3});
    source.SetSize(2, 50);

    OpenVectorArray target;
    target.SetSize(10, 7);
    target = source;
    EXPECT_EQ(target.Numbers(), (Numbers{1, 2}));
    EXPECT_EQ(target.maxSize, 2);
    EXPECT_EQ(target.growBy, 7);

    OpenVectorArray& same = target;
    target = same;
    EXPECT_EQ(target.Numbers(), (Numbers{1, 2}));

    target.SetAt(0, Vector(9, 0, 0));
    EXPECT_EQ(source.GetAt(0).x, 1.0f);
}

TEST(VectorArray, RecordIsVersionCountAndElements)
{
    VectorArray array;
    array.Add(Vector(1, 2, 3));
    array.Add(Vector(-1, 0.5f, 0));
    const Bytes expected = RecordBytes().Dword(1).Long(2).Floats({1, 2, 3}).Floats({-1, 0.5f, 0});
    EXPECT_EQ(Stored(array), expected);

    VectorArray loaded;
    loaded.SetSize(5);
    LoadRecord(loaded, expected);
    ASSERT_EQ(loaded.GetSize(), 2);
    EXPECT_XYZ(loaded[0], 1.0f, 2.0f, 3.0f);
    EXPECT_XYZ(loaded[1], -1.0f, 0.5f, 0.0f);
}

TEST(VectorArray, AnEmptyRecordLoadsAsEmpty)
{
    VectorArray loaded;
    loaded.Add(Vector(1, 2, 3));
    LoadRecord(loaded, RecordBytes().Dword(1).Long(0));
    EXPECT_EQ(loaded.GetSize(), 0);
}

TEST(VectorArray, RefusesRecordsOfOtherVersions)
{
    VectorArray array;
    EXPECT_EQ(LoadCause(array, RecordBytes().Dword(2).Long(0)), CArchiveException::badSchema);
    EXPECT_EQ(LoadCause(array, RecordBytes().Dword(0).Long(0)), CArchiveException::badSchema);
}

TEST(VectorArray, ACountBeyondTheBytesEndsTheFile)
{
    VectorArray array;
    EXPECT_EQ(LoadCause(array, RecordBytes().Dword(1).Long(0x7FFFFFFF).Floats({1, 2, 3})),
              CArchiveException::endOfFile);
    EXPECT_EQ(LoadCause(array, RecordBytes().Dword(1).Long(-1)), CArchiveException::badIndex);
}
