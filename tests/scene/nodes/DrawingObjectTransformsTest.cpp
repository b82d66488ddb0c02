// SPDX-License-Identifier: MIT
#include "scene/DrawingObject.h"

#include <gtest/gtest.h>

namespace
{

const DVector xAxis(1.0, 0.0, 0.0);
const DVector yAxis(0.0, 1.0, 0.0);
const DVector zAxis(0.0, 0.0, 1.0);

void ExpectNear(const DVector& vector, double x, double y, double z)
{
    EXPECT_NEAR(vector.x, x, 1e-8);
    EXPECT_NEAR(vector.y, y, 1e-8);
    EXPECT_NEAR(vector.z, z, 1e-8);
}

DVector Transformed(const CoordinateTransform& transform, DVector point)
{
    transform.TransformDVectors(&point, 1);
    return point;
}

DVector Rotated(const CoordinateTransform& transform, DVector point)
{
    transform.RotateDVectors(&point, 1);
    return point;
}

// The matrix part that the setting holds, not the composite.
DVector RotatedBySetting(const CoordinateTransform& transform, const DVector& p)
{
    const double* const m = transform.GetRotationMatrix();
    return DVector(m[0] * p.x + m[4] * p.y + m[8] * p.z, m[1] * p.x + m[5] * p.y + m[9] * p.z,
                   m[2] * p.x + m[6] * p.y + m[10] * p.z);
}

class TransformedTree : public testing::Test
{
protected:
    TransformedTree()
    {
        root.AddChild(child);
        child->AddChild(leaf);
        root.SetTranslation(DVector(10.0, 0.0, 0.0));
        child->SetRotation(90, zAxis);
        leaf->SetTranslation(DVector(1.0, 0.0, 0.0));
    }

