// SPDX-License-Identifier: MIT
#include "scene/ViewObject.h"

#include "scene/DrawingParameters.h"
#include "scene/SceneObject.h"
#include "tests/support/GoldenFile.h"
#include "tests/support/TerminationEvent.h"
#include "tests/support/TestNodes.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

namespace
{

using Lines = std::vector<std::string>;

// A view of 100 x 50 pixels, orthographic, 4 x 2 units, of a scene without lights.
class Views : public testing::Test
{
protected:
    Views()
    {
        scene.DestroyLights();
        view.AttachScene(&scene);
        view.SetScaledSize(100, 50);
        view.SetViewSize(100, 50);
        view.SetProjectionOrthographic();
        view.SetProjectionOrthographicWidth(4);
    }

    Lines Drawn()
    {
        GlRecording recording;
        EXPECT_EQ(view.Draw(&parameters), 1);
        EXPECT_TRUE(recording.IsBalanced());
        return recording.Lines();
    }

    /// Whether drawing the view sends what that file in view/ says.
    testing::AssertionResult IsDrawnAs(const std::string& name)
    {
        const GlRecording recording;
        EXPECT_EQ(view.Draw(&parameters), 1);
        EXPECT_TRUE(recording.IsBalanced());
        return IsGolden("view/" + name + ".txt", recording.Text());
    }

