// SPDX-License-Identifier: MIT
#include "geometry/CoordinateTransform.h"

#include "tests/support/ExpectVector.h"
#include "tests/support/RecordBytes.h"

#include <array>

namespace
{
using Matrix = std::array<double, 16>;

constexpr Matrix identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// A quarter turn about z: (x, y) goes to (-y, x). Whole numbers, so results are exact.
constexpr Matrix quarterTurn = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

Matrix Copy(const double* matrix)
{
    Matrix copy;
    std::copy_n(matrix, 16, copy.begin());
    return copy;
}

Matrix Composite(const CoordinateTransform& transform)
{
    return Copy(transform.GetCompositeMatrix());
}

Matrix External(const CoordinateTransform& transform)
{
    return Copy(transform.GetExternalMatrix());
}

Matrix Rotation(const CoordinateTransform& transform)
{
    return Copy(transform.GetRotationMatrix());
}

void ExpectNear(const Matrix& actual, const Matrix& expected, double distance)
{
    for (int i = 0; i < 16; ++i)
    {
        EXPECT_NEAR(actual[i], expected[i], distance) << "element " << i;
    }
}

CoordinateTransform Turned()
{
    CoordinateTransform transform;
    transform.SetRotationMatrix(quarterTurn.data());
    return transform;
}

CoordinateTransform Moved(double x, double y, double z)
{
    CoordinateTransform transform;
    transform.SetTranslation(DVector(x, y, z));
    return transform;
}

DVector Transformed(const CoordinateTransform& transform, DVector point)
{
    transform.TransformDVectors(&point, 1);
    return point;
}
}  // namespace

TEST(CoordinateTransform, StartsAsTheIdentity)
{
    const CoordinateTransform transform;
    EXPECT_EQ(Composite(transform), identity);
    EXPECT_EQ(External(transform), identity);
    EXPECT_EQ(Rotation(transform), identity);
    EXPECT_XYZ(transform.GetScale(), 1.0, 1.0, 1.0);
    EXPECT_XYZ(transform.GetTranslation(), 0.0, 0.0, 0.0);
}

TEST(CoordinateTransform, ResetForgetsEverything)
{
    CoordinateTransform transform = Turned();
    transform.SetScale(DVector(2, 3, 4));
    transform.SetTranslation(DVector(5, 6, 7));
    CoordinateTransform outer = Moved(1, 2, 3);
    transform.Combine(&outer);
    transform.Reset();
    EXPECT_EQ(Composite(transform), identity);
    EXPECT_EQ(External(transform), identity);
    EXPECT_EQ(Rotation(transform), identity);
    EXPECT_XYZ(transform.GetScale(), 1.0, 1.0, 1.0);
    EXPECT_XYZ(transform.GetTranslation(), 0.0, 0.0, 0.0);
}

TEST(CoordinateTransform, ResetRotationKeepsScaleAndTranslation)
{
    CoordinateTransform transform = Turned();
    transform.SetScale(DVector(2, 3, 4));
    transform.SetTranslation(DVector(5, 6, 7));
    CoordinateTransform outer = Moved(1, 2, 3);
    transform.Combine(&outer);
    transform.ResetRotation();
    EXPECT_EQ(Rotation(transform), identity);
    EXPECT_EQ(External(transform), identity);
    EXPECT_EQ(Composite(transform), (Matrix{2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 5, 6, 7, 1}));
}

TEST(CoordinateTransform, LoadIdentityKeepsTheExternalMatrixAndRebuildsNothing)
{
    CoordinateTransform transform = Turned();
    transform.SetTranslation(DVector(5, 6, 7));
    CoordinateTransform outer = Moved(1, 2, 3);
    transform.Combine(&outer);
    transform.LoadIdentity();
    EXPECT_EQ(Composite(transform), identity);
    EXPECT_EQ(Rotation(transform), identity);
    EXPECT_EQ(External(transform), (Matrix{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1}));
    EXPECT_XYZ(transform.GetTranslation(), 5.0, 6.0, 7.0);
}

TEST(CoordinateTransform, LoadIdentityFillsAnyMatrix)
{
    Matrix matrix = {};
    CoordinateTransform transform;
    transform.LoadIdentity(matrix.data());
    EXPECT_EQ(matrix, identity);
}

