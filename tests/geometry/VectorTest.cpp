// SPDX-License-Identifier: MIT
#include "geometry/Vector.h"

#include "tests/support/ExpectVector.h"
#include "tests/support/RecordBytes.h"

TEST(Vector, StartsAtTheOrigin)
{
    EXPECT_XYZ(Vector(), 0.0f, 0.0f, 0.0f);
}

TEST(Vector, IsConstructedFromFloatsPointsAndPlaneVectors)
{
    EXPECT_XYZ(Vector(1, 2.5f, 3.5), 1.0f, 2.5f, 3.5f);
    EXPECT_XYZ(Vector(Point(1, 2, 3)), 1.0f, 2.0f, 3.0f);
    const Vector original(4.0f, 5.0f, 6.0f);
    EXPECT_XYZ(Vector(original), 4.0f, 5.0f, 6.0f);
}

TEST(Vector, ConstructingFromAPlaneValueSetsZToZero)
{
    const Vector fromPoint = Point2D(-1, 2);
    EXPECT_XYZ(fromPoint, -1.0f, 2.0f, 0.0f);
    const Vector fromVector = Vector2D(0.5f, 1.5f);
    EXPECT_XYZ(fromVector, 0.5f, 1.5f, 0.0f);
}

TEST(Vector, AssigningAPlaneValueLeavesZ)
{
    Vector vector(1.0f, 2.0f, 3.0f);
    vector = Point2D(4, 5);
    EXPECT_XYZ(vector, 4.0f, 5.0f, 3.0f);
    vector = Vector2D(6.0f, 7.0f);
    EXPECT_XYZ(vector, 6.0f, 7.0f, 3.0f);
    vector = Point(8, 9, 10);
    EXPECT_XYZ(vector, 8.0f, 9.0f, 10.0f);
    vector = Vector(1.0f, 2.0f, 3.0f);
    EXPECT_XYZ(vector, 1.0f, 2.0f, 3.0f);
}

TEST(Vector, SetVectorIgnoresAFourthArgument)
{
    Vector vector;
    vector.SetVector(1.0f, 2.0f, 3.0f);
    EXPECT_XYZ(vector, 1.0f, 2.0f, 3.0f);
    vector.SetVector(4.0f, 5.0f, 6.0f, 77u);
    EXPECT_XYZ(vector, 4.0f, 5.0f, 6.0f);
}

TEST(Vector, CalculatesByComponent)
{
    const Vector a(1.0f, 2.0f, 3.0f);
    const Vector b(0.5f, 4.0f, -2.0f);
    EXPECT_XYZ(a + b, 1.5f, 6.0f, 1.0f);
    EXPECT_XYZ(a - b, 0.5f, -2.0f, 5.0f);
    EXPECT_XYZ(-a, -1.0f, -2.0f, -3.0f);
    EXPECT_XYZ(a * 2, 2.0f, 4.0f, 6.0f);
    EXPECT_XYZ(a * 2.0, 2.0f, 4.0f, 6.0f);
    EXPECT_XYZ(a / 2, 0.5f, 1.0f, 1.5f);
    EXPECT_XYZ(a / b, 2.0f, 0.5f, -1.5f);

    Vector c = a;
    EXPECT_XYZ(c += b, 1.5f, 6.0f, 1.0f);
    EXPECT_XYZ(c -= b, 1.0f, 2.0f, 3.0f);
    EXPECT_XYZ(c *= 2, 2.0f, 4.0f, 6.0f);
    EXPECT_XYZ(c /= 2, 1.0f, 2.0f, 3.0f);
    EXPECT_XYZ(c *= b, 0.5f, 8.0f, -6.0f);
    EXPECT_XYZ(c /= b, 1.0f, 2.0f, 3.0f);
    EXPECT_XYZ(c, 1.0f, 2.0f, 3.0f);
}

TEST(Vector, PlaneOperandsLeaveZUnchanged)
{
    // Even the sign of a negative zero, which adding 0 would lose.
    Vector vector(1.0f, 2.0f, -0.0f);
    EXPECT_XYZ(vector += Point2D(10, 20), 11.0f, 22.0f, 0.0f);
    EXPECT_TRUE(std::signbit(vector.z));
    EXPECT_XYZ(vector += Vector2D(0.5f, 0.25f), 11.5f, 22.25f, 0.0f);
    EXPECT_TRUE(std::signbit(vector.z));
    EXPECT_XYZ(vector -= Point2D(1, 2), 10.5f, 20.25f, 0.0f);
    EXPECT_XYZ(vector -= Vector2D(0.5f, 0.25f), 10.0f, 20.0f, 0.0f);
    EXPECT_TRUE(std::signbit(vector.z));

    const Vector constant(1.0f, 2.0f, 3.0f);
    EXPECT_XYZ(constant + Point2D(1, 1), 2.0f, 3.0f, 3.0f);
    EXPECT_XYZ(constant - Point2D(1, 1), 0.0f, 1.0f, 3.0f);
    EXPECT_XYZ(constant + Vector2D(1, 1), 2.0f, 3.0f, 3.0f);
    EXPECT_XYZ(constant - Vector2D(1, 1), 0.0f, 1.0f, 3.0f);
}

