// SPDX-License-Identifier: MIT
#include "scene/NamedView.h"

#include "scene/NamedViewList.h"
#include "tests/support/SceneRecords.h"

#include <gtest/gtest.h>

namespace
{

CoordinateTransform Moved(double x)
{
    CoordinateTransform transform;
    transform.SetTranslation(DVector(x, 0.0, 0.0));
    return transform;
}

ProjectionData Angle(double degrees)
{
    ProjectionData projection;
    projection.SetFieldOfViewAngle(degrees);
    return projection;
}

TEST(NamedView, GivesCopiesOfItsParts)
{
    const NamedView original("Front", Moved(5), Angle(60));
    const NamedView copy(original);
    NamedView assigned;
    EXPECT_TRUE(assigned.GetName().IsEmpty());
    EXPECT_EQ(assigned.GetProjection().GetFieldOfViewAngle(), 40.0);
    assigned = copy;
    EXPECT_EQ(assigned.GetName(), "Front");
    EXPECT_EQ(assigned.GetTransform().GetTranslation().x, 5.0);
    EXPECT_EQ(assigned.GetProjection().GetFieldOfViewAngle(), 60.0);
    assigned.SetName("Back");
    assigned.SetTransform(Moved(6));
    assigned.SetProjection(Angle(70));
    EXPECT_EQ(assigned.GetName(), "Back");
    EXPECT_EQ(assigned.GetTransform().GetTranslation().x, 6.0);
    EXPECT_EQ(assigned.GetProjection().GetFieldOfViewAngle(), 70.0);
    EXPECT_EQ(copy.GetName(), "Front");
    EXPECT_EQ(RUNTIME_CLASS(NamedView)->GetVersion(), 2U);
}

RecordBytes Version2(const char* name)
{
    return RecordBytes()
        .Dword(2)
        .String(name)
        .Append(TranslationRecord(5, 0, 0))
        .Append(ProjectionDataRecord(60));
}

TEST(NamedView, TheRecordIsVersionNameTransformAndProjection)
{
    NamedView original("Front", Moved(5), Angle(60));
    EXPECT_EQ(Stored(original), Version2("Front").Get());
    NamedView loaded;
    LoadRecord(loaded, Version2("Front"));
    EXPECT_EQ(loaded.GetName(), "Front");
    EXPECT_EQ(loaded.GetTransform().GetTranslation().x, 5.0);
    EXPECT_EQ(loaded.GetProjection().GetFieldOfViewAngle(), 60.0);
}

TEST(NamedView, Version1LeavesTheProjectionAsItWas)
{
    NamedView loaded("Back", Moved(9), Angle(70));
    LoadRecord(loaded, RecordBytes().Dword(1).String("Front").Append(TranslationRecord(5, 0, 0)));
    EXPECT_EQ(loaded.GetName(), "Front");
    EXPECT_EQ(loaded.GetTransform().GetTranslation().x, 5.0);
    EXPECT_EQ(loaded.GetProjection().GetFieldOfViewAngle(), 70.0);
}

TEST(NamedView, AnyOtherVersionIsABadSchema)
{
    NamedView loaded;
    EXPECT_EQ(LoadCause(loaded, RecordBytes().Dword(0).String("x")), CArchiveException::badSchema);
    EXPECT_EQ(LoadCause(loaded, RecordBytes().Dword(3).String("x")), CArchiveException::badSchema);
    EXPECT_TRUE(loaded.GetName().IsEmpty());
}

TEST(NamedViewList, FindNameIsCaseSensitive)
{
    NamedView lower("front", CoordinateTransform(), ProjectionData());
    NamedView upper("Front", CoordinateTransform(), ProjectionData());
    NamedView again("Front", CoordinateTransform(), ProjectionData());
    NamedViewList list;
    list.AddTail(&lower);
    EXPECT_EQ(list.FindName("Front"), nullptr);
    list.AddTail(&upper);
    list.AddTail(&again);
    ASSERT_NE(list.FindName("Front"), nullptr);
    EXPECT_EQ(list.GetAt(list.FindName("Front")), &upper);
    EXPECT_EQ(list.WhichIndex(&again), 2);
}

TEST(NamedViewList, DoesNotOwnItsElements)
{
    NamedView view("Front", CoordinateTransform(), ProjectionData());
    {
        NamedViewList list(1);
        list.AddTail(&view);
        EXPECT_EQ(list.GetCount(), 1);
    }
    EXPECT_EQ(view.GetName(), "Front");
}

}  // namespace
