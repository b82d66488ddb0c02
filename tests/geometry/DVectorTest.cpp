// SPDX-License-Identifier: MIT
#include "geometry/DVector.h"

#include "tests/support/ExpectVector.h"
#include "tests/support/RecordBytes.h"

TEST(DVector, StartsAtTheOrigin)
{
    EXPECT_XYZ(DVector(), 0.0, 0.0, 0.0);
}

TEST(DVector, IsConstructedFromAnyNumbers)
{
    EXPECT_XYZ(DVector(0, 0, 0), 0.0, 0.0, 0.0);
    EXPECT_XYZ(DVector(0.5f, 0.25f, -1.0f), 0.5, 0.25, -1.0);
    EXPECT_XYZ(DVector(0.1, 0.2, 0.3), 0.1, 0.2, 0.3);
    EXPECT_XYZ(DVector(1, 0.1f, 0.1), 1.0, double{0.1f}, 0.1);
    EXPECT_XYZ(DVector(Vector(0.1f, 2.0f, 3.0f)), double{0.1f}, 2.0, 3.0);
    EXPECT_XYZ(DVector(Point(1, 2, 3)), 1.0, 2.0, 3.0);
    EXPECT_XYZ(DVector(Point2D(1, 2)), 1.0, 2.0, 0.0);
}

TEST(DVector, IsSetFromAnyNumbers)
{
    DVector vector;
    vector.SetDVector(0.1f, 0.2f, 0.3f);
    EXPECT_XYZ(vector, double{0.1f}, double{0.2f}, double{0.3f});
    vector.SetDVector(0.1, 0.2, 0.3);
    EXPECT_XYZ(vector, 0.1, 0.2, 0.3);
    vector.SetDVector(1, 2, 3);
    EXPECT_XYZ(vector, 1.0, 2.0, 3.0);
}

TEST(DVector, AssigningAPlanePointLeavesZ)
{
    DVector vector(1, 2, 3);
    vector = Point2D(4, 5);
    EXPECT_XYZ(vector, 4.0, 5.0, 3.0);
    vector = Point(6, 7, 8);
    EXPECT_XYZ(vector, 6.0, 7.0, 8.0);
    vector = Vector(0.5f, 1.5f, 2.5f);
    EXPECT_XYZ(vector, 0.5, 1.5, 2.5);
    vector = DVector(0.1, 0.2, 0.3);
    EXPECT_XYZ(vector, 0.1, 0.2, 0.3);
}

TEST(DVector, CalculatesByComponent)
{
    const DVector a(1, 2, 3);
    const DVector b(0.5, 4, -2);
    EXPECT_XYZ(a + b, 1.5, 6.0, 1.0);
    EXPECT_XYZ(a - b, 0.5, -2.0, 5.0);
    EXPECT_XYZ(-a, -1.0, -2.0, -3.0);

    DVector c = a;
    EXPECT_XYZ(c += b, 1.5, 6.0, 1.0);
    EXPECT_XYZ(c -= b, 1.0, 2.0, 3.0);
    EXPECT_XYZ(c /= b, 2.0, 0.5, -1.5);
    EXPECT_XYZ(c /= Vector(2.0f, 0.5f, -0.5f), 1.0, 1.0, 3.0);
}

TEST(DVector, TakesWholeFloatAndDoubleFactors)
{
    const DVector a(1, 2, 3);
    EXPECT_XYZ(a * 2, 2.0, 4.0, 6.0);
    EXPECT_XYZ(a * 2.0f, 2.0, 4.0, 6.0);
    EXPECT_XYZ(a * 0.1, 0.1, 2 * 0.1, 3 * 0.1);
    EXPECT_XYZ(a * 0.1f, double{0.1f}, 2 * double{0.1f}, 3 * double{0.1f});
    EXPECT_XYZ(a / 2, 0.5, 1.0, 1.5);
    EXPECT_XYZ(a / 2.0f, 0.5, 1.0, 1.5);
    EXPECT_XYZ(a / 0.1, 1 / 0.1, 2 / 0.1, 3 / 0.1);

    DVector b = a;
    EXPECT_XYZ(b *= 2, 2.0, 4.0, 6.0);
    EXPECT_XYZ(b *= 2.0f, 4.0, 8.0, 12.0);
    EXPECT_XYZ(b *= 2.0, 8.0, 16.0, 24.0);
    EXPECT_XYZ(b /= 2, 4.0, 8.0, 12.0);
    EXPECT_XYZ(b /= 2.0f, 2.0, 4.0, 6.0);
    EXPECT_XYZ(b /= 2.0, 1.0, 2.0, 3.0);
}

TEST(DVector, TakesVectorsAndPoints)
{
    DVector vector(1, 2, 3);
    EXPECT_XYZ(vector + Vector(1, 1, 1), 2.0, 3.0, 4.0);
    EXPECT_XYZ(vector - Vector(1, 1, 1), 0.0, 1.0, 2.0);
    EXPECT_XYZ(vector + Point(1, 1, 1), 2.0, 3.0, 4.0);
    EXPECT_XYZ(vector - Point(1, 1, 1), 0.0, 1.0, 2.0);
    EXPECT_XYZ(vector += Vector(1, 1, 1), 2.0, 3.0, 4.0);
    EXPECT_XYZ(vector -= Vector(1, 1, 1), 1.0, 2.0, 3.0);
    EXPECT_XYZ(vector += Point(1, 1, 1), 2.0, 3.0, 4.0);
    EXPECT_XYZ(vector -= Point(1, 1, 1), 1.0, 2.0, 3.0);
}

