// SPDX-License-Identifier: MIT
#include "outline/TTPolyContour.h"

#include "tests/support/GlyphShapes.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace
{

using Places = std::vector<std::pair<int, int>>;

/// A contour and its vertex pool, made from an outline or from vertices at given places.
struct Polygon
{
    explicit Polygon(const OutlinePoints& outline, float scale = 1.0f)
    {
        contour.SetVerticies(&pool);
        contour.FromTTContour(MakeContour(outline), scale);
    }

    explicit Polygon(const Places& places)
    {
        contour.SetVerticies(&pool);
        for (const auto& [x, y] : places)
        {
            Vertex vertex;
            vertex.point.SetPoint(static_cast<short>(x), static_cast<short>(y));
            pool.Add(vertex);
        }
        contour.SetFirstVertexIndex(0);
        contour.SetLastVertexIndex(pool.GetUpperBound());
        contour.CalculateVertexNormals();
    }

    Polygon(const Polygon&) = delete;

    VertexArray pool;
    TTPolyContour contour;
};

Places PlacesOf(const TTPolyContour& contour)
{
    Places places;
    for (int i = 0; i < contour.GetVertexCount(); ++i)
    {
        const Point2D& point = contour.GetVertexElement(i)->point;
        places.emplace_back(point.x, point.y);
    }
    return places;
}

/// Two characters and a space for each vertex: "a" if it is marked as approximate, else "-"; then
/// "s" if it is marked as smooth, else "-".
std::string MarksOf(const TTPolyContour& contour)
{
    std::string marks;
    for (int i = 0; i < contour.GetVertexCount(); ++i)
    {
        const Vertex vertex = contour.GetVertex(i);
        marks += vertex.IsApproximate() ? 'a' : '-';
        marks += vertex.ShouldUseThisNormal() ? 's' : '-';
        marks += ' ';
    }
    return marks;
}

void ExpectPoint(const Point2D& point, int x, int y)
{
    EXPECT_EQ(point.x, x);
    EXPECT_EQ(point.y, y);
}

void ExpectVector(const Vector& vector, float x, float y, float z = 0.0f)
{
    EXPECT_EQ(vector.x, x);
    EXPECT_EQ(vector.y, y);
    EXPECT_EQ(vector.z, z);
}

const OutlinePoints square = {On(0, 0), On(0, 1000), On(1000, 1000), On(1000, 0)};
constexpr int outside[] = {-1, 4, 100};

}  // namespace

TEST(TTPolyContour, ANewContourIsEmpty)
{
    const TTPolyContour contour;
    EXPECT_EQ(contour.firstVertexIndex, -1);
    EXPECT_EQ(contour.lastVertexIndex, -1);
    EXPECT_EQ(contour.reserved, 0);
    EXPECT_EQ(contour.GetVertexCount(), 0);
    EXPECT_EQ(contour.vertices, nullptr);
    EXPECT_EQ(contour.GetVertexElement(0), nullptr);
}

TEST(TTPolyContour, SettingEitherEndRecomputesTheCount)
{
    TTPolyContour contour;
    contour.SetFirstVertexIndex(0);
    EXPECT_EQ(contour.GetVertexCount(), 0);
    contour.SetLastVertexIndex(9);
    EXPECT_EQ(contour.GetVertexCount(), 10);
    contour.SetFirstVertexIndex(4);
    EXPECT_EQ(contour.GetVertexCount(), 6);
}

TEST(TTPolyContour, GetLastVertexIndexReturnsTheFirstIndex)
{
    TTPolyContour contour;
    contour.SetFirstVertexIndex(3);
    contour.SetLastVertexIndex(8);
    EXPECT_EQ(contour.GetFirstVertexIndex(), 3);
    EXPECT_EQ(contour.GetLastVertexIndex(), 3);
}