TEST(CoordinateTransform, LoadCompositeLeavesTheSettings)
{
    CoordinateTransform transform = Moved(1, 2, 3);
    Matrix matrix;
    for (int i = 0; i < 16; ++i)
    {
        matrix[i] = i;
    }
    transform.LoadComposite(matrix.data());
    EXPECT_EQ(Composite(transform), matrix);
    EXPECT_EQ(Rotation(transform), identity);
    EXPECT_XYZ(transform.GetTranslation(), 1.0, 2.0, 3.0);
}

TEST(CoordinateTransform, ScalesThenRotatesThenTranslatesThenGoesThroughTheExternalMatrix)
{
    CoordinateTransform transform = Turned();
    transform.SetScale(DVector(2, 3, 4));
    transform.SetTranslation(DVector(10, 20, 30));
    // (1, 1, 1) scaled (2, 3, 4), turned (-3, 2, 4), moved (7, 22, 34).
    EXPECT_XYZ(Transformed(transform, DVector(1, 1, 1)), 7.0, 22.0, 34.0);

    CoordinateTransform outer = Turned();
    transform.Combine(&outer);
    EXPECT_XYZ(Transformed(transform, DVector(1, 1, 1)), -22.0, 7.0, 34.0);
}

TEST(CoordinateTransform, ScaleAndTranslationApplyInThatOrder)
{
    CoordinateTransform transform;
    transform.SetScale(DVector(2, 2, 2));
    transform.SetTranslation(DVector(1, 0, 0));
    Vector point(1, 1, 1);
    transform.TransformVectors(&point, 1);
    EXPECT_XYZ(point, 3.0f, 2.0f, 2.0f);
}

TEST(CoordinateTransform, AQuarterTurnAboutZTakesXToY)
{
    CoordinateTransform transform;
    transform.SetRotation(90, DVector(0, 0, 1));
    Vector point(1, 0, 0);
    transform.TransformVectors(&point, 1);
    EXPECT_XYZ_NEAR(point, 0.0f, 1.0f, 0.0f, 1e-8f);
}

TEST(CoordinateTransform, RotationIsRightHandedAboutEachAxis)
{
    CoordinateTransform transform;
    transform.SetRotation(90, DVector(1, 0, 0));
    EXPECT_XYZ_NEAR(Transformed(transform, DVector(0, 1, 0)), 0.0, 0.0, 1.0, 1e-8);
    transform.SetRotation(90, DVector(0, 1, 0));
    EXPECT_XYZ_NEAR(Transformed(transform, DVector(0, 0, 1)), 1.0, 0.0, 0.0, 1e-8);
}

TEST(CoordinateTransform, RotationAboutTheSpaceDiagonalExchangesTheAxes)
{
    // The axis is normalized on a copy; a third of a turn takes x to y, y to z, z to x.
    const DVector axis(5, 5, 5);
    CoordinateTransform transform;
    transform.SetRotation(120, axis);
    ExpectNear(Rotation(transform), {0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0, 0, 0, 0, 1}, 1e-8);
    EXPECT_XYZ(axis, 5.0, 5.0, 5.0);
}

TEST(CoordinateTransform, RotationFollowsItsFormulaTermForTerm)
{
    const double angle = 30 * 3.141592654 * (1.0 / 180.0);
    const double s = std::sin(angle);
    const double c = std::cos(angle);
    const double x = 2.0 / 7.0;
    const double y = 3.0 / 7.0;
    const double z = 6.0 / 7.0;
    CoordinateTransform transform;
    transform.SetRotation(30, DVector(2, 3, 6));
    const Matrix expected = {x * x + (1 - x * x) * c,
                             x * y * (1 - c) + z * s,
                             x * z * (1 - c) - y * s,
                             0,
                             x * y * (1 - c) - z * s,
                             y * y + (1 - y * y) * c,
                             y * z * (1 - c) + x * s,
                             0,
                             x * z * (1 - c) + y * s,
                             y * z * (1 - c) - x * s,
                             z * z + (1 - z * z) * c,
                             0,
                             0,
                             0,
                             0,
                             1};
    EXPECT_EQ(Rotation(transform), expected);
}

TEST(CoordinateTransform, AZeroAxisKeepsTheCosineTermsAlone)
{
    const double c = std::cos(60 * 3.141592654 * (1.0 / 180.0));
    CoordinateTransform transform;
    transform.SetRotation(60, DVector(0, 0, 0));
    EXPECT_EQ(Rotation(transform), (Matrix{c, 0, 0, 0, 0, c, 0, 0, 0, 0, c, 0, 0, 0, 0, 1}));
}

