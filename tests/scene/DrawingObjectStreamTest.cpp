// SPDX-License-Identifier: MIT
#include "scene/DrawingObject.h"

#include "platform/Sync.h"
#include "tests/support/TerminationEvent.h"
#include "tests/support/TestNodes.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <thread>

namespace
{

using Lines = std::vector<std::string>;
using Log = LoggingNode::Log;

const std::string identity = "glMultMatrixd 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1";
const Lines nodeStart = {"glGetIntegerv GL_MAX_MODELVIEW_STACK_DEPTH", "glPushMatrix", "glGetError",
                         identity};
const Lines nodeEnd = {"glPopMatrix", "glFlush"};

Lines operator+(Lines lines, const Lines& more)
{
    lines.insert(lines.end(), more.begin(), more.end());
    return lines;
}

class DrawingNodes : public testing::Test
{
protected:
    Log log;
    LoggingNode root{"root", log};
    LoggingNode* a = new LoggingNode("a", log);
    LoggingNode* a1 = new LoggingNode("a1", log);
    LoggingNode* b = new LoggingNode("b", log);
    DrawingParameters parameters;

    DrawingNodes()
    {
        root.AddChild(a);
        root.AddChild(b);
        a->AddChild(a1);
    }
};

TEST_F(DrawingNodes, FreshParametersDrawNothingButPushAndPopTheMatrix)
{
    GlRecording recording;
    EXPECT_EQ(root.Draw(&parameters), 1);
    EXPECT_EQ(recording.Lines(), nodeStart + nodeEnd);
    EXPECT_EQ(log, Log{});
    EXPECT_TRUE(recording.IsBalanced());
}

TEST_F(DrawingNodes, TheCompositeMatrixIsMultiplied)
{
    root.SetTranslation(DVector(2.0, 3.0, 4.0));
    GlRecording recording;
    root.Draw(&parameters);
    EXPECT_EQ(recording.Only({"glMultMatrixd"}),
              (Lines{"glMultMatrixd 1 0 0 0 0 1 0 0 0 0 1 0 2 3 4 1"}));
}

TEST_F(DrawingNodes, ShowObjectDrawsTheNodeAndShowChildrenItsSubtree)
{
    parameters.SetShowObject();
    EXPECT_EQ(root.Draw(&parameters), 1);
    EXPECT_EQ(log, (Log{"draw root"}));
    log.clear();
    parameters.SetFlags(0);
    parameters.SetShowChildren();
    EXPECT_EQ(root.Draw(&parameters), 1);
    // The walk has set ShowObject, and it stays.
    EXPECT_EQ(log, (Log{"draw a", "draw a1", "draw b"}));
    EXPECT_NE(parameters.ShouldShowObject(), 0);
}

TEST_F(DrawingNodes, ADeletedNodeDrawsNothingReturns1AndHidesItsSubtree)
{
    parameters.SetShowObject();
    parameters.SetShowChildren();
    a->SetDeleted();
    {
        GlRecording recording;
        EXPECT_EQ(a->Draw(&parameters), 1);
        EXPECT_EQ(recording.Lines(), Lines{});
    }
    EXPECT_EQ(root.Draw(&parameters), 1);
    EXPECT_EQ(log, (Log{"draw root", "draw b"}));
}

TEST_F(DrawingNodes, ShowSelectedOnlySkipsTheSubtreeOfAnUnselectedNode)
{
    parameters.SetShowObject();
    parameters.SetShowChildren();
    parameters.SetShowSelectedOnly();
    root.flags |= 1;
    a1->SetSelected();
    b->SetSelected();
    EXPECT_EQ(root.Draw(&parameters), 1);
    EXPECT_EQ(log, (Log{"draw root", "draw b"}));
    GlRecording recording;
    EXPECT_EQ(a->Draw(&parameters), 1);
    EXPECT_EQ(recording.Lines(), nodeStart + nodeEnd);
}

TEST_F(DrawingNodes, TheTextureIsSwitchedOffBeforeTheNodeDraws)
{
    parameters.SetShowObject();
    a1->onDraw = [](DrawingParameters*) {
        glColor3f(1, 0, 0);
        return 1;
    };
    GlRecording recording;
    EXPECT_EQ(a1->Draw(&parameters), 1);
    EXPECT_EQ(recording.Lines(),
              (nodeStart + Lines{"glDisable GL_TEXTURE_2D", "glColor3f 1 0 0"} + nodeEnd));
}

TEST_F(DrawingNodes, AStackOverflowReturns0WithoutPopping)
{
    parameters.SetShowObject();
    GlRecording recording;
    recording.AddErrorAfter("glPushMatrix", GL_STACK_OVERFLOW);
    EXPECT_EQ(root.Draw(&parameters), 0);
    EXPECT_EQ(recording.Lines(),
              (Lines{"glGetIntegerv GL_MAX_MODELVIEW_STACK_DEPTH", "glPushMatrix", "glGetError",
                     "gluErrorString GL_STACK_OVERFLOW"}));
    EXPECT_EQ(log, Log{});
}

TEST_F(DrawingNodes, AnyOtherErrorDoesNotStopADraw)
{
    GlRecording recording;
    recording.AddError(GL_INVALID_ENUM);
    EXPECT_EQ(root.Draw(&parameters), 1);
    EXPECT_EQ(recording.Lines(), nodeStart + nodeEnd);
}

TEST_F(DrawingNodes, AFailingNodePopsTheMatrixAndStopsTheWalk)
{
    parameters.SetShowObject();
    parameters.SetShowChildren();
    a1->onDraw = [](DrawingParameters*) { return 0; };
    GlRecording recording;
    EXPECT_EQ(root.Draw(&parameters), 0);
    EXPECT_EQ(log, (Log{"draw root", "draw a", "draw a1"}));
    EXPECT_EQ(recording.Count("glPushMatrix"), 3);
    EXPECT_EQ(recording.Count("glPopMatrix"), 3);
    EXPECT_EQ(recording.Count("glFlush"), 0);
    EXPECT_TRUE(recording.IsBalanced());
}

TEST_F(DrawingNodes, PickingNamesChildrenByTheirIndexAtEachLevel)
{
    parameters.SetShowObject();
    parameters.SetShowChildren();
    parameters.SetSelecting();
    b->AddChild(new DrawingObject);
    auto* const b1 = new LoggingNode("b1", log);
    b->AddChild(b1);
    GlRecording recording;
    int depth = 0;
    b1->onDraw = [&](DrawingParameters*) {
        depth = recording.NameDepth();
        return 1;
    };
    EXPECT_EQ(root.Draw(&parameters), 1);
    EXPECT_EQ(recording.Only({"glPushName", "glPopName"}),
              (Lines{"glPushName 0", "glPushName 0", "glPopName", "glPopName", "glPushName 1",
                     "glPushName 0", "glPopName", "glPushName 1", "glPopName", "glPopName"}));
    EXPECT_EQ(depth, 2);
    EXPECT_TRUE(recording.IsBalanced());
}

TEST_F(DrawingNodes, AFailingChildLeavesItsNamePushed)
{
    parameters.SetShowChildren();
    parameters.SetSelecting();
    b->onDraw = [](DrawingParameters*) { return 0; };
    GlRecording recording;
    EXPECT_EQ(root.DrawChildren(&parameters), 0);
    EXPECT_EQ(recording.NameDepth(), 1);
}

TEST_F(DrawingNodes, DrawChildrenOfANodeWithoutAnyReturns1AndSetsNothing)
{
    EXPECT_EQ(b->DrawChildren(&parameters), 1);
    EXPECT_EQ(parameters.GetFlags(), 0UL);
}

TEST_F(DrawingNodes, ASignalledEventStopsEveryStepBeforeAnyCall)
{
    const TerminationEvent event(true);
    parameters.SetShowObject();
    parameters.SetShowChildren();
    parameters.SetTerminationEvent(event.Get());
    EXPECT_NE(root.ShouldTerminateDrawing(&parameters), 0);
    GlRecording recording;
    EXPECT_EQ(root.Draw(&parameters), 0);
    EXPECT_EQ(root.DrawChildren(&parameters), 0);
    EXPECT_EQ(root.DrawingObject::DrawObject(&parameters), 0);
    EXPECT_EQ(recording.Lines(), Lines{});
    parameters.SetNoTerminate();
    EXPECT_EQ(root.ShouldTerminateDrawing(&parameters), 0);
    EXPECT_EQ(root.Draw(&parameters), 1);
}

TEST_F(DrawingNodes, ANullOrUnsignalledEventDoesNotTerminate)
{
    const TerminationEvent event(false);
    EXPECT_EQ(root.ShouldTerminateDrawing(&parameters), 0);
    parameters.SetTerminationEvent(event.Get());
    EXPECT_EQ(root.ShouldTerminateDrawing(&parameters), 0);
    SetEvent(event.Get());
    EXPECT_NE(root.ShouldTerminateDrawing(&parameters), 0);
}

TEST_F(DrawingNodes, ASignalFromAnotherThreadStopsTheDrawAtTheNextNode)
{
    const TerminationEvent event(false);
    parameters.SetShowObject();
    parameters.SetShowChildren();
    parameters.SetTerminationEvent(event.Get());
    a->onDraw = [&event](DrawingParameters*) {
        std::thread([&event] { SetEvent(event.Get()); }).join();
        return 1;
    };
    GlRecording recording;
    EXPECT_EQ(root.Draw(&parameters), 0);
    EXPECT_EQ(log, (Log{"draw root", "draw a"}));
    EXPECT_TRUE(recording.IsBalanced());
}

// The box from (0, 0, 0) to (1, 2, 3), in the order of the sizing handles.
const Lines wireBox = {"glBegin GL_LINE_LOOP", "glVertex3dv 0 0 3",
                       "glVertex3dv 0 2 3",    "glVertex3dv 1 2 3",
                       "glVertex3dv 1 0 3",    "glEnd",
                       "glBegin GL_LINE_LOOP", "glVertex3dv 0 0 0",
                       "glVertex3dv 0 2 0",    "glVertex3dv 1 2 0",
                       "glVertex3dv 1 0 0",    "glEnd",
                       "glBegin GL_LINES",     "glVertex3dv 0 0 3",
                       "glVertex3dv 0 0 0",    "glVertex3dv 0 2 3",
                       "glVertex3dv 0 2 0",    "glVertex3dv 1 2 3",
                       "glVertex3dv 1 2 0",    "glVertex3dv 1 0 3",
                       "glVertex3dv 1 0 0",    "glEnd"};

const Lines extentsBox = Lines{"glColor4fv 0.25 0.5 0.75 1", "glIsEnabled GL_LIGHTING"} + wireBox;
const Lines textureOff = {"glIsEnabled GL_TEXTURE_2D", "glDisable GL_TEXTURE_2D"};

class Boxes : public testing::Test
{
protected:
    Boxes()
    {
        node.SetLocalBounds(Vector(0.0f, 0.0f, 0.0f), Vector(1.0f, 2.0f, 3.0f));
        node.extentsBoxColor.SetDiffuseColor(ColorVector(0.25f, 0.5f, 0.75f, 1.0f));
    }