TEST(TTPolyContour, CopiesShareTheVertices)
{
    Polygon polygon(square);
    polygon.contour.reserved = 5;
    TTPolyContour copy;
    copy = polygon.contour;
    EXPECT_EQ(copy.firstVertexIndex, 0);
    EXPECT_EQ(copy.lastVertexIndex, 3);
    EXPECT_EQ(copy.reserved, 5);
    EXPECT_EQ(copy.GetVertexElement(2), polygon.contour.GetVertexElement(2));
}

TEST(TTPolyContour, IndicesWrapAround)
{
    const Polygon polygon(square);
    const TTPolyContour& contour = polygon.contour;
    EXPECT_EQ(contour.GetNextVertexIndex(0), 1);
    EXPECT_EQ(contour.GetNextVertexIndex(3), 0);
    EXPECT_EQ(contour.GetPreviousVertexIndex(3), 2);
    EXPECT_EQ(contour.GetPreviousVertexIndex(0), 3);
    EXPECT_EQ(contour.GetNextVertexElement(3), contour.GetVertexElement(0));
    EXPECT_EQ(contour.GetPreviousVertexElement(0), contour.GetVertexElement(3));
    EXPECT_EQ(contour.GetNextVertex(0).point.y, 1000);
    EXPECT_EQ(contour.GetPreviousVertex(0).point.x, 1000);
    ExpectVector(contour.GetVertexOutlinePoint(1), 0, 1000);
    ExpectVector(contour.GetNextVertexOutlinePoint(1), 1000, 1000);
    ExpectVector(contour.GetPreviousVertexOutlinePoint(0), 1000, 0);
}

TEST(TTPolyContour, IndicesOutOfRangeGiveDefaultsAndChangeNothing)
{
    Polygon polygon(square);
    TTPolyContour& contour = polygon.contour;
    for (const int index : outside)
    {
        EXPECT_EQ(contour.GetNextVertexIndex(index), -1);
        EXPECT_EQ(contour.GetPreviousVertexIndex(index), -1);
        EXPECT_EQ(contour.GetVertexElement(index), nullptr);
        EXPECT_EQ(contour.GetNextVertexElement(index), nullptr);
        EXPECT_EQ(contour.GetPreviousVertexElement(index), nullptr);
        EXPECT_EQ(contour.GetVertex(index).miterScale, 0);
        ExpectVector(contour.GetVertexOutlinePoint(index), 0, 0);
        ExpectVector(contour.GetNextVertexOutlinePoint(index), 0, 0);
        ExpectVector(contour.GetPreviousVertexOutlinePoint(index), 0, 0);
        ExpectVector(contour.GetVertexNormal(index), 0, 0);
        EXPECT_EQ(contour.GetEdge(index).Length(), 0.0f);
        EXPECT_EQ(contour.GetNextEdge(index).Length(), 0.0f);
        EXPECT_EQ(contour.GetPreviousEdge(index).Length(), 0.0f);
        EXPECT_EQ(contour.SetVertexPoint(index, Vector(5, 5, 5)), 0);
        contour.SetVertex(index, Vertex());
        contour.AdjustDuplicateVertex(index);
    }
    EXPECT_EQ(PlacesOf(contour), (Places{{0, 0}, {0, 1000}, {1000, 1000}, {1000, 0}}));
}

TEST(TTPolyContour, IndicesCountFromTheContoursFirstVertex)
{
    Polygon polygon(square);
    TTPolyContour second;
    second.SetVerticies(&polygon.pool);
    second.FromTTContour(MakeContour({On(7, 7), On(7, 9), On(9, 7)}), 1.0f);
    EXPECT_EQ(second.GetFirstVertexIndex(), 4);
    EXPECT_EQ(second.GetVertexCount(), 3);
    EXPECT_EQ(second.GetVertexElement(1), &polygon.pool[5]);
}

