// SPDX-License-Identifier: MIT
#include "scene/DrawingObject.h"

#include "platform/Sync.h"
#include "tests/support/GoldenFile.h"
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

    /// Whether drawing a node sends what that file in node/ says.
    testing::AssertionResult IsDrawnAs(const std::string& name, DrawingObject& node, int result = 1)
    {
        const GlRecording recording;
        EXPECT_EQ(node.Draw(&parameters), result);
        EXPECT_TRUE(recording.IsBalanced());
        return IsGolden("node/" + name + ".txt", recording.Text());
    }
};

TEST_F(DrawingNodes, FreshParametersDrawNothingButPushAndPopTheMatrix)
{
    EXPECT_TRUE(IsDrawnAs("empty", root));
    EXPECT_EQ(log, Log{});
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
    EXPECT_TRUE(IsDrawnAs("empty", *a));
}

TEST_F(DrawingNodes, TheTextureIsSwitchedOffBeforeTheNodeDraws)
{
    parameters.SetShowObject();
    a1->onDraw = [](DrawingParameters*) {
        glColor3f(1, 0, 0);
        return 1;
    };
    EXPECT_TRUE(IsDrawnAs("untextured", *a1));
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
    EXPECT_TRUE(IsGolden("node/empty.txt", recording.Text()));
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
};

TEST_F(TexturedNodes, TheTextureIsGeneratedPreparedEnabledAndDisabled)
{
    bool ownedWhileDrawing = false;
    root.onDraw = [&](DrawingParameters*) {
        ownedWhileDrawing = !IsFree(root);
        return 1;
    };
    EXPECT_TRUE(IsDrawnAs("textured", root));
    EXPECT_EQ(parameters.GetCurrentTexture().GetName(), "wood");
    EXPECT_TRUE(ownedWhileDrawing);
    EXPECT_TRUE(IsFree(root));
}

TEST_F(TexturedNodes, TheCurrentTextureIsNotGeneratedAgain)
{
    root.Draw(&parameters);
    EXPECT_TRUE(IsDrawnAs("textured-again", *a));
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
    EXPECT_TRUE(IsDrawnAs("textured-but-failing", root, 0));
    EXPECT_TRUE(IsFree(root));
}

TEST_F(TexturedNodes, ATextureThatCannotBeGeneratedLeavesTheCurrentOne)
{
    root.Draw(&parameters);
    b->GetTexture()->FreeImage();  // nothing can be loaded
    b->GetTexture()->SetName("stone");
    // It is not Valid any more: prepared as no texture, and not enabled.
    EXPECT_TRUE(IsDrawnAs("texture-without-image", *b));
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
    EXPECT_TRUE(IsDrawnAs("textured-but-picked", root));
}

TEST_F(TexturedNodes, WithoutRenderOrShowTexturesNoTextureIsApplied)
{
    parameters.ClearRender();
    EXPECT_TRUE(IsDrawnAs("textures-not-shown", root));
    parameters.SetRender();
    parameters.ClearShowTextures();
    EXPECT_TRUE(IsDrawnAs("textures-not-shown", root));
}

}  // namespace
