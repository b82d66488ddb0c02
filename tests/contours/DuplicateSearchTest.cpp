// SPDX-License-Identifier: MIT
// The search for vertices at the same place, through TTPolyGlyph and TTPolyContour. Its results are
// compared with the results of nested loops that compare every vertex with every later vertex.

#include "contours/DuplicateSearch.h"

#include "outline/TTPolyGlyph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <span>
#include <utility>
#include <vector>

namespace
{

using Place = std::pair<int, int>;
using Places = std::vector<Place>;

/// Makes a glyph of contours with the given numbers of vertices. The vertices lie at the given
/// places, in order.
void LayOut(const std::vector<int>& sizes, const Places& places, TTPolyGlyph& glyph)
{
    glyph.SetContourCount(static_cast<int>(sizes.size()));
    glyph.vertices.SetSize(static_cast<int>(places.size()));
    for (int i = 0; i < glyph.vertices.GetSize(); ++i)
    {
        glyph.vertices[i].point.SetPoint(static_cast<short>(places[i].first),
                                         static_cast<short>(places[i].second));
    }
    int first = 0;
    for (int i = 0; i < glyph.GetContourCount(); ++i)
    {
        TTPolyContour& contour = *glyph.contours.GetElement(i);
        contour.SetFirstVertexIndex(first);
        contour.SetLastVertexIndex(first + sizes[i] - 1);
        contour.CalculateVertexNormals();
        first += sizes[i];
    }
}

Places PlacesOf(TTPolyGlyph& glyph)
{
    Places places;
    for (int i = 0; i < glyph.vertices.GetSize(); ++i)
    {
        places.emplace_back(glyph.vertices[i].point.x, glyph.vertices[i].point.y);
    }
    return places;
}

bool Coincide(const TTPolyContour& a, int i, const TTPolyContour& b, int j)
{
    const Point2D& left = a.GetVertexElement(i)->point;
    const Point2D& right = b.GetVertexElement(j)->point;
    return left.x == right.x && left.y == right.y;
}

/// Separates vertices by nested loops. Returns how many times a vertex was moved that had been
/// moved before.
int SeparatePlainly(TTPolyGlyph& glyph)
{
    std::vector<bool> moved(glyph.vertices.GetSize());
    int movedAgain = 0;
    const auto compare = [&](const TTPolyContour& a, int i, TTPolyContour& b, int j) {
        if (Coincide(a, i, b, j))
        {
            const int vertex = b.GetFirstVertexIndex() + j;
            movedAgain += moved[vertex];
            moved[vertex] = true;
            b.AdjustDuplicateVertex(j);
        }
    };
    for (int c = 0; c < glyph.GetContourCount(); ++c)
    {
        TTPolyContour& contour = *glyph.contours.GetElement(c);
        for (int i = 0; i < contour.GetVertexCount(); ++i)
        {
            for (int j = i + 1; j < contour.GetVertexCount(); ++j)
            {
                compare(contour, i, contour, j);
            }
        }
    }
    for (int a = 0; a < glyph.GetContourCount(); ++a)
    {
        for (int i = 0; i < glyph.contours[a].GetVertexCount(); ++i)
        {
            for (int b = a + 1; b < glyph.GetContourCount(); ++b)
            {
                TTPolyContour& later = *glyph.contours.GetElement(b);
                for (int j = 0; j < later.GetVertexCount(); ++j)
                {
                    compare(glyph.contours[a], i, later, j);
                }
            }
        }
    }
    return movedAgain;
}

/// Separates the same glyph by both methods and compares the results. Returns the result of
/// SeparatePlainly.
int ExpectTheSame(const std::vector<int>& sizes, const Places& places)
{
    TTPolyGlyph plain;
    LayOut(sizes, places, plain);
    const int movedAgain = SeparatePlainly(plain);

    TTPolyGlyph glyph;
    LayOut(sizes, places, glyph);
    glyph.CorrectDuplicateVerticies();
    EXPECT_EQ(PlacesOf(glyph), PlacesOf(plain));
    return movedAgain;
}

int Below(std::mt19937& random, int limit)
{
    return static_cast<int>(random() % static_cast<unsigned>(limit));
}

constexpr int manyVertices = 60000;

/// The number of steps that a search among 60,000 vertices may take: 15 for each vertex. A step is
/// a look at a slot of the hash table or at a vertex of a chain. Comparing all pairs of vertices
/// would take 30,000 comparisons for each vertex.
constexpr long mostSteps = 15L * manyVertices;

/// The number of steps that the search takes for contours with these numbers of vertices, at these
/// places.
long StepsToSeparate(const std::vector<int>& sizes, const std::function<Place(int)>& place)
{
    Places places;
    for (int i = 0; i < manyVertices; ++i)
    {
        places.push_back(place(i));
    }
    TTPolyGlyph glyph;
    LayOut(sizes, places, glyph);
    long steps = 0;
    orvane::contours::SeparateVertices(
        std::span<TTPolyContour>(glyph.contours.GetElement(0), sizes.size()),
        [&steps] { ++steps; });
    return steps;
}

Place DistinctPlace(int i)
{
    return {i % 251 * 100, i / 251 * 100};
}

}  // namespace