TEST(TTPolyContour, VerticesAreStoredWithoutFractions)
{
    Polygon polygon(square);
    EXPECT_EQ(polygon.contour.SetVertexPoint(1, Vector(-1.9f, 2.9f, 0)), 1);
    EXPECT_EQ(PlacesOf(polygon.contour)[1], std::pair(-1, 2));
    Vertex vertex;
    vertex.point.SetPoint(8, 9);
    polygon.contour.SetVertex(2, vertex);
    EXPECT_EQ(PlacesOf(polygon.contour)[2], std::pair(8, 9));
}

TEST(TTPolyContour, EdgesRunToTheNextVertex)
{
    const Polygon polygon(square);
    ExpectVector(polygon.contour.GetEdge(3).GetEnd1(), 1000, 0);
    ExpectVector(polygon.contour.GetEdge(3).GetEnd2(), 0, 0);
    ExpectVector(polygon.contour.GetNextEdge(3).GetEnd1(), 0, 0);
    ExpectVector(polygon.contour.GetNextEdge(3).GetEnd2(), 0, 1000);
    ExpectVector(polygon.contour.GetPreviousEdge(0).GetEnd1(), 1000, 0);
    ExpectVector(polygon.contour.GetPreviousEdge(0).GetEnd2(), 0, 0);
}

TEST(TTPolyContour, FourCornersGiveFourSharpVertices)
{
    const Polygon polygon(square);
    EXPECT_EQ(PlacesOf(polygon.contour), (Places{{0, 0}, {0, 1000}, {1000, 1000}, {1000, 0}}));
    EXPECT_EQ(MarksOf(polygon.contour), "-- -- -- -- ");
}

TEST(TTPolyContour, TheNormalsOfASquarePointOutward)
{
    const Polygon polygon(square);
    const Vertex corner = polygon.contour.GetVertex(1);
    ExpectPoint(corner.previousEdgeNormal, -10000, 0);
    ExpectPoint(corner.nextEdgeNormal, 0, 10000);
    ExpectPoint(corner.vertexNormal, -7071, 7071);
    EXPECT_EQ(corner.miterScale, 14142);
    EXPECT_EQ(corner.IsInterior(), 0);
    ExpectPoint(polygon.contour.GetVertex(0).previousEdgeNormal, 0, -10000);
    ExpectPoint(polygon.contour.GetVertex(0).nextEdgeNormal, -10000, 0);
    const float unit = 0x1.6a0902p-1f;  // 7071 times the float 0.0001
    ExpectVector(polygon.contour.GetVertexNormal(1), -unit, unit);
}

TEST(TTPolyContour, AContourThatRunsTheOtherWayHasInwardNormals)
{
    const Polygon polygon({On(0, 0), On(1000, 0), On(1000, 1000), On(0, 1000)});
    ExpectPoint(polygon.contour.GetVertex(0).nextEdgeNormal, 0, 10000);
}

TEST(TTPolyContour, CornersAwayFromCurvesAreSharpWhateverTheirAngle)
{
    // The corner at (500, 1) is nearly straight, and the corner at (1000, 0) is a hairpin. Both are
    // marked as sharp, because no curve is next to them.
    const Polygon polygon(Places{{0, 0}, {500, 1}, {1000, 0}, {0, -1}});
    EXPECT_EQ(MarksOf(polygon.contour), "-- -- -- -- ");
}

TEST(TTPolyContour, ANotchIsInteriorAndASpikeIsNot)
{
    const TTGlyph notch = NotchGlyph();
    TTPolyContour contour;
    VertexArray pool;
    contour.SetVerticies(&pool);
    contour.FromTTContour(notch.GetContours()[0], 1.0f);
    ASSERT_EQ(contour.GetVertexCount(), 6);
    EXPECT_EQ(contour.GetVertex(3).IsInterior(), 4);
    EXPECT_EQ(contour.GetVertex(2).IsInterior(), 0);

    contour.FromTTContour(HairpinGlyph().GetContours()[0], 1.0f);
    EXPECT_EQ(contour.GetVertex(1).IsInterior(), 0);
    EXPECT_EQ(contour.GetVertex(1).miterScale, 40000);
}

