// SPDX-License-Identifier: MIT
#include "scene/NamedTransform.h"

#include "scene/NamedTransformList.h"
#include "tests/support/RecordBytes.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace
{

CoordinateTransform Moved(double x)
{
    CoordinateTransform transform;
    transform.SetTranslation(DVector(x, 0.0, 0.0));
    return transform;
}

TEST(NamedTransform, GivesCopiesOfItsParts)
{
    const NamedTransform original("Front", Moved(5));
    const NamedTransform copy(original);
    NamedTransform assigned;
    EXPECT_TRUE(assigned.GetName().IsEmpty());
    assigned = copy;
    EXPECT_EQ(assigned.GetName(), "Front");
    EXPECT_EQ(assigned.GetTransform().GetTranslation().x, 5.0);
    EXPECT_TRUE(std::has_virtual_destructor_v<NamedTransform>);
    EXPECT_EQ(RUNTIME_CLASS(NamedTransform)->GetVersion(), 1U);
}

RecordBytes Record(DWORD version)
{
    const std::initializer_list<double> identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    return RecordBytes()
        .Dword(version)
        .String("Front")
        .Dword(1)
        .Doubles({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 0, 0, 1})  // composite
        .Doubles(identity)
        .Doubles(identity)
        .Doubles({1, 1, 1})
        .Doubles({5, 0, 0});
}

TEST(NamedTransform, TheRecordIsVersionNameAndTransform)
{
    NamedTransform original("Front", Moved(5));
    EXPECT_EQ(Stored(original), Record(1).Get());
    NamedTransform loaded;
    LoadRecord(loaded, Record(1));
    EXPECT_EQ(loaded.GetName(), "Front");
    EXPECT_EQ(loaded.GetTransform().GetTranslation().x, 5.0);
}

TEST(NamedTransform, AnyOtherVersionIsABadSchema)
{
    NamedTransform loaded;
    EXPECT_EQ(LoadCause(loaded, Record(0)), CArchiveException::badSchema);
    EXPECT_EQ(LoadCause(loaded, Record(2)), CArchiveException::badSchema);
    EXPECT_TRUE(loaded.GetName().IsEmpty());
}

TEST(NamedTransformList, FindNameIsCaseSensitive)
{
    NamedTransform lower("front", CoordinateTransform());
    NamedTransform upper("Front", CoordinateTransform());
    NamedTransform again("Front", CoordinateTransform());
    NamedTransformList list;
    list.AddTail(&lower);
    EXPECT_EQ(list.FindName("Front"), nullptr);
    list.AddTail(&upper);
    list.AddTail(&again);
    ASSERT_NE(list.FindName("Front"), nullptr);
    EXPECT_EQ(list.GetAt(list.FindName("Front")), &upper);
    EXPECT_EQ(list.WhichIndex(&again), 2);
}

TEST(NamedTransformList, DoesNotOwnItsElements)
{
    NamedTransform transform("Front", CoordinateTransform());
    {
        NamedTransformList list(1);
        list.AddTail(&transform);
        EXPECT_EQ(list.GetCount(), 1);
    }
    EXPECT_EQ(transform.GetName(), "Front");
}

}  // namespace
