// SPDX-License-Identifier: MIT
#include "scene/SceneObject.h"

#include "tests/support/ExpectVector.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace
{

TEST(SceneObject, ANewSceneIsWhiteDimlyLitAndTurnsItsLights)
{
    const SceneObject scene;
    EXPECT_RGBA(scene.GetBackgroundColor(), 1.0f, 1.0f, 1.0f, 1.0f);
    EXPECT_RGBA(scene.GetGlobalAmbientColor(), 0.2f, 0.2f, 0.2f, 1.0f);
    EXPECT_EQ(scene.sceneFlags, 0x4U);
    EXPECT_EQ(scene.GetMaximumLightCount(), 8);
    EXPECT_TRUE(scene.GetSavedViews()->IsEmpty());
    EXPECT_EQ(scene.GetLightCount(), 8);
    EXPECT_EQ(RUNTIME_CLASS(SceneObject)->GetVersion(), 3U);
}

TEST(SceneObject, ItsFlagsAreIndependentBits)
{
    SceneObject scene;
    scene.sceneFlags = 0;
    scene.SetLightingLocalViewer();
    EXPECT_EQ(scene.IsLightingLocalViewer(), 1);
    EXPECT_EQ(scene.sceneFlags, 1U);
    scene.SetSerializingSelection();
    EXPECT_EQ(scene.IsSerializingSelection(), 2);
    EXPECT_EQ(scene.sceneFlags, 3U);
    scene.SetRotateLightsWithScene();
    EXPECT_EQ(scene.ShouldRotateLightsWithScene(), 4);
    EXPECT_EQ(scene.sceneFlags, 7U);
    scene.ClearLightingLocalViewer();
    EXPECT_EQ(scene.IsLightingLocalViewer(), 0);
    scene.ClearSerializingSelection();
    EXPECT_EQ(scene.IsSerializingSelection(), 0);
    EXPECT_EQ(scene.sceneFlags, 4U);
    scene.ClearRotateLightsWithScene();
    EXPECT_EQ(scene.ShouldRotateLightsWithScene(), 0);
    EXPECT_EQ(scene.sceneFlags, 0U);
}

// Where a light shines from: its z axis.
void ExpectRing(const LightObject& light, double degrees)
{
    const double tilt = 30 * M_PI / 180;
    const double turn = degrees * M_PI / 180;
    const double* const matrix = light.GetCompositeMatrix();
    EXPECT_NEAR(matrix[8], std::cos(tilt) * std::sin(turn), 1e-6);
    EXPECT_NEAR(matrix[9], std::sin(tilt), 1e-6);
    EXPECT_NEAR(matrix[10], std::cos(tilt) * std::cos(turn), 1e-6);
}

TEST(SceneObject, HasEightDirectionalLightsOfWhichTheSecondAndTheLastAreInUse)
{
    const SceneObject scene;
    for (int i = 0; i < 8; ++i)
    {
        const LightObject* const light = scene.GetLightByIndex(i);
        ASSERT_NE(light, nullptr);
        EXPECT_NE(light->IsDirectional(), 0);
        EXPECT_EQ(light->lightNumber, 0x4000U + static_cast<unsigned>(i));
        EXPECT_EQ(light->GetParent(), &scene);
        EXPECT_EQ(light->IsInUse() != 0, i == 1 || i == 7);
        EXPECT_NE(light->IsActive(), 0);
        ExpectRing(*light, 45 * i);
    }
    EXPECT_EQ(scene.GetLightByIndex(8), nullptr);
    EXPECT_EQ(scene.GetLightByIndex(-1), nullptr);
    EXPECT_EQ(scene.GetLightByPosition(scene.GetLights()->GetTailPosition()),
              scene.GetLightByIndex(7));
    EXPECT_EQ(scene.GetChildCount(), 0);  // lights are no children
}

TEST(SceneObject, AMaximumOf3MakesLightsAt0And45And90Degrees)
{
    SceneObject scene;
    scene.SetMaximumLightCount(3);
    EXPECT_EQ(scene.GetLightCount(), 8);  // for the next time
    scene.CreateLights();
    ASSERT_EQ(scene.GetLightCount(), 3);
    for (int i = 0; i < 3; ++i)
    {
        ExpectRing(*scene.GetLightByIndex(i), 45 * i);
        EXPECT_EQ(scene.GetLightByIndex(i)->IsInUse() != 0, i > 0);
    }
}

TEST(SceneObject, ANegativeMaximumMakesNoLights)
{
    SceneObject scene;
    scene.SetMaximumLightCount(-5);
    scene.CreateLights();
    EXPECT_EQ(scene.GetLightCount(), 0);
    EXPECT_EQ(scene.CanAddLight(), 0);
    EXPECT_EQ(scene.AddLight(), nullptr);
    EXPECT_EQ(scene.DestroyLights(), 0);
}

TEST(SceneObject, DestroyingLightsEmptiesThePool)
{
    SceneObject scene;
    EXPECT_EQ(scene.DestroyLights(), 1);
    EXPECT_EQ(scene.GetLightCount(), 0);
    EXPECT_EQ(scene.DestroyLights(), 0);
}

TEST(SceneObject, LightsAreHandedOutInOrderWithDefaultsUntilAllAreInUse)
{
    SceneObject scene;
    LightObject& first = *scene.GetLightByIndex(0);
    first.SetSpotCutoffAngle(10);
    first.ClearActive();
    EXPECT_NE(scene.CanAddLight(), 0);
    EXPECT_EQ(scene.AddLight(), &first);
    EXPECT_NE(first.IsInUse(), 0);
    EXPECT_NE(first.IsActive(), 0);
    EXPECT_EQ(first.spotCutoffAngle, 180.0);
    // The step before can be taken back.
    EXPECT_NE(first.CanUndo(), 0);
    for (const int index : {2, 3, 4, 5, 6})
    {
        EXPECT_EQ(scene.AddLight(), scene.GetLightByIndex(index));
    }
    EXPECT_EQ(scene.CanAddLight(), 0);
    EXPECT_EQ(scene.AddLight(), nullptr);
    EXPECT_EQ(first.RestoreFromUndo(), 1);
    EXPECT_EQ(first.IsInUse(), 0);
    EXPECT_EQ(first.spotCutoffAngle, 10.0);
    EXPECT_EQ(scene.AddLight(), &first);
}

TEST(SceneObject, OnlyLightsOfThePoolAreTakenBack)
{
    SceneObject scene;
    SceneObject other;
    LightObject& light = *scene.GetLightByIndex(1);
    light.SetSpotCutoffAngle(10);
    EXPECT_EQ(scene.RemoveLight(&light), 1);
    EXPECT_EQ(light.IsInUse(), 0);
    EXPECT_EQ(light.spotCutoffAngle, 180.0);
    EXPECT_EQ(scene.GetLightCount(), 8);
    EXPECT_EQ(light.RestoreFromUndo(), 1);
    EXPECT_NE(light.IsInUse(), 0);
    EXPECT_EQ(light.spotCutoffAngle, 10.0);
    EXPECT_EQ(scene.RemoveLight(other.GetLightByIndex(1)), 0);
    EXPECT_NE(other.GetLightByIndex(1)->IsInUse(), 0);
    EXPECT_EQ(scene.RemoveLight(nullptr), 0);
}

// A scene with every setting changed, and of its lights the fourth.
void Change(SceneObject& scene)
{
    scene.SetBackgroundColor(ColorVector(0.1f, 0.2f, 0.3f, 0.4f));
    scene.SetGlobalAmbientColor(ColorVector(0.5f, 0.6f, 0.7f, 0.8f));
    scene.SetLightingLocalViewer();
    scene.ClearRotateLightsWithScene();
    scene.SetTranslation(DVector(1.0, 2.0, 3.0));
    scene.GetLightByIndex(3)->SetInUse();
    scene.GetLightByIndex(3)->SetTranslation(DVector(4.0, 5.0, 6.0));
}

void ExpectChanged(const SceneObject& scene)
{
    EXPECT_RGBA(scene.GetBackgroundColor(), 0.1f, 0.2f, 0.3f, 0.4f);
    EXPECT_RGBA(scene.GetGlobalAmbientColor(), 0.5f, 0.6f, 0.7f, 0.8f);
    EXPECT_NE(scene.IsLightingLocalViewer(), 0);
    EXPECT_EQ(scene.ShouldRotateLightsWithScene(), 0);
}

void ExpectLightsChanged(const SceneObject& scene)
{
    EXPECT_NE(scene.GetLightByIndex(3)->IsInUse(), 0);
    EXPECT_XYZ(scene.GetLightByIndex(3)->GetTranslation(), 4.0, 5.0, 6.0);
    EXPECT_EQ(scene.GetLightByIndex(3)->GetParent(), &scene);
}

TEST(SceneObject, CopiesHaveAPoolOfTheirOwnAndNoSavedViews)
{
    SceneObject scene;
    Change(scene);
    scene.SaveCurrentView("a", scene.GetTransform(), std::make_unique<ProjectionData>().get());
    const SceneObject copy(scene);
    const SceneObject withLights(scene, 1);
    SceneObject assigned;
    assigned = scene;
    const SceneObject& same = assigned;
    assigned = same;
    const SceneObject* const all[] = {&copy, &withLights, &assigned};
    for (const SceneObject* const taken : all)
    {
        ExpectChanged(*taken);
        EXPECT_EQ(taken->GetLightCount(), 8);
        ExpectLightsChanged(*taken);
        EXPECT_XYZ(taken->GetTranslation(), 1.0, 2.0, 3.0);
        EXPECT_TRUE(taken->GetSavedViews()->IsEmpty());
        EXPECT_NE(taken->GetLightByIndex(3), scene.GetLightByIndex(3));
    }
    EXPECT_EQ(scene.GetLightByIndex(3)->GetParent(), &scene);
}

TEST(SceneObject, ACopyWithoutLightsHasNone)
{
    SceneObject scene;
    Change(scene);
    scene.SetMaximumLightCount(5);
    SceneObject copy(scene, 0);
    ExpectChanged(copy);
    EXPECT_EQ(copy.GetLightCount(), 0);
    EXPECT_EQ(copy.GetMaximumLightCount(), 5);
    SceneObject other;
    other.CopyNoLights(scene);
    ExpectChanged(other);
    EXPECT_EQ(other.GetLightByIndex(3)->IsInUse(), 0);
    EXPECT_XYZ(other.GetTranslation(), 0.0, 0.0, 0.0);
}

TEST(SceneObject, ACopysPoolHasTheSourcesNumber)
{
    SceneObject scene;
    scene.SetMaximumLightCount(4);
    scene.CreateLights();
    const SceneObject copy(scene);
    EXPECT_EQ(copy.GetLightCount(), 4);
    EXPECT_NE(copy.GetLightByIndex(3)->IsInUse(), 0);
}

TEST(SceneObject, CopyAllStopsAtTheEndOfTheShorterPool)
{
    SceneObject small;
    small.SetMaximumLightCount(4);
    small.CreateLights();
    Change(small);
    SceneObject large;
    large.GetLightByIndex(5)->SetSpotCutoffAngle(5);
    large.CopyAll(small);
    EXPECT_EQ(large.GetLightCount(), 8);
    ExpectLightsChanged(large);
    EXPECT_EQ(large.GetLightByIndex(5)->spotCutoffAngle, 5.0);
    SceneObject back;
    back.SetMaximumLightCount(4);
    back.CreateLights();
    back.CopyAll(large);
    EXPECT_EQ(back.GetLightCount(), 4);
    ExpectLightsChanged(back);
}

TEST(SceneObject, CopyAllMakesTheSceneTheParentOfItsLightsAgain)
{
    SceneObject scene;
    scene.GetLightByIndex(2)->Orphan();
    scene.CopyAll(SceneObject());
    EXPECT_EQ(scene.GetLightByIndex(2)->GetParent(), &scene);
    EXPECT_EQ(scene.GetLightByIndex(3)->GetParent(), &scene);
}

TEST(SceneObject, CopiedLightsKeepTheirPlaceOnTheExternalUndoStack)
{
    DrawingObjectStack steps;
    SceneObject scene;
    scene.AttachExternalUndoStack(&steps);
    for (int i = 0; i < 8; ++i)
    {
        EXPECT_EQ(scene.GetLightByIndex(i)->GetExternalUndoStack(), &steps);
    }
    LightObject* const added = scene.AddLight();
    ASSERT_EQ(steps.Peek(), added);
    {
        SceneObject other;
        DrawingObjectStack otherSteps;
        other.AttachExternalUndoStack(&otherSteps);
        Change(other);
        scene.CopyAll(other);
        EXPECT_EQ(added->GetExternalUndoStack(), &steps);
        EXPECT_EQ(steps.GetCount(), 1);
        scene.CopyAll(SceneObject());
        EXPECT_EQ(steps.GetCount(), 1);
        other.AttachExternalUndoStack(nullptr);
    }
    // Detached, a light takes its steps along.
    scene.AttachExternalUndoStack(nullptr);
    EXPECT_TRUE(steps.IsEmpty());
}

// Undo --------------------------------------------------------------------------------------------

TEST(SceneObject, UndoCoversSettingsAndLights)
{
    DrawingObjectStack steps;
    DrawingObject parent;
    SceneObject scene;
    scene.AttachExternalUndoStack(&steps);
    EXPECT_EQ(scene.RestoreFromUndo(), 0);
    Change(scene);
    EXPECT_EQ(scene.SaveToUndo(), 1);
    EXPECT_EQ(steps.Peek(), &scene);

    scene.SetParent(&parent);
    scene.SetSelected();
    scene.SetBackgroundColor(ColorVector(0.0f, 0.0f, 0.0f, 1.0f));
    scene.SetGlobalAmbientColor(ColorVector(0.0f, 0.0f, 0.0f, 1.0f));
    scene.sceneFlags = 4;
    scene.SetTranslation(DVector(0.0, 0.0, 0.0));
    scene.SaveCurrentView("kept", scene.GetTransform(), std::make_unique<ProjectionData>().get());
    scene.AddChild(new DrawingObject);
    LightObject& light = *scene.GetLightByIndex(3);
    EXPECT_EQ(scene.RemoveLight(&light), 1);
    EXPECT_EQ(steps.Peek(), &light);
    light.SetTranslation(DVector(0.0, 0.0, 0.0));

    EXPECT_EQ(scene.RestoreFromUndo(), 1);
    ExpectChanged(scene);
    ExpectLightsChanged(scene);
    EXPECT_XYZ(scene.GetTranslation(), 1.0, 2.0, 3.0);
    EXPECT_EQ(scene.GetParent(), &parent);
    EXPECT_NE(scene.IsSelected(), 0);
    EXPECT_EQ(scene.GetChildCount(), 1);
    EXPECT_EQ(scene.GetSavedViews()->GetCount(), 1);
    // The light's own step still stands on the shared stack.
    EXPECT_EQ(steps.Peek(), &light);
    EXPECT_EQ(light.GetExternalUndoStack(), &steps);
    EXPECT_EQ(scene.RestoreFromUndo(), 0);
    scene.AttachExternalUndoStack(nullptr);
    scene.Orphan();
}

TEST(SceneObject, EveryLightOfThePoolComesBack)
{
    SceneObject scene;
    scene.SaveToUndo();
    for (int i = 0; i < 8; ++i)
    {
        scene.GetLightByIndex(i)->SetSpotCutoffAngle(i + 1);
    }
    EXPECT_EQ(scene.RestoreFromUndo(), 1);
    for (int i = 0; i < 8; ++i)
    {
        EXPECT_EQ(scene.GetLightByIndex(i)->spotCutoffAngle, 180.0);
        EXPECT_EQ(scene.GetLightByIndex(i)->GetParent(), &scene);
    }
}

TEST(SceneObject, ADeletedLightLeavesTheSharedStack)
{
    DrawingObjectStack steps;
    SceneObject scene;
    scene.AttachExternalUndoStack(&steps);
    scene.AddLight();
    EXPECT_EQ(steps.GetCount(), 1);
    scene.DestroyLights();
    EXPECT_TRUE(steps.IsEmpty());
    scene.AttachExternalUndoStack(nullptr);
}

// Saved views -------------------------------------------------------------------------------------

TEST(SceneObject, SavingAViewUnderANameItHasOverwritesIt)
{
    SceneObject scene;
    CoordinateTransform place;
    ProjectionData lens;
    place.SetTranslation(DVector(1.0, 0.0, 0.0));
    lens.SetFieldOfViewAngle(50);
    scene.SaveCurrentView("a", &place, &lens);
    scene.SaveCurrentView("b", &place, &lens);
    place.SetTranslation(DVector(2.0, 0.0, 0.0));
    lens.SetFieldOfViewAngle(60);
    scene.SaveCurrentView("a", &place, &lens);
    ASSERT_EQ(scene.GetSavedViews()->GetCount(), 2);
    const NamedView& first = *scene.GetSavedViews()->GetHead();
    EXPECT_EQ(first.GetName(), "a");
    EXPECT_EQ(first.GetTransform().GetTranslation().x, 2.0);
    EXPECT_EQ(first.GetProjection().GetFieldOfViewAngle(), 60.0);
    EXPECT_EQ(scene.GetSavedViews()->GetTail()->GetName(), "b");
    EXPECT_NE(scene.IsSavedViewNameUsed("a"), 0);
    EXPECT_EQ(scene.IsSavedViewNameUsed("A"), 0);
}

TEST(SceneObject, RestoringAViewKeepsTheWindow)
{
    SceneObject scene;
    CoordinateTransform place;
    ProjectionData lens;
    place.SetTranslation(DVector(1.0, 0.0, 0.0));
    lens.SetFieldOfViewAngle(50);
    lens.SetScaledSize(10, 10);
    scene.SaveCurrentView("a", &place, &lens);

    CoordinateTransform restored;
    ProjectionData window;
    window.SetScaledSize(640, 480);
    EXPECT_EQ(scene.RestoreSavedView("A", &restored, &window), 0);
    EXPECT_EQ(scene.RestoreSavedView(1, &restored, &window), 0);
    EXPECT_EQ(scene.RestoreSavedView(-1, &restored, &window), 0);
    EXPECT_EQ(restored.GetTranslation().x, 0.0);
    EXPECT_EQ(window.GetFieldOfViewAngle(), 40.0);
    EXPECT_EQ(scene.RestoreSavedView("a", &restored, &window), 1);
    EXPECT_EQ(restored.GetTranslation().x, 1.0);
    EXPECT_EQ(window.GetFieldOfViewAngle(), 50.0);
    EXPECT_EQ(window.GetWidth(), 640.0);
    restored.Reset();
    EXPECT_EQ(scene.RestoreSavedView(0, &restored, &window), 1);
    EXPECT_EQ(restored.GetTranslation().x, 1.0);
}

TEST(SceneObject, SavedViewsAreDeletedByNameByIndexAndAllAtOnce)
{
    SceneObject scene;
    const CoordinateTransform place;
    const ProjectionData lens;
    for (const char* const name : {"a", "b", "c", "d"})
    {
        scene.SaveCurrentView(name, &place, &lens);
    }
    EXPECT_EQ(scene.DeleteSavedView("x"), 0);
    EXPECT_EQ(scene.DeleteSavedView(4), 0);
    EXPECT_EQ(scene.DeleteSavedView("b"), 1);
    EXPECT_EQ(scene.DeleteSavedView(1), 1);
    EXPECT_EQ(scene.GetSavedViews()->GetCount(), 2);
    EXPECT_EQ(scene.GetSavedViews()->GetHead()->GetName(), "a");
    EXPECT_EQ(scene.GetSavedViews()->GetTail()->GetName(), "d");
    EXPECT_EQ(scene.DestroySavedViews(), 1);
    EXPECT_TRUE(scene.GetSavedViews()->IsEmpty());
    EXPECT_EQ(scene.DestroySavedViews(), 0);
}

}  // namespace