TEST(TTPolyContour, PointsWithinTheSpacingAreDropped)
{
    // The spacing is 0.002 * 1000 = 2 units.
    const Polygon polygon({On(0, 0), On(0, 2), On(3, 0), On(3, 2), On(500, 0)}, 1000.0f);
    EXPECT_EQ(PlacesOf(polygon.contour), (Places{{0, 0}, {3, 0}, {500, 0}}));
}

TEST(TTPolyContour, TheSpacingIsTakenFromTheLastVertexKept)
{
    const Polygon polygon({On(0, 0), On(1, 0), On(2, 0), On(3, 0), On(4, 0), On(500, 0)}, 1000.0f);
    EXPECT_EQ(PlacesOf(polygon.contour), (Places{{0, 0}, {3, 0}, {500, 0}}));
}

TEST(TTPolyContour, ALastPointAtTheFirstPointsPlaceReplacesTheFirst)
{
    const Polygon polygon({On(0, 0), On(0, 1000), On(1000, 1000), On(0, 0)});
    EXPECT_EQ(PlacesOf(polygon.contour), (Places{{0, 1000}, {1000, 1000}, {0, 0}}));
}

TEST(TTPolyContour, PointZeroIsComparedWithALastControlPointToo)
{
    // Point 0 is compared with the last point, here the control point (0, 1). Their distance of 1
    // is within the spacing of 2, so point 0 is dropped.
    const Polygon polygon({On(0, 0), On(0, 1000), On(1000, 1000), Off(0, 1, 0)}, 1000.0f);
    EXPECT_EQ(PlacesOf(polygon.contour), (Places{{0, 1000}, {1000, 1000}}));
}

TEST(TTPolyContour, AContourOfOnePointGivesNoVertices)
{
    EXPECT_EQ(Polygon(OutlinePoints{On(5, 5)}).contour.GetVertexCount(), 0);
    EXPECT_EQ(Polygon(OutlinePoints{Off(5, 5)}).contour.GetVertexCount(), 0);
}

TEST(TTPolyContour, AnEmptyContourGetsNoVertices)
{
    Polygon polygon(square);
    TTPolyContour empty;
    empty.SetVerticies(&polygon.pool);
    empty.FromTTContour(TTContour(), 1.0f);
    EXPECT_EQ(empty.GetFirstVertexIndex(), 4);
    EXPECT_EQ(empty.lastVertexIndex, 3);
    EXPECT_EQ(empty.GetVertexCount(), 0);
}

TEST(TTPolyContour, SplineWeightsAreRoundedFromDouble)
{
    const TTPolyContour contour;
    const float step = 1.0f / 5;
    const Vector first = contour.ApproximateQuadraticSpline(Vector(0, 0, 7), Vector(0, 1000, 8),
                                                            Vector(1000, 1000, 9), step);
    // x is 40.000004. With weights computed in float, y would be 360.00003.
    ExpectVector(first, 0x1.400002p+5f, 360.0f, 7.0f);
    const Vector fourth = contour.ApproximateQuadraticSpline(Vector(0, 0, 7), Vector(0, 1000, 8),
                                                             Vector(1000, 1000, 9), 4 * step);
    ExpectVector(fourth, 0x1.400002p+9f, 0x1.e00002p+9f, 7.0f);  // 640.00006, 960.00006
}

TEST(TTPolyContour, ASplineHasFiveSamplesOfWhichTheLastIsItsEndPoint)
{
    const Polygon polygon({On(0, 0), Off(0, 1000), On(1000, 1000), On(1000, 0)});
    EXPECT_EQ(
        PlacesOf(polygon.contour),
        (Places{{0, 0}, {40, 360}, {160, 640}, {360, 840}, {640, 960}, {1000, 1000}, {1000, 0}}));
    // The spline's ends are not samples, so they are not approximate. They are smooth because a
    // neighbour of each is a sample.
    EXPECT_EQ(MarksOf(polygon.contour), "-s as as as as -s -- ");
}

