// SPDX-License-Identifier: MIT
#include "scene/DrawingObject.h"
#include "tests/support/TestNodes.h"

#include <gtest/gtest.h>

namespace
{

template <typename AnyVector>
void ExpectVector(const AnyVector& vector, double x, double y, double z)
{
    EXPECT_EQ(vector.x, x);
    EXPECT_EQ(vector.y, y);
    EXPECT_EQ(vector.z, z);
}

const Vector origin(0.0f, 0.0f, 0.0f);

TEST(DrawingObjectBounds, ANodeWithoutChildrenStopsItsParentsBounds)
{
    DrawingObject root;
    EXPECT_EQ(root.CalculateBounds(), 0);
    auto* const after = new BoxNode(origin, Vector(1.0f, 1.0f, 1.0f));
    after->calculations = 0;
    root.AddChild(new DrawingObject);
    root.AddChild(after);
    EXPECT_EQ(root.CalculateBounds(), 0);
    EXPECT_EQ(after->calculations, 0);
    root.GetHeadChild()->SetDeleted();
    EXPECT_EQ(root.CalculateBounds(), 1);
    EXPECT_EQ(after->calculations, 1);
}

TEST(DrawingObjectBounds, BoundsContainTheTransformedBoundsOfTheChildren)
{
    DrawingObject root;
    auto* const a = new BoxNode(origin, Vector(1.0f, 2.0f, 3.0f));
    auto* const b = new BoxNode(origin, Vector(1.0f, 1.0f, 1.0f));
    b->SetTranslation(DVector(4.0, -5.0, 0.0));
    auto* const deleted = new BoxNode(origin, Vector(100.0f, 100.0f, 100.0f));
    deleted->SetDeleted();
    root.AddChild(a);
    root.AddChild(b);
    root.AddChild(deleted);
    root.SetTranslation(DVector(10.0, 0.0, 0.0));

    EXPECT_EQ(root.CalculateBounds(), 1);
    ExpectVector(root.GetBoundsLocalMinimum(), 0, -5, 0);
    ExpectVector(root.GetBoundsLocalMaximum(), 5, 2, 3);
    ExpectVector(root.GetBoundsGlobalMinimum(), 10, -5, 0);
    ExpectVector(root.GetBoundsGlobalMaximum(), 15, 2, 3);
    // The sphere on the diagonal of the box 5 x 7 x 3.
    ExpectVector(root.GetBoundsGlobalCenter(), 12.5, -1.5, 1.5);
    EXPECT_FLOAT_EQ(root.GetGlobalBoundsRadius(), 4.555217f);  // sqrt(83) / 2
    EXPECT_FLOAT_EQ(root.GetBoundsGlobalDiameter(), 9.110434f);
    EXPECT_NE(root.GetBoundsGlobalSphere().IsDefined(), 0);
    EXPECT_NE(root.GetBoundsLocalSphere().IsDefined(), 0);
    EXPECT_EQ(root.GetBoundsLocalDiameter(), 2 * root.GetLocalBoundsRadius());
}

TEST(DrawingObjectBounds, AChildWithoutASphereDoesNotCount)
{
    DrawingObject root;
    root.AddChild(new BoxNode(origin, origin));  // a point: its sphere stays undefined
    EXPECT_EQ(root.CalculateBounds(), 1);
    EXPECT_EQ(root.bounds.flags, 0U);
    ExpectVector(root.GetBoundsLocalMaximum(), 0, 0, 0);
    ExpectVector(root.GetBoundsGlobalMinimum(), 0, 0, 0);
}

TEST(DrawingObjectBounds, AChildThatFailsStopsTheCalculation)
{
    DrawingObject root;
    auto* const a = new BoxNode(origin, Vector(1.0f, 1.0f, 1.0f));
    root.AddChild(a);
    a->result = 0;
    EXPECT_EQ(root.CalculateBounds(), 0);
}

TEST(DrawingObjectBounds, SetLocalBoundsGoesThroughTheTransform)
{
    DrawingObject node;
    node.SetTranslation(DVector(1.0, 2.0, 3.0));
    node.SetLocalBounds(origin, Vector(2.0f, 2.0f, 1.0f));
    ExpectVector(node.GetBoundsLocalMaximum(), 2, 2, 1);
    ExpectVector(node.GetBoundsGlobalMinimum(), 1, 2, 3);
    ExpectVector(node.GetBoundsGlobalMaximum(), 3, 4, 4);
    ExpectVector(node.GetBoundsGlobalCenter(), 2, 3, 3.5);
    EXPECT_EQ(node.GetGlobalBoundsRadius(), 1.5f);
    ExpectVector(node.GetBoundsLocalCenter(), 0, 0, 0);
    EXPECT_EQ(node.GetLocalBoundsRadius(), 0.0f);
}

TEST(DrawingObjectSizingHandles, HandlesAreTheCornersOfTheLocalBox)
{
    DrawingObject node;
    node.SetTranslation(DVector(10.0, 0.0, 0.0));
    node.SetLocalBounds(Vector(-1.0f, -2.0f, -3.0f), Vector(1.0f, 2.0f, 3.0f));
    EXPECT_EQ(node.CalculateSizingHandles(), 1);
    const double corners[8][3] = {{-1, -2, 3},  {-1, 2, 3},  {1, 2, 3},  {1, -2, 3},
                                  {-1, -2, -3}, {-1, 2, -3}, {1, 2, -3}, {1, -2, -3}};
    for (int handle = 0; handle < 8; ++handle)
    {
        SCOPED_TRACE(handle);
        const double* const corner = corners[handle];
        ExpectVector(node.GetLocalSizingHandleCenter(handle), corner[0], corner[1], corner[2]);
        ExpectVector(node.GetGlobalSizingHandleCenter(handle), corner[0] + 10, corner[1],
                     corner[2]);
    }
}

TEST(DrawingObjectSizingHandles, HandlesAreAHundredthOfTheBoxButAtLeast0Point05)
{
    constexpr double smallest = 0.05000000074505806;    // 0.05f
    constexpr double hundredth = 0.009999999776482582;  // 0.01f
    DrawingObject node;
    const auto sizeOf = [&node](const Vector& maximum) {
        node.SetLocalBounds(origin, maximum);
        node.CalculateSizingHandles();
        return node.handleSize;
    };
    EXPECT_EQ(sizeOf(Vector(1.0f, 4.75f, 2.0f)), smallest);
    EXPECT_EQ(sizeOf(Vector(1.0f, 2.0f, 5.0f)), smallest);
    EXPECT_EQ(sizeOf(Vector(5.25f, 2.0f, 3.0f)), hundredth * 5.25);
    EXPECT_EQ(sizeOf(Vector(8.0f, 16.0f, 3.0f)), hundredth * 16);
    EXPECT_EQ(sizeOf(Vector(8.0f, 16.0f, 64.0f)), hundredth * 64);
}

TEST(DrawingObjectSizingHandles, ASelectionNameIsCountedFromTheChildren)
{
    DrawingObject root;
    EXPECT_EQ(root.SizingHandleIndexFromSelectionIndex(3), 3);
    root.AddChild(new DrawingObject);
    root.AddChild(new DrawingObject);
    EXPECT_EQ(root.SizingHandleIndexFromSelectionIndex(5), 3);
    EXPECT_EQ(root.SizingHandleIndexFromSelectionIndex(0), -2);
    EXPECT_EQ(root.SizingHandleIndexFromSelectionIndex(100), 98);
}

// A box that follows its scaled dimensions, centred on the origin.
class SizedNode : public DrawingObject
{
public:
    SizedNode()
    {
        SetUnscaledDimensions(DVector(2.0, 4.0, 8.0));
        SizedNode::CalculateBounds();
        CalculateSizingHandles();
    }

