// SPDX-License-Identifier: MIT
#include "extrude/PrimitiveWinding.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{
// The vertices of the tests. Vertices 0, 1 and 2 run clockwise with y up; vertices 0 and 2 to 5 lie
// on one line.
std::vector<Vertex> Pool()
{
    const short places[][2] = {{0, 0}, {0, 10}, {10, 10}, {20, 20}, {30, 30}, {40, 40}, {10, 0}};
    std::vector<Vertex> pool;
    for (const auto& place : places)
    {
        pool.emplace_back().point.SetPoint(place[0], place[1]);
    }
    return pool;
}

std::int64_t Turn(GLenum type, std::vector<unsigned short> indices)
{
    const std::vector<Vertex> pool = Pool();
    return PrimitiveTurn(type, indices, pool.data());
}
}  // namespace

TEST(PrimitiveWinding, AClockwiseTriangleTurnsPositiveByTwiceItsArea)
{
    EXPECT_EQ(Turn(GL_TRIANGLES, {0, 1, 2}), 100);
    EXPECT_EQ(Turn(GL_TRIANGLES, {0, 2, 1}), -100);
    EXPECT_EQ(Turn(GL_TRIANGLES, {1, 2, 0}), 100);
}

TEST(PrimitiveWinding, TheWidestTriangleIsMeasuredExactly)
{
    const Point2D low(-32768, -32768);
    const Point2D up(-32768, 32767);
    const Point2D right(32767, -32768);
    EXPECT_EQ(TriangleTurn(low, up, right), 65535LL * 65535);
    EXPECT_EQ(TriangleTurn(right, up, low), -65535LL * 65535);
}

TEST(PrimitiveWinding, AFanTurnsLikeItsFirstTriangleWithAnArea)
{
    // The triangles (0, 2, 3) and (0, 3, 4) have no area. (0, 4, 1) runs counter-clockwise.
    EXPECT_LT(Turn(GL_TRIANGLE_FAN, {0, 2, 3, 4, 1}), 0);
    EXPECT_GT(Turn(GL_TRIANGLE_FAN, {0, 2, 3, 4, 6}), 0);
    // The first triangle with an area decides, not the last.
    EXPECT_LT(Turn(GL_TRIANGLE_FAN, {0, 2, 1, 2}), 0);
}

TEST(PrimitiveWinding, APrimitiveWithoutAreaHasNoTurn)
{
    EXPECT_EQ(Turn(GL_TRIANGLE_FAN, {0, 2, 3, 4, 5}), 0);
    EXPECT_EQ(Turn(GL_TRIANGLE_STRIP, {0, 2, 3, 4, 5}), 0);
    EXPECT_EQ(Turn(GL_TRIANGLES, {0, 2, 3, 3, 4, 5}), 0);
}

TEST(PrimitiveWinding, OnlyAPositiveTurnRunsClockwise)
{
    const std::vector<Vertex> pool = Pool();
    const auto clockwise = [&pool](const std::vector<unsigned short>& indices) {
        return RunsClockwise(GL_TRIANGLE_FAN, indices, pool.data());
    };
    EXPECT_TRUE(clockwise({0, 1, 2}));
    EXPECT_FALSE(clockwise({0, 2, 1}));
    EXPECT_FALSE(clockwise({0, 2, 3, 4, 5}));
}

TEST(PrimitiveWinding, TooFewVerticesHaveNoTurn)
{
    for (const GLenum type : {GL_TRIANGLES, GL_TRIANGLE_STRIP, GL_TRIANGLE_FAN})
    {
        EXPECT_EQ(Turn(type, {}), 0);
        EXPECT_EQ(Turn(type, {0}), 0);
        EXPECT_EQ(Turn(type, {0, 1}), 0);
        EXPECT_GT(Turn(type, {0, 1, 2}), 0);
    }
}

TEST(PrimitiveWinding, SeparateTrianglesAreTakenThreeVerticesAtATime)
{
    // (0, 2, 3) has no area, so the second triangle decides.
    EXPECT_GT(Turn(GL_TRIANGLES, {0, 2, 3, 0, 1, 4}), 0);
    EXPECT_LT(Turn(GL_TRIANGLES, {0, 2, 3, 4, 1, 0}), 0);
    // An incomplete triangle at the end does not count.
    EXPECT_EQ(Turn(GL_TRIANGLES, {0, 2, 3, 0, 1}), 0);
}

TEST(PrimitiveWinding, AnOddTriangleOfAStripIsTakenInTheOrderInWhichItIsDrawn)
{
    // (2, 3, 4) has no area. The odd triangle has the positions 2, 1 and 3 of the strip. These are
    // the vertices at (30, 30), (20, 20) and (0, 10), which run clockwise.
    EXPECT_EQ(Turn(GL_TRIANGLE_STRIP, {2, 3, 4, 1, 1}), 100);
}

TEST(PrimitiveWinding, AStripsEvenTrianglesFollowEveryTwoVertices)
{
    // (0, 2, 3) and the odd triangle (3, 2, 4) have no area. The even triangle after them is (3, 4,
    // 1).
    EXPECT_EQ(Turn(GL_TRIANGLE_STRIP, {0, 2, 3, 4, 1}), -100);
}

// Required: the scan ends before it tests the last triangle of a strip with an even number of
// vertices.
TEST(PrimitiveWinding, OnlyTheFirstTriangleOfAStripOfFourDecides)
{
    EXPECT_EQ(Turn(GL_TRIANGLE_STRIP, {0, 2, 3, 1}), 0);
    EXPECT_NE(Turn(GL_TRIANGLE_STRIP, {0, 2, 3, 1, 1}), 0);
}