TEST(CoordinateTransform, RotatingTwiceEqualsRotatingTwiceAsFar)
{
    CoordinateTransform twice;
    twice.Rotate(25, DVector(1, 2, 3));
    twice.Rotate(25, Vector(1, 2, 3));
    CoordinateTransform once;
    once.SetRotation(50, DVector(1, 2, 3));
    ExpectNear(Rotation(twice), Rotation(once), 1e-15);
    ExpectNear(Composite(twice), Composite(once), 1e-15);
}

TEST(CoordinateTransform, RotateComesAfterTheRotationSoFar)
{
    // x to y by the first, y to z by the second.
    CoordinateTransform transform;
    transform.Rotate(90, DVector(0, 0, 1));
    transform.Rotate(90, DVector(1, 0, 0));
    EXPECT_XYZ_NEAR(Transformed(transform, DVector(1, 0, 0)), 0.0, 0.0, 1.0, 1e-8);
}

TEST(CoordinateTransform, SetRotationMatrixTakesDoublesAndFloats)
{
    CoordinateTransform transform = Moved(1, 2, 3);
    transform.SetRotationMatrix(quarterTurn.data());
    EXPECT_EQ(Rotation(transform), quarterTurn);
    EXPECT_EQ(Composite(transform), (Matrix{0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1}));

    std::array<float, 16> floats;
    std::fill(floats.begin(), floats.end(), 0.1f);
    transform.SetRotationMatrix(floats.data());
    EXPECT_EQ(Rotation(transform)[15], double{0.1f});
}

TEST(CoordinateTransform, SetAlignmentRotationTakesTheVectorsOntoTheAxes)
{
    CoordinateTransform transform;
    transform.SetAlignmentRotation(DVector(0, 2, 0), DVector(0, 0, 3), DVector(4, 0, 0));
    EXPECT_EQ(Rotation(transform), (Matrix{0, 0, 1, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1}));
    EXPECT_XYZ(Transformed(transform, DVector(0, 1, 0)), 1.0, 0.0, 0.0);
    EXPECT_XYZ(Transformed(transform, DVector(0, 0, 1)), 0.0, 1.0, 0.0);
    EXPECT_XYZ(Transformed(transform, DVector(1, 0, 0)), 0.0, 0.0, 1.0);
}

TEST(CoordinateTransform, ScaleEditsTheCompositeInPlace)
{
    CoordinateTransform transform = Turned();
    transform.SetTranslation(DVector(10, 20, 30));
    transform.SetScale(DVector(2, 2, 2));
    transform.Scale(DVector(1, 3, 5));
    EXPECT_XYZ(transform.GetScale(), 2.0, 6.0, 10.0);
    EXPECT_EQ(Composite(transform), (Matrix{0, 2, 0, 0, -6, 0, 0, 0, 0, 0, 10, 0, 10, 20, 30, 1}));

    // It starts from the composite as it stands, not from the settings.
    transform.LoadComposite(identity.data());
    transform.Scale(DVector(2, 2, 2));
    EXPECT_EQ(Composite(transform), (Matrix{2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1}));
}

TEST(CoordinateTransform, TranslateEditsTheCompositeUnrotatedUntilARebuildTurnsIt)
{
    CoordinateTransform outer = Turned();
    CoordinateTransform transform;
    transform.Combine(&outer);
    transform.Translate(DVector(5, 0, 0));
    EXPECT_XYZ(transform.GetTranslation(), 5.0, 0.0, 0.0);
    EXPECT_XYZ(Transformed(transform, DVector(0, 0, 0)), 5.0, 0.0, 0.0);

    transform.SetScale(DVector(1, 1, 1));
    EXPECT_XYZ(Transformed(transform, DVector(0, 0, 0)), 0.0, 5.0, 0.0);
}

TEST(CoordinateTransform, CombinePutsTheOthersCompositeOutside)
{
    CoordinateTransform transform = Moved(1, 0, 0);
    CoordinateTransform first = Moved(10, 0, 0);
    CoordinateTransform second = Turned();
    transform.Combine(&first);
    transform.Combine(&second);
    // Moved to (11, 0, 0), then turned.
    EXPECT_XYZ(Transformed(transform, DVector(0, 0, 0)), 0.0, 11.0, 0.0);
    EXPECT_EQ(External(transform), (Matrix{0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 10, 0, 1}));
    EXPECT_EQ(Composite(first), (Matrix{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 10, 0, 0, 1}));
}

