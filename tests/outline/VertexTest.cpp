// SPDX-License-Identifier: MIT
#include "outline/Vertex.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{

/// A corner between two edges, given by their normals.
Vertex Corner(const Vector& arriving, const Vector& leaving)
{
    Vertex vertex;
    vertex.SetNormal(arriving, Vertex::PreviousEdge);
    vertex.SetNormal(leaving, Vertex::NextEdge);
    vertex.CalculateVertex();
    return vertex;
}

/// A vertex with three different normals.
Vertex MarkedVertex()
{
    Vertex vertex;
    vertex.previousEdgeNormal.SetPoint(0, 10000);
    vertex.vertexNormal.SetPoint(6000, 8000);
    vertex.nextEdgeNormal.SetPoint(10000, 0);
    return vertex;
}

// The float 0.0001 times 6000 and times 8000, rounded to float by hand.
const float stored6000 = 0x1.333332p-1f;
const float stored8000 = 0x1.999998p-1f;

void ExpectPoint(const Point2D& point, int x, int y)
{
    EXPECT_EQ(point.x, x);
    EXPECT_EQ(point.y, y);
}

void ExpectVector(const Vector& vector, float x, float y, float z)
{
    EXPECT_EQ(vector.x, x);
    EXPECT_EQ(vector.y, y);
    EXPECT_EQ(vector.z, z);
}

const Vertex::Faces noFace = static_cast<Vertex::Faces>(0);
const Vertex::Edges noEdge = static_cast<Vertex::Edges>(7);

}  // namespace

TEST(Vertex, ANewVertexIsAllZero)
{
    const Vertex vertex;
    EXPECT_EQ(vertex.miterScale, 0);
    EXPECT_EQ(vertex.flags, 0u);
    ExpectPoint(vertex.nextEdgeNormal, 0, 0);
    ExpectPoint(vertex.vertexNormal, 0, 0);
    ExpectPoint(vertex.point, 0, 0);
    ExpectPoint(vertex.previousEdgeNormal, 0, 0);
}

TEST(Vertex, TheEnumerationsHaveTheirNumbers)
{
    EXPECT_EQ(static_cast<int>(Vertex::PreviousEdge), 1);
    EXPECT_EQ(static_cast<int>(Vertex::VertexEdge), 2);
    EXPECT_EQ(static_cast<int>(Vertex::NextEdge), 3);
    EXPECT_EQ(static_cast<int>(Vertex::BackFace), 1);
    EXPECT_EQ(static_cast<int>(Vertex::SideFace), 2);
    EXPECT_EQ(static_cast<int>(Vertex::FrontFace), 3);
}

TEST(Vertex, CopiesCarryEveryField)
{
    Vertex vertex = MarkedVertex();
    vertex.miterScale = 14142;
    vertex.flags = 7;
    vertex.point.SetPoint(-5, 6);

    const Vertex copy = vertex;
    Vertex assigned;
    assigned = copy;
    EXPECT_EQ(assigned.miterScale, 14142);
    EXPECT_EQ(assigned.flags, 7u);
    ExpectPoint(assigned.point, -5, 6);
    ExpectPoint(assigned.previousEdgeNormal, 0, 10000);
    ExpectPoint(assigned.vertexNormal, 6000, 8000);
    ExpectPoint(assigned.nextEdgeNormal, 10000, 0);
}

TEST(Vertex, MarksAreBitsOfTheirOwn)
{
    Vertex vertex;
    vertex.SetUseThisNormal();
    EXPECT_EQ(vertex.flags, 1u);
    vertex.SetApproximate();
    EXPECT_EQ(vertex.flags, 3u);
    vertex.SetInterior();
    EXPECT_EQ(vertex.flags, 7u);
    EXPECT_EQ(vertex.ShouldUseThisNormal(), 1);
    EXPECT_EQ(vertex.IsApproximate(), 2);
    EXPECT_EQ(vertex.IsInterior(), 4);
    vertex.ClearApproximate();
    EXPECT_EQ(vertex.flags, 5u);
    vertex.ClearUseThisNormal();
    EXPECT_EQ(vertex.flags, 4u);
    vertex.ClearInterior();
    EXPECT_EQ(vertex.flags, 0u);
}