TEST(TTPolyContour, TwoControlPointsMeetAtTheirMidpoint)
{
    const Polygon polygon({On(0, 0), Off(0, 1000), Off(1000, 1000), On(1000, 0)});
    EXPECT_EQ(PlacesOf(polygon.contour), (Places{{0, 0},
                                                 {20, 360},
                                                 {80, 640},
                                                 {180, 840},
                                                 {320, 960},
                                                 {500, 1000},
                                                 {680, 960},
                                                 {820, 840},
                                                 {920, 640},
                                                 {980, 360},
                                                 {1000, 0}}));
    EXPECT_EQ(MarksOf(polygon.contour), "-s as as as as as as as as as -s ");
}

TEST(TTPolyContour, AClosingSplineHasFourSamples)
{
    const Polygon polygon({On(0, 0), On(0, 1000), On(1000, 1000), Off(1000, 0)});
    // In float, three coordinates are a little less than 360, 160 and 40, so they are cut to 359,
    // 159 and 39.
    EXPECT_EQ(
        PlacesOf(polygon.contour),
        (Places{{0, 0}, {0, 1000}, {1000, 1000}, {960, 640}, {840, 359}, {640, 159}, {360, 39}}));
    EXPECT_EQ(MarksOf(polygon.contour), "-s -- -s as as as as ");
}

TEST(TTPolyContour, AClosingPieceStartsAtTheMidpointOfItsControlPoints)
{
    const TTGlyph disc = DiscGlyph();
    TTPolyContour contour;
    VertexArray pool;
    contour.SetVerticies(&pool);
    contour.FromTTContour(disc.GetContours()[0], 1.0f);
    // Point 0, three pieces with five samples each, and the closing piece with four samples.
    ASSERT_EQ(contour.GetVertexCount(), 20);
    EXPECT_EQ(PlacesOf(contour)[5], std::pair(500, 1000));
    EXPECT_EQ(PlacesOf(contour)[10], std::pair(1000, 500));
    EXPECT_EQ(PlacesOf(contour)[15], std::pair(500, 0));
    EXPECT_EQ(MarksOf(contour).substr(0, 6), "-s as ");
}

TEST(TTPolyContour, EveryControlPointHasAResolutionOfItsOwn)
{
    const Polygon polygon({On(0, 0), Off(0, 1000, 2), On(1000, 1000), On(1000, 0)});
    EXPECT_EQ(PlacesOf(polygon.contour), (Places{{0, 0}, {250, 750}, {1000, 1000}, {1000, 0}}));
}

TEST(TTPolyContour, AControlPointWithoutSegmentsDropsItsEndPointToo)
{
    const Polygon polygon({On(0, 0), Off(0, 1000, 0), On(1000, 1000), On(1000, 0)});
    EXPECT_EQ(PlacesOf(polygon.contour), (Places{{0, 0}, {1000, 0}}));
}

TEST(TTPolyContour, SpacingIsMeasuredBeforeFractionsAreDropped)
{
    // The spacing is 0.002 units, and the samples are more than 0.5 units apart, so all of them are
    // kept, although several lie at the same place once their fractions are dropped.
    const Polygon polygon({On(0, 0), Off(0, 2), On(2, 2), On(50, 0)});
    EXPECT_EQ(PlacesOf(polygon.contour),
              (Places{{0, 0}, {0, 0}, {0, 1}, {0, 1}, {1, 1}, {2, 2}, {50, 0}}));
}

TEST(TTPolyContour, NormalsNeedTwoVertices)
{
    Polygon one(Places{{3, 4}});
    one.pool[0].SetUseThisNormal();
    EXPECT_EQ(one.contour.CalculateVertexNormals(), 0);
    EXPECT_EQ(one.pool[0].miterScale, 0);
    EXPECT_EQ(one.pool[0].ShouldUseThisNormal(), 1);

    Polygon two(Places{{0, 0}, {10, 0}});
    EXPECT_EQ(two.contour.CalculateVertexNormals(), 1);
    ExpectPoint(two.pool[0].nextEdgeNormal, 0, 10000);
    ExpectPoint(two.pool[0].previousEdgeNormal, 0, -10000);
}

