// SPDX-License-Identifier: MIT
#include "shapes/GridEdges.h"

#include "orvane/Error.h"

#include <gtest/gtest.h>

#include <random>

using namespace orvane;
using namespace orvane::shapes;

namespace
{

GridEdge EdgeBetween(GridPoint a, GridPoint b, std::uint32_t line)
{
    return ComesBefore(a, b) ? GridEdge{a, b, line} : GridEdge{b, a, line};
}

}  // namespace

TEST(GridEdges, CrossingEdgesAreCutAtTheRoundedPlace)
{
    // The lines y = x and y = 5 - x cross at 2.5, 2.5.
    std::vector<GridEdge> edges = {EdgeBetween({0, 0}, {10, 10}, 0),
                                   EdgeBetween({0, 5}, {5, 0}, 1)};
    WorkLimit work("test", 1000);
    CutWhereTheyMeet(edges, work);
    ASSERT_EQ(edges.size(), 4u);
    EXPECT_EQ(edges[0].to, (GridPoint{3, 3}));
    EXPECT_EQ(edges[1].from, (GridPoint{3, 3}));
    EXPECT_EQ(edges[1].to, (GridPoint{10, 10}));
    EXPECT_EQ(edges[2].to, (GridPoint{3, 3}));
    EXPECT_EQ(edges[3].line, 1u);
}

TEST(GridEdges, AnEdgeThatEndsOnAnotherCutsIt)
{
    std::vector<GridEdge> edges = {EdgeBetween({0, 0}, {10, 0}, 0), EdgeBetween({4, 0}, {4, 9}, 1)};
    WorkLimit work("test", 1000);
    CutWhereTheyMeet(edges, work);
    ASSERT_EQ(edges.size(), 3u);
    EXPECT_EQ(edges[0].to, (GridPoint{4, 0}));
}

TEST(GridEdges, EdgesOnOneLineAreCutWhereTheyOverlap)
{
    std::vector<GridEdge> edges = {EdgeBetween({0, 0}, {6, 0}, 0), EdgeBetween({4, 0}, {9, 0}, 1)};
    WorkLimit work("test", 1000);
    CutWhereTheyMeet(edges, work);
    ASSERT_EQ(edges.size(), 4u);
    EXPECT_EQ(edges[0].to, (GridPoint{4, 0}));
    EXPECT_EQ(edges[2].to, (GridPoint{6, 0}));
}

TEST(GridEdges, APartThatRoundingTurnsRoundIsMarked)
{
    // The edge falls from 0, 1000 to 1, 0. Its part above the cut at 0, 600 is vertical and starts
    // at its lower end.
    std::vector<GridEdge> edges = {EdgeBetween({0, 1000}, {1, 0}, 0),
                                   EdgeBetween({-9, 600}, {9, 600}, 1)};
    WorkLimit work("test", 1000);
    CutWhereTheyMeet(edges, work);
    ASSERT_EQ(edges.size(), 4u);
    EXPECT_EQ(edges[0].from, (GridPoint{0, 600}));
    EXPECT_EQ(edges[0].to, (GridPoint{0, 1000}));
    EXPECT_EQ(edges[0].sign, -1);
    EXPECT_EQ(edges[1].sign, 1);
}

TEST(GridEdges, ManyCrossingEdgesMeetOnlyAtTheirEndsAfterwards)
{
    std::mt19937 random(1);
    // A small grid makes nearly every rounded crossing move edges across other ones.
    for (const int size : {8, 60, 1000, 500'000'000})
    {
        std::uniform_int_distribution<int> coordinate(-size, size);
        std::vector<GridEdge> edges;
        for (std::uint32_t i = 0; i < 120; ++i)
        {
            const GridPoint a = {coordinate(random), coordinate(random)};
            const GridPoint b = {coordinate(random), coordinate(random)};
            if (a != b)
            {
                edges.push_back(EdgeBetween(a, b, i));
            }
        }
        WorkLimit work("test", 100'000'000);
        CutWhereTheyMeet(edges, work);
        for (std::size_t i = 0; i < edges.size(); ++i)
        {
            for (std::size_t j = i + 1; j < edges.size(); ++j)
            {
                const GridEdge& a = edges[i];
                const GridEdge& b = edges[j];
                if (a.from == b.from && a.to == b.to)
                {
                    continue;
                }
                const auto sideSign = [](const GridEdge& edge, const GridPoint& point) {
                    const std::int64_t side = Turn(edge.from, edge.to, point);
                    return side < 0 ? -1 : side > 0 ? 1 : 0;
                };
                EXPECT_FALSE(sideSign(a, b.from) * sideSign(a, b.to) < 0 &&
                             sideSign(b, a.from) * sideSign(b, a.to) < 0)
                    << "two edges cross on a grid of " << size;
            }
        }
    }
}

TEST(GridEdges, MeetingsAreFoundAndSharedEndsAreNone)
{
    WorkLimit work("test", 1000);
    const GridEdge flat = EdgeBetween({0, 0}, {10, 0}, 0);
    EXPECT_FALSE(DoAnyMeet({flat, EdgeBetween({10, 0}, {10, 5}, 0)}, work));
    EXPECT_TRUE(DoAnyMeet({flat, EdgeBetween({5, 0}, {5, 5}, 0)}, work));
    EXPECT_TRUE(DoAnyMeet({flat, EdgeBetween({5, -5}, {5, 5}, 0)}, work));
    EXPECT_TRUE(DoAnyMeet({flat, flat}, work));
}

TEST(GridEdges, TheSearchEndsWhenItTakesTooManySteps)
{
    std::vector<GridEdge> edges;
    for (int i = 0; i < 100; ++i)
    {
        edges.push_back(EdgeBetween({-i, -100}, {i + 1, 100}, 0));
    }
    WorkLimit work("logo.svg", 5000);
    try
    {
        CutWhereTheyMeet(edges, work);
        FAIL() << "no error";
    }
    catch (const Error& error)
    {
        EXPECT_STREQ(error.what(),
                     "logo.svg: found a picture that takes more than 5000 steps, expected one with "
                     "fewer crossings and repetitions");
    }
}