    // What DrawObject of the node sends.
    Lines Drawn()
    {
        GlRecording recording;
        EXPECT_EQ(node.DrawObject(&parameters), 1);
        return recording.Lines();
    }

    DrawingObject node;
    DrawingParameters parameters;
};

TEST_F(Boxes, AnExtentsBoxIsTwoLoopsAndFourLines)
{
    GlRecording recording;
    EXPECT_EQ(node.DrawExtentsBox(&parameters), 1);
    EXPECT_EQ(recording.Lines(), extentsBox);
    recording.Clear();
    EXPECT_EQ(node.DrawScalingBox(&parameters), 1);
    EXPECT_EQ(recording.Lines(), extentsBox);
}

TEST_F(Boxes, LightingIsOffForThemWhereItWasOn)
{
    GlRecording recording;
    recording.SetEnabled(GL_LIGHTING, true);
    node.DrawExtentsBox(&parameters);
    const Lines lines = recording.Lines();
    EXPECT_EQ(lines[2], "glDisable GL_LIGHTING");
    EXPECT_EQ(lines.back(), "glEnable GL_LIGHTING");
    EXPECT_EQ(lines.size(), extentsBox.size() + 2);
}

TEST_F(Boxes, TheBaseDrawsNoneOfAPlainNode)
{
    EXPECT_EQ(Drawn(), textureOff);
    node.SetEditable();
    EXPECT_EQ(Drawn(), textureOff);
}

TEST_F(Boxes, TexturingComesBackWhereItWasOn)
{
    GlRecording recording;
    recording.SetEnabled(GL_TEXTURE_2D, true);
    EXPECT_EQ(node.DrawObject(&parameters), 1);
    EXPECT_EQ(recording.Lines(), textureOff + Lines{"glEnable GL_TEXTURE_2D"});
}

TEST_F(Boxes, ANodeThatIsNotEditableShowsItsOwnWhenBothSidesAskForIt)
{
    node.SetShowExtentsBox();
    EXPECT_EQ(Drawn(), textureOff);
    parameters.SetShowExtentsAndHandles();
    EXPECT_EQ(Drawn(), textureOff + extentsBox);
    node.ClearShowExtentsBox();
    EXPECT_EQ(Drawn(), textureOff);
    parameters.SetExtentsBox();
    node.SetShowScalingBox();
    EXPECT_EQ(Drawn(), textureOff);
}

TEST_F(Boxes, ANodeThatIsNotEditableGoesOnAfterItsOwn)
{
    node.SetShowExtentsBox();
    node.SetShowScalingBox();
    parameters.SetShowExtentsAndHandles();
    EXPECT_EQ(Drawn(), textureOff + extentsBox + extentsBox);  // the scaling box
    parameters.SetExtentsBox();
    EXPECT_EQ(Drawn(), textureOff + extentsBox + extentsBox);  // everyone's extents box
}

TEST_F(Boxes, AnEditableNodeHasTheExtentsBoxOrTheScalingBox)
{
    node.SetEditable();
    node.SetShowExtentsBox();  // does not matter to an editable node
    node.SetShowScalingBox();
    EXPECT_EQ(Drawn(), textureOff);
    parameters.SetShowExtentsAndHandles();
    EXPECT_EQ(Drawn(), textureOff + extentsBox);
    parameters.SetExtentsBox();
    EXPECT_EQ(Drawn(), textureOff + extentsBox);
    parameters.ClearShowExtentsAndHandles();
    EXPECT_EQ(Drawn(), textureOff + extentsBox);
    node.ClearShowScalingBox();
    parameters.ClearExtentsBox();
    parameters.SetShowExtentsAndHandles();
    EXPECT_EQ(Drawn(), textureOff);
}

class Handles : public Boxes
{};

TEST_F(Handles, PickingNamesFourOfThemBehindTheChildren)
{
    node.AddChild(new DrawingObject);
    node.AddChild(new DrawingObject);
    parameters.SetSelecting();
    GlRecording recording;
    EXPECT_EQ(node.DrawSizingHandles(&parameters), 1);
    EXPECT_EQ(recording.Only({"glPushName", "glPopName"}),
              (Lines{"glPushName 2", "glPopName", "glPushName 3", "glPopName", "glPushName 4",
                     "glPopName", "glPushName 5", "glPopName"}));
    EXPECT_EQ(recording.Lines()[0], "glIsEnabled GL_LIGHTING");
    // Four solid cubes.
    EXPECT_EQ(recording.Count("glBegin"), 4);
    EXPECT_EQ(recording.Vertices().size(), 4U * 24);
    EXPECT_EQ(recording.Vertices()[0].primitive, GLenum{GL_QUADS});
}

TEST_F(Handles, ShowOpenOnesAtTheBackAndClosedOnesInFront)
{
    GlRecording recording;
    recording.SetEnabled(GL_LIGHTING, true);
    EXPECT_EQ(node.DrawSizingHandles(&parameters), 1);
    const std::vector<GlVertex> vertices = recording.Vertices();
    ASSERT_EQ(vertices.size(), 4U * 16 + 4U * 24);
    for (std::size_t i = 0; i < vertices.size(); ++i)
    {
        const bool open = i < 4 * 16;
        const std::size_t handle = open ? 4 + i / 16 : (i - 4 * 16) / 24;
        const DVector center = node.GetLocalSizingHandleCenter(static_cast<int>(handle));
        // Every corner lies half an edge from the centre on each axis.
        const double half = 0.05f / 2;
        EXPECT_NEAR(std::abs(vertices[i].position[0] - center.x), half, 1e-7);
        EXPECT_NEAR(std::abs(vertices[i].position[1] - center.y), half, 1e-7);
        EXPECT_NEAR(std::abs(vertices[i].position[2] - center.z), half, 1e-7);
        EXPECT_EQ(vertices[i].primitive == GL_QUADS, !open);
    }
    EXPECT_EQ(recording.Only({"glPushName"}), Lines{});
    EXPECT_EQ(recording.Lines()[1], "glDisable GL_LIGHTING");
    EXPECT_EQ(recording.Lines().back(), "glEnable GL_LIGHTING");
}

TEST_F(Handles, AClosedOneShowsItsSidesOutwards)
{
    GlRecording recording;
    const float edge = 2.0f;
    node.DrawClosedSizingHandle(Vector(0.0f, 0.0f, 0.0f), edge);
    const std::vector<GlVertex> vertices = recording.Vertices();
    ASSERT_EQ(vertices.size(), 24U);
    for (std::size_t quad = 0; quad < 24; quad += 4)
    {
        DVector corners[4];
        DVector middle;
        for (std::size_t i = 0; i < 4; ++i)
        {
            const auto& position = vertices[quad + i].position;
            corners[i] = DVector(position[0], position[1], position[2]);
            middle += corners[i] * 0.25;
        }
        EXPECT_EQ(middle.Length(), 1.0);
        const DVector normal = (corners[1] - corners[0]) * (corners[2] - corners[1]);
        EXPECT_GT(normal.Dot(middle), 0.0);
    }
}

TEST_F(Handles, AnOpenOneIsTheWiresOfACube)
{
    GlRecording recording;
    const float edge = 2.0f;
    node.DrawOpenSizingHandle(Vector(5.0f, 0.0f, 0.0f), edge);
    EXPECT_EQ(recording.Only({"glBegin"}),
              (Lines{"glBegin GL_LINE_LOOP", "glBegin GL_LINE_LOOP", "glBegin GL_LINES"}));
    EXPECT_EQ(recording.Lines()[1], "glVertex3dv 4 -1 1");
}

TEST(DrawingObjectMaterials, APlainMaterialIsSentWholeForBothFaces)
{
    DrawingObject node;
    NamedColor material("red");
    material.SetDiffuseColor(ColorVector(1.0f, 0.0f, 0.0f, 1.0f));
    GlRecording recording;
    node.PrepareMaterialColors(material);
    EXPECT_EQ(recording.Lines(),
              (Lines{"glMaterialfv GL_FRONT_AND_BACK GL_AMBIENT 0.5 0.5 0.5 1",
                     "glMaterialfv GL_FRONT_AND_BACK GL_DIFFUSE 1 0 0 1",
                     "glMaterialfv GL_FRONT_AND_BACK GL_SPECULAR 0.5 0.5 0.5 1",
                     "glMaterialfv GL_FRONT_AND_BACK GL_EMISSION 0 0 0 1",
                     "glMaterialf GL_FRONT_AND_BACK GL_SHININESS 64", "glColor4fv 1 0 0 1"}));
}

TEST(DrawingObjectMaterials, ASelfLitMaterialSendsNoAmbientOrDiffuse)
{
    DrawingObject node;
    NamedColor material("glow");
    material.SetEmissionColor(ColorVector(0.25f, 0.0f, 0.0f, 1.0f));
    GlRecording recording;
    node.PrepareMaterialColors(material);
    EXPECT_EQ(recording.Lines(),
              (Lines{"glMaterialfv GL_FRONT_AND_BACK GL_SPECULAR 0.5 0.5 0.5 1",
                     "glMaterialfv GL_FRONT_AND_BACK GL_EMISSION 0.25 0 0 1",
                     "glMaterialf GL_FRONT_AND_BACK GL_SHININESS 64", "glColor4fv 0.25 0 0 1"}));
}

// Nodes with a texture that can be generated.
class TexturedNodes : public DrawingNodes
{
protected:
    TexturedNodes()
    {
        for (LoggingNode* const node : {&root, a, b})
        {
            TextureMap& texture = *node->GetTexture();
            texture.SetName("wood");
            texture.SetQuality(1);
            texture.textureFlags = TextureMap::Valid | TextureMap::Textured;
            texture.image = new _RGBImageRecord(2, 2, new BYTE[12]());
        }
        parameters.SetRender();
        parameters.SetShowTextures();
        parameters.SetShowObject();
    }

