// SPDX-License-Identifier: MIT
#include "scene/ViewObject.h"

#include "scene/SceneObject.h"
#include "tests/support/ExpectVector.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

// Reaches what views only hand on.
struct OpenView : ViewObject
{
    using ViewObject::projection;
    using ViewObject::undoStack;
};

TEST(ViewObject, ANewViewStandsFiveUnitsBackAndRenders)
{
    ViewObject view;
    EXPECT_XYZ(view.GetTranslation(), 0.0, 0.0, -5.0);
    EXPECT_EQ(view.GetCompositeMatrix()[14], -5.0);
    EXPECT_EQ(view.GetDrawingMode(), 1U);
    EXPECT_EQ(view.ShouldShowLightsMode(), 0);
    EXPECT_EQ(view.ShouldShowTextures(), 0);
    EXPECT_EQ(view.GetScene(), nullptr);
    EXPECT_EQ(view.GetZoomDenominator().cx, 1);
    EXPECT_EQ(view.GetZoomDenominator().cy, 1);
    EXPECT_EQ(view.GetZoomNumerator().cx, 1);
    EXPECT_EQ(view.GetZoomNumerator().cy, 1);
    EXPECT_EQ(view.GetProjection().GetFieldOfViewAngle(), 40.0);
    EXPECT_EQ(RUNTIME_CLASS(ViewObject)->GetVersion(), 5U);
}

TEST(ViewObject, DrawingModesAreBitsWithIndices)
{
    ViewObject view;
    EXPECT_EQ(view.GetDrawingModeIndex(), 0);
    view.SetDrawingModeOutline();
    EXPECT_EQ(view.GetDrawingMode(), 2U);
    EXPECT_EQ(view.GetDrawingModeIndex(), 1);
    view.SetDrawingModeExtentsBox();
    EXPECT_EQ(view.GetDrawingMode(), 4U);
    EXPECT_EQ(view.GetDrawingModeIndex(), 2);
    view.SetDrawingModeRender();
    EXPECT_EQ(view.GetDrawingMode(), 1U);
    view.SetDrawingMode(6);
    EXPECT_EQ(view.GetDrawingModeIndex(), 1);  // the lower bit decides
    view.SetDrawingMode(7);
    EXPECT_EQ(view.GetDrawingModeIndex(), 0);
    view.SetDrawingMode(0);
    EXPECT_EQ(view.GetDrawingModeIndex(), 2);
    for (const int index : {0, 1, 2})
    {
        view.SetDrawingModeIndex(index);
        EXPECT_EQ(view.GetDrawingMode(), 1U << index);
    }
    view.SetDrawingModeIndex(3);
    EXPECT_EQ(view.GetDrawingMode(), 4U);
    view.SetDrawingModeIndex(-1);
    EXPECT_EQ(view.GetDrawingMode(), 4U);
}

TEST(ViewObject, ShowModesAreSetAndCleared)
{
    ViewObject view;
    view.SetShowLightsMode();
    EXPECT_NE(view.ShouldShowLightsMode(), 0);
    EXPECT_EQ(view.ShouldShowTextures(), 0);
    view.SetShowTextures();
    EXPECT_NE(view.ShouldShowTextures(), 0);
    view.ClearShowLightsMode();
    EXPECT_EQ(view.ShouldShowLightsMode(), 0);
    EXPECT_NE(view.ShouldShowTextures(), 0);
    view.ClearShowTextures();
    EXPECT_EQ(view.ShouldShowTextures(), 0);
}

TEST(ViewObject, LensCallsReachTheProjection)
{
    OpenView view;
    const ProjectionData& lens = view.projection;
    view.SetScale(2.0, 3.0);
    EXPECT_EQ(view.GetScaleX(), 2.0);
    EXPECT_EQ(view.GetScaleY(), 3.0);
    view.SetUnscaledSize(100, 50);
    EXPECT_EQ(lens.GetWidth(), 200.0);
    EXPECT_EQ(lens.GetHeight(), 150.0);
    view.SetScaledSize(40, 60);
    EXPECT_EQ(lens.GetUnscaledWidth(), 20.0);
    EXPECT_EQ(lens.GetUnscaledHeight(), 20.0);
    view.SetViewOffset(4, 6);
    EXPECT_EQ(lens.GetViewXOffset(), 4.0);
    EXPECT_EQ(lens.GetViewYOffset(), 6.0);
    view.SetViewSize(10, 12);
    EXPECT_EQ(lens.GetViewWidth(), 10.0);
    EXPECT_EQ(lens.GetViewHeight(), 12.0);
    view.SetProjectionOrthographic();
    EXPECT_EQ(view.IsProjectionOrthographic(), 2);
    view.SetProjectionOrthographicWidth(8);
    EXPECT_EQ(view.GetProjectionOrthographicWidth(), 8.0);
    EXPECT_DOUBLE_EQ(view.GetProjectionOrthographicHeight(), 12.0);  // the aspect is 2 : 3
    view.SetProjectionOrthographicHeight(6);
    EXPECT_DOUBLE_EQ(view.GetProjectionOrthographicWidth(), 4.0);
    view.ClearProjectionOrthographic();
    EXPECT_EQ(view.IsProjectionOrthographic(), 0);
    view.SetProjectionFieldOfViewAngle(60);
    EXPECT_EQ(lens.GetFieldOfViewAngle(), 60.0);
    view.SetProjectionLensLength(50);
    EXPECT_NEAR(lens.GetFieldOfViewAngle(), 38.58, 0.005);
    view.ClearFitToWindow();
    EXPECT_EQ(view.ShouldFitToWindow(), 0);
    view.SetFitToWindow();
    EXPECT_EQ(view.ShouldFitToWindow(), 1);
    view.SaveReferenceAspect();
    EXPECT_EQ(lens.GetReferenceAspect(), 40.0 / 60);
    ProjectionData other;
    other.SetFieldOfViewAngle(70);
    view.SetProjection(other);
    EXPECT_EQ(view.GetProjection().GetFieldOfViewAngle(), 70.0);
}

