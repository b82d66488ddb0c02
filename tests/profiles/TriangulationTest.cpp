// SPDX-License-Identifier: MIT
#include "profiles/Triangulation.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <set>

using namespace orvane::profiles;
using Outcome = Triangulation::Outcome;

namespace
{

std::int64_t TwiceAreaInside(const Triangulation& triangulation)
{
    std::int64_t area = 0;
    for (int triangle = 0; triangle < triangulation.TriangleCount(); ++triangle)
    {
        const int edge = 3 * triangle;
        const std::int64_t own = Turn(triangulation.Point(triangulation.Start(edge)),
                                      triangulation.Point(triangulation.Start(edge + 1)),
                                      triangulation.Point(triangulation.Start(edge + 2)));
        EXPECT_GT(own, 0) << "triangle " << triangle;
        area += triangulation.IsInside(triangle) ? own : 0;
    }
    return area;
}

void AddContour(Triangulation& triangulation, const std::vector<int>& points, int winding = 1)
{
    for (std::size_t i = 0; i < points.size(); ++i)
    {
        EXPECT_EQ(triangulation.AddEdge(points[i], points[(i + 1) % points.size()], winding),
                  Outcome::Done);
    }
}

/// The corners of a square of side 100 and one of side 40 in its middle.
const std::vector<GridPoint> frame = {{0, 0},   {100, 0}, {100, 100}, {0, 100},
                                      {30, 30}, {70, 30}, {70, 70},   {30, 70}};

}  // namespace

TEST(Triangulation, FillsTheAreaBetweenContours)
{
    Triangulation triangulation;
    ASSERT_EQ(triangulation.Build(frame), Outcome::Done);
    AddContour(triangulation, {0, 1, 2, 3});
    AddContour(triangulation, {7, 6, 5, 4});
    ASSERT_TRUE(triangulation.FindInside(1));
    // Twice 100 * 100 - 40 * 40.
    EXPECT_EQ(TwiceAreaInside(triangulation), 16800);
}

TEST(Triangulation, WindingsOtherThanTheExpectedAreRefused)
{
    Triangulation triangulation;
    ASSERT_EQ(triangulation.Build(frame), Outcome::Done);
    AddContour(triangulation, {0, 1, 2, 3});
    AddContour(triangulation, {4, 5, 6, 7});
    EXPECT_FALSE(triangulation.FindInside(1));
}

TEST(Triangulation, PointsOnALineAndRepeatedPointsAreTold)
{
    Triangulation triangulation;
    EXPECT_EQ(triangulation.Build(std::vector<GridPoint>{{0, 0}, {1, 1}, {5, 5}}), Outcome::Flat);
    EXPECT_EQ(triangulation.Build(std::vector<GridPoint>{}), Outcome::Flat);
    EXPECT_EQ(triangulation.Build(std::vector<GridPoint>{{0, 0}, {1, 3}, {5, 5}, {1, 3}}),
              Outcome::Repeats);
}

TEST(Triangulation, EdgesThatCrossOrRepeatOrTouchAreTold)
{
    Triangulation triangulation;
    const std::vector<GridPoint> points = {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {5, 5}, {5, 9}};
    ASSERT_EQ(triangulation.Build(points), Outcome::Done);
    EXPECT_EQ(triangulation.AddEdge(0, 2, 1), Outcome::Touches);
    EXPECT_EQ(triangulation.TouchedPoint(), 4);
    EXPECT_EQ(triangulation.AddEdge(3, 4, 1), Outcome::Done);
    EXPECT_EQ(triangulation.AddEdge(4, 3, 1), Outcome::Crosses);
    EXPECT_EQ(triangulation.AddEdge(0, 5, 1), Outcome::Crosses);
}

