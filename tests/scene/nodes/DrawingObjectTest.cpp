// SPDX-License-Identifier: MIT
#include "scene/DrawingObject.h"

#include "tests/support/RecordBytes.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace
{

struct State
{
    const char* name;
    void (DrawingObject::*set)();
    void (DrawingObject::*clear)();
    int (DrawingObject::*test)() const;
    int bit;
};

#define STATE(name, test, bit)                                                                   \
    State                                                                                        \
    {                                                                                            \
#name, &DrawingObject::Set##name, &DrawingObject::Clear##name, &DrawingObject::test, bit \
    }

const State states[] = {
    STATE(Selected, IsSelected, 0x0001),
    STATE(ShowScalingBox, ShouldShowScalingBox, 0x0002),
    STATE(ShowExtentsBox, ShouldShowExtentsBox, 0x0004),
    STATE(Grouped, IsGrouped, 0x0100),
    STATE(Editable, IsEditable, 0x0200),
    STATE(Defined, IsDefined, 0x0400),
    STATE(Transparent, IsTransparent, 0x0800),
    STATE(Deleted, IsDeleted, 0x1000),
    STATE(TextureEnabled, IsTextureEnabled, 0x2000),
    STATE(TemplateObject, IsTemplateObject, 0x4000),
    STATE(ScaleTemplateObject, ShouldScaleTemplateObject, 0x8000),
};

void ExpectVector(const DVector& vector, double x, double y, double z)
{
    EXPECT_EQ(vector.x, x);
    EXPECT_EQ(vector.y, y);
    EXPECT_EQ(vector.z, z);
}

TEST(DrawingObject, EachStateBitIsSetClearedAndTestedByItsMaskAlone)
{
    for (const State& state : states)
    {
        SCOPED_TRACE(state.name);
        DrawingObject node;
        (node.*state.set)();
        EXPECT_EQ(node.flags, static_cast<DWORD>(state.bit));
        EXPECT_EQ((node.*state.test)(), state.bit);
        node.flags = 0xFFFFFFFF;
        (node.*state.clear)();
        EXPECT_EQ(node.flags, ~static_cast<DWORD>(state.bit));
        EXPECT_EQ((node.*state.test)(), 0);
    }
}

// Lets a test use what views and scenes use to mark themselves.
class OwnBitNode : public DrawingObject
{
public:
    using DrawingObject::DeselectOnlyThisNode;
    using DrawingObject::SelectOnlyThisNode;
};

TEST(DrawingObject, SelectingMarksTheWholeSubtree)
{
    OwnBitNode root;
    auto* const child = new DrawingObject;
    auto* const grandchild = new DrawingObject;
    root.AddChild(child);
    child->AddChild(grandchild);

    child->SetSelected();
    EXPECT_EQ(root.IsSelected(), 0);
    EXPECT_EQ(child->IsSelected(), 1);
    EXPECT_EQ(grandchild->IsSelected(), 1);
    root.SelectOnlyThisNode();
    root.ClearSelected();
    EXPECT_EQ(root.IsSelected(), 0);
    EXPECT_EQ(grandchild->IsSelected(), 0);
    root.SelectOnlyThisNode();
    EXPECT_EQ(root.IsSelected(), 1);
    EXPECT_EQ(child->IsSelected(), 0);
    child->SetSelected();
    root.DeselectOnlyThisNode();
    EXPECT_EQ(root.IsSelected(), 0);
    EXPECT_EQ(child->IsSelected(), 1);
}

TEST(DrawingObject, ANewNodeIsEmptyWithAnIdentityTransformAndUnitScale)
{
    DrawingObject node;
    EXPECT_EQ(node.flags, 0U);
    EXPECT_EQ(node.GetParent(), nullptr);
    EXPECT_EQ(node.GetChildCount(), 0);
    EXPECT_EQ(node.CanUndo(), 0);
    EXPECT_EQ(node.GetExternalUndoStack(), nullptr);
    EXPECT_EQ(node.handleSize, 0.05000000074505806);
    ExpectVector(node.minimumSize, 0, 0, 0);
    ExpectVector(node.GetScale(), 1, 1, 1);
    ExpectVector(node.GetScaledDimensions(), 0, 0, 0);
    ExpectVector(node.GetUnscaledDimensions(), 0, 0, 0);
    for (int handle = 0; handle < 8; ++handle)
    {
        ExpectVector(node.GetLocalSizingHandleCenter(handle), 0, 0, 0);
        ExpectVector(node.GetGlobalSizingHandleCenter(handle), 0, 0, 0);
    }
    for (int element = 0; element < 16; ++element)
    {
        EXPECT_EQ(node.GetCompositeMatrix()[element], element % 5 == 0 ? 1.0 : 0.0);
        EXPECT_EQ(node.GetRotationMatrix()[element], element % 5 == 0 ? 1.0 : 0.0);
    }
    EXPECT_STREQ(node.GetExtentsBoxColor().GetName(), "Medium Gray");
    EXPECT_TRUE(node.GetTexture()->GetName().IsEmpty());
    EXPECT_EQ(RUNTIME_CLASS(DrawingObject)->GetVersion(), 3U);
    EXPECT_TRUE(std::has_virtual_destructor_v<DrawingObject>);
}

// A node in which nothing has its first value.
class FullNode
{
public:
    FullNode()
    {
        node.bounds.flags = 1;
        node.extentsBoxColor.SetName("box");
        node.AttachExternalUndoStack(&stack);
        node.flags = 0x0701;
        node.minimumSize = DVector(1.0, 2.0, 3.0);
        node.SetUnscaledDimensions(DVector(2.0, 4.0, 8.0));
        node.SetScaledDimensions(DVector(2.0, 2.0, 2.0));  // the scale is (1, 0.5, 0.25)
        node.handleSize = 0.5;
        node.GetTexture()->SetName("wood");
        node.SetTranslation(DVector(7.0, 8.0, 9.0));
        for (int handle = 0; handle < 8; ++handle)
        {
            node.localSizingHandles[handle] = DVector(handle + 1.0, 0.0, 0.0);
            node.globalSizingHandles[handle] = DVector(0.0, handle + 1.0, 0.0);
        }
        node.SaveToUndo();
        node.AddChild(new DrawingObject);
        node.SetParent(&parent);
    }

    void ExpectCopied(DrawingObject& copy) const
    {
        EXPECT_EQ(copy.bounds.flags, 1U);
        EXPECT_STREQ(copy.extentsBoxColor.GetName(), "box");
        EXPECT_EQ(copy.GetExternalUndoStack(), &stack);
        EXPECT_EQ(copy.flags, 0x0701U);
        ExpectVector(copy.minimumSize, 1, 2, 3);
        EXPECT_EQ(copy.GetParent(), &parent);
        ExpectVector(copy.GetScale(), 1, 0.5, 0.25);
        ExpectVector(copy.GetScaledDimensions(), 2, 2, 2);
        EXPECT_EQ(copy.handleSize, 0.5);
        EXPECT_EQ(copy.GetTexture()->GetName(), "wood");
        ExpectVector(copy.GetTranslation(), 7, 8, 9);
        ExpectVector(copy.GetUnscaledDimensions(), 2, 4, 8);
        for (int handle = 0; handle < 4; ++handle)
        {
            ExpectVector(copy.GetLocalSizingHandleCenter(handle), handle + 1, 0, 0);
            ExpectVector(copy.GetGlobalSizingHandleCenter(handle), 0, handle + 1, 0);
        }
    }

    DrawingObjectStack stack;
    DrawingObject parent;
    DrawingObject node;
};

TEST(DrawingObject, ACopyHasZeroHandles4To7AndNoChildren)
{
    const FullNode full;
    DrawingObject copy(full.node);
    full.ExpectCopied(copy);
    for (int handle = 4; handle < 8; ++handle)
    {
        ExpectVector(copy.GetLocalSizingHandleCenter(handle), 0, 0, 0);
        ExpectVector(copy.GetGlobalSizingHandleCenter(handle), 0, 0, 0);
    }
    EXPECT_EQ(copy.GetChildCount(), 0);
    EXPECT_EQ(copy.CanUndo(), 0);
    EXPECT_EQ(full.node.GetChildCount(), 1);
}

TEST(DrawingObject, AssignmentLeavesHandles4To7ChildrenAndUndo)
{
    const FullNode full;
    DrawingObject target;
    auto* const child = new DrawingObject;
    target.AddChild(child);
    target.SaveToUndo();
    target.SaveToUndo();
    for (int handle = 4; handle < 8; ++handle)
    {
        target.localSizingHandles[handle] = DVector(-1.0, -2.0, -3.0);
    }
    target = full.node;
    full.ExpectCopied(target);
    for (int handle = 4; handle < 8; ++handle)
    {
        ExpectVector(target.GetLocalSizingHandleCenter(handle), -1, -2, -3);
    }
    EXPECT_EQ(target.GetHeadChild(), child);
    EXPECT_EQ(target.PopUndo(), 1);
    EXPECT_EQ(target.PopUndo(), 1);
    EXPECT_EQ(target.PopUndo(), 0);
}

TEST(DrawingObject, AssigningANewNodeTakesAllBackButHandles4To7)
{
    FullNode full;
    CoordinateTransform* const transform = full.node.GetTransform();
    TextureMap* const texture = full.node.GetTexture();
    full.node = DrawingObject();
    ExpectVector(full.node.GetScale(), 1, 1, 1);
    ExpectVector(full.node.GetScaledDimensions(), 0, 0, 0);
    ExpectVector(full.node.GetUnscaledDimensions(), 0, 0, 0);
    ExpectVector(full.node.GetTranslation(), 0, 0, 0);
    EXPECT_STREQ(full.node.extentsBoxColor.GetName(), "Medium Gray");
    EXPECT_EQ(full.node.GetExternalUndoStack(), nullptr);
    for (int handle = 0; handle < 8; ++handle)
    {
        const int kept = handle < 4 ? 0 : handle + 1;
        ExpectVector(full.node.GetLocalSizingHandleCenter(handle), kept, 0, 0);
        ExpectVector(full.node.GetGlobalSizingHandleCenter(handle), 0, kept, 0);
    }
    // The parts stay where they are.
    EXPECT_EQ(full.node.GetTransform(), transform);
    CoordinateTransform identity;
    EXPECT_EQ(Stored(*transform), Stored(identity));
    EXPECT_EQ(full.node.GetTexture(), texture);
    EXPECT_TRUE(texture->GetName().IsEmpty());
}

TEST(DrawingObject, PointersTakenFromANewNodeFollowIt)
{
    DrawingObject node;
    const DrawingObject& sameNode = node;
    const CoordinateTransform* const transform = sameNode.GetTransform();
    const DrawingObjectList* const children = sameNode.GetChildren();
    TextureMap* const texture = node.GetTexture();
    DVector* const handles = node.localSizingHandles;
    node.Translate(DVector(1, 2, 3));
    node.SetTexture(TextureMap("wood.bmp"));
    node.AddChild(new DrawingObject);
    node.localSizingHandles[7] = DVector(4, 5, 6);
    ExpectVector(transform->GetTranslation(), 1, 2, 3);
    EXPECT_EQ(texture->GetName(), "wood");
    EXPECT_EQ(children->GetCount(), 1);
    ExpectVector(handles[7], 4, 5, 6);
    EXPECT_EQ(node.GetTransform(), transform);
    EXPECT_EQ(node.GetChildren(), children);
}

TEST(DrawingObject, SizingHandlesAreAnArrayOfEight)
{
    DrawingObject node;
    EXPECT_EQ(std::size(node.globalSizingHandles), 8);
    double x = 0.0;
    for (DVector& handle : node.globalSizingHandles)
    {
        handle.x = ++x;
    }
    const DrawingObject& sameNode = node;
    EXPECT_EQ(sameNode.globalSizingHandles[std::size_t{7}].x, 8.0);
    const DVector(&asArray)[8] = sameNode.globalSizingHandles;
    EXPECT_EQ(&asArray[3], &node.globalSizingHandles[3]);
    // A copy would not be the node's.
    EXPECT_FALSE(std::is_copy_constructible_v<decltype(node.globalSizingHandles)>);
    for (const DVector& handle : sameNode.globalSizingHandles)
    {
        x -= handle.x;
    }
    EXPECT_EQ(x, 8.0 - 36.0);
    node.Translate(DVector(0, 1, 0));
    node.GetTransform()->TransformDVectors(node.globalSizingHandles, node.localSizingHandles, 8);
    ExpectVector(node.GetLocalSizingHandleCenter(4), 5, 1, 0);
}

TEST(DrawingObject, AssigningANodeToItselfDoesNothing)
{
    FullNode full;
    const DrawingObject& itself = full.node;
    full.node = itself;
    full.ExpectCopied(full.node);
    EXPECT_EQ(full.node.GetChildCount(), 1);
}

TEST(DrawingObject, SetScaledDimensionsDerivesTheScale)
{
    DrawingObject node;
    node.SetUnscaledDimensions(DVector(2.0, 4.0, 8.0));
    ExpectVector(node.GetScaledDimensions(), 2, 4, 8);
    node.SetScaledDimensions(DVector(4.0, 4.0, 2.0));
    ExpectVector(node.GetScale(), 2, 1, 0.25);
    node.SetUnscaledDimensions(DVector(1.0, 2.0, 16.0));
    ExpectVector(node.GetScaledDimensions(), 2, 2, 4);
    ExpectVector(node.GetScale(), 2, 1, 0.25);
}

// Has dimensions that do not belong together, so that deriving one from the other shows.
class OddNode : public DrawingObject
{
public:
    OddNode()
    {
        EnsureDetails().unscaledDimensions = DVector(2.0, 2.0, 2.0);
        EnsureDetails().scaledDimensions = DVector(6.0, 6.0, 6.0);
        EnsureDetails().scale = DVector(5.0, 5.0, 5.0);
    }
};

TEST(DrawingObject, SettingEqualDimensionsDoesNothing)
{
    OddNode node;
    node.SetScaledDimensions(DVector(6.0, 6.0, 6.0));
    ExpectVector(node.GetScale(), 5, 5, 5);
    node.SetUnscaledDimensions(DVector(2.0, 2.0, 2.0));
    ExpectVector(node.GetScaledDimensions(), 6, 6, 6);
    node.SetScaledDimensions(DVector(6.0, 6.0, 8.0));  // one axis is enough
    ExpectVector(node.GetScale(), 3, 3, 4);
}

TEST(DrawingObject, AnUnscaledDimensionOf0KeepsThatAxisScale)
{
    DrawingObject node;
    node.SetUnscaledDimensions(DVector(2.0, 0.0, 2.0));
    node.SetScale(DVector(1.0, 7.0, 1.0));
    node.SetScaledDimensions(DVector(4.0, 9.0, 6.0));
    ExpectVector(node.GetScale(), 2, 7, 3);
    ExpectVector(node.GetScaledDimensions(), 4, 9, 6);
}

TEST(DrawingObject, SetScaleStoresTheScaleAndThenScalesTheDimensions)
{
    DrawingObject node;
    node.SetUnscaledDimensions(DVector(2.0, 4.0, 8.0));
    node.SetScale(DVector(0.5, 2.0, 3.0));
    ExpectVector(node.GetScale(), 0.5, 2, 3);
    ExpectVector(node.GetScaledDimensions(), 1, 8, 24);
    ExpectVector(node.GetUnscaledDimensions(), 2, 4, 8);
}

TEST(DrawingObject, SettingASurfaceColorOfTheBaseClassDoesNothing)
{
    DrawingObject node;
    node.SetSurfaceColor(NamedColor("red"), 0);
    EXPECT_STREQ(node.GetExtentsBoxColor().GetName(), "Medium Gray");
}

}  // namespace