TEST(ViewObject, SetScaleAndResizeOfTheNodeCanStillBeCalled)
{
    OpenView view;
    view.Resize(640, 480);
    EXPECT_EQ(view.projection.GetWidth(), 640.0);
    view.SetScale(DVector(2.0, 2.0, 2.0));
    EXPECT_XYZ(view.GetScale(), 2.0, 2.0, 2.0);
    EXPECT_EQ(view.projection.GetScaleX(), 1.0);
    EXPECT_EQ(view.Resize(DVector(1.0, 1.0, 0.0), 2), 1);
    EXPECT_EQ(view.projection.GetWidth(), 640.0);
}

TEST(ViewObject, ANarrowerWindowWidensTheAngle)
{
    OpenView view;
    view.Resize(640, 480);
    view.SaveReferenceAspect();
    view.Resize(320, 480);
    const double doubled = 2 * std::atan(2 * std::tan(20 * M_PI / 180)) * 180 / M_PI;
    EXPECT_NEAR(view.projection.GetFieldOfViewAngle(), doubled, 1e-6);
}

TEST(ViewObject, KeepsZoomRatiosAndTheSelectionPoint)
{
    ViewObject view;
    view.SetZoomNumerator(CSize(3, 4));
    view.SetZoomDenominator(CSize(5, 6));
    EXPECT_EQ(view.GetZoomNumerator().cy, 4);
    EXPECT_EQ(view.GetZoomDenominator().cx, 5);
    view.SetSelectionPoint({7, 8});
    EXPECT_EQ(view.selectionPoint.x, 7);
    EXPECT_EQ(view.selectionPoint.y, 8);
}

void ChangeAll(ViewObject& view, SceneObject* scene)
{
    view.SetDrawingMode(2);
    view.SetShowTextures();
    view.SetShowLightsMode();
    view.SetProjectionFieldOfViewAngle(60);
    view.SetProjectionOrthographic();
    view.SetZoomNumerator(CSize(3, 4));
    view.SetZoomDenominator(CSize(5, 6));
    view.AttachScene(scene);
    view.SetTranslation(DVector(1.0, 2.0, 3.0));
}

TEST(ViewObject, CopiesTakeModesLensSceneAndZoom)
{
    SceneObject scene;
    ViewObject view;
    ChangeAll(view, &scene);
    ViewObject assigned;
    assigned = view;
    const ViewObject& same = assigned;
    assigned = same;
    const ViewObject copy(view);
    const ViewObject* const all[] = {&assigned, &copy};
    for (const ViewObject* const taken : all)
    {
        EXPECT_EQ(taken->GetDrawingMode(), 2U);
        EXPECT_NE(taken->ShouldShowTextures(), 0);
        EXPECT_NE(taken->ShouldShowLightsMode(), 0);
        EXPECT_EQ(taken->GetProjection().GetFieldOfViewAngle(), 60.0);
        EXPECT_EQ(taken->GetScene(), &scene);
        EXPECT_EQ(taken->GetZoomNumerator().cx, 3);
        EXPECT_EQ(taken->GetZoomDenominator().cx, 5);
        EXPECT_XYZ(taken->GetTranslation(), 1.0, 2.0, 3.0);
    }
}

TEST(ViewObject, AssignmentLeavesTheSelectionPointAndWhatWasReadBack)
{
    ViewObject view;
    view.SetSelectionPoint({7, 8});
    view.GetViewport()[2] = 640;
    view.GetProjectionMatrix()[5] = 2;
    ViewObject assigned;
    assigned.SetSelectionPoint({1, 2});
    assigned = view;
    EXPECT_EQ(assigned.selectionPoint.x, 1);
    EXPECT_EQ(assigned.GetViewport()[2], 0);
    EXPECT_EQ(assigned.GetProjectionMatrix()[5], 0.0);
}