TEST(Vector, PointOperandsAreWidened)
{
    Vector vector(1.0f, 2.0f, 3.0f);
    EXPECT_XYZ(vector + Point(1, 2, 3), 2.0f, 4.0f, 6.0f);
    EXPECT_XYZ(vector - Point(1, 2, 4), 0.0f, 0.0f, -1.0f);
    EXPECT_XYZ(vector += Point(1, 2, 3), 2.0f, 4.0f, 6.0f);
    EXPECT_XYZ(vector -= Point(1, 2, 4), 1.0f, 2.0f, 2.0f);
}

TEST(Vector, TimesAVectorIsTheRightHandedCrossProduct)
{
    const Vector x(1.0f, 0.0f, 0.0f);
    Vector y(0.0f, 1.0f, 0.0f);
    EXPECT_XYZ(x * y, 0.0f, 0.0f, 1.0f);
    EXPECT_XYZ(y * x, 0.0f, 0.0f, -1.0f);
    EXPECT_XYZ(Vector(1, 2, 3) * Vector(4, 5, 6), -3.0f, 6.0f, -3.0f);
}

TEST(Vector, Measures)
{
    const Vector a(2.0f, 3.0f, 6.0f);
    EXPECT_EQ(a.Dot(Vector(1.0f, -1.0f, 2.0f)), 11.0f);
    EXPECT_EQ(a.Length(), 7.0f);
    EXPECT_EQ(a.DistanceTo(Vector(3.0f, 5.0f, 8.0f)), 3.0f);
}

TEST(Vector, SumsSquaresInDouble)
{
    EXPECT_EQ((Vector(2, 3, 6) * 0x1p100f).Length(), 7 * 0x1p100f);
    EXPECT_EQ(Vector(0.0f, 0.0f, 1e-30f).Length(), 1e-30f);
}

TEST(Vector, NormalizeLeavesTheZeroVector)
{
    Vector zero;
    EXPECT_EQ(zero.Normalize(), 0);
    EXPECT_XYZ(zero, 0.0f, 0.0f, 0.0f);
}

TEST(Vector, NormalizeHasNoTolerance)
{
    Vector tiny(1e-30f, 0.0f, 0.0f);
    EXPECT_EQ(tiny.Normalize(), 1);
    EXPECT_XYZ(tiny, 1.0f, 0.0f, 0.0f);
}

TEST(Vector, NormalizeDividesByTheDoubleLengthAndCopyNormalizeByTheFloatLength)
{
    // 3 / sqrt(14), rounded once, and over the float nearest to sqrt(14).
    Vector vector(1.0f, 2.0f, 3.0f);
    EXPECT_XYZ(vector.CopyNormalize(), 0x1.11aceep-2f, 0x1.11aceep-1f, 0x1.9a8364p-1f);
    EXPECT_XYZ(vector, 1.0f, 2.0f, 3.0f);
    EXPECT_EQ(vector.Normalize(), 1);
    EXPECT_XYZ(vector, 0x1.11aceep-2f, 0x1.11aceep-1f, 0x1.9a8366p-1f);
}

TEST(Vector, CopyNormalizeOfZeroIsNotANumber)
{
    const Vector result = Vector().CopyNormalize();
    EXPECT_TRUE(std::isnan(result.x) && std::isnan(result.y) && std::isnan(result.z));
}

TEST(Vector, NormalizeAndDotChangesBothOperands)
{
    Vector a(0.0f, 0.0f, 4.0f);
    Vector b(0.0f, 0.0f, -3.0f);
    EXPECT_EQ(a.NormalizeAndDot(b), -1.0f);
    EXPECT_XYZ(a, 0.0f, 0.0f, 1.0f);
    EXPECT_XYZ(b, 0.0f, 0.0f, -1.0f);
}

TEST(Vector, NormalizeAndDotWithAZeroThisLeavesTheArgument)
{
    Vector zero;
    Vector other(2.0f, 0.0f, 0.0f);
    EXPECT_EQ(zero.NormalizeAndDot(other), 0.0f);
    EXPECT_XYZ(other, 2.0f, 0.0f, 0.0f);
}

TEST(Vector, NormalizeAndDotWithAZeroArgumentNormalizesThis)
{
    Vector zero;
    Vector vector(2.0f, 0.0f, 0.0f);
    EXPECT_EQ(vector.NormalizeAndDot(zero), 0.0f);
    EXPECT_XYZ(vector, 1.0f, 0.0f, 0.0f);
}

TEST(Vector, RecordIsThreeFloatsWithoutAVersion)
{
    Vector vector(1.0f, -2.0f, 0.5f);
    const Bytes expected = {0x00, 0x00, 0x80, 0x3F, 0x00, 0x00, 0x00, 0xC0, 0x00, 0x00, 0x00, 0x3F};
    EXPECT_EQ(Stored(vector), expected);

    Vector loaded;
    LoadRecord(loaded, expected);
    EXPECT_XYZ(loaded, 1.0f, -2.0f, 0.5f);
}

TEST(Vector, IsCreatedByItsClassName)
{
    const std::unique_ptr<CObject> object(CRuntimeClass::FromName("Vector")->CreateObject());
    EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(Vector)));
    EXPECT_EQ(RUNTIME_CLASS(Vector)->m_wSchema, VERSIONABLE_SCHEMA | 1);
}