    DrawingObject root;
    DrawingObject* child = new DrawingObject;
    DrawingObject* leaf = new DrawingObject;
};

TEST(DrawingObjectTransforms, TheOperationsActOnTheTransform)
{
    DrawingObject node;
    node.SetTranslation(DVector(1.0, 2.0, 3.0));
    node.Translate(DVector(1.0, 1.0, 1.0));
    ExpectNear(node.GetTranslation(), 2, 3, 4);
    EXPECT_EQ(node.GetCompositeMatrix()[14], 4.0);
    EXPECT_EQ(node.GetTransform()->GetCompositeMatrix(), node.GetCompositeMatrix());

    node.SetRotation(90, zAxis);
    node.Rotate(90, zAxis);
    ExpectNear(Rotated(*node.GetTransform(), xAxis), -1, 0, 0);
    node.ResetOrientation();
    ExpectNear(Rotated(*node.GetTransform(), xAxis), 1, 0, 0);
    ExpectNear(node.GetTranslation(), 2, 3, 4);

    const double turn[16] = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    node.SetRotationMatrix(turn);
    ExpectNear(Rotated(*node.GetTransform(), xAxis), 0, 1, 0);
    const float back[16] = {0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    node.SetRotationMatrix(back);
    ExpectNear(Rotated(*node.GetTransform(), xAxis), 0, -1, 0);
    EXPECT_EQ(node.GetRotationMatrix()[1], -1.0);

    CoordinateTransform other;
    other.SetTranslation(DVector(7.0, 0.0, 0.0));
    node.SetTransform(other);
    ExpectNear(node.GetTranslation(), 7, 0, 0);
    EXPECT_EQ(node.CombineTransform(&other), 1);
    ExpectNear(Transformed(*node.GetTransform(), DVector()), 14, 0, 0);
}

TEST_F(TransformedTree, ApplyTransformAndResetGivesTheTransformToTheChildren)
{
    const DVector before = Transformed(leaf->AccumulateTransformations(1, 0, nullptr), DVector());
    EXPECT_EQ(child->ApplyTransformAndReset(), 1);
    ExpectNear(Rotated(*child->GetTransform(), xAxis), 1, 0, 0);
    const DVector after = Transformed(leaf->AccumulateTransformations(1, 0, nullptr), DVector());
    ExpectNear(after, before.x, before.y, before.z);
    EXPECT_EQ(leaf->ApplyTransformAndReset(), 0);
    ExpectNear(leaf->GetTranslation(), 1, 0, 0);
}

TEST_F(TransformedTree, AccumulatingWithTheNodesOwnTransformMapsToTheWorld)
{
    const CoordinateTransform world = leaf->AccumulateTransformations(1, 0, nullptr);
    ExpectNear(Transformed(world, DVector()), 10, 1, 0);
    ExpectNear(Transformed(world, xAxis), 10, 2, 0);
    // The external part is copied into the settings.
    ExpectNear(world.GetTranslation(), 10, 1, 0);
    ExpectNear(RotatedBySetting(world, xAxis), 0, 1, 0);
}

TEST_F(TransformedTree, AccumulatingWithoutTheNodesOwnTransformStartsAtTheParent)
{
    ExpectNear(Transformed(leaf->AccumulateTransformations(0, 0, nullptr), xAxis), 10, 1, 0);
    // No external part yet: the same.
    ExpectNear(Transformed(leaf->AccumulateTransformations(0, 1, nullptr), xAxis), 10, 1, 0);
    CoordinateTransform outer;
    outer.SetTranslation(DVector(0.0, 0.0, 5.0));
    leaf->CombineTransform(&outer);
    ExpectNear(Transformed(leaf->AccumulateTransformations(0, 0, nullptr), xAxis), 10, 1, 0);
    ExpectNear(Transformed(leaf->AccumulateTransformations(0, 1, nullptr), xAxis), 10, 1, 5);
    // All of the own wins over its external part alone.
    ExpectNear(Transformed(leaf->AccumulateTransformations(1, 1, nullptr), DVector()), 10, 1, 5);
}

TEST_F(TransformedTree, AnExtraNodeComesLastUnlessItIsTheNodeItself)
{
    DrawingObject extra;
    extra.SetTranslation(DVector(0.0, 0.0, 100.0));
    ExpectNear(Transformed(leaf->AccumulateTransformations(1, 0, &extra), DVector()), 10, 1, 100);
    ExpectNear(Transformed(leaf->AccumulateTransformations(1, 0, leaf), DVector()), 10, 1, 0);
}

TEST_F(TransformedTree, TheAlignmentTurnsTheWorldAxesBack)
{
    const CoordinateTransform alignment = leaf->GetAlignmentTransformation();
    // The leaf's x axis is the world's y.
    ExpectNear(Rotated(alignment, yAxis), 1, 0, 0);
    ExpectNear(Rotated(alignment, DVector(-1.0, 0.0, 0.0)), 0, 1, 0);
    ExpectNear(Rotated(alignment, zAxis), 0, 0, 1);
    ExpectNear(alignment.GetTranslation(), 0, 0, 0);
}

TEST_F(TransformedTree, TheInverseAlignmentInvertsBothRotations)
{
    DrawingObject extra;
    extra.SetTranslation(DVector(0.0, 0.0, 100.0));
    const CoordinateTransform inverse = leaf->GetInverseAlignmentTransformation(&extra);
    ExpectNear(RotatedBySetting(inverse, yAxis), 1, 0, 0);
    EXPECT_NEAR(inverse.GetExternalMatrix()[4], 1.0, 1e-8);
    ExpectNear(inverse.GetTranslation(), 10, 1, 100);
}

TEST_F(TransformedTree, GlobalAxesAreTheAxesInTheWorld)
{
    DVector x;
    DVector y;
    DVector z;
    leaf->GetGlobalAxes(&x, &y, &z, nullptr);
    ExpectNear(x, 0, 1, 0);
    ExpectNear(y, -1, 0, 0);
    ExpectNear(z, 0, 0, 1);
    ExpectNear(leaf->GetGlobalZAxis(nullptr), 0, 0, 1);
    DrawingObject extra;
    extra.SetRotation(90, xAxis);
    ExpectNear(leaf->GetGlobalZAxis(&extra), 0, -1, 0);
    leaf->GetGlobalAxes(&x, &y, &z, &extra);
    ExpectNear(x, 0, 0, 1);
}

void ExpectSameAxes(const DrawingObject& a, const DrawingObject& b)
{
    DVector axes[6];
    a.GetGlobalAxes(&axes[0], &axes[1], &axes[2], nullptr);
    b.GetGlobalAxes(&axes[3], &axes[4], &axes[5], nullptr);
    for (int axis = 0; axis < 3; ++axis)
    {
        EXPECT_NEAR(axes[axis].x, axes[axis + 3].x, 1e-6);
        EXPECT_NEAR(axes[axis].y, axes[axis + 3].y, 1e-6);
        EXPECT_NEAR(axes[axis].z, axes[axis + 3].z, 1e-6);
    }
}

TEST_F(TransformedTree, AlignRotationsMakesTheWorldAxesThoseOfAnotherNode)
{
    DrawingObject target;
    target.SetRotation(40, DVector(1.0, 2.0, -1.0));
    target.Rotate(25, yAxis);
    leaf->Rotate(70, DVector(0.0, 1.0, 1.0));
    EXPECT_EQ(leaf->AlignRotations(target, nullptr), 1);
    ExpectSameAxes(*leaf, target);
    ExpectNear(leaf->GetTranslation(), 1, 0, 0);
}

TEST_F(TransformedTree, AlignRotationsWithAnExtraNodeAlignsTheAxesSeenThroughThatNode)
{
    DrawingObject extra;
    extra.SetRotation(30, yAxis);
    CoordinateTransform identity;
    EXPECT_EQ(leaf->AlignRotations(identity, &extra), 1);
    DVector x;
    DVector y;
    DVector z;
    leaf->GetGlobalAxes(&x, &y, &z, &extra);
    EXPECT_NEAR(x.x, 1, 1e-6);
    EXPECT_NEAR(y.y, 1, 1e-6);
    EXPECT_NEAR(z.z, 1, 1e-6);
}

TEST(DrawingObjectTransforms, AligningAnOppositeZTurnsAboutY)
{
    DrawingObject target;
    DrawingObject node;
    node.SetRotation(180, yAxis);
    EXPECT_EQ(node.AlignRotations(target, nullptr), 1);
    ExpectSameAxes(node, target);
}

TEST(DrawingObjectTransforms, AligningAnOppositeYTurnsAboutXAndZWithIt)
{
    DrawingObject target;
    DrawingObject node;
    node.SetRotation(180, zAxis);
    EXPECT_EQ(node.AlignRotations(target, nullptr), 1);
    DVector x;
    DVector y;
    DVector z;
    node.GetGlobalAxes(&x, &y, &z, nullptr);
    ExpectNear(x, -1, 0, 0);
    ExpectNear(y, 0, 1, 0);
    ExpectNear(z, 0, 0, -1);
}

TEST_F(TransformedTree, TheFrontFaceIsTurnedTheShortestWayToTheWorldsZ)
{
    leaf->Rotate(60, xAxis);
    DVector x;
    DVector y;
    DVector z;
    EXPECT_EQ(leaf->AlignGlobalFrontFace(nullptr), 1);
    leaf->GetGlobalAxes(&x, &y, &z, nullptr);
    EXPECT_NEAR(z.z, 1, 1e-6);
    // About the axis of the tilt alone: its turn about z stays.
    EXPECT_NEAR(x.y, 1, 1e-6);
    EXPECT_NEAR(y.x, -1, 1e-6);
}

}  // namespace
