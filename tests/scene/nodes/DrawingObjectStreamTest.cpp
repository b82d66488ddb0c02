// SPDX-License-Identifier: MIT
#include "scene/DrawingObject.h"

#include "platform/Sync.h"
#include "tests/scene/nodes/CallLines.h"
#include "tests/support/TerminationEvent.h"
#include "tests/support/TestNodes.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <thread>

namespace
{

using Log = LoggingNode::Log;

const std::string identity = "glMultMatrixd 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1";
const Lines nodeStart = {"glGetIntegerv GL_MAX_MODELVIEW_STACK_DEPTH", "glPushMatrix", "glGetError",
                         identity};
const Lines nodeEnd = {"glPopMatrix", "glFlush"};

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

TEST_F(TexturedNodes, WithoutRenderOrShowTexturesNoTextureIsApplied)
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