    // Whether another thread could have the node's texture now.
    static bool IsFree(DrawingObject& node)
    {
        bool free = false;
        std::thread([&] {
            const HANDLE mutex = node.GetTexture()->mutex;
            free = WaitForSingleObject(mutex, 0) == WAIT_OBJECT_0;
            if (free)
            {
                ReleaseMutex(mutex);
            }
        }).join();
        return free;
    }

    const Lines disabled{"glDisable GL_TEXTURE_2D"};
    const Lines generated{
        "glPixelStorei GL_UNPACK_ALIGNMENT 1",
        "glTexParameteri GL_TEXTURE_2D GL_TEXTURE_MAG_FILTER GL_LINEAR",
        "glTexParameteri GL_TEXTURE_2D GL_TEXTURE_MIN_FILTER GL_LINEAR",
        "glGetIntegerv GL_MAX_TEXTURE_SIZE",
        "glGetIntegerv GL_PACK_ALIGNMENT",
        "gluScaleImage GL_RGB 2 2 GL_UNSIGNED_BYTE data 2 2 GL_UNSIGNED_BYTE data",
        "glTexImage2D GL_TEXTURE_2D 0 3 2 2 0 GL_RGB GL_UNSIGNED_BYTE data"};
    const Lines prepared{"glEnable GL_TEXTURE_2D", "glPixelStorei GL_UNPACK_ALIGNMENT 1",
                         "glTexParameteri GL_TEXTURE_2D GL_TEXTURE_WRAP_S GL_REPEAT",
                         "glTexParameteri GL_TEXTURE_2D GL_TEXTURE_WRAP_T GL_REPEAT",
                         "glTexEnvi GL_TEXTURE_ENV GL_TEXTURE_ENV_MODE GL_MODULATE"};
    const Lines enabled{"glEnable GL_TEXTURE_2D"};
};

TEST_F(TexturedNodes, TheTextureIsGeneratedPreparedEnabledAndDisabled)
{
    bool ownedWhileDrawing = false;
    root.onDraw = [&](DrawingParameters*) {
        ownedWhileDrawing = !IsFree(root);
        return 1;
    };
    GlRecording recording;
    EXPECT_EQ(root.Draw(&parameters), 1);
    EXPECT_EQ(recording.Lines(),
              nodeStart + disabled + generated + prepared + enabled + disabled + nodeEnd);
    EXPECT_EQ(parameters.GetCurrentTexture().GetName(), "wood");
    EXPECT_TRUE(ownedWhileDrawing);
    EXPECT_TRUE(IsFree(root));
}

TEST_F(TexturedNodes, TheCurrentTextureIsNotGeneratedAgain)
{
    root.Draw(&parameters);
    GlRecording recording;
    EXPECT_EQ(a->Draw(&parameters), 1);
    EXPECT_EQ(recording.Lines(), nodeStart + disabled + prepared + enabled + disabled + nodeEnd);
}

TEST_F(TexturedNodes, ATextureOfTheCurrentNameIsTheCurrentOne)
{
    const auto generations = [this] {
        GlRecording recording;
        EXPECT_EQ(a->Draw(&parameters), 1);
        return recording.Count("glTexImage2D");
    };
    root.Draw(&parameters);
    EXPECT_EQ(generations(), 0);
    a->GetTexture()->SetQuality(0);
    a->GetTexture()->SetRepeatRate(3);
    a->GetTexture()->SetFilename("elsewhere.bmp");
    EXPECT_EQ(generations(), 0);
    a->GetTexture()->SetName("stone");
    EXPECT_EQ(generations(), 1);
    EXPECT_EQ(generations(), 0);
    a->GetTexture()->SetName("Stone");
    EXPECT_EQ(generations(), 1);
}

TEST_F(TexturedNodes, AFailingDrawGivesOwnershipBack)
{
    root.onDraw = [](DrawingParameters*) { return 0; };
    GlRecording recording;
    EXPECT_EQ(root.Draw(&parameters), 0);
    EXPECT_EQ(recording.Lines(),
              nodeStart + disabled + generated + prepared + enabled + Lines{"glPopMatrix"});
    EXPECT_TRUE(IsFree(root));
}

TEST_F(TexturedNodes, ATextureThatCannotBeGeneratedLeavesTheCurrentOne)
{
    root.Draw(&parameters);
    b->GetTexture()->FreeImage();  // nothing can be loaded
    b->GetTexture()->SetName("stone");
    GlRecording recording;
    EXPECT_EQ(b->Draw(&parameters), 1);
    // It is not Valid any more: prepared as no texture, and not enabled.
    EXPECT_EQ(recording.Lines(), nodeStart + disabled + disabled + disabled + nodeEnd);
    EXPECT_EQ(b->GetTexture()->textureFlags, TextureMap::Textured);
    EXPECT_EQ(parameters.GetCurrentTexture().GetName(), "wood");
}

TEST_F(TexturedNodes, OwnershipThatTheHostHoldsIsLeftToIt)
{
    root.GetTexture()->textureFlags = 0;
    ASSERT_NE(root.GetTexture()->GetOwnership(), nullptr);
    EXPECT_EQ(root.Draw(&parameters), 1);
    EXPECT_FALSE(IsFree(root));
    EXPECT_NE(root.GetTexture()->ReleaseOwnership(), 0);
    EXPECT_TRUE(IsFree(root));
}

TEST_F(TexturedNodes, PickingAppliesNoTextureButSwitchesItOffTwice)
{
    parameters.SetSelecting();
    GlRecording recording;
    EXPECT_EQ(root.Draw(&parameters), 1);
    EXPECT_EQ(recording.Lines(), nodeStart + disabled + disabled + nodeEnd);
}

TEST_F(TexturedNodes, WithoutRenderOrShowTexturesNoneIsApplied)
{
    parameters.ClearRender();
    {
        GlRecording recording;
        root.Draw(&parameters);
        EXPECT_EQ(recording.Lines(), nodeStart + disabled + nodeEnd);
    }
    parameters.SetRender();
    parameters.ClearShowTextures();
    GlRecording recording;
    root.Draw(&parameters);
    EXPECT_EQ(recording.Lines(), nodeStart + disabled + nodeEnd);
}

}  // namespace