TEST(Vertex, PointsLoseTheirFractions)
{
    Vertex vertex;
    vertex.SetPoint(Vector(10.9f, -10.9f, 5.0f));
    ExpectPoint(vertex.point, 10, -10);
    EXPECT_EQ(vertex.GetPoint().x, 10.0f);
    EXPECT_EQ(vertex.GetPoint().y, -10.0f);
}

TEST(Vertex, PointsBeyond16BitsWrapAndNotANumberIsZero)
{
    Vertex vertex;
    vertex.SetPoint(Vector(40000.0f, std::numeric_limits<float>::quiet_NaN(), 0.0f));
    ExpectPoint(vertex.point, 40000 - 65536, 0);
}

TEST(Vertex, NormalsAreStoredInTenThousandthsTruncated)
{
    Vertex vertex;
    vertex.SetNormal(Vector(0.70711f, -0.70711f, 1.0f), Vertex::NextEdge);
    ExpectPoint(vertex.nextEdgeNormal, 7071, -7071);
    vertex.SetNormal(Vector(0.59999f, -0.8f, 0.0f), Vertex::PreviousEdge);
    ExpectPoint(vertex.previousEdgeNormal, 5999, -8000);
    vertex.SetNormal(Vector(0.25f, 0.5f, 0.0f), Vertex::VertexEdge);
    ExpectPoint(vertex.vertexNormal, 2500, 5000);
}

TEST(Vertex, AnUnknownEdgeSelectsTheAverageNormal)
{
    Vertex vertex = MarkedVertex();
    vertex.SetNormal(Vector(-1.0f, 0.0f, 0.0f), noEdge);
    ExpectPoint(vertex.vertexNormal, -10000, 0);
    ExpectPoint(vertex.previousEdgeNormal, 0, 10000);
    ExpectPoint(vertex.nextEdgeNormal, 10000, 0);
    ExpectVector(vertex.GetNormal(noEdge), -1.0f, 0.0f, 0.0f);
}

TEST(Vertex, GetNormalReadsTheNormalAskedFor)
{
    const Vertex vertex = MarkedVertex();
    ExpectVector(vertex.GetNormal(Vertex::PreviousEdge), 0.0f, 1.0f, 0.0f);
    ExpectVector(vertex.GetNormal(Vertex::VertexEdge), stored6000, stored8000, 0.0f);
    ExpectVector(vertex.GetNormal(Vertex::NextEdge), 1.0f, 0.0f, 0.0f);
}

TEST(Vertex, CollinearEdgesGiveThePlainNormal)
{
    const Vertex vertex = Corner(Vector(0, 1, 0), Vector(0, 1, 0));
    ExpectPoint(vertex.vertexNormal, 0, 10000);
    EXPECT_EQ(vertex.miterScale, 10000);
    EXPECT_EQ(vertex.IsInterior(), 0);
}

TEST(Vertex, TheMiterOfARightAngleIsTheRootOfTwo)
{
    // The contour runs up, then to the right, as at a corner of a square that runs clockwise.
    const Vertex vertex = Corner(Vector(-1, 0, 0), Vector(0, 1, 0));
    ExpectPoint(vertex.vertexNormal, -7071, 7071);
    EXPECT_EQ(vertex.miterScale, 14142);
    EXPECT_EQ(vertex.IsInterior(), 0);
}

TEST(Vertex, ARightAngleToTheLeftIsNotInterior)
{
    const Vertex vertex = Corner(Vector(0, 1, 0), Vector(-1, 0, 0));
    EXPECT_EQ(vertex.miterScale, 14142);
    EXPECT_EQ(vertex.IsInterior(), 0);
}

TEST(Vertex, ALeftTurnOf91DegreesIsInterior)
{
    // The contour turns by 91 degrees. The cosine of half this angle is 0.7009.
    EXPECT_EQ(Corner(Vector(0, 1, 0), Vector(-0.99985f, -0.01745f, 0)).IsInterior(), 4);
    EXPECT_EQ(Corner(Vector(0, 1, 0), Vector(0.99985f, -0.01745f, 0)).IsInterior(), 0);
}

