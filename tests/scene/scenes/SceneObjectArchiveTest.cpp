// SPDX-License-Identifier: MIT
#include "scene/SceneObject.h"

#include "tests/support/ExpectVector.h"
#include "tests/support/SceneRecords.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{

// A record with one light in use, number 3.
RecordBytes OneLight()
{
    return OneLightRecord(7, 0x4003);
}

// The record behind the node's.
RecordBytes OwnRecord(DWORD version, const RecordBytes& behindColors, DWORD sceneFlags = 4)
{
    return RecordBytes().Dword(version).Append(SceneColorsRecord(sceneFlags)).Append(behindColors);
}

RecordBytes Record(DWORD version, const RecordBytes& behindColors, DWORD sceneFlags = 4)
{
    return RecordBytes()
        .Append(NodeRecord().Get())
        .Append(OwnRecord(version, behindColors, sceneFlags));
}

// A saved view behind one light: the light's class and object have taken two indices.
RecordBytes OneViewBehindALight()
{
    return RecordBytes().Word(1).NewClass("NamedView", 2).Append(NamedViewRecord("front"));
}

// A scene whose one light stands as a new one does, with one saved view.
void Make(SceneObject& scene)
{
    scene.SetMaximumLightCount(1);
    scene.CreateLights();
    LightObject& light = *scene.GetLightByIndex(0);
    light.SetTransform(CoordinateTransform());
    light.SetLightNumber(0x4003);
    const CoordinateTransform place;
    const ProjectionData lens;
    scene.SaveCurrentView("front", &place, &lens);
}

void ExpectOneLight(const SceneObject& scene)
{
    ASSERT_EQ(scene.GetLightCount(), 1);
    EXPECT_EQ(scene.GetLightByIndex(0)->lightNumber, 0x4003U);
    EXPECT_EQ(scene.GetLightByIndex(0)->lightFlags, 7U);
    EXPECT_EQ(scene.GetLightByIndex(0)->GetParent(), &scene);
}

TEST(SceneObjectArchive, TheRecordIsBaseColorsFlagsLightsAndSavedViews)
{
    SceneObject scene;
    Make(scene);
    EXPECT_EQ(Stored(scene),
              Record(3, RecordBytes().Append(OneLight()).Append(OneViewBehindALight())).Get());
}

TEST(SceneObjectArchive, Version3IsReadInPlaceOfLightsAndSavedViews)
{
    const RecordBytes record = RecordBytes()
                                   .Append(NodeRecord().Get())
                                   .Dword(3)
                                   .Floats({0.1f, 0.2f, 0.3f, 0.4f})
                                   .Dword(1)
                                   .Floats({0.5f, 0.6f, 0.7f, 0.8f})
                                   .Append(OneLight())
                                   .Append(OneViewBehindALight());
    SceneObject scene;
    const CoordinateTransform place;
    const ProjectionData lens;
    scene.SaveCurrentView("before", &place, &lens);
    LoadRecord(scene, record);
    EXPECT_RGBA(scene.GetBackgroundColor(), 0.1f, 0.2f, 0.3f, 0.4f);
    EXPECT_RGBA(scene.GetGlobalAmbientColor(), 0.5f, 0.6f, 0.7f, 0.8f);
    EXPECT_EQ(scene.sceneFlags, 1U);
    ExpectOneLight(scene);
    ASSERT_EQ(scene.GetSavedViews()->GetCount(), 1);
    EXPECT_EQ(scene.GetSavedViews()->GetHead()->GetName(), "front");
    EXPECT_EQ(scene.GetMaximumLightCount(), 8);  // not stored
    EXPECT_EQ(Stored(scene), record.Get());
}

TEST(SceneObjectArchive, Version2HasNoSavedViews)
{
    SceneObject scene;
    const CoordinateTransform place;
    const ProjectionData lens;
    scene.SaveCurrentView("before", &place, &lens);
    LoadRecord(scene, Record(2, OneLight(), 5));
    EXPECT_EQ(scene.sceneFlags, 5U);
    ExpectOneLight(scene);
    EXPECT_TRUE(scene.GetSavedViews()->IsEmpty());
}

TEST(SceneObjectArchive, Version1HasAWordThatIsDropped)
{
    SceneObject scene;
    LoadRecord(scene, Record(1, RecordBytes().Dword(4711).Append(OneLight())));
    EXPECT_EQ(scene.sceneFlags, 4U);
    ExpectOneLight(scene);
    EXPECT_TRUE(scene.GetSavedViews()->IsEmpty());
}

TEST(SceneObjectArchive, RefusesOtherVersions)
{
    SceneObject scene;
    for (const DWORD version : {0U, 4U})
    {
        EXPECT_EQ(LoadCause(scene, Record(version, OneLight())), CArchiveException::badSchema);
        EXPECT_EQ(scene.GetLightCount(), 8);
    }
}

TEST(SceneObjectArchive, RefusesAPoolWithOtherObjectsAndKeepsItsLights)
{
    const RecordBytes light = LightRecord(7, 0x4001);
    const RecordBytes lists[] = {
        // Null.
        RecordBytes().Word(1).Word(0),
        // A node that is no light.
        RecordBytes().Word(1).NewClass("DrawingObject", 3).Append(NodeRecord().Get()),
        // The same light twice: its index is 2.
        RecordBytes().Word(2).NewClass("LightObject", 1).Append(light).Word(2),
        // Numbers that are no light's.
        OneLightRecord(7, 0),
        OneLightRecord(7, 0x3FFF),
        OneLightRecord(7, 0xFFFFFFFF),
        // A good one before a bad one.
        RecordBytes()
            .Word(2)
            .NewClass("LightObject", 1)
            .Append(light)
            .Word(0x8001)
            .Append(LightRecord(7, 5)),
    };
    for (const RecordBytes& list : lists)
    {
        SceneObject scene;
        LightObject* const first = scene.GetLightByIndex(0);
        EXPECT_EQ(LoadCause(scene, Record(2, list)), CArchiveException::badClass);
        EXPECT_EQ(scene.GetLightCount(), 8);
        EXPECT_EQ(scene.GetLightByIndex(0), first);
    }
}

