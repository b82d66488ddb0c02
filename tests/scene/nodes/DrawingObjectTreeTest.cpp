// SPDX-License-Identifier: MIT
#include "scene/DrawingObject.h"
#include "tests/support/Instructions.h"
#include "tests/support/TestNodes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace
{

using Nodes = std::vector<const DrawingObject*>;
using Log = LoggingNode::Log;

Nodes Children(const DrawingObject& node)
{
    Nodes nodes;
    for (POSITION position = node.GetChildren()->GetHeadPosition(); position != nullptr;)
    {
        nodes.push_back(node.GetChildren()->GetNext(position));
    }
    return nodes;
}

class Trees : public testing::Test
{
protected:
    Trees()
    {
        root.AddChild(a);
        root.AddChild(b);
        root.AddChild(c);
    }

    DrawingObject root;
    DrawingObject* a = new DrawingObject;
    DrawingObject* b = new DrawingObject;
    DrawingObject* c = new DrawingObject;
};

TEST_F(Trees, AddChildAppendsAndSetsTheParent)
{
    auto* const d = new DrawingObject;
    EXPECT_EQ(root.AddChild(d), 1);
    EXPECT_EQ(Children(root), (Nodes{a, b, c, d}));
    EXPECT_EQ(d->GetParent(), &root);
}

TEST_F(Trees, AddChildRefusesAChildItselfAncestorsAndNull)
{
    EXPECT_EQ(root.AddChild(a), 0);
    EXPECT_EQ(root.AddChildAfter(a, nullptr), nullptr);
    EXPECT_EQ(root.AddChild(&root), 0);
    EXPECT_EQ(root.AddChild(nullptr), 0);
    EXPECT_EQ(a->AddChild(&root), 0);
    auto* const grandchild = new DrawingObject;
    a->AddChild(grandchild);
    EXPECT_EQ(grandchild->AddChild(&root), 0);
    EXPECT_EQ(grandchild->AddChild(a), 0);
    EXPECT_EQ(Children(root), (Nodes{a, b, c}));
    EXPECT_EQ(root.GetParent(), nullptr);
}

TEST_F(Trees, AddChildRefusesTheNodeThatTheParentPointerNames)
{
    // As a light does, which is kept in a list of its own.
    DrawingObject light;
    light.SetParent(&root);
    EXPECT_EQ(light.AddChild(&root), 0);
}

TEST_F(Trees, AddChildTakesANodeFromItsParentWithoutMovingIt)
{
    DrawingObject other;
    root.SetTranslation(DVector(1.0, 2.0, 3.0));
    EXPECT_EQ(other.AddChild(b), 1);
    EXPECT_EQ(Children(root), (Nodes{a, c}));
    EXPECT_EQ(Children(other), (Nodes{b}));
    EXPECT_EQ(b->GetParent(), &other);
    // It has saved a step and now carries the old parent's transform.
    EXPECT_NE(b->CanUndo(), 0);
    EXPECT_EQ(b->GetCompositeMatrix()[12], 1.0);
    EXPECT_EQ(b->GetCompositeMatrix()[13], 2.0);
    EXPECT_EQ(b->GetCompositeMatrix()[14], 3.0);
}

TEST_F(Trees, AddChildAfterInsertsBehindThePosition)
{
    auto* const d = new DrawingObject;
    const POSITION added = root.AddChildAfter(d, root.FindChildPosition(a));
    EXPECT_EQ(added, root.FindChildPosition(d));
    EXPECT_EQ(Children(root), (Nodes{a, d, b, c}));
    EXPECT_EQ(d->GetParent(), &root);
}

TEST_F(Trees, ACopyOfAChildIsNoChildAndCanBeAdded)
{
    auto* const copy = new DrawingObject(*a);
    EXPECT_EQ(copy->GetParent(), &root);
    EXPECT_EQ(root.RemoveChild(copy), 0);
    EXPECT_EQ(root.AddChild(copy), 1);
    EXPECT_EQ(Children(root), (Nodes{a, b, c, copy}));
    EXPECT_EQ(copy->CanUndo(), 0);
}

TEST_F(Trees, ACopyCanBeAddedWhenTheParentItNamesIsGone)
{
    auto* const copy = new DrawingObject(*a);
    root.RemoveChild(a);
    {
        DrawingObject shortLived;
        shortLived.AddChild(a);
        *copy = *a;
    }
    EXPECT_EQ(root.AddChild(copy), 1);
    EXPECT_EQ(copy->GetParent(), &root);
}

TEST_F(Trees, AnOrphanStaysInItsListAndIsNeverOwnedTwice)
{
    a->Orphan();
    EXPECT_EQ(a->GetParent(), nullptr);
    EXPECT_EQ(root.GetChildCount(), 3);
    EXPECT_EQ(root.AddChild(a), 0);
    EXPECT_EQ(root.RemoveChild(a), 0);
    EXPECT_EQ(a->AddChild(&root), 0);
    DrawingObject other;
    EXPECT_EQ(other.AddChild(a), 1);
    EXPECT_EQ(Children(root), (Nodes{b, c}));
    EXPECT_EQ(Children(other), (Nodes{a}));
}

TEST_F(Trees, AChildThatIsDeletedLeavesItsParent)
{
    delete b;
    EXPECT_EQ(Children(root), (Nodes{a, c}));
}

TEST_F(Trees, AdoptChildrenTakesAllInOrder)
{
    DrawingObject other;
    EXPECT_EQ(root.AdoptChildren(&other), 0);
    EXPECT_EQ(root.AdoptChildren(&root), 0);
    auto* const d = new DrawingObject;
    other.AddChild(d);
    EXPECT_EQ(other.AdoptChildren(&root), 1);
    EXPECT_EQ(Children(other), (Nodes{d, a, b, c}));
    EXPECT_EQ(root.HasChildren(), 0);
    EXPECT_NE(a->CanUndo(), 0);
}

TEST_F(Trees, AdoptChildrenAfterKeepsTheirOrderBehindThePosition)
{
    DrawingObject other;
    auto* const d = new DrawingObject;
    auto* const e = new DrawingObject;
    other.AddChild(d);
    other.AddChild(e);
    EXPECT_EQ(other.AdoptChildrenAfter(&root, other.FindChildPosition(d)), 1);
    EXPECT_EQ(Children(other), (Nodes{d, a, b, c, e}));
}

TEST_F(Trees, AdoptingFromAnAncestorLeavesTheOwnBranch)
{
    auto* const grandchild = new DrawingObject;
    b->AddChild(grandchild);
    EXPECT_EQ(grandchild->AdoptChildren(&root), 1);
    EXPECT_EQ(Children(root), (Nodes{b}));
    EXPECT_EQ(Children(*grandchild), (Nodes{a, c}));
}

TEST_F(Trees, RemoveChildHandsTheChildOver)
{
    EXPECT_EQ(root.RemoveChild(b), 1);
    const std::unique_ptr<DrawingObject> owner(b);
    EXPECT_EQ(b->GetParent(), nullptr);
    EXPECT_EQ(b->CanUndo(), 0);
    EXPECT_EQ(Children(root), (Nodes{a, c}));
    EXPECT_EQ(root.RemoveChild(b), 0);
    EXPECT_EQ(root.RemoveChild(nullptr), 0);
    b->SetParent(&root);  // says so, but is not in the list
    EXPECT_EQ(root.RemoveChild(b), 0);
    b->Orphan();
}

TEST_F(Trees, AbandonChildLetsItSaveAStepAndKeepItsPlaceInTheWorld)
{
    root.SetRotation(90, DVector(0.0, 0.0, 1.0));
    b->SetTranslation(DVector(1.0, 0.0, 0.0));
    EXPECT_EQ(root.AbandonChild(b), 1);
    const std::unique_ptr<DrawingObject> owner(b);
    EXPECT_NEAR(b->GetCompositeMatrix()[12], 0.0, 1e-9);
    EXPECT_NEAR(b->GetCompositeMatrix()[13], 1.0, 1e-9);
    EXPECT_EQ(b->RestoreFromUndo(), 1);
    EXPECT_EQ(b->GetCompositeMatrix()[12], 1.0);
    EXPECT_EQ(b->GetParent(), nullptr);
    EXPECT_EQ(root.AbandonChild(b), 0);
}

TEST_F(Trees, ReplaceChildGivesTheNewNodeTheOldOnesPlace)
{
    DrawingObject other;
    auto* const d = new DrawingObject;
    other.AddChild(d);
    EXPECT_EQ(root.ReplaceChild(b, d), 1);
    const std::unique_ptr<DrawingObject> owner(b);
    EXPECT_EQ(Children(root), (Nodes{a, d, c}));
    EXPECT_EQ(d->GetParent(), &root);
    EXPECT_EQ(d->CanUndo(), 0);
    EXPECT_EQ(b->GetParent(), nullptr);
    EXPECT_EQ(other.HasChildren(), 0);
    EXPECT_EQ(root.ReplaceChild(b, a), 0);  // b is no child any more
}

TEST_F(Trees, ReplaceChildMovesASiblingIntoThePlace)
{
    EXPECT_EQ(root.ReplaceChild(c, a), 1);
    const std::unique_ptr<DrawingObject> owner(c);
    EXPECT_EQ(Children(root), (Nodes{b, a}));
}

TEST_F(Trees, ReplaceChildRefusesTheSameNodeAncestorsAndNull)
{
    EXPECT_EQ(root.ReplaceChild(a, a), 0);
    EXPECT_EQ(root.ReplaceChild(a, &root), 0);
    EXPECT_EQ(root.ReplaceChild(a, nullptr), 0);
    EXPECT_EQ(root.ReplaceChild(nullptr, a), 0);
    auto* const grandchild = new DrawingObject;
    a->AddChild(grandchild);
    EXPECT_EQ(a->ReplaceChild(grandchild, &root), 0);
    EXPECT_EQ(Children(root), (Nodes{a, b, c}));
}

TEST(DrawingObjectTree, DestroyChildrenDeletesChildrenBeforeTheirParents)
{
    Log log;
    DrawingObject root;
    EXPECT_EQ(root.DestroyChildren(), 0);
    auto* const a = new LoggingNode("a", log);
    root.AddChild(a);
    root.AddChild(new LoggingNode("b", log));
    a->AddChild(new LoggingNode("a1", log));
    a->AddChild(new LoggingNode("a2", log));
    EXPECT_EQ(root.DestroyChildren(), 1);
    EXPECT_EQ(log, (Log{"end a1", "end a2", "end a", "end b"}));
    EXPECT_EQ(root.HasChildren(), 0);
}

TEST(DrawingObjectTree, DeletingARootDeletesTheSubtree)
{
    Log log;
    {
        LoggingNode root("root", log);
        auto* const a = new LoggingNode("a", log);
        root.AddChild(a);
        a->AddChild(new LoggingNode("a1", log));
    }
    EXPECT_EQ(log, (Log{"end root", "end a1", "end a"}));
}

TEST(DrawingObjectTree, RemoveDeletedChildrenSearchesTheWholeTree)
{
    Log log;
    DrawingObject root;
    auto* const a = new LoggingNode("a", log);
    auto* const b = new LoggingNode("b", log);
    auto* const a1 = new LoggingNode("a1", log);
    auto* const a2 = new LoggingNode("a2", log);
    root.AddChild(a);
    root.AddChild(b);
    a->AddChild(a1);
    a->AddChild(a2);
    b->AddChild(new LoggingNode("b1", log));
    a1->SetDeleted();
    b->SetDeleted();
    EXPECT_EQ(root.RemoveDeletedChildren(), 1);
    EXPECT_EQ(Children(root), (Nodes{a}));
    EXPECT_EQ(Children(*a), (Nodes{a2}));
    EXPECT_EQ(log, (Log{"end b1", "end b", "end a1"}));
}

TEST_F(Trees, MovesChangeTheDrawingOrder)
{
    EXPECT_EQ(root.MoveChildToTop(c), 1);
    EXPECT_EQ(Children(root), (Nodes{c, a, b}));
    EXPECT_EQ(root.MoveChildToBottom(c), 1);
    EXPECT_EQ(Children(root), (Nodes{a, b, c}));
    EXPECT_EQ(root.MoveChildUpOnePosition(c), 1);
    EXPECT_EQ(Children(root), (Nodes{a, c, b}));
    EXPECT_EQ(root.MoveChildDownOnePosition(a), 1);
    EXPECT_EQ(Children(root), (Nodes{c, a, b}));
    EXPECT_EQ(root.MoveChildUpOnePosition(c), 1);  // already the first
    EXPECT_EQ(root.MoveChildDownOnePosition(b), 1);
    EXPECT_EQ(Children(root), (Nodes{c, a, b}));
}

TEST_F(Trees, MovesRefuseANodeThatIsNoChild)
{
    DrawingObject stranger;
    EXPECT_EQ(root.MoveChildToTop(&stranger), 0);
    EXPECT_EQ(root.MoveChildToBottom(&stranger), 0);
    EXPECT_EQ(root.MoveChildUpOnePosition(&stranger), 0);
    EXPECT_EQ(root.MoveChildDownOnePosition(nullptr), 0);
}

TEST_F(Trees, ChildrenAreFoundByIndexAndPosition)
{
    EXPECT_EQ(root.GetChildByIndex(1), b);
    EXPECT_EQ(root.GetChildByIndex(3), nullptr);
    EXPECT_EQ(root.GetChildByIndex(-1), nullptr);
    EXPECT_EQ(root.FindChildIndex(c), 2);
    EXPECT_EQ(root.FindChildIndex(&root), -1);
    EXPECT_EQ(root.FindChildPosition(b), root.FindChildPositionByIndex(1));
    EXPECT_EQ(root.FindChildPosition(&root), nullptr);
    EXPECT_EQ(root.FindChildPositionByIndex(3), nullptr);
    EXPECT_EQ(root.GetHeadChild(), a);
    EXPECT_EQ(root.GetTailChild(), c);
    EXPECT_EQ(root.GetChildCount(), 3);
    EXPECT_NE(root.HasChildren(), 0);
    EXPECT_NE(root.IsChildFirst(a), 0);
    EXPECT_EQ(root.IsChildFirst(b), 0);
    EXPECT_NE(root.IsChildLast(c), 0);
    EXPECT_EQ(root.IsChildLast(b), 0);
    EXPECT_EQ(a->GetHeadChild(), nullptr);
    EXPECT_EQ(a->GetTailChild(), nullptr);
    EXPECT_EQ(a->IsChildFirst(nullptr), 0);
    EXPECT_EQ(root.GetChildren()->GetCount(), 3);
}

TEST_F(Trees, ADeletedNodeHidesItsSubtreeFromTheCounts)
{
    a->AddChild(new DrawingObject);
    b->AddChild(new DrawingObject);
    EXPECT_EQ(root.GetDescendentCount(), 5);
    b->SetDeleted();
    EXPECT_EQ(root.GetDescendentCount(), 3);
    EXPECT_EQ(a->GetDescendentCount(), 1);
}

TEST(DrawingObjectTree, TheEditableCountCountsAllDescendantsOfChildren)
{
    DrawingObject root;
    auto* const child = new DrawingObject;
    root.AddChild(child);
    for (int i = 0; i < 2; ++i)
    {
        auto* const grandchild = new DrawingObject;
        grandchild->SetEditable();
        child->AddChild(grandchild);
    }
    EXPECT_EQ(root.GetEditableDescendentCount(), 2);
    child->GetHeadChild()->ClearEditable();
    EXPECT_EQ(root.GetEditableDescendentCount(), 2);  // editable or not
    child->SetDeleted();
    EXPECT_EQ(root.GetEditableDescendentCount(), 0);

    DrawingObject other;
    other.AddChild(new DrawingObject);
    EXPECT_EQ(other.GetEditableDescendentCount(), 0);
    other.GetHeadChild()->SetEditable();
    EXPECT_EQ(other.GetEditableDescendentCount(), 1);
}

TEST_F(Trees, TemplateDescendentsAreListedParentsFirst)
{
    auto* const a1 = new DrawingObject;
    a->AddChild(a1);
    auto* const c1 = new DrawingObject;
    c->AddChild(c1);
    root.SetTemplateObject();
    for (DrawingObject* const node : {a, a1, b, c1})
    {
        node->SetTemplateObject();
    }
    DrawingObjectList list;
    list.AddTail(&root);
    EXPECT_EQ(root.GetTemplateDescendentCount(), 4);
    EXPECT_EQ(root.GetTemplateDescendentList(&list), 4);
    Nodes listed;
    for (POSITION position = list.GetHeadPosition(); position != nullptr;)
    {
        listed.push_back(list.GetNext(position));
    }
    EXPECT_EQ(listed, (Nodes{&root, a, a1, b, c1}));
    c->SetDeleted();
    b->SetDeleted();
    EXPECT_EQ(root.GetTemplateDescendentCount(), 2);
}

TEST_F(Trees, TheTopLevelGroupParentIsTheLastNodeBelowAnUngroupedParent)
{
    auto* const a1 = new DrawingObject;
    a->AddChild(a1);
    EXPECT_EQ(a1->GetTopLevelGroupParent(), a1);
    a->SetGrouped();
    EXPECT_EQ(a1->GetTopLevelGroupParent(), a);
    root.SetGrouped();
    EXPECT_EQ(a1->GetTopLevelGroupParent(), &root);
    EXPECT_EQ(root.GetTopLevelGroupParent(), &root);
    a->ClearGrouped();
    EXPECT_EQ(a1->GetTopLevelGroupParent(), a1);
}

TEST(DrawingObjectTree, AddingAChildCostsTheSameAmongFewAndAmongManySiblings)
{
    const auto instructionsToAdd = [](DrawingObject& root) {
        auto* const child = new DrawingObject;
        const std::optional<long> count =
            CountInstructions([&root, child] { root.AddChild(child); });
        root.AddChild(child);
        return count;
    };
    DrawingObject few;
    DrawingObject many;
    for (DrawingObject* const root : {&few, &many})
    {
        for (int i = 0; i < (root == &few ? 3 : 3000); ++i)
        {
            root->AddChild(new DrawingObject);
        }
    }
    const std::optional<long> amongFew = instructionsToAdd(few);
    const std::optional<long> amongMany = instructionsToAdd(many);
    if (!amongFew || !amongMany)
    {
        GTEST_SKIP() << "the operating system lets no process trace its children";
    }
    // A search through the siblings would take three instructions at least for each of 3,000.
    EXPECT_LT(*amongMany, *amongFew + 3000);
}

TEST(DrawingObjectTree, AdoptingManyChildrenKeepsTheirOrder)
{
    DrawingObject root;
    for (int i = 0; i < 40000; ++i)
    {
        root.AddChild(new DrawingObject);
    }
    DrawingObject* const tail = root.GetTailChild();
    DrawingObject other;
    EXPECT_EQ(other.AdoptChildren(&root), 1);
    EXPECT_EQ(other.GetChildCount(), 40000);
    EXPECT_EQ(other.GetTailChild(), tail);
}

TEST(DrawingObjectTree, ADeepTreeIsWalkedAndDestroyedWithoutRecursion)
{
    constexpr int depth = 30000;
    DrawingObject root;
    auto* top = new DrawingObject;
    for (int level = 1; level < depth; ++level)  // from the bottom up
    {
        auto* const above = new DrawingObject;
        above->AddChild(top);
        top = above;
    }
    root.AddChild(top);
    EXPECT_EQ(root.GetDescendentCount(), depth);
    root.SetSelected();
    EXPECT_EQ(root.ClearUndoAll(), 0);
    EXPECT_EQ(root.DestroyChildren(), 1);
}

}  // namespace