TEST(Vertex, AHairpinsMiterIsFourAndALeftHairpinIsInterior)
{
    // The contour turns by 170 degrees.
    const Vertex left = Corner(Vector(0, 1, 0), Vector(-0.17365f, -0.98481f, 0));
    EXPECT_EQ(left.miterScale, 40000);
    EXPECT_EQ(left.IsInterior(), 4);
    const Vertex right = Corner(Vector(0, 1, 0), Vector(0.17365f, -0.98481f, 0));
    EXPECT_EQ(right.miterScale, 40000);
    EXPECT_EQ(right.IsInterior(), 0);
}

TEST(Vertex, OppositeNormalsHaveNoAverage)
{
    const Vertex vertex = Corner(Vector(0, 1, 0), Vector(0, -1, 0));
    ExpectPoint(vertex.vertexNormal, 0, 0);
    EXPECT_EQ(vertex.miterScale, 40000);
    EXPECT_EQ(vertex.IsInterior(), 0);
}

TEST(Vertex, CalculatingAgainClearsAStaleInteriorMark)
{
    Vertex vertex = Corner(Vector(0, 1, 0), Vector(-0.17365f, -0.98481f, 0));
    vertex.SetUseThisNormal();
    vertex.SetApproximate();
    vertex.SetNormal(Vector(0, 1, 0), Vertex::NextEdge);
    vertex.CalculateVertex();
    EXPECT_EQ(vertex.flags, 3u);
}

TEST(Vertex, ASharpCornerHasTheNormalsOfItsEdges)
{
    const Vertex vertex = MarkedVertex();
    ExpectVector(vertex.GetEdgeNormal(Vertex::PreviousEdge), 0.0f, 1.0f, 0.0f);
    ExpectVector(vertex.GetEdgeNormal(Vertex::NextEdge), 1.0f, 0.0f, 0.0f);
    ExpectVector(vertex.GetEdgeNormal(Vertex::VertexEdge), 1.0f, 0.0f, 0.0f);
}

TEST(Vertex, ASmoothCornerHasTheAverageUnlessItIsInterior)
{
    Vertex vertex = MarkedVertex();
    vertex.SetUseThisNormal();
    ExpectVector(vertex.GetEdgeNormal(Vertex::PreviousEdge), stored6000, stored8000, 0.0f);
    ExpectVector(vertex.GetEdgeNormal(Vertex::NextEdge), stored6000, stored8000, 0.0f);

    vertex.SetInterior();
    ExpectVector(vertex.GetEdgeNormal(Vertex::PreviousEdge), 0.0f, 1.0f, 0.0f);
    ExpectVector(vertex.GetEdgeNormal(Vertex::NextEdge), 1.0f, 0.0f, 0.0f);
}

TEST(Vertex, BevelNormalsLieHalfwayToTheFace)
{
    const Vertex vertex = MarkedVertex();
    const float half = 0x1.6a09e6p-1f;  // the root of 1/2
    ExpectVector(vertex.GetBevelNormal(Vertex::FrontFace, Vertex::PreviousEdge), 0.0f, half, half);
    ExpectVector(vertex.GetBevelNormal(Vertex::BackFace, Vertex::PreviousEdge), 0.0f, half, -half);
    ExpectVector(vertex.GetBevelNormal(Vertex::FrontFace, Vertex::NextEdge), half, 0.0f, half);
    ExpectVector(vertex.GetBevelNormal(Vertex::FrontFace, Vertex::VertexEdge), half, 0.0f, half);
}

TEST(Vertex, BevelNormalsOfTheSideAreTheEdgeNormalWithLengthOne)
{
    Vertex vertex = MarkedVertex();
    ExpectVector(vertex.GetBevelNormal(Vertex::SideFace, Vertex::PreviousEdge), 0.0f, 1.0f, 0.0f);

    // The stored normal (0.3333, -0.9428) is a little shorter than 1, so normalizing lengthens it.
    vertex.nextEdgeNormal.SetPoint(3333, -9428);
    const Vector side = vertex.GetBevelNormal(Vertex::SideFace, Vertex::NextEdge);
    ExpectVector(side, 0x1.554e50p-2f, -0x1.e2b91cp-1f, 0.0f);
    const Vector none = vertex.GetBevelNormal(noFace, Vertex::NextEdge);
    ExpectVector(none, side.x, side.y, 0.0f);
}