TEST(DVector, PlanePointsLeaveZUnchanged)
{
    DVector vector(1, 2, -0.0);
    EXPECT_XYZ(vector + Point2D(1, 1), 2.0, 3.0, 0.0);
    EXPECT_TRUE(std::signbit((vector + Point2D(1, 1)).z));
    EXPECT_XYZ(vector += Point2D(1, 1), 2.0, 3.0, 0.0);
    EXPECT_TRUE(std::signbit(vector.z));
    EXPECT_XYZ(vector - Point2D(1, 1), 1.0, 2.0, 0.0);
    EXPECT_XYZ(vector -= Point2D(1, 1), 1.0, 2.0, 0.0);
    EXPECT_TRUE(std::signbit(vector.z));
}

TEST(DVector, TimesAVectorIsTheRightHandedCrossProduct)
{
    const DVector a(1, 2, 3);
    DVector b(4, 5, 6);
    EXPECT_XYZ(a * b, -3.0, 6.0, -3.0);
    EXPECT_XYZ(b * a, 3.0, -6.0, 3.0);
}

TEST(DVector, BecomesAVectorByRounding)
{
    const DVector vector(0.1, 1.0 + 0x1p-30, -2.5);
    const Vector rounded = vector;
    EXPECT_XYZ(rounded, 0.1f, 1.0f, -2.5f);
    Vector assigned;
    assigned = vector;
    EXPECT_XYZ(assigned, 0.1f, 1.0f, -2.5f);
    EXPECT_XYZ(static_cast<Vector>(vector), 0.1f, 1.0f, -2.5f);
}

TEST(DVector, MeasuresInDouble)
{
    const DVector a(2, 3, 6);
    EXPECT_EQ(a.Dot(DVector(1, -1, 0.1)), -1.0 + 6 * 0.1);
    EXPECT_EQ(a.Length(), 7.0);
    EXPECT_EQ(a.DistanceTo(DVector(3, 5, 8)), 3.0);
    // The double nearest to sqrt(2), which no float is.
    EXPECT_EQ(DVector(1, 1, 0).Length(), 0x1.6a09e667f3bcdp+0);
}

TEST(DVector, NormalizeRefusesTheZeroVectorOnly)
{
    DVector zero;
    EXPECT_EQ(zero.Normalize(), 0);
    EXPECT_XYZ(zero, 0.0, 0.0, 0.0);

    DVector tiny(1e-30, 0, 0);
    EXPECT_EQ(tiny.Normalize(), 1);
    EXPECT_XYZ(tiny, 1.0, 0.0, 0.0);
}

TEST(DVector, CopyNormalizeDividesByTheDoubleLength)
{
    const DVector vector(3, 4, 0);
    EXPECT_XYZ(vector.CopyNormalize(), 0.6, 0.8, 0.0);
    EXPECT_XYZ(vector, 3.0, 4.0, 0.0);
    EXPECT_TRUE(std::isnan(DVector().CopyNormalize().x));
}

TEST(DVector, NormalizeAndDotChangesBothOperands)
{
    DVector a(0, 5, 0);
    DVector b(0, -2, 0);
    EXPECT_EQ(a.NormalizeAndDot(b), -1.0);
    EXPECT_XYZ(a, 0.0, 1.0, 0.0);
    EXPECT_XYZ(b, 0.0, -1.0, 0.0);
}

TEST(DVector, NormalizeAndDotStopsAtTheFirstZero)
{
    DVector zero;
    DVector other(2, 0, 0);
    EXPECT_EQ(zero.NormalizeAndDot(other), 0.0);
    EXPECT_XYZ(other, 2.0, 0.0, 0.0);
    EXPECT_EQ(other.NormalizeAndDot(zero), 0.0);
    EXPECT_XYZ(other, 1.0, 0.0, 0.0);
}

TEST(DVector, RecordIsThreeDoublesWithoutAVersion)
{
    DVector vector(1, -2, 0.5);
    const Bytes expected = {0, 0, 0, 0,    0, 0, 0xF0, 0x3F, 0, 0, 0,    0,
                            0, 0, 0, 0xC0, 0, 0, 0,    0,    0, 0, 0xE0, 0x3F};
    EXPECT_EQ(Stored(vector), expected);

    DVector loaded;
    LoadRecord(loaded, expected);
    EXPECT_XYZ(loaded, 1.0, -2.0, 0.5);
}

TEST(DVector, IsCreatedByItsClassName)
{
    const std::unique_ptr<CObject> object(CRuntimeClass::FromName("DVector")->CreateObject());
    EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(DVector)));
    EXPECT_EQ(RUNTIME_CLASS(DVector)->m_wSchema, VERSIONABLE_SCHEMA | 1);
}
