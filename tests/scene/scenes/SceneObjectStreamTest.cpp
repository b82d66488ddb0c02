// SPDX-License-Identifier: MIT
#include "scene/SceneObject.h"

#include "scene/DrawingParameters.h"
#include "scene/ViewObject.h"
#include "tests/support/GoldenFile.h"
#include "tests/support/TerminationEvent.h"
#include "tests/support/TestNodes.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

namespace
{

using Lines = std::vector<std::string>;

// The lights that a draw enabled and disabled, in order.
Lines Switched(const GlRecording& recording)
{
    Lines lines = recording.Only({"glEnable", "glDisable"});
    std::erase_if(lines, [](const std::string& line) {
        return line.find("GL_LIGHT") == std::string::npos || line.ends_with("GL_LIGHTING");
    });
    return lines;
}

class Scenes : public testing::Test
{
protected:
    Scenes() { parameters.SetFlags(0x40B9); }

    // Three lights: 1 and 2 in use.
    void MakeThreeLights()
    {
        scene.SetMaximumLightCount(3);
        scene.CreateLights();
    }

    LightObject& Light(int index) { return *scene.GetLightByIndex(index); }

    LoggingNode::Log log;  // of children of the scene
    SceneObject scene;
    DrawingParameters parameters;
};

TEST_F(Scenes, DrawingLightsSetsTheLightModelFirst)
{
    scene.DestroyLights();
    scene.SetGlobalAmbientColor(ColorVector(0.125f, 0.25f, 0.5f, 0.75f));
    GlRecording recording;
    EXPECT_EQ(scene.DrawLights(&parameters), 1);
    EXPECT_EQ(recording.Lines(), (Lines{"glEnable GL_LIGHTING",
                                        "glLightModelfv GL_LIGHT_MODEL_AMBIENT 0.125 0.25 0.5 0.75",
                                        "glLightModeli GL_LIGHT_MODEL_LOCAL_VIEWER 0"}));
    recording.Clear();
    scene.SetLightingLocalViewer();
    scene.DrawLights(&parameters);
    EXPECT_EQ(recording.Lines().back(), "glLightModeli GL_LIGHT_MODEL_LOCAL_VIEWER 1");
}

TEST_F(Scenes, OfANewSceneOnlyTheSecondAndTheEighthLightShine)
{
    GlRecording recording;
    EXPECT_EQ(scene.DrawLights(&parameters), 1);
    EXPECT_EQ(Switched(recording),
              (Lines{"glDisable GL_LIGHT0", "glEnable GL_LIGHT1", "glDisable GL_LIGHT2",
                     "glDisable GL_LIGHT3", "glDisable GL_LIGHT4", "glDisable GL_LIGHT5",
                     "glDisable GL_LIGHT6", "glEnable GL_LIGHT7"}));
    EXPECT_EQ(recording.Count("glPushName"), 0);
    EXPECT_TRUE(recording.IsBalanced());
}

TEST_F(Scenes, EachLightIsDrawnAsANode)
{
    MakeThreeLights();
    for (int i = 0; i < 3; ++i)
    {
        Light(i).ClearDirectional();
        Light(i).SetTransform(CoordinateTransform());
    }
    Light(1).SetTranslation(DVector(1.0, 2.0, 3.0));
    Light(2).SetTranslation(DVector(4.0, 5.0, 6.0));
    const GlRecording recording;
    EXPECT_EQ(scene.DrawLights(&parameters), 1);
    EXPECT_TRUE(IsGolden("scene/lights.txt", recording.Text()));
}

TEST_F(Scenes, PickingNamesPositionalLightsBehindChildrenAndHandles)
{
    MakeThreeLights();
    scene.AddChild(new DrawingObject);
    scene.AddChild(new DrawingObject);
    parameters.SetSelecting();
    parameters.SetShowLights();
    GlRecording recording;
    EXPECT_EQ(scene.DrawLights(&parameters), 1);
    EXPECT_EQ(recording.Count("glPushName"), 0);  // all are directional
    EXPECT_EQ(recording.Count("gluCylinder"), 0);
    EXPECT_EQ(Switched(recording), Lines{});

    // Names 0 and 1 are the children's, 2 to 5 those of the scene's sizing handles.
    recording.Clear();
    Light(0).ClearDirectional();
    Light(2).ClearDirectional();
    EXPECT_EQ(scene.DrawLights(&parameters), 1);
    EXPECT_EQ(recording.Only({"glPushName", "glPopName"}),
              (Lines{"glPushName 6", "glPopName", "glPushName 8", "glPopName"}));
    EXPECT_EQ(recording.Count("gluCylinder"), 3);  // the glyph of light 2, the one in use
    EXPECT_TRUE(recording.IsBalanced());
}

TEST_F(Scenes, ALightThatIsStoppedStopsTheOthers)
{
    MakeThreeLights();
    GlRecording recording;
    recording.AddErrorAfter("glPushMatrix", GL_STACK_OVERFLOW, 2);
    EXPECT_EQ(scene.DrawLights(&parameters), 0);
    EXPECT_EQ(Switched(recording), (Lines{"glDisable GL_LIGHT0"}));
    EXPECT_EQ(recording.NameDepth(), 0);
}

TEST_F(Scenes, ALightWithoutRoomOnTheMatrixStackDoesNotStopTheScene)
{
    GlRecording recording;
    recording.AddErrorAfter("glPushMatrix", GL_STACK_OVERFLOW, 2);
    EXPECT_EQ(scene.DrawObject(&parameters), 1);
}

TEST_F(Scenes, TheTerminationEventStopsLightsAndScene)
{
    const TerminationEvent event(true);
    parameters.SetTerminationEvent(event.Get());
    GlRecording recording;
    EXPECT_EQ(scene.DrawLights(&parameters), 0);
    EXPECT_EQ(scene.DrawObject(&parameters), 0);
    scene.ClearRotateLightsWithScene();
    EXPECT_EQ(scene.DrawObject(&parameters), 0);
    EXPECT_EQ(scene.Draw(&parameters), 0);
    EXPECT_EQ(recording.Lines(), Lines{});
    // Nothing to stop but the lights in use.
    EXPECT_EQ(scene.DrawLightsAtRadius(&parameters, 1), 0);
    EXPECT_TRUE(recording.IsBalanced());
}

// A light whose drawing is the moment at which someone stops it.
class SignallingLight : public LightObject
{
public:
    explicit SignallingLight(TerminationEvent& event) : event_(event) {}
    int DrawObject(DrawingParameters* parameters) override
    {
        event_.Signal();
        return LightObject::DrawObject(parameters);
    }

private:
    TerminationEvent& event_;
};

TEST_F(Scenes, AnEventSignalledWhileTheLightsAreDrawnStopsTheScene)
{
    TerminationEvent event(false);
    parameters.SetTerminationEvent(event.Get());
    MakeThreeLights();
    scene.GetLights()->InsertAfter(scene.GetLights()->GetHeadPosition(),
                                   new SignallingLight(event));
    scene.AddChild(new LoggingNode("child", log));
    GlRecording recording;
    EXPECT_EQ(scene.Draw(&parameters), 0);
    EXPECT_EQ(Switched(recording), (Lines{"glDisable GL_LIGHT0"}));
    EXPECT_TRUE(recording.IsBalanced());
    EXPECT_TRUE(log.empty());
}

TEST_F(Scenes, LightsAreDrawnWithTheSceneOnlyWhenTheyTurnWithIt)
{
    GlRecording recording;
    EXPECT_EQ(scene.DrawObject(&parameters), 1);
    EXPECT_EQ(recording.Count("glLightModelfv"), 1);
    recording.Clear();
    scene.ClearRotateLightsWithScene();
    EXPECT_EQ(scene.DrawObject(&parameters), 1);
    EXPECT_EQ(recording.Lines(), Lines{});
}

// The indices of the lights whose glyphs are drawn, by their translation along x.
Lines Places(const GlRecording& recording)
{
    Lines places;
    for (const std::string& line : recording.Only({"glMultMatrixd"}))
    {
        places.push_back(line.substr(std::string("glMultMatrixd 1 0 0 0 0 1 0 0 0 0 1 0 ").size()));
    }
    return places;
}

class LightsAround : public Scenes
{
protected:
    LightsAround()
    {
        MakeThreeLights();
        for (int i = 0; i < 3; ++i)
        {
            Light(i).SetTransform(CoordinateTransform());
            Light(i).SetTranslation(DVector(i + 10.0, 0.0, 0.0));
        }
    }
};

TEST_F(LightsAround, OnlyGlyphsOfLightsInUseAreDrawn)
{
    GlRecording recording;
    EXPECT_EQ(scene.DrawLightsAtRadius(&parameters, 2.5f), 1);
    EXPECT_EQ(Places(recording), (Lines{"11 0 0 1", "12 0 0 1"}));
    const Lines lines = recording.Lines();
    EXPECT_EQ(Lines(lines.begin(), lines.begin() + 5),
              (Lines{"glPushMatrix", "glMultMatrixd 1 0 0 0 0 1 0 0 0 0 1 0 11 0 0 1",
                     "glPushMatrix", "glTranslated 0 0 2.5", "gluQuadricOrientation GLU_OUTSIDE"}));
    EXPECT_EQ(recording.Count("gluCylinder"), 6);
    EXPECT_EQ(recording.Count("glEnable"), 0);
    EXPECT_EQ(recording.Count("glPushName"), 0);
    EXPECT_TRUE(recording.IsBalanced());
}

TEST_F(LightsAround, AStoppedDrawLeavesTheStacksAsTheyWere)
{
    const TerminationEvent event(true);
    parameters.SetTerminationEvent(event.Get());
    parameters.SetSelecting();
    parameters.SetShowLights();
    GlRecording recording;
    EXPECT_EQ(scene.DrawLightsAtRadius(&parameters, 2.5f), 0);
    EXPECT_EQ(recording.Lines(), (Lines{"glPushName 1", "glPushMatrix",
                                        "glMultMatrixd 1 0 0 0 0 1 0 0 0 0 1 0 11 0 0 1",
                                        "glPopMatrix", "glPopName"}));
}

TEST_F(LightsAround, ShowSelectedOnlyDrawsSelectedOnes)
{
    parameters.SetShowSelectedOnly();
    Light(0).SetSelected();
    Light(2).SetSelected();
    GlRecording recording;
    EXPECT_EQ(scene.DrawLightsAtRadius(&parameters, 1), 1);
    EXPECT_EQ(Places(recording), (Lines{"12 0 0 1"}));
}

TEST_F(LightsAround, PickingNamesLightsByTheirIndexWhenLightsAreShown)
{
    parameters.SetSelecting();
    GlRecording recording;
    EXPECT_EQ(scene.DrawLightsAtRadius(&parameters, 1), 1);
    EXPECT_EQ(recording.Count("glPushName"), 0);
    EXPECT_EQ(Places(recording).size(), 2U);
    recording.Clear();
    parameters.SetShowLights();
    EXPECT_EQ(scene.DrawLightsAtRadius(&parameters, 1), 1);
    EXPECT_EQ(recording.Only({"glPushName"}), (Lines{"glPushName 1", "glPushName 2"}));
    EXPECT_TRUE(recording.IsBalanced());
}

TEST_F(Scenes, TheBackgroundIsItsColor)
{
    scene.SetBackgroundColor(ColorVector(0.125f, 0.25f, 0.5f, 0.75f));
    GlRecording recording;
    EXPECT_EQ(scene.DrawBackground(&parameters), 1);
    EXPECT_EQ(recording.Lines(), (Lines{"glClearColor 0.125 0.25 0.5 0.75",
                                        "glClear GL_COLOR_BUFFER_BIT", "glFlush"}));
}

TEST_F(Scenes, AForcedSolidBackgroundIsTheParameters)
{
    parameters.SetForceSolidBackground();
    parameters.SetSolidBackgroundColor(ColorVector(0.5f, 0.25f, 0.125f, 1.0f));
    GlRecording recording;
    EXPECT_EQ(scene.DrawBackground(&parameters), 1);
    EXPECT_EQ(recording.Lines(),
              (Lines{"glClearColor 0.5 0.25 0.125 1", "glClear GL_COLOR_BUFFER_BIT", "glFlush"}));
}

TEST_F(Scenes, APickingPassDoesNotClearTheBackground)
{
    parameters.SetSelecting();
    GlRecording recording;
    EXPECT_EQ(scene.DrawBackground(&parameters), 1);
    EXPECT_EQ(recording.Lines(), Lines{});
}

TEST_F(Scenes, WithoutADeviceContextATextureIsNotDrawn)
{
    scene.GetTexture()->textureFlags |= TextureMap::Valid;
    GlRecording recording;
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, 1, 1, 1, 24, 0, 0, 0, 0, 0, 0};
    const BYTE bits[4] = {};
    EXPECT_EQ(scene.DrawBackgroundTexture(&parameters, &info, bits), 1);
    EXPECT_EQ(recording.Lines(), Lines{});
}