    int CalculateBounds() override
    {
        const Vector half = GetScaledDimensions() * 0.5;
        SetLocalBounds(-half, half);
        return 1;
    }
};

struct HandleDrag
{
    int handle;
    DVector point;
    DVector translation;  // half of how far the handle was dragged
};

class Resizing : public testing::TestWithParam<HandleDrag>
{};

// Each drags its handle outwards by (2, 4, 2): the box grows from 2 x 4 x 8 to 4 x 8 x 10.
TEST_P(Resizing, MovesTheHandleAndKeepsTheOppositeHandle)
{
    const HandleDrag& drag = GetParam();
    SizedNode node;
    const int anchors[4] = {6, 7, 4, 5};
    const DVector anchor = node.GetGlobalSizingHandleCenter(anchors[drag.handle]);
    EXPECT_EQ(node.Resize(drag.point, drag.handle), 1);
    ExpectVector(node.GetScaledDimensions(), 4, 8, 10);
    ExpectVector(node.GetScale(), 2, 2, 1.25);
    ExpectVector(node.GetTranslation(), drag.translation.x, drag.translation.y, drag.translation.z);
    ExpectVector(node.GetGlobalSizingHandleCenter(anchors[drag.handle]), anchor.x, anchor.y,
                 anchor.z);
    ExpectVector(node.GetGlobalSizingHandleCenter(drag.handle), drag.point.x, drag.point.y,
                 drag.point.z);
}

INSTANTIATE_TEST_SUITE_P(
    DrawingObject, Resizing,
    testing::Values(HandleDrag{0, DVector(-3.0, -6.0, 6.0), DVector(-1.0, -2.0, 1.0)},
                    HandleDrag{1, DVector(-3.0, 6.0, 6.0), DVector(-1.0, 2.0, 1.0)},
                    HandleDrag{2, DVector(3.0, 6.0, 6.0), DVector(1.0, 2.0, 1.0)},
                    HandleDrag{3, DVector(3.0, -6.0, 6.0), DVector(1.0, -2.0, 1.0)}));

TEST(DrawingObjectResize, ADragToTheAnchorYieldsZeroDimensions)
{
    SizedNode node;
    EXPECT_EQ(node.Resize(node.GetLocalSizingHandleCenter(4), 2), 1);
    ExpectVector(node.GetScaledDimensions(), 0, 0, 0);
}

TEST(DrawingObjectResize, ADragBelowTheMinimumSizeKeepsTheMinimumAndTheSign)
{
    SizedNode node;
    node.minimumSize = DVector(1.0, 2.0, 3.0);
    const DVector anchor = node.GetLocalSizingHandleCenter(4);  // (-1, -2, -4)
    EXPECT_EQ(node.Resize(anchor + DVector(0.5, -0.5, 0.0), 2), 1);
    // A difference of 0 counts as positive.
    ExpectVector(node.GetScaledDimensions(), 1, -2, 3);
    SizedNode larger;
    larger.minimumSize = DVector(1.0, 2.0, 3.0);
    larger.Resize(anchor + DVector(1.0, 2.5, 3.0), 2);
    ExpectVector(larger.GetScaledDimensions(), 1, 2.5, 3);
}

TEST(DrawingObjectResize, ANegativeDepthBecomes0AndNegativeWidthsStay)
{
    SizedNode node;
    const DVector anchor = node.GetLocalSizingHandleCenter(4);
    EXPECT_EQ(node.Resize(anchor + DVector(-1.0, -2.0, -3.0), 2), 1);
    ExpectVector(node.GetScaledDimensions(), -1, -2, 0);
    SizedNode other;
    // Handle 0 turns both signs.
    EXPECT_EQ(other.Resize(other.GetLocalSizingHandleCenter(6) + DVector(1.0, 2.0, 3.0), 0), 1);
    ExpectVector(other.GetScaledDimensions(), -1, -2, 3);
}

TEST(DrawingObjectResize, AHandleOutside0To3YieldsZeroDimensions)
{
    for (const int handle : {-1, 4, 7, 8, 1000})
    {
        SizedNode node;
        EXPECT_EQ(node.Resize(DVector(1.0, 2.0, 3.0), handle), 1);
        ExpectVector(node.GetScaledDimensions(), 0, 0, 0);
    }
}

TEST(DrawingObjectResize, ResizingMovesTheNodeInItsParentsCoordinates)
{
    SizedNode node;
    node.SetRotation(90, DVector(0.0, 0.0, 1.0));
    EXPECT_EQ(node.Resize(DVector(3.0, 6.0, 6.0), 2), 1);
    // The centre moved by (1, 2, 1) in the node, by (-2, 1, 1) around it.
    EXPECT_NEAR(node.GetTranslation().x, -2, 1e-8);
    EXPECT_NEAR(node.GetTranslation().y, 1, 1e-8);
    EXPECT_NEAR(node.GetTranslation().z, 1, 1e-8);
}

}  // namespace