TEST(TTPolyContour, RecalculatingClearsAStaleSmoothMark)
{
    Polygon polygon(square);
    polygon.pool[2].SetUseThisNormal();
    EXPECT_EQ(polygon.contour.CalculateVertexNormals(), 1);
    EXPECT_EQ(polygon.pool[2].ShouldUseThisNormal(), 0);
}

TEST(TTPolyContour, ADuplicateMovesInwardAtAConvexCorner)
{
    // The average normal at (0, 1000) is (-0.7071, 0.7071), and the next vertex lies to the right,
    // against the normal. So the vertex moves by (1.4142, -1.4142).
    Polygon polygon(square);
    polygon.contour.AdjustDuplicateVertex(1);
    EXPECT_EQ(PlacesOf(polygon.contour)[1], std::pair(1, 998));
    ExpectPoint(polygon.pool[1].vertexNormal, -7071, 7071);
}

TEST(TTPolyContour, ADuplicateMovesOutwardAtAConcaveCorner)
{
    // The contour runs to the right, then up. The average normal at (100, 100) is (-0.7071, 0.7071)
    // and points to the side of the next vertex, so the vertex moves along the normal.
    Polygon polygon(Places{{0, 100}, {100, 100}, {100, 200}});
    polygon.contour.AdjustDuplicateVertex(1);
    EXPECT_EQ(PlacesOf(polygon.contour)[1], std::pair(98, 101));
}

TEST(TTPolyContour, ADuplicateOnAStraightEdgeMovesAgainstItsNormal)
{
    // The next vertex lies at a right angle to the normal.
    Polygon polygon(Places{{0, 100}, {100, 100}, {200, 100}});
    polygon.contour.AdjustDuplicateVertex(1);
    EXPECT_EQ(PlacesOf(polygon.contour)[1], std::pair(100, 98));
}

TEST(TTPolyContour, NegativeCoordinatesOfAMovedVertexAreTruncatedTowardZero)
{
    Polygon polygon(Places{{-500, -500}, {-500, -100}, {-100, -100}, {-100, -500}});
    polygon.contour.AdjustDuplicateVertex(0);
    EXPECT_EQ(PlacesOf(polygon.contour)[0], std::pair(-498, -498));
}

TEST(TTPolyContour, EveryVertexAtAGivenPointMoves)
{
    Polygon polygon(Places{{0, 0}, {0, 100}, {100, 100}, {0, 0}, {-100, -100}, {-100, 0}});
    polygon.contour.CorrectDuplicateVerticies(Vector(0, 100, 0));
    const Places once = PlacesOf(polygon.contour);
    EXPECT_NE(once[1], std::pair(0, 100));
    EXPECT_EQ(once[0], std::pair(0, 0));
    EXPECT_EQ(once[3], std::pair(0, 0));
    polygon.contour.CorrectDuplicateVerticies(Vector(0, 0, 0));
    EXPECT_NE(PlacesOf(polygon.contour)[0], std::pair(0, 0));
    EXPECT_NE(PlacesOf(polygon.contour)[3], std::pair(0, 0));
}

TEST(TTPolyContour, TheLaterOfTwoVerticesAtOnePlaceMoves)
{
    Polygon polygon(Places{{0, 0}, {0, 100}, {100, 100}, {0, 0}, {100, -100}});
    polygon.contour.CorrectDuplicateVerticies();
    EXPECT_EQ(PlacesOf(polygon.contour)[0], std::pair(0, 0));
    EXPECT_NE(PlacesOf(polygon.contour)[3], std::pair(0, 0));
}