TEST_F(Scenes, AMissingBackgroundFileDoesNotStopTheDrawing)
{
    scene.GetTexture()->textureFlags |= TextureMap::Valid;
    scene.GetTexture()->filename = "no such file.bmp";
    GlRecording recording;
    EXPECT_EQ(scene.DrawFileBackgroundTexture(&parameters), 0);
    EXPECT_EQ(scene.DrawBackground(&parameters), 0);
    EXPECT_EQ(recording.Lines(), Lines{});
    // Without ShowBackgroundTexture it is the colour's turn.
    parameters.ClearShowBackgroundTexture();
    EXPECT_EQ(scene.DrawBackground(&parameters), 1);
    EXPECT_EQ(recording.Count("glClear"), 1);
}

TEST_F(Scenes, TheTexturesOwnershipIsGivenBackOnEveryPath)
{
    scene.GetTexture()->textureFlags |= TextureMap::Valid;
    scene.GetTexture()->filename = "no such file.bmp";
    GlRecording recording;
    scene.DrawBackground(&parameters);
    EXPECT_EQ(scene.GetTexture()->ReleaseOwnership(), 0);
    scene.GetTexture()->textureFlags = 0;
    scene.DrawBackground(&parameters);
    EXPECT_EQ(scene.GetTexture()->ReleaseOwnership(), 0);
}

