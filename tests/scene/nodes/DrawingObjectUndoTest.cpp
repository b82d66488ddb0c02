// SPDX-License-Identifier: MIT
#include "scene/DrawingObject.h"
#include "tests/support/Instructions.h"
#include "tests/support/TestNodes.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace
{

TEST(DrawingObjectUndo, RestoresTheLastSavedStep)
{
    DrawingObject node;
    EXPECT_EQ(node.CanUndo(), 0);
    EXPECT_EQ(node.RestoreFromUndo(), 0);
    node.handleSize = 1;
    EXPECT_EQ(node.SaveToUndo(), 1);
    node.handleSize = 2;
    EXPECT_EQ(node.SaveToUndo(), 1);
    node.handleSize = 3;
    EXPECT_NE(node.CanUndo(), 0);
    EXPECT_EQ(node.RestoreFromUndo(), 1);
    EXPECT_EQ(node.handleSize, 2.0);
    EXPECT_EQ(node.RestoreFromUndo(), 1);
    EXPECT_EQ(node.handleSize, 1.0);
    EXPECT_EQ(node.CanUndo(), 0);
    EXPECT_EQ(node.RestoreFromUndo(), 0);
    EXPECT_EQ(node.handleSize, 1.0);
}

TEST(DrawingObjectUndo, RestoringKeepsViewStateAndParent)
{
    DrawingObject root;
    auto* const node = new DrawingObject;
    node->SetSelected();
    node->SetShowScalingBox();
    node->SetEditable();
    node->flags |= 0x80;
    node->SaveToUndo();  // without a parent
    root.AddChild(node);
    node->ClearSelected();
    node->ClearShowScalingBox();
    node->SetShowExtentsBox();
    node->ClearEditable();
    node->flags &= ~DWORD{0x80};
    node->flags |= 0x40;
    EXPECT_EQ(node->RestoreFromUndo(), 1);
    // The low eight bits are the current ones, the others the saved ones.
    EXPECT_EQ(node->flags, 0x0200U | 0x0004U | 0x0040U);
    EXPECT_EQ(node->GetParent(), &root);
    EXPECT_EQ(root.RemoveChild(node), 1);
    delete node;
}

TEST(DrawingObjectUndo, PopUndoDropsTheStepWithoutApplyingIt)
{
    DrawingObjectStack stack;
    DrawingObject node;
    DrawingObject other;
    node.AttachExternalUndoStack(&stack);
    EXPECT_EQ(node.PopUndo(), 0);
    node.handleSize = 1;
    node.SaveToUndo();
    node.SaveToUndo();
    node.handleSize = 2;
    EXPECT_EQ(node.PopUndo(), 1);
    EXPECT_EQ(node.handleSize, 2.0);
    EXPECT_EQ(stack.GetCount(), 1);
    stack.Push(&other);
    EXPECT_EQ(node.PopUndo(), 1);
    EXPECT_EQ(stack.GetCount(), 2);  // the top was another node
    EXPECT_EQ(node.CanUndo(), 0);
}

TEST(DrawingObjectUndo, TheExternalStackRecordsWhichNodeSaved)
{
    DrawingObjectStack stack;
    DrawingObject a;
    DrawingObject b;
    EXPECT_EQ(a.SaveToExternalUndo(), 0);
    a.AttachExternalUndoStack(&stack);
    b.AttachExternalUndoStack(&stack);
    EXPECT_EQ(a.GetExternalUndoStack(), &stack);
    a.SaveToUndo();
    b.SaveToUndo();
    EXPECT_EQ(a.SaveToExternalUndo(), 1);
    EXPECT_EQ(stack.Pop(), &a);
    EXPECT_EQ(stack.Pop(), &b);
    EXPECT_EQ(stack.Pop(), &a);
    EXPECT_EQ(stack.Pop(), nullptr);
}

TEST(DrawingObjectUndo, AttachingAStackReachesTheWholeSubtree)
{
    DrawingObjectStack stack;
    DrawingObject root;
    auto* const child = new DrawingObject;
    auto* const grandchild = new DrawingObject;
    root.AddChild(child);
    child->AddChild(grandchild);
    root.AttachExternalUndoStack(&stack);
    EXPECT_EQ(child->GetExternalUndoStack(), &stack);
    EXPECT_EQ(grandchild->GetExternalUndoStack(), &stack);
    root.AttachExternalUndoStack(nullptr);
    EXPECT_EQ(grandchild->GetExternalUndoStack(), nullptr);
}

TEST(DrawingObjectUndo, ClearUndoDropsTheStepsAndLeavesTheExternalStack)
{
    DrawingObjectStack stack;
    DrawingObject a;
    DrawingObject b;
    a.AttachExternalUndoStack(&stack);
    b.AttachExternalUndoStack(&stack);
    EXPECT_EQ(a.ClearUndo(), 0);
    a.SaveToUndo();
    b.SaveToUndo();
    a.SaveToUndo();
    EXPECT_EQ(a.ClearUndo(), 1);
    EXPECT_EQ(a.CanUndo(), 0);
    EXPECT_EQ(stack.GetCount(), 1);
    EXPECT_EQ(stack.Peek(), &b);
    EXPECT_NE(b.CanUndo(), 0);
}

TEST(DrawingObjectUndo, ClearUndoAllClearsTheWholeSubtree)
{
    DrawingObjectStack stack;
    DrawingObject outsider;
    DrawingObject root;
    auto* const child = new DrawingObject;
    root.AddChild(child);
    root.AttachExternalUndoStack(&stack);
    outsider.AttachExternalUndoStack(&stack);
    EXPECT_EQ(root.ClearUndoAll(), 0);
    child->SaveToUndo();
    root.SaveToUndo();
    outsider.SaveToUndo();
    EXPECT_EQ(root.ClearUndoAll(), 1);
    EXPECT_EQ(child->CanUndo(), 0);
    EXPECT_EQ(root.CanUndo(), 0);
    EXPECT_EQ(stack.GetCount(), 1);
    EXPECT_EQ(child->GetExternalUndoStack(), &stack);
}

TEST(DrawingObjectUndo, ADeletedNodeLeavesTheExternalStack)
{
    DrawingObjectStack stack;
    DrawingObject root;
    root.AttachExternalUndoStack(&stack);
    root.SaveToUndo();
    {
        DrawingObject node;
        node.AttachExternalUndoStack(&stack);
        node.SaveToUndo();
        stack.Push(&node);  // also by the host's own hand
    }
    EXPECT_EQ(stack.GetCount(), 1);
    EXPECT_EQ(stack.Peek(), &root);
}

TEST(DrawingObjectUndo, ADeletedSubtreeLeavesTheExternalStack)
{
    DrawingObjectStack stack;
    DrawingObject root;
    auto* const child = new DrawingObject;
    auto* const grandchild = new DrawingObject;
    root.AddChild(child);
    child->AddChild(grandchild);
    root.AttachExternalUndoStack(&stack);
    grandchild->SaveToUndo();
    root.SaveToUndo();
    child->SaveToUndo();
    root.DestroyChildren();
    EXPECT_EQ(stack.GetCount(), 1);
    EXPECT_EQ(stack.Peek(), &root);
}

TEST(DrawingObjectUndo, DeletingACopyKeepsTheOriginalsSteps)
{
    DrawingObjectStack stack;
    DrawingObject node;
    node.AttachExternalUndoStack(&stack);
    node.SaveToUndo();
    {
        const DrawingObject copy(node);
    }
    EXPECT_EQ(stack.GetCount(), 1);
    EXPECT_EQ(stack.Peek(), &node);
    EXPECT_EQ(node.RestoreFromUndo(), 1);  // and the copy that is used up
    EXPECT_EQ(stack.GetCount(), 1);
    EXPECT_EQ(node.GetExternalUndoStack(), &stack);
}

TEST(DrawingObjectUndo, AStepSavedBeforeAttachingKeepsTheStack)
{
    DrawingObjectStack stack;
    DrawingObject node;
    node.SaveToUndo();
    node.AttachExternalUndoStack(&stack);
    EXPECT_EQ(node.RestoreFromUndo(), 1);
    EXPECT_EQ(node.GetExternalUndoStack(), &stack);
    EXPECT_TRUE(stack.IsEmpty());
}

TEST(DrawingObjectUndo, ADetachedStackCanBeDeletedBeforeTheNodes)
{
    DrawingObject root;
    auto* const child = new DrawingObject;
    root.AddChild(child);
    {
        DrawingObjectStack stack;
        root.AttachExternalUndoStack(&stack);
        child->SaveToUndo();
        root.AttachExternalUndoStack(nullptr);
        EXPECT_TRUE(stack.IsEmpty());  // no node is left there that could die unnoticed
    }
    // A restored step does not bring the stack back.
    EXPECT_EQ(child->RestoreFromUndo(), 1);
    EXPECT_EQ(child->GetExternalUndoStack(), nullptr);
    EXPECT_EQ(child->SaveToUndo(), 1);
}

TEST(DrawingObjectUndo, AssigningANodeOfAnotherStackLeavesTheOldOne)
{
    DrawingObjectStack old;
    DrawingObjectStack current;
    DrawingObject other;
    other.AttachExternalUndoStack(&current);
    {
        DrawingObject node;
        node.AttachExternalUndoStack(&old);
        node.SaveToUndo();
        node = other;
        EXPECT_EQ(node.GetExternalUndoStack(), &current);
    }
    EXPECT_TRUE(old.IsEmpty());
}

// A class that saves copies of its own type.
class SavingNode : public DrawingObject
{
public:
    int SaveToUndo() override { return SaveCopy(new SavingNode(*this)); }
    int RestoreFromUndo() override { return RestoreSavedCopy<SavingNode>(); }

    int value = 0;
};

TEST(DrawingObjectUndo, AClassSavesAndRestoresItsOwnFields)
{
    SavingNode node;
    node.value = 1;
    node.handleSize = 1;
    node.SaveToUndo();
    node.value = 2;
    node.handleSize = 2;
    EXPECT_EQ(static_cast<DrawingObject&>(node).RestoreFromUndo(), 1);
    EXPECT_EQ(node.value, 1);
    EXPECT_EQ(node.handleSize, 1.0);
}

TEST(DrawingObjectUndo, DeletingATreeWalksTheExternalStackOnce)
{
    const auto instructionsToEnd = [](int nodes) {
        DrawingObjectStack stack;
        DrawingObject root;
        for (int i = 0; i < nodes; ++i)
        {
            root.AddChild(new DrawingObject);
        }
        root.AttachExternalUndoStack(&stack);
        for (int i = 0; i < 600; ++i)
        {
            root.GetHeadChild()->SaveToExternalUndo();
            root.MoveChildToBottom(root.GetHeadChild());
        }
        const std::optional<long> count = CountInstructions([&root] { root.DestroyChildren(); });
        root.DestroyChildren();
        EXPECT_TRUE(stack.IsEmpty());
        return count;
    };
    const std::optional<long> ofTwo = instructionsToEnd(2);
    const std::optional<long> ofTwelve = instructionsToEnd(12);
    if (!ofTwo || !ofTwelve)
    {
        GTEST_SKIP() << "the operating system lets no process trace its children";
    }
    // Were the stack searched for each node, twelve nodes would cost about six times as much.
    EXPECT_LT(*ofTwelve, 2 * *ofTwo);
}

}  // namespace