TEST(DuplicateSearch, SeparatesRandomGlyphsLikeNestedLoops)
{
    constexpr int grids[] = {2, 4, 8, 20, 60};
    constexpr int units[] = {1, 1, 2, 3, 50};
    constexpr int corners[] = {0, -20, -1000, 1000, 32760, -32768};
    std::mt19937 random(20240611);
    int movedAgain = 0;
    for (int round = 0; round < 1000; ++round)
    {
        const int grid = grids[round % 5];
        const int unit = units[Below(random, 5)];
        const int corner = corners[Below(random, 6)];
        std::vector<int> sizes;
        Places places;
        for (int contours = 1 + Below(random, 6); contours > 0; --contours)
        {
            sizes.push_back(Below(random, 30));
            for (int i = 0; i < sizes.back(); ++i)
            {
                places.emplace_back(corner + Below(random, grid) * unit,
                                    corner + Below(random, grid) * unit);
            }
        }
        movedAgain += ExpectTheSame(sizes, places);
        ASSERT_FALSE(HasFailure()) << "round " << round;
    }
    // The order of the moves matters only when a vertex moves to the place of another vertex, so
    // this must happen often.
    EXPECT_GT(movedAgain, 3000);
}

TEST(DuplicateSearch, SeparatesRepeatedContoursLikeNestedLoops)
{
    constexpr int units[] = {1, 5, 40};
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round)
    {
        const int size = 2 + Below(random, 9);
        const int unit = units[round % 3];
        Places shape;
        for (int i = 0; i < size; ++i)
        {
            shape.emplace_back(Below(random, 6) * unit, Below(random, 6) * unit);
        }
        // The shape is repeated as separate contours, then as one contour that goes round several
        // times, then as the same contour with its last vertex in a second contour.
        const int copies = 2 + Below(random, 40);
        Places places;
        for (int i = 0; i < copies; ++i)
        {
            places.insert(places.end(), shape.begin(), shape.end());
        }
        ExpectTheSame(std::vector<int>(copies, size), places);
        ExpectTheSame({copies * size}, places);
        ExpectTheSame({copies * size - 1, 1}, places);
        ASSERT_FALSE(HasFailure()) << "round " << round;
    }
}

TEST(DuplicateSearch, SeparatesOneContourLikeNestedLoops)
{
    std::mt19937 random(99);
    for (int round = 0; round < 200; ++round)
    {
        Places places;
        for (int i = 0; i < 50; ++i)
        {
            places.emplace_back(Below(random, 6), Below(random, 6));
        }
        TTPolyGlyph plain;
        LayOut({50}, places, plain);
        SeparatePlainly(plain);
        TTPolyGlyph glyph;
        LayOut({50}, places, glyph);
        glyph.contours.GetElement(0)->CorrectDuplicateVerticies();
        ASSERT_EQ(PlacesOf(glyph), PlacesOf(plain)) << "round " << round;
    }
}

TEST(DuplicateSearch, AVertexMovedOntoALaterVertexMakesTheLaterOneMoveToo)
{
    // The second vertex at (0, 0) has the average normal (0, 1) and moves to (0, -2). The last
    // vertex lies there already and must move as well.
    const Places places = {{0, 0}, {50, 50}, {-50, 0}, {0, 0}, {50, 0}, {20, -50}, {0, -2}};
    TTPolyGlyph glyph;
    LayOut({7}, places, glyph);
    ASSERT_EQ(glyph.vertices[3].vertexNormal.y, 10000);
    glyph.CorrectDuplicateVerticies();
    EXPECT_EQ(PlacesOf(glyph)[3], Place(0, -2));
    EXPECT_NE(PlacesOf(glyph)[6], Place(0, -2));
}

TEST(DuplicateSearch, VerticesWithoutANormalStay)
{
    // The contour runs there and back, so the normals of its edges cancel out.
    Places places;
    for (int i = 0; i < 40; ++i)
    {
        places.emplace_back(i % 2 * 100, 0);
    }
    ExpectTheSame({40}, places);
    TTPolyGlyph glyph;
    LayOut({40}, places, glyph);
    glyph.CorrectDuplicateVerticies();
    EXPECT_EQ(PlacesOf(glyph), places);
}

TEST(DuplicateSearch, DistinctVerticesTakeAFewStepsEach)
{
    const long steps = StepsToSeparate({manyVertices}, DistinctPlace);
    EXPECT_GE(steps, manyVertices - 1);
    EXPECT_LT(steps, mostSteps);
}

TEST(DuplicateSearch, VerticesInPairsAtOnePlaceTakeAFewStepsEach)
{
    const auto twice = [](int i) { return DistinctPlace(i % (manyVertices / 2)); };
    EXPECT_LT(StepsToSeparate({manyVertices / 2, manyVertices / 2}, twice), mostSteps);
    EXPECT_LT(StepsToSeparate({manyVertices}, twice), mostSteps);
}

TEST(DuplicateSearch, EightVerticesAtEachPlaceTakeAFewStepsEach)
{
    const auto eightfold = [](int i) { return DistinctPlace(i % (manyVertices / 8)); };
    EXPECT_LT(StepsToSeparate(std::vector<int>(8, manyVertices / 8), eightfold), mostSteps);
    EXPECT_LT(StepsToSeparate({manyVertices}, eightfold), mostSteps);
}

TEST(DuplicateSearch, VerticesAtTwoPlacesWithoutNormalsTakeAFewStepsEach)
{
    // The contour runs there and back, so that the normals of each vertex's two edges cancel out.
    EXPECT_LT(StepsToSeparate({manyVertices}, [](int i) { return Place(i % 2 * 100, 0); }),
              mostSteps);
}