TEST(ViewObject, UndoOfAStepThatIsNullIsRefused)
{
    OpenView view;
    view.undoStack.Push(nullptr);
    EXPECT_EQ(view.RestoreFromUndo(), 0);
    EXPECT_EQ(view.undoStack.GetCount(), 1);
    view.undoStack.Pop();
}

TEST(ViewObject, UndoRestoresOnlyTheModesAndTheLensLength)
{
    SceneObject scene;
    SceneObject other;
    DrawingObject parent;
    OpenView view;
    view.AttachScene(&scene);
    view.SetProjectionFieldOfViewAngle(60);
    view.SetSelected();
    EXPECT_EQ(view.RestoreFromUndo(), 0);
    EXPECT_EQ(view.SaveToUndo(), 1);

    view.ClearSelected();
    view.SetParent(&parent);
    ChangeAll(view, &other);
    view.SetProjectionFieldOfViewAngle(90);
    view.SetScaledSize(200, 100);
    view.SetViewSize(200, 100);
    EXPECT_EQ(view.RestoreFromUndo(), 1);
    EXPECT_EQ(view.GetDrawingMode(), 1U);
    EXPECT_EQ(view.ShouldShowTextures(), 0);
    EXPECT_EQ(view.ShouldShowLightsMode(), 0);
    EXPECT_NEAR(view.projection.GetFieldOfViewAngle(), 60.0, 1e-6);
    EXPECT_XYZ(view.GetTranslation(), 0.0, 0.0, -5.0);
    EXPECT_EQ(view.GetParent(), &parent);
    EXPECT_NE(view.IsSelected(), 0);  // unlike other nodes, a view takes its selection back
    EXPECT_EQ(view.IsProjectionOrthographic(), 2);
    EXPECT_EQ(view.projection.GetWidth(), 200.0);
    EXPECT_EQ(view.GetScene(), &other);
    EXPECT_EQ(view.GetZoomNumerator().cx, 3);
    EXPECT_EQ(view.RestoreFromUndo(), 0);
}

TEST(ViewObject, SavesItsStepOnTheExternalStackToo)
{
    DrawingObjectStack steps;
    ViewObject view;
    view.AttachExternalUndoStack(&steps);
    view.SaveToUndo();
    EXPECT_EQ(steps.Peek(), &view);
    view.AttachExternalUndoStack(nullptr);
    EXPECT_TRUE(steps.IsEmpty());
}

TEST(ViewObject, WithoutASceneThereAreNoSavedViews)
{
    ViewObject view;
    EXPECT_EQ(view.GetSavedViews(), nullptr);
    EXPECT_EQ(view.SaveCurrentView("a"), 0);
    EXPECT_EQ(view.RestoreSavedView("a"), 0);
    EXPECT_EQ(view.RestoreSavedView(0), 0);
    EXPECT_EQ(view.DeleteSavedView("a"), 0);
    EXPECT_EQ(view.DeleteSavedView(0), 0);
    EXPECT_EQ(view.IsSavedViewNameUsed("a"), 0);
}

TEST(ViewObject, SavedViewsAreTheScenes)
{
    SceneObject scene;
    OpenView view;
    EXPECT_EQ(view.AttachScene(&scene), 1);
    EXPECT_EQ(view.GetSavedViews(), scene.GetSavedViews());
    view.SetProjectionFieldOfViewAngle(60);
    view.SetScaledSize(100, 100);
    view.SaveCurrentView("near");
    view.SetTranslation(DVector(0.0, 0.0, -50.0));
    view.SetProjectionFieldOfViewAngle(20);
    view.SetScaledSize(640, 480);
    view.SaveCurrentView("far");
    EXPECT_NE(view.IsSavedViewNameUsed("far"), 0);
    EXPECT_EQ(view.IsSavedViewNameUsed("Far"), 0);

    EXPECT_EQ(view.RestoreSavedView("near"), 1);
    EXPECT_XYZ(view.GetTranslation(), 0.0, 0.0, -5.0);
    EXPECT_EQ(view.projection.GetFieldOfViewAngle(), 60.0);
    EXPECT_EQ(view.projection.GetWidth(), 640.0);  // the window stays
    EXPECT_EQ(view.RestoreSavedView(1), 1);
    EXPECT_EQ(view.projection.GetFieldOfViewAngle(), 20.0);
    EXPECT_EQ(view.RestoreSavedView(2), 0);
    EXPECT_EQ(view.RestoreSavedView("none"), 0);
    EXPECT_EQ(view.DeleteSavedView("near"), 1);
    EXPECT_EQ(view.DeleteSavedView("near"), 0);
    EXPECT_EQ(view.DeleteSavedView(0), 1);
    EXPECT_EQ(view.DeleteSavedView(0), 0);
    EXPECT_EQ(scene.GetSavedViews()->GetCount(), 0);
}

}  // namespace