TEST(CoordinateTransform, CombiningWithItselfIsSafe)
{
    CoordinateTransform transform = Turned();
    transform.SetTranslation(DVector(1, 0, 0));
    transform.Combine(&transform);
    // (1, 0, 0) outside the same once more.
    EXPECT_XYZ(Transformed(transform, DVector(0, 0, 0)), 1.0, 1.0, 0.0);
}

TEST(CoordinateTransform, CombineExternalPutsTheOthersExternalMatrixAloneOutside)
{
    CoordinateTransform turned = Turned();
    CoordinateTransform other = Moved(100, 0, 0);
    other.Combine(&turned);
    CoordinateTransform moved = Moved(1, 0, 0);
    CoordinateTransform transform;
    transform.Combine(&moved);
    transform.CombineExternal(&other);
    // Moved to (2, 0, 0), then turned; the other order would give (1, 1, 0).
    EXPECT_XYZ(Transformed(transform, DVector(1, 0, 0)), 0.0, 2.0, 0.0);
}

TEST(CoordinateTransform, ExternalToRotationDropsTheTranslationAndRebuildsNothing)
{
    CoordinateTransform outer = Turned();
    outer.SetTranslation(DVector(1, 2, 3));
    CoordinateTransform transform;
    transform.Combine(&outer);
    const Matrix composite = Composite(transform);
    transform.ExternalToRotation();
    EXPECT_EQ(Rotation(transform), quarterTurn);
    EXPECT_EQ(Composite(transform), composite);
}

TEST(CoordinateTransform, ExternalToTranslationRebuildsNothing)
{
    CoordinateTransform outer = Moved(1, 2, 3);
    CoordinateTransform transform;
    transform.Combine(&outer);
    const Matrix composite = Composite(transform);
    transform.ExternalToTranslation();
    EXPECT_XYZ(transform.GetTranslation(), 1.0, 2.0, 3.0);
    EXPECT_EQ(Composite(transform), composite);
}

TEST(CoordinateTransform, InvertRotationsTransposesAndKeepsTheExternalTranslation)
{
    CoordinateTransform outer = Turned();
    outer.SetTranslation(DVector(1, 2, 3));
    CoordinateTransform transform;
    transform.SetRotation(90, DVector(1, 0, 0));
    const Matrix before = Rotation(transform);
    transform.Combine(&outer);
    transform.InvertRotations();
    EXPECT_EQ(External(transform), (Matrix{0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1}));
    const Matrix after = Rotation(transform);
    for (int c = 0; c < 3; ++c)
    {
        for (int r = 0; r < 3; ++r)
        {
            EXPECT_EQ(after[4 * c + r], before[4 * r + c]);
        }
    }
    // y turns back to -z, which the external matrix leaves.
    EXPECT_XYZ_NEAR(Transformed(transform, DVector(0, 1, 0)), 1.0, 2.0, 2.0, 1e-8);
}

TEST(CoordinateTransform, CopiesCarryEverything)
{
    CoordinateTransform outer = Turned();
    CoordinateTransform transform = Moved(1, 2, 3);
    transform.SetScale(DVector(4, 5, 6));
    transform.SetRotation(10, DVector(0, 1, 0));
    transform.Combine(&outer);
    transform.LoadComposite(quarterTurn.data());
    CoordinateTransform copy(transform);
    CoordinateTransform assigned;
    assigned = transform;
    EXPECT_EQ(Stored(copy), Stored(transform));
    EXPECT_EQ(Stored(assigned), Stored(transform));
}

TEST(CoordinateTransform, AFreshOneAssignedForgetsEverything)
{
    CoordinateTransform transform = Turned();
    transform.SetScale(DVector(2, 3, 4));
    CoordinateTransform fresh;
    transform = fresh;
    EXPECT_EQ(Stored(transform), Stored(fresh));
    EXPECT_EQ(Composite(transform), identity);
}

TEST(CoordinateTransform, PointersToMatricesFollowEveryChange)
{
    CoordinateTransform transform;
    const double* const composite = transform.GetCompositeMatrix();
    const double* const external = transform.GetExternalMatrix();
    const double* const rotation = transform.GetRotationMatrix();
    EXPECT_EQ(Copy(composite), identity);
    EXPECT_EQ(Copy(external), identity);
    EXPECT_EQ(Copy(rotation), identity);

    transform.SetRotationMatrix(quarterTurn.data());
    EXPECT_EQ(Copy(composite), quarterTurn);
    EXPECT_EQ(Copy(rotation), quarterTurn);
    const CoordinateTransform outer = Moved(1, 2, 3);
    transform.Combine(&outer);
    EXPECT_EQ(external[13], 2.0);
    transform = Moved(4, 5, 6);
    EXPECT_EQ(composite[14], 6.0);
    EXPECT_EQ(Copy(rotation), identity);
    transform = CoordinateTransform();
    EXPECT_EQ(Copy(composite), identity);
    transform.GetCompositeMatrix()[12] = 9.0;
    EXPECT_EQ(composite[12], 9.0);
}