TEST(SceneObjectArchive, ALightThatIsAChildAlreadyIsRefused)
{
    NodeRecord node;
    node.children = OneLightRecord();
    // The child has index 2.
    const RecordBytes record =
        RecordBytes().Append(node.Get()).Append(OwnRecord(2, RecordBytes().Word(1).Word(2)));
    SceneObject scene;
    EXPECT_EQ(LoadCause(scene, record), CArchiveException::badClass);
    EXPECT_EQ(scene.GetChildCount(), 1);
    EXPECT_EQ(scene.GetLightCount(), 8);
}

TEST(SceneObjectArchive, RefusesAnObjectThatIsNoSavedView)
{
    const RecordBytes lists[] = {
        RecordBytes().Word(1).Word(0),
        // The light: its index is 2.
        RecordBytes().Word(1).Word(2),
        // The same view twice: its index is 4.
        RecordBytes().Word(2).NewClass("NamedView", 2).Append(NamedViewRecord("a")).Word(4),
    };
    for (const RecordBytes& list : lists)
    {
        SceneObject scene;
        EXPECT_EQ(LoadCause(scene, Record(3, RecordBytes().Append(OneLight()).Append(list))),
                  CArchiveException::badClass);
        EXPECT_TRUE(scene.GetSavedViews()->IsEmpty());
    }
}

TEST(SceneObjectArchive, CountsWithoutObjectsBehindThemEndTheFile)
{
    SceneObject scene;
    EXPECT_EQ(LoadCause(scene, Record(2, RecordBytes().Word(0xFFFF).Dword(0xFFFFFFFF))),
              CArchiveException::endOfFile);
    EXPECT_EQ(LoadCause(scene, Record(3, RecordBytes().Append(OneLight()).Word(0xFFFE))),
              CArchiveException::endOfFile);
}

// Stores a scene as a selection.
Bytes StoredSelection(SceneObject& scene)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    scene.SelectionSerialize(archive);
    archive.Close();
    return file.Bytes();
}

void LoadSelection(SceneObject& scene, const Bytes& bytes)
{
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    scene.SelectionSerialize(archive);
}

TEST(SceneObjectArchive, TheRecordOfASelectionHasNoNodeRecordAndTheSelectionBit)
{
    SceneObject scene;
    Make(scene);
    scene.AddChild(new DrawingObject);
    EXPECT_EQ(
        StoredSelection(scene),
        OwnRecord(3, RecordBytes().Append(OneLight()).Append(OneViewBehindALight()), 6).Get());
    EXPECT_EQ(scene.sceneFlags, 4U);
}

TEST(SceneObjectArchive, LoadingASelectionKeepsTheNodeAndLaterSavesAreWhole)
{
    SceneObject scene;
    scene.AddChild(new DrawingObject);
    scene.SetTranslation(DVector(1.0, 2.0, 3.0));
    LoadSelection(scene, OwnRecord(2, OneLight(), 7));
    EXPECT_EQ(scene.sceneFlags, 5U);
    EXPECT_EQ(scene.GetChildCount(), 1);
    EXPECT_XYZ(scene.GetTranslation(), 1.0, 2.0, 3.0);
    ExpectOneLight(scene);
}

TEST(SceneObjectArchive, AWholeRecordWithTheSelectionFlagClearsIt)
{
    SceneObject scene;
    LoadRecord(scene, Record(2, OneLight(), 6));
    EXPECT_EQ(scene.IsSerializingSelection(), 0);
    EXPECT_EQ(Stored(scene), Record(3, RecordBytes().Append(OneLight()).Word(0)).Get());
    // Also when the record ends too early.
    SceneObject other;
    EXPECT_EQ(LoadCause(other, Record(2, RecordBytes(), 6)), CArchiveException::endOfFile);
    EXPECT_EQ(other.IsSerializingSelection(), 0);
}

TEST(SceneObjectArchive, ASelectionThatFailsLeavesTheFlagClear)
{
    SceneObject scene;
    EXPECT_THROW(LoadSelection(scene, RecordBytes().Dword(9)), CArchiveException);
    EXPECT_EQ(scene.IsSerializingSelection(), 0);
}

TEST(SceneObjectArchive, ASceneStoredLoadedAndStoredAgainGivesTheSameBytes)
{
    SceneObject scene;
    auto* const group = new DrawingObject;
    group->AddChild(new DrawingObject);
    group->Rotate(30, DVector(1.0, 2.0, 3.0));
    scene.AddChild(group);
    scene.AddChild(new LightObject);  // a light may be a child, too
    scene.AddLight();
    scene.GetTexture()->SetHorizontalLocation(7);
    const ProjectionData lens;
    scene.SaveCurrentView("a", group->GetTransform(), &lens);
    scene.SaveCurrentView("b", group->GetTransform(), &lens);
    const Bytes first = Stored(scene);
    SceneObject loaded;
    LoadRecord(loaded, first);
    EXPECT_EQ(Stored(loaded).size(), first.size());
    SceneObject again;
    const Bytes second = Stored(loaded);
    LoadRecord(again, second);
    EXPECT_EQ(Stored(again), second);
    // A texture without a file is reset on loading: nothing else differs.
    loaded.GetTexture()->SetHorizontalLocation(7);
    EXPECT_EQ(Stored(loaded), first);
}

}  // namespace
