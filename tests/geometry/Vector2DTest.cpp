// SPDX-License-Identifier: MIT
#include "geometry/Vector2D.h"

#include "tests/support/ExpectVector.h"

TEST(Vector2D, StartsAtTheOrigin)
{
    EXPECT_XY(Vector2D(), 0.0f, 0.0f);
}

TEST(Vector2D, IsSetFromFloatsAndPoints)
{
    Vector2D vector(1.5f, -2);
    EXPECT_XY(vector, 1.5f, -2.0f);
    vector.SetVector(3.0f, 4.0f);
    EXPECT_XY(vector, 3.0f, 4.0f);
    vector = Point2D(-5, 6);
    EXPECT_XY(vector, -5.0f, 6.0f);
    vector = Vector2D(7.0f, 8.0f);
    EXPECT_XY(vector, 7.0f, 8.0f);
}

TEST(Vector2D, CalculatesByComponent)
{
    const Vector2D a(1.0f, 2.0f);
    const Vector2D b(0.5f, 4.0f);
    EXPECT_XY(a + b, 1.5f, 6.0f);
    EXPECT_XY(a - b, 0.5f, -2.0f);
    EXPECT_XY(a + Point2D(3, 4), 4.0f, 6.0f);
    EXPECT_XY(a - Point2D(3, 4), -2.0f, -2.0f);
    EXPECT_XY(-a, -1.0f, -2.0f);
    EXPECT_XY(a * 2, 2.0f, 4.0f);
    EXPECT_XY(a / 2, 0.5f, 1.0f);

    Vector2D c = a;
    EXPECT_XY(c += b, 1.5f, 6.0f);
    EXPECT_XY(c -= b, 1.0f, 2.0f);
    EXPECT_XY(c += Point2D(1, 1), 2.0f, 3.0f);
    EXPECT_XY(c -= Point2D(1, 1), 1.0f, 2.0f);
    EXPECT_XY(c *= 4, 4.0f, 8.0f);
    EXPECT_XY(c /= 2, 2.0f, 4.0f);
    EXPECT_XY(c *= b, 1.0f, 16.0f);
    EXPECT_XY(c /= b, 2.0f, 4.0f);
    EXPECT_XY(c, 2.0f, 4.0f);
}

TEST(Vector2D, Measures)
{
    const Vector2D a(3.0f, 4.0f);
    EXPECT_EQ(a.Dot(Vector2D(2.0f, -1.0f)), 2.0f);
    EXPECT_EQ(a.Length(), 5.0f);
    EXPECT_EQ(a.DistanceTo(Vector2D(8.0f, 16.0f)), 13.0f);
}

TEST(Vector2D, SumsSquaresInDouble)
{
    // In float the squares would be infinite and zero.
    EXPECT_EQ((Vector2D(3, 4) * 0x1p100f).Length(), 5 * 0x1p100f);
    EXPECT_EQ(Vector2D(1e-30f, 0.0f).Length(), 1e-30f);
}

TEST(Vector2D, NormalizeRefusesTheZeroVectorOnly)
{
    Vector2D zero;
    EXPECT_EQ(zero.Normalize(), 0);
    EXPECT_XY(zero, 0.0f, 0.0f);

    Vector2D tiny(1e-30f, 0.0f);
    EXPECT_EQ(tiny.Normalize(), 1);
    EXPECT_XY(tiny, 1.0f, 0.0f);
}

TEST(Vector2D, NormalizeDividesByTheDoubleLengthAndCopyNormalizeByTheFloatLength)
{
    // 3 / sqrt(10), rounded once, and over the float nearest to sqrt(10).
    Vector2D vector(3.0f, 1.0f);
    EXPECT_XY(vector.CopyNormalize(), 0x1.e5b9dp-1f, 0x1.43d136p-2f);
    EXPECT_XY(vector, 3.0f, 1.0f);
    EXPECT_EQ(vector.Normalize(), 1);
    EXPECT_XY(vector, 0x1.e5b9d2p-1f, 0x1.43d136p-2f);
}

TEST(Vector2D, CopyNormalizeOfZeroIsNotANumber)
{
    EXPECT_TRUE(std::isnan(Vector2D().CopyNormalize().x));
}

TEST(Vector2D, NormalizeAndDotChangesBothOperands)
{
    Vector2D a(2.0f, 0.0f);
    Vector2D b(0.0f, -3.0f);
    EXPECT_EQ(a.NormalizeAndDot(b), 0.0f);
    EXPECT_XY(a, 1.0f, 0.0f);
    EXPECT_XY(b, 0.0f, -1.0f);

    Vector2D c(-5.0f, 0.0f);
    EXPECT_EQ(a.NormalizeAndDot(c), -1.0f);
}

TEST(Vector2D, NormalizeAndDotStopsAtTheFirstZero)
{
    Vector2D zero;
    Vector2D other(2.0f, 0.0f);
    EXPECT_EQ(zero.NormalizeAndDot(other), 0.0f);
    EXPECT_XY(other, 2.0f, 0.0f);
    EXPECT_EQ(other.NormalizeAndDot(zero), 0.0f);
    EXPECT_XY(other, 1.0f, 0.0f);
}

TEST(Vector2D, GivesItsFloatsInOrder)
{
    Vector2D vector(1.0f, 2.0f);
    float* const floats = vector;
    EXPECT_EQ(floats[0], 1.0f);
    EXPECT_EQ(floats[1], 2.0f);
    floats[1] = 3.0f;
    EXPECT_EQ(vector.y, 3.0f);
    const Vector2D& constant = vector;
    EXPECT_EQ(static_cast<const float*>(constant), floats);
}