TEST_F(Scenes, ATextureThatCannotBeOwnedIsLeftOutAndTheSceneIsDrawn)
{
    TextureMap& texture = *scene.GetTexture();
    texture.textureFlags |= TextureMap::Valid;
    CloseHandle(texture.mutex);
    texture.mutex = nullptr;
    GlRecording recording;
    EXPECT_EQ(scene.DrawFileBackgroundTexture(&parameters), 0);
    EXPECT_EQ(scene.DrawBackground(&parameters), 0);
    EXPECT_EQ(recording.Lines(), Lines{});
    ViewObject view;
    view.AttachScene(&scene);
    EXPECT_EQ(view.Draw(&parameters), 1);
}

TEST_F(Scenes, ThereIsNoLightAtANullPosition)
{
    EXPECT_EQ(scene.GetLightByPosition(nullptr), nullptr);
}

TEST_F(Scenes, ChildrenAreNamedByTheirIndexBesideTheLights)
{
    MakeThreeLights();
    Light(1).ClearDirectional();
    scene.AddChild(new LoggingNode("a", log));
    scene.AddChild(new LoggingNode("b", log));
    parameters.SetSelecting();
    GlRecording recording;
    EXPECT_EQ(scene.Draw(&parameters), 1);
    EXPECT_EQ(recording.Only({"glPushName"}),
              (Lines{"glPushName 7", "glPushName 0", "glPushName 1"}));
    EXPECT_EQ(log, (LoggingNode::Log{"draw a", "draw b"}));
}

}  // namespace
