// SPDX-License-Identifier: MIT
// What a transform does to points, in every form of the operations.

#include "geometry/CoordinateTransform.h"
#include "tests/geometry/TransformSamples.h"
#include "tests/support/ExpectVector.h"
#include "tests/support/RecordBytes.h"

namespace
{
/// Both forms of one family of point operations, for both vector types.
struct Family
{
    const char* name;
    void (CoordinateTransform::*floatsInPlace)(Vector*, int) const;
    void (CoordinateTransform::*floats)(const Vector*, Vector*, int) const;
    void (CoordinateTransform::*doublesInPlace)(DVector*, int) const;
    void (CoordinateTransform::*doubles)(const DVector*, DVector*, int) const;
    DVector expected[2];
};

void ExpectFamily(const CoordinateTransform& transform, const Family& family)
{
    SCOPED_TRACE(family.name);
    const DVector points[2] = {DVector(1, 2, 3), DVector(-1, 0, 0.5)};
    const Vector floatPoints[2] = {points[0], points[1]};

    DVector doubles[2];
    (transform.*family.doubles)(points, doubles, 2);
    DVector doublesInPlace[2] = {points[0], points[1]};
    (transform.*family.doublesInPlace)(doublesInPlace, 2);
    Vector floats[2];
    (transform.*family.floats)(floatPoints, floats, 2);
    Vector floatsInPlace[2] = {floatPoints[0], floatPoints[1]};
    (transform.*family.floatsInPlace)(floatsInPlace, 2);
    for (int i = 0; i < 2; ++i)
    {
        const DVector& expected = family.expected[i];
        EXPECT_XYZ(doubles[i], expected.x, expected.y, expected.z);
        EXPECT_XYZ(doublesInPlace[i], expected.x, expected.y, expected.z);
        EXPECT_XYZ(floats[i], expected.x, expected.y, expected.z);
        EXPECT_XYZ(floatsInPlace[i], expected.x, expected.y, expected.z);
    }
}
}  // namespace

TEST(CoordinateTransform, EveryPointOperationHasAllItsForms)
{
    using Transform = CoordinateTransform;
    // Scaled by (2, 2, 4), turned a quarter about z, moved by (10, 20, 30):
    // M takes (x, y, z) to (-2y + 10, 2x + 20, 4z + 30), its transpose to (2y, -2x, 4z).
    CoordinateTransform transform = Turned();
    transform.SetScale(DVector(2, 2, 4));
    transform.SetTranslation(DVector(10, 20, 30));
    const Family families[] = {
        {"Transform",
         &Transform::TransformVectors,
         &Transform::TransformVectors,
         &Transform::TransformDVectors,
         &Transform::TransformDVectors,
         {DVector(6, 22, 42), DVector(10, 18, 32)}},
        {"Untransform",
         &Transform::UntransformVectors,
         &Transform::UntransformVectors,
         &Transform::UntransformDVectors,
         &Transform::UntransformDVectors,
         {DVector(-6, -22, -18), DVector(-10, -18, -28)}},
        {"Rotate",
         &Transform::RotateVectors,
         &Transform::RotateVectors,
         &Transform::RotateDVectors,
         &Transform::RotateDVectors,
         {DVector(-4, 2, 12), DVector(0, -2, 2)}},
        {"Unrotate",
         &Transform::UnrotateVectors,
         &Transform::UnrotateVectors,
         &Transform::UnrotateDVectors,
         &Transform::UnrotateDVectors,
         {DVector(4, -2, 12), DVector(0, 2, 2)}},
        {"Scale",
         &Transform::ScaleVectors,
         &Transform::ScaleVectors,
         &Transform::ScaleDVectors,
         &Transform::ScaleDVectors,
         {DVector(2, 4, 12), DVector(-2, 0, 2)}},
        {"Translate",
         &Transform::TranslateVectors,
         &Transform::TranslateVectors,
         &Transform::TranslateDVectors,
         &Transform::TranslateDVectors,
         {DVector(11, 22, 33), DVector(9, 20, 30.5)}},
    };
    for (const Family& family : families)
    {
        ExpectFamily(transform, family);
    }
}

TEST(CoordinateTransform, VectorsAreTransformedInDoubleAndRoundedOnce)
{
    // In float 1e8 + 1 is 1e8, and the sum would be 0.
    Matrix matrix = identity;
    matrix[4] = 1;
    matrix[8] = 1;
    CoordinateTransform transform;
    transform.LoadComposite(matrix.data());
    Vector point(1e8f, 1.0f, -1e8f);
    transform.TransformVectors(&point, 1);
    EXPECT_EQ(point.x, 1.0f);
}

TEST(CoordinateTransform, UntransformUndoesAPureRotationAndAPureTranslation)
{
    for (const CoordinateTransform& transform : {Turned(), Moved(1, 2, 3)})
    {
        Vector point(4, 5, 6);
        transform.TransformVectors(&point, 1);
        transform.UntransformVectors(&point, 1);
        EXPECT_XYZ(point, 4.0f, 5.0f, 6.0f);
    }
}

TEST(CoordinateTransform, UntransformIsNotAnInverseOfRotationPlusTranslation)
{
    CoordinateTransform transform = Turned();
    transform.SetTranslation(DVector(1, 2, 3));
    Vector point(4, 5, 6);
    transform.TransformVectors(&point, 1);
    EXPECT_XYZ(point, -4.0f, 6.0f, 9.0f);
    // The transpose takes (x, y, z) to (y, -x, z): (6, 4, 9), less (1, 2, 3).
    transform.UntransformVectors(&point, 1);
    EXPECT_XYZ(point, 5.0f, 2.0f, 6.0f);
}