TEST(Vertex, BevelNormalIgnoresTheInteriorMark)
{
    Vertex vertex = MarkedVertex();
    vertex.SetUseThisNormal();
    vertex.SetInterior();
    // The expected normal is (0.6, 0.8, 1), normalized.
    ExpectVector(vertex.GetBevelNormal(Vertex::FrontFace, Vertex::NextEdge), 0x1.b27246p-2f,
                 0x1.21a184p-1f, 0x1.6a09e8p-1f);
}

TEST(Vertex, WithoutEdgeNormalsABevelNormalIsThatOfTheFace)
{
    const Vertex vertex;
    ExpectVector(vertex.GetBevelNormal(Vertex::SideFace, Vertex::NextEdge), 0.0f, 0.0f, 0.0f);
    ExpectVector(vertex.GetBevelNormal(Vertex::FrontFace, Vertex::NextEdge), 0.0f, 0.0f, 1.0f);
}

TEST(Vertex, BevelPointsLieAlongTheAverageNormal)
{
    Vertex vertex = Corner(Vector(-1, 0, 0), Vector(0, 1, 0));
    const Vector2D bevel = vertex.GetBevelPoint(10.0f, Vertex::NextEdge);
    EXPECT_EQ(bevel.x, -0x1.3ffe6cp+3f);  // -9.99981
    EXPECT_EQ(bevel.y, 0x1.3ffe6cp+3f);
    const Vector2D same = vertex.GetBevelPoint(10.0f, Vertex::PreviousEdge);
    EXPECT_EQ(same.x, bevel.x);

    // The miter is multiplied by the distance first, then by the normal. Another order would round
    // differently.
    vertex.miterScale = 12345;
    vertex.vertexNormal.SetPoint(3333, -9428);
    const Vector2D ordered = vertex.GetBevelPoint(0.7f, Vertex::NextEdge);
    EXPECT_EQ(ordered.x, 0x1.26ef06p-2f);
    EXPECT_EQ(ordered.y, -0x1.a1230cp-1f);
}

TEST(Vertex, BevelPointsOfAnInteriorCornerFollowTheEdge)
{
    Vertex vertex = MarkedVertex();
    vertex.miterScale = 40000;
    vertex.SetInterior();
    vertex.nextEdgeNormal.SetPoint(6000, 8000);
    const Vector2D next = vertex.GetBevelPoint(0.3f, Vertex::NextEdge);
    EXPECT_EQ(next.x, 0x1.70a3d8p-3f);  // 0.18
    EXPECT_EQ(next.y, 0x1.eb851ep-3f);  // 0.24
    const Vector2D average = vertex.GetBevelPoint(0.3f, Vertex::VertexEdge);
    EXPECT_EQ(average.y, next.y);
    const Vector2D previous = vertex.GetBevelPoint(4.0f, Vertex::PreviousEdge);
    EXPECT_EQ(previous.x, 0.0f);
    EXPECT_EQ(previous.y, 4.0f);
}

TEST(Vertex, RoundPointsLieAtSevenTenthsOfTheBevel)
{
    const Vertex vertex = Corner(Vector(-1, 0, 0), Vector(0, 1, 0));
    const Vector2D round = vertex.GetRoundPoint(10.0f, Vertex::NextEdge);
    EXPECT_EQ(round.x, -0x1.c48908p+2f);  // -7.07086
    EXPECT_EQ(round.y, 0x1.c48908p+2f);
}

TEST(Vertex, ANewVertexHasNoBevel)
{
    Vertex vertex;
    vertex.SetNormal(Vector(1, 0, 0), Vertex::VertexEdge);
    EXPECT_EQ(vertex.GetBevelPoint(10.0f, Vertex::NextEdge).x, 0.0f);
}