TEST(Triangulation, LongEdgesAreForcedThroughManyTriangles)
{
    // Two rows of points, and an edge between them that no Delaunay triangle has.
    std::vector<GridPoint> points = {{-1000, 0}, {1001, 1}};
    for (int i = -20; i <= 20; ++i)
    {
        points.push_back({40 * i, 30 + i % 3});
        points.push_back({40 * i + 11, -30 - i % 5});
    }
    Triangulation triangulation;
    ASSERT_EQ(triangulation.Build(points), Outcome::Done);
    ASSERT_EQ(triangulation.AddEdge(0, 1, 1), Outcome::Done);
    // A triangle above the edge closes the contour.
    ASSERT_EQ(triangulation.AddEdge(1, 2 + 2 * 20, 1), Outcome::Done);
    ASSERT_EQ(triangulation.AddEdge(2 + 2 * 20, 0, 1), Outcome::Done);
    ASSERT_TRUE(triangulation.FindInside(1));
    EXPECT_EQ(TwiceAreaInside(triangulation), Turn(points[0], points[1], points[42]));
}

TEST(Triangulation, CirclesThroughCornersHoldNoOtherPoint)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<std::int32_t> coordinate(0, 1000);
    std::set<std::array<std::int32_t, 2>> places;
    while (places.size() < 200)
    {
        places.insert({coordinate(random), coordinate(random)});
    }
    std::vector<GridPoint> points;
    for (const auto& place : places)
    {
        points.push_back({place[0], place[1]});
    }
    Triangulation triangulation;
    ASSERT_EQ(triangulation.Build(points), Outcome::Done);
    for (int edge = 0; edge < triangulation.HalfEdgeCount(); edge += 3)
    {
        const GridPoint& a = triangulation.Point(triangulation.Start(edge));
        const GridPoint& b = triangulation.Point(triangulation.Start(edge + 1));
        const GridPoint& c = triangulation.Point(triangulation.Start(edge + 2));
        for (const GridPoint& d : points)
        {
            // The determinant of the rows x, y, x * x + y * y, seen from d: exact in 64 bits.
            const auto row = [&d](const GridPoint& p) {
                const std::int64_t x = p.x - d.x;
                const std::int64_t y = p.y - d.y;
                return std::array<std::int64_t, 3>{x, y, x * x + y * y};
            };
            const auto p = row(a);
            const auto q = row(b);
            const auto r = row(c);
            EXPECT_LE(p[2] * (q[0] * r[1] - q[1] * r[0]) + q[2] * (r[0] * p[1] - r[1] * p[0]) +
                          r[2] * (p[0] * q[1] - p[1] * q[0]),
                      0);
        }
    }
}

TEST(Triangulation, SplitsKeepAreasAndNeighbours)
{
    Triangulation triangulation;
    ASSERT_EQ(triangulation.Build(std::vector<GridPoint>{{0, 0}, {100, 0}, {100, 90}, {0, 100}}),
              Outcome::Done);
    AddContour(triangulation, {0, 1, 2, 3});
    ASSERT_TRUE(triangulation.FindInside(1));
    const std::int64_t area = TwiceAreaInside(triangulation);
    int diagonal = 0;
    while (triangulation.IsContourEdge(diagonal))
    {
        ++diagonal;
    }
    EXPECT_EQ(triangulation.SplitEdge(diagonal, {200, 200}), Triangulation::none);
    EXPECT_EQ(triangulation.SplitEdge(diagonal, {50, 49}), 4);
    EXPECT_EQ(triangulation.SplitTriangle(0, {200, 200}), Triangulation::none);
    const GridPoint& a = triangulation.Point(triangulation.Start(0));
    const GridPoint& b = triangulation.Point(triangulation.Start(1));
    const GridPoint& c = triangulation.Point(triangulation.Start(2));
    const GridPoint middle = {(a.x + b.x + c.x) / 3, (a.y + b.y + c.y) / 3};
    EXPECT_EQ(triangulation.SplitTriangle(0, middle), 5);
    EXPECT_EQ(triangulation.TriangleCount(), 6);
    EXPECT_EQ(TwiceAreaInside(triangulation), area);
    for (int edge = 0; edge < triangulation.HalfEdgeCount(); ++edge)
    {
        const int twin = triangulation.Twin(edge);
        EXPECT_EQ(triangulation.IsContourEdge(edge), twin == Triangulation::none);
        if (twin != Triangulation::none)
        {
            EXPECT_EQ(triangulation.Twin(twin), edge);
            EXPECT_EQ(triangulation.Start(twin), triangulation.End(edge));
            EXPECT_EQ(triangulation.End(twin), triangulation.Start(edge));
        }
    }
}