    LoggingNode::Log log;  // of children of the scene
    SceneObject scene;
    ViewObject view;
    DrawingParameters parameters;
};

TEST_F(Views, ADrawSetsUpProjectionClearsAndDrawsTheScene)
{
    EXPECT_TRUE(IsDrawnAs("rendered"));
}

TEST_F(Views, ParametersWithoutFlagsGetTheViewsModesAndTheDefaults)
{
    Drawn();
    EXPECT_EQ(parameters.GetFlags(), 0x40B9UL);
    EXPECT_NE(parameters.GetProjection(), nullptr);
    parameters.SetFlags(0);
    view.SetDrawingModeOutline();
    view.SetShowLightsMode();
    view.SetShowTextures();
    Drawn();
    EXPECT_EQ(parameters.GetFlags(), 0x40BAUL | 0x100UL | 0x400UL);
}

TEST_F(Views, FlagsThatAreSetStayAsTheyAre)
{
    view.SetShowLightsMode();
    parameters.SetShowObject();
    Drawn();
    EXPECT_EQ(parameters.GetFlags(), 0x8UL);
}

TEST_F(Views, WithoutRenderTheShadingIsFlatAndNothingIsHidden)
{
    for (const int index : {1, 2})
    {
        view.SetDrawingModeIndex(index);
        parameters.SetFlags(0);
        EXPECT_TRUE(IsDrawnAs("not-rendered"));
    }
}

TEST_F(Views, AModeReachesTheNodes)
{
    scene.AddChild(new DrawingObject);
    scene.GetHeadChild()->SetEditable();
    for (const int index : {0, 1, 2})
    {
        view.SetDrawingModeIndex(index);
        parameters.SetFlags(0);
        const Lines drawn = Drawn();
        EXPECT_EQ(std::count(drawn.begin(), drawn.end(), "glBegin GL_LINE_LOOP"),
                  index == 2 ? 2 : 0);
    }
}

TEST_F(Views, APerspectiveLensHasAFrustum)
{
    view.ClearProjectionOrthographic();
    EXPECT_TRUE(IsDrawnAs("perspective"));
}

TEST_F(Views, TheParametersProjectionIsUsedBeforeTheViews)
{
    ProjectionData other;
    other.SetScaledSize(20, 20);
    other.SetOrthographic();
    other.SetOrthographicWidth(8);
    other.SetViewSize(10, 5);
    other.SetViewOffset(10, 10);
    parameters.SetProjection(&other);
    GlRecording recording;
    view.Draw(&parameters);
    // The right half, from the middle a quarter down.
    EXPECT_EQ(recording.Only({"glOrtho", "glViewport"}),
              (Lines{"glOrtho 0 4 -2 0 0.1 10000", "glViewport 0 0 10 5"}));
    EXPECT_EQ(parameters.GetProjection(), &other);
}

TEST_F(Views, WithoutApplyProjectionItStaysAsItWas)
{
    parameters.SetFlags(0x4039);
    EXPECT_TRUE(IsDrawnAs("without-projection"));
}

TEST_F(Views, ViewportAndProjectionMatrixAreReadBack)
{
    GlRecording recording;
    std::vector<double> matrix;
    for (int i = 0; i < 16; ++i)
    {
        matrix.push_back(i + 0.5);
    }
    recording.SetDouble(GL_PROJECTION_MATRIX, matrix);
    view.Draw(&parameters);
    EXPECT_EQ(view.GetViewport()[2], 100);
    EXPECT_EQ(view.GetViewport()[3], 50);
    EXPECT_EQ(view.GetProjectionMatrix()[0], 0.5);
    EXPECT_EQ(view.GetProjectionMatrix()[15], 15.5);

    // A picking pass leaves them.
    recording.SetDouble(GL_PROJECTION_MATRIX, std::vector<double>(16, 1));
    parameters.SetFlags(0x40F9);
    view.SetViewSize(10, 10);
    view.Draw(&parameters);
    EXPECT_EQ(view.GetViewport()[2], 100);
    EXPECT_EQ(view.GetProjectionMatrix()[15], 15.5);
}

TEST_F(Views, PickingUsesAWindowOf5By5AroundTheFlippedPoint)
{
    view.SetSelectionPoint({30, 20});
    parameters.SetFlags(0x40F9);
    EXPECT_TRUE(IsDrawnAs("picked"));
    EXPECT_NE(parameters.ShouldShowLights(), 0);  // lights can be picked
}

TEST_F(Views, AccurateSelectionUsesOnePixel)
{
    view.SetSelectionPoint({99, 0});
    parameters.SetFlags(0x60F9);
    GlRecording recording;
    view.Draw(&parameters);
    EXPECT_EQ(recording.Only({"gluPickMatrix"}), (Lines{"gluPickMatrix 99 50 1 1 0 0 100 50"}));
}

TEST_F(Views, ClearAndReturnDrawsTheBackgroundAlone)
{
    parameters.SetFlags(0x48B9);
    EXPECT_TRUE(IsDrawnAs("background"));
}

TEST_F(Views, LightsFixedToTheCameraAreSetBeforeTheClear)
{
    scene.ClearRotateLightsWithScene();
    EXPECT_TRUE(IsDrawnAs("lights-at-camera"));
    parameters.SetFlags(0x48B9);
    EXPECT_TRUE(IsDrawnAs("background-with-lights-at-camera"));
}

TEST_F(Views, LightsThatTurnWithTheSceneAreSetInsideItsTransform)
{
    scene.CreateLights();
    scene.SetTranslation(DVector(0.0, 0.0, 1.0));
    for (const bool rotate : {true, false})
    {
        rotate ? scene.SetRotateLightsWithScene() : scene.ClearRotateLightsWithScene();
        GlRecording recording;
        view.Draw(&parameters);
        const Lines lines = recording.Without({});
        const auto light = std::find(lines.begin(), lines.end(), "glEnable GL_LIGHT1");
        ASSERT_NE(light, lines.end());
        const auto matrices = [&](auto end) {
            return std::count(lines.begin(), end,
                              "glMultMatrixd 1 0 0 0 0 1 0 0 0 0 1 0 0 0 -5 1") +
                   std::count(lines.begin(), end, "glMultMatrixd 1 0 0 0 0 1 0 0 0 0 1 0 0 0 1 1");
        };
        EXPECT_EQ(matrices(light), rotate ? 2 : 0);
        EXPECT_EQ(matrices(lines.end()), 2);
    }
}

TEST_F(Views, ShowSelectedOnlyStartsAtTheViewThoughNothingThereIsSelected)
{
    auto* const selected = new LoggingNode("selected", log);
    selected->SetSelected();
    scene.AddChild(selected);
    scene.AddChild(new LoggingNode("other", log));
    parameters.SetFlags(0x42B9);
    GlRecording recording;
    EXPECT_EQ(view.Draw(&parameters), 1);
    EXPECT_EQ(log, (LoggingNode::Log{"draw selected"}));
    EXPECT_EQ(view.IsSelected(), 0);
    EXPECT_EQ(scene.IsSelected(), 0);
    EXPECT_NE(selected->IsSelected(), 0);
    EXPECT_EQ(scene.GetTailChild()->IsSelected(), 0);
    // Selected before, it is selected afterwards, and so is its scene.
    view.flags |= 1;
    scene.flags |= 1;
    view.Draw(&parameters);
    EXPECT_NE(view.IsSelected(), 0);
    EXPECT_NE(scene.IsSelected(), 0);
}

TEST_F(Views, WithoutASceneNothingIsDrawn)
{
    view.AttachScene(nullptr);
    EXPECT_EQ(Drawn(), Lines{});
    EXPECT_EQ(parameters.GetFlags(), 0x40B9UL);
    EXPECT_EQ(view.DrawObject(&parameters), 1);
    EXPECT_EQ(view.DrawChildren(&parameters), 0);
    const TerminationEvent event(true);
    parameters.SetTerminationEvent(event.Get());
    EXPECT_EQ(view.Draw(&parameters), 0);
}

TEST_F(Views, TheTerminationEventStopsThemBeforeTheClear)
{
    const TerminationEvent event(true);
    parameters.SetTerminationEvent(event.Get());
    for (const bool rotate : {true, false})
    {
        rotate ? scene.SetRotateLightsWithScene() : scene.ClearRotateLightsWithScene();
        GlRecording recording;
        EXPECT_EQ(view.Draw(&parameters), 0);
        EXPECT_EQ(recording.Count("glClear"), 0);
        EXPECT_EQ(recording.Count("glEnable"), 0);
    }
    parameters.SetNoTerminate();
    EXPECT_EQ(Drawn().back(), "glFlush");
}

TEST_F(Views, AChildThatFailsFailsTheDraw)
{
    auto* const failing = new LoggingNode("failing", log);
    failing->onDraw = [](DrawingParameters*) { return 0; };
    scene.AddChild(failing);
    GlRecording recording;
    EXPECT_EQ(view.Draw(&parameters), 0);
    EXPECT_EQ(recording.MatrixDepth(), 1);
}

}  // namespace
