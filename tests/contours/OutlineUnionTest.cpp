// SPDX-License-Identifier: MIT
#include "contours/OutlineUnion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

using namespace orvane::contours;

namespace
{

/// Adds a square whose sides are the pieces \p firstPiece to firstPiece + 3, from the lower left
/// corner counter-clockwise, or clockwise if \p turned.
void AddSquare(OutlineUnion& border, double x, double y, double size, int firstPiece,
               bool turned = false)
{
    std::array<DoublePoint, 4> corners = {
        DoublePoint{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}};
    if (turned)
    {
        std::swap(corners[1], corners[3]);
    }
    border.BeginContour();
    for (int n = 0; n < 4; ++n)
    {
        UnionVertex& vertex = border.AddVertex(corners[n].x, corners[n].y);
        vertex.AddTag({firstPiece + n, 0});
        vertex.AddTag({firstPiece + (n + 3) % 4, 1});
    }
}

/// The places of all loops' vertices, sorted by x and then by y.
std::vector<std::pair<double, double>> PlacesOf(const OutlineUnion& border)
{
    std::vector<std::pair<double, double>> places;
    for (const std::vector<const UnionVertex*>& loop : border.Loops())
    {
        for (const UnionVertex* const vertex : loop)
        {
            places.emplace_back(vertex->place[0], vertex->place[1]);
        }
    }
    std::sort(places.begin(), places.end());
    return places;
}

/// The vertex at a place; null when there is none.
const UnionVertex* FindVertex(const OutlineUnion& border, double x, double y)
{
    for (const std::vector<const UnionVertex*>& loop : border.Loops())
    {
        for (const UnionVertex* const vertex : loop)
        {
            if (vertex->Point() == DoublePoint{x, y})
            {
                return vertex;
            }
        }
    }
    return nullptr;
}

/// Where on a piece a vertex lies; -1 when the vertex has no tag of the piece.
double ParameterOn(const UnionVertex& vertex, int piece)
{
    for (std::size_t n = 0; n < vertex.tagCount; ++n)
    {
        if (vertex.tags[n].piece == piece)
        {
            return vertex.tags[n].t;
        }
    }
    return -1;
}

using Places = std::vector<std::pair<double, double>>;

// The tessellator's arithmetic is exact where these sides, which are powers of two, cross.
constexpr double side = 128;

TEST(OutlineUnion, OverlappingSquaresGetOneBorderWithVerticesWhereTheyCross)
{
    OutlineUnion border;
    AddSquare(border, 0, 0, side, 0);
    AddSquare(border, 64, 32, side, 4);
    ASSERT_TRUE(border.Unite());
    ASSERT_EQ(border.Loops().size(), 1u);
    EXPECT_EQ(
        PlacesOf(border),
        (Places{
            {0, 0}, {0, 128}, {64, 128}, {64, 160}, {128, 0}, {128, 32}, {192, 32}, {192, 160}}));
    EXPECT_EQ(border.Area(), 2 * 128 * 128 - 64 * 96);        // the squares share 64 x 96
    EXPECT_EQ(SignedArea(border.Loops()[0]), border.Area());  // counter-clockwise
}

TEST(OutlineUnion, ANewVertexIsTaggedWithItsPlaceOnBothPieces)
{
    OutlineUnion border;
    AddSquare(border, 0, 0, side, 0);
    AddSquare(border, 64, 32, side, 4);
    ASSERT_TRUE(border.Unite());

    // 32 of 128 up the right side, and 64 of 128 along the lower side from x = 64
    const UnionVertex* const right = FindVertex(border, 128, 32);
    ASSERT_NE(right, nullptr);
    EXPECT_EQ(right->tagCount, 2u);
    EXPECT_EQ(ParameterOn(*right, 1), 0.25);
    EXPECT_EQ(ParameterOn(*right, 4), 0.5);

    // 64 of 128 back along the upper side from x = 128, and 32 of 128 down the left side
    const UnionVertex* const top = FindVertex(border, 64, 128);
    ASSERT_NE(top, nullptr);
    EXPECT_EQ(top->tagCount, 2u);
    EXPECT_EQ(ParameterOn(*top, 2), 0.5);
    EXPECT_EQ(ParameterOn(*top, 7), 0.25);
}

TEST(OutlineUnion, ASquareInsideAnotherVanishesUnlessItRunsTheOtherWay)
{
    OutlineUnion filled;
    AddSquare(filled, 0, 0, 100, 0);
    AddSquare(filled, 20, 30, 50, 4);
    ASSERT_TRUE(filled.Unite());
    EXPECT_EQ(PlacesOf(filled), (Places{{0, 0}, {0, 100}, {100, 0}, {100, 100}}));
    EXPECT_EQ(filled.Area(), 10000);

    OutlineUnion holed;
    AddSquare(holed, 0, 0, 100, 0);
    AddSquare(holed, 20, 30, 50, 4, true);
    ASSERT_TRUE(holed.Unite());
    ASSERT_EQ(holed.Loops().size(), 2u);
    EXPECT_EQ(
        PlacesOf(holed),
        (Places{{0, 0}, {0, 100}, {20, 30}, {20, 80}, {70, 30}, {70, 80}, {100, 0}, {100, 100}}));
    EXPECT_EQ(holed.Area(), 7500);
    // The filled area lies on the left of the hole's border too, so that one runs clockwise.
    const double areas[] = {SignedArea(holed.Loops()[0]), SignedArea(holed.Loops()[1])};
    EXPECT_EQ(std::min(areas[0], areas[1]), -2500);
    EXPECT_EQ(std::max(areas[0], areas[1]), 10000);
}

TEST(OutlineUnion, TheFilledAreaIsOnTheLeftOfAClockwiseSquaresBorderToo)
{
    OutlineUnion border;
    AddSquare(border, 0, 0, 100, 0, true);
    ASSERT_TRUE(border.Unite());
    ASSERT_EQ(border.Loops().size(), 1u);
    EXPECT_EQ(SignedArea(border.Loops()[0]), 10000);
}

TEST(OutlineUnion, BothHalvesOfAFigureEightAreFilled)
{
    OutlineUnion border;
    border.BeginContour();
    for (const DoublePoint& place : {DoublePoint{0, 0}, {100, 100}, {100, 0}, {0, 100}})
    {
        border.AddVertex(place.x, place.y);
    }
    ASSERT_TRUE(border.Unite());
    // Each half is a triangle with a side of 100 and a height of 50. Both have a corner at (50,
    // 50).
    EXPECT_EQ(border.Area(), 5000);
    EXPECT_EQ(PlacesOf(border),
              (Places{{0, 0}, {0, 100}, {50, 50}, {50, 50}, {100, 0}, {100, 100}}));
}

TEST(OutlineUnion, AUnionWithoutPolygonsHasNoBorder)
{
    OutlineUnion border;
    EXPECT_TRUE(border.Unite());
    EXPECT_TRUE(border.Loops().empty());
    EXPECT_EQ(border.Area(), 0);
}

TEST(UnionVertex, ATagIsAddedOnceAndTheNinthIsLeftOut)
{
    UnionVertex vertex;
    vertex.AddTag({3, 0.5});
    vertex.AddTag({3, 0.5});
    EXPECT_EQ(vertex.tagCount, 1u);
    vertex.AddTag({3, 0.75});
    vertex.AddTag({4, 0.5});
    EXPECT_EQ(vertex.tagCount, 3u);
    for (int piece = 10; piece < 20; ++piece)
    {
        vertex.AddTag({piece, 0});
    }
    EXPECT_EQ(vertex.tagCount, 8u);
    EXPECT_EQ(vertex.tags[7].piece, 14);
}

TEST(OutlineUnion, AStripThinnerThanAUnitIsASliver)
{
    const auto isSliver = [](double width, double height) {
        std::array<UnionVertex, 4> vertices;
        vertices[1].place = {width, 0, 0};
        vertices[2].place = {width, height, 0};
        vertices[3].place = {0, height, 0};
        return IsSliver({&vertices[0], &vertices[1], &vertices[2], &vertices[3]});
    };
    // The area of 100 x 1.5 is 150 square units, half the length of its border is 101.5 units.
    EXPECT_FALSE(isSliver(100, 1.5));
    EXPECT_TRUE(isSliver(100, 0.9));  // 90 and 100.9
    EXPECT_TRUE(isSliver(0.9, 100));
    const UnionVertex a;
    UnionVertex b;
    b.place = {1000, 1000, 0};
    EXPECT_TRUE(IsSliver({&a, &b}));
}

}  // namespace