TEST(CoordinateTransform, UnchangedTransformsShareTheirMatrices)
{
    const CoordinateTransform transform;
    CoordinateTransform stored;
    CoordinateTransform loaded;
    LoadRecord(loaded, Stored(stored));
    const CoordinateTransform copy(stored);
    loaded.Reset();
    const CoordinateTransform& seen = loaded;
    EXPECT_EQ(copy.GetCompositeMatrix(), transform.GetCompositeMatrix());
    EXPECT_EQ(seen.GetRotationMatrix(), transform.GetRotationMatrix());
    EXPECT_EQ(seen.GetExternalMatrix(), transform.GetExternalMatrix());
    EXPECT_EQ(Copy(seen.GetCompositeMatrix()), identity);
}

TEST(CoordinateTransform, ATransformWithAChangeHasMatricesOfItsOwn)
{
    const CoordinateTransform unchanged;
    CoordinateTransform negativeZero;
    negativeZero.GetCompositeMatrix()[1] = -0.0;
    CoordinateTransform loaded;
    LoadRecord(loaded, Stored(negativeZero));
    const CoordinateTransform& seen = loaded;
    EXPECT_NE(seen.GetCompositeMatrix(), unchanged.GetCompositeMatrix());
    EXPECT_EQ(Stored(loaded), Stored(negativeZero));
    EXPECT_EQ(Copy(unchanged.GetCompositeMatrix()), identity);
}

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

TEST(CoordinateTransform, RecordHoldsMatricesScaleAndTranslation)
{
    CoordinateTransform outer = Moved(7, 8, 9);
    CoordinateTransform transform = Turned();
    transform.SetScale(DVector(2, 2, 2));
    transform.SetTranslation(DVector(1, 2, 3));
    transform.Combine(&outer);
    const Bytes expected = RecordBytes()
                               .Dword(1)
                               .Doubles({0, 2, 0, 0, -2, 0, 0, 0, 0, 0, 2, 0, 8, 10, 12, 1})
                               .Doubles({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 7, 8, 9, 1})
                               .Doubles({0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1})
                               .Doubles({2, 2, 2})
                               .Doubles({1, 2, 3});
    EXPECT_EQ(Stored(transform), expected);
}

TEST(CoordinateTransform, TheRecordOfAFreshOneHoldsIdentities)
{
    RecordBytes expected;
    expected.Dword(1);
    for (int matrix = 0; matrix < 3; ++matrix)
    {
        expected.Doubles({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    }
    expected.Doubles({1, 1, 1}).Doubles({0, 0, 0});
    CoordinateTransform transform;
    EXPECT_EQ(Stored(transform), Bytes(expected));
}

TEST(CoordinateTransform, LoadingDoesNotRebuildTheComposite)
{
    RecordBytes record;
    record.Dword(1);
    for (int i = 0; i < 54; ++i)
    {
        record.Double(i);
    }
    CoordinateTransform transform;
    LoadRecord(transform, record);
    for (int i = 0; i < 16; ++i)
    {
        EXPECT_EQ(transform.GetCompositeMatrix()[i], i);
        EXPECT_EQ(transform.GetExternalMatrix()[i], 16 + i);
        EXPECT_EQ(transform.GetRotationMatrix()[i], 32 + i);
    }
    EXPECT_XYZ(transform.GetScale(), 48.0, 49.0, 50.0);
    EXPECT_XYZ(transform.GetTranslation(), 51.0, 52.0, 53.0);
}

TEST(CoordinateTransform, RefusesRecordsOfOtherVersions)
{
    CoordinateTransform transform;
    Bytes record = Stored(transform);
    record[0] = 2;
    EXPECT_EQ(LoadCause(transform, record), CArchiveException::badSchema);
}

TEST(CoordinateTransform, IsCreatedByItsClassName)
{
    const std::unique_ptr<CObject> object(
        CRuntimeClass::FromName("CoordinateTransform")->CreateObject());
    EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(CoordinateTransform)));
}
