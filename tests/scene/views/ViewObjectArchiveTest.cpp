// SPDX-License-Identifier: MIT
#include "scene/ViewObject.h"

#include "scene/SceneObject.h"
#include "tests/support/SceneRecords.h"

#include <gtest/gtest.h>

namespace
{

RecordBytes Zoom()
{
    return RecordBytes().Long(5).Long(6).Long(3).Long(4);  // denominator, numerator
}

// The fields that the versions have in common, outlines with lights and textures.
RecordBytes Version5Fields()
{
    return RecordBytes()
        .Dword(2)
        .Dword(0x400)
        .Append(ProjectionDataRecord(60))
        .Dword(0x100)
        .Append(Zoom());
}

RecordBytes Record(DWORD version, const RecordBytes& fields)
{
    return RecordBytes().Append(ViewNodeRecord().Get()).Dword(version).Append(fields);
}

void ExpectLoaded(const ViewObject& view)
{
    EXPECT_EQ(view.GetDrawingMode(), 2U);
    EXPECT_NE(view.ShouldShowTextures(), 0);
    EXPECT_NE(view.ShouldShowLightsMode(), 0);
    EXPECT_EQ(view.GetProjection().GetFieldOfViewAngle(), 60.0);
    EXPECT_EQ(view.GetZoomDenominator().cx, 5);
    EXPECT_EQ(view.GetZoomDenominator().cy, 6);
    EXPECT_EQ(view.GetZoomNumerator().cx, 3);
    EXPECT_EQ(view.GetZoomNumerator().cy, 4);
    EXPECT_EQ(view.GetTranslation().z, -5.0);
}

TEST(ViewObjectArchive, ANewViewsRecordHasItsFieldsInOrder)
{
    ViewObject view;
    EXPECT_EQ(Stored(view), Record(5, RecordBytes()
                                          .Dword(1)
                                          .Dword(0)
                                          .Append(ProjectionDataRecord())
                                          .Dword(0)
                                          .Dword(1)
                                          .Dword(1)
                                          .Dword(1)
                                          .Dword(1))
                                .Get());
}

TEST(ViewObjectArchive, Version5IsReadAndWritten)
{
    ViewObject view;
    LoadRecord(view, Record(5, Version5Fields()));
    ExpectLoaded(view);
    EXPECT_EQ(Stored(view), Record(5, Version5Fields()).Get());
}

TEST(ViewObjectArchive, ALoadedLensComesBackFromUndo)
{
    ViewObject view;
    LoadRecord(view, Record(5, Version5Fields()));
    view.SaveToUndo();
    view.SetProjectionFieldOfViewAngle(20);
    EXPECT_EQ(view.RestoreFromUndo(), 1);
    EXPECT_NEAR(view.GetProjection().GetFieldOfViewAngle(), 60, 1e-6);
}

// A version 1 record's fields, with what is read and dropped.
RecordBytes Version1Fields()
{
    return RecordBytes()
        .Doubles({7, 8, 9})
        .Dword(2)
        .Dword(0x400)
        .Dword(11)
        .Dword(12)
        .Append(ProjectionDataRecord(60))
        .Dword(0x100)
        .Append(Zoom());
}

TEST(ViewObjectArchive, Version1HasThreeDoublesAndTwoWordsMore)
{
    ViewObject view;
    LoadRecord(view, Record(1, Version1Fields()));
    ExpectLoaded(view);
}

TEST(ViewObjectArchive, Version2HasOneDoubleMore)
{
    ViewObject view;
    LoadRecord(view, Record(2, RecordBytes().Double(6).Append(Version1Fields())));
    ExpectLoaded(view);
}

TEST(ViewObjectArchive, Version3IsAsVersion5)
{
    ViewObject view;
    LoadRecord(view, Record(3, Version5Fields()));
    ExpectLoaded(view);
}

RecordBytes Version4(std::initializer_list<const char*> names)
{
    return Record(4, RecordBytes().Append(Version5Fields()).Append(NamedViewListRecord(names)));
}

TEST(ViewObjectArchive, Version4BringsSavedViewsForTheScene)
{
    SceneObject scene;
    scene.SaveCurrentView("before", scene.GetTransform(), std::make_unique<ProjectionData>().get());
    ViewObject view;
    view.AttachScene(&scene);
    LoadRecord(view, Version4({"front", "back"}));
    ExpectLoaded(view);
    EXPECT_EQ(view.GetScene(), &scene);
    ASSERT_EQ(scene.GetSavedViews()->GetCount(), 3);
    EXPECT_EQ(scene.GetSavedViews()->GetHead()->GetName(), "before");
    EXPECT_EQ(scene.GetSavedViews()->GetTail()->GetName(), "back");
}

TEST(ViewObjectArchive, Version4sSavedViewsAreThrownAwayWithoutAScene)
{
    ViewObject view;
    LoadRecord(view, Version4({"front", "back"}));
    ExpectLoaded(view);
    EXPECT_EQ(view.GetSavedViews(), nullptr);
    // What comes behind a list that is thrown away is read where it begins.
    CMemFile file;
    const Bytes bytes = RecordBytes().Append(Version4({"front"})).Dword(4711);
    file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
    file.Seek(0, CFile::begin);
    CArchive archive(&file, CArchive::load);
    view.Serialize(archive);
    DWORD behind = 0;
    archive >> behind;
    EXPECT_EQ(behind, 4711U);
}

TEST(ViewObjectArchive, Version4RefusesAnObjectThatIsNoSavedView)
{
    const RecordBytes null = RecordBytes().Word(1).Word(0);
    const RecordBytes wrong =
        RecordBytes().Word(1).NewClass("LightObject", 1).Append(LightRecord());
    RecordBytes repeated;
    repeated.Word(2).NewClass("NamedView", 2).Append(NamedViewRecord("a")).Word(2);
    for (const RecordBytes& list : {null, wrong, repeated})
    {
        const RecordBytes record = Record(4, RecordBytes().Append(Version5Fields()).Append(list));
        SceneObject scene;
        ViewObject view;
        EXPECT_EQ(LoadCause(view, record), CArchiveException::badClass);
        view.AttachScene(&scene);
        EXPECT_EQ(LoadCause(view, record), CArchiveException::badClass);
        EXPECT_EQ(scene.GetSavedViews()->GetCount(), 0);
    }
}

TEST(ViewObjectArchive, RefusesOtherVersionsAndShortRecords)
{
    ViewObject view;
    EXPECT_EQ(LoadCause(view, Record(0, Version5Fields())), CArchiveException::badSchema);
    EXPECT_EQ(LoadCause(view, Record(6, Version5Fields())), CArchiveException::badSchema);
    EXPECT_EQ(view.GetDrawingMode(), 1U);
    EXPECT_EQ(LoadCause(view, Record(5, RecordBytes().Dword(2))), CArchiveException::endOfFile);
    // A count without views behind it.
    EXPECT_EQ(
        LoadCause(view,
                  Record(4, RecordBytes().Append(Version5Fields()).Word(0xFFFF).Dword(0xFFFFFFFF))),
        CArchiveException::endOfFile);
}

}  // namespace
