// SPDX-License-Identifier: MIT
#include "geometry/CoordinateTransform.h"

#include "tests/geometry/TransformSamples.h"
#include "tests/support/ExpectVector.h"
#include "tests/support/RecordBytes.h"

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

TEST(CoordinateTransform, AssigningANewTransformForgetsEverything)
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
