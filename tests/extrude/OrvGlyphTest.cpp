// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyph.h"

#include "extrude/Library.h"
#include "platform/OpenGL.h"
#include "platform/Sync.h"
#include "tests/support/GlyphShapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <thread>
#include <type_traits>
#include <vector>

namespace
{
constexpr GLYPHMETRICS metrics = {10, 20, {1, -2}, 600, 3};

/// Whether another thread can take the glyph mutex. That thread releases the mutex again.
bool IsGlyphMutexFree()
{
    bool free = false;
    std::thread([&] {
        free = WaitForSingleObject(GetGlyphMutex(), 0) != WAIT_TIMEOUT;
        if (free)
        {
            ReleaseMutex(GetGlyphMutex());
        }
    }).join();
    return free;
}

struct Triangle
{
    Point2D p[3];

    /// Twice the area; positive when the triangle runs counter-clockwise with y up.
    std::int64_t Area() const
    {
        return (std::int64_t{p[1].x} - p[0].x) * (p[2].y - p[0].y) -
               (std::int64_t{p[1].y} - p[0].y) * (p[2].x - p[0].x);
    }
    bool Holds(double x, double y) const
    {
        int sides = 0;
        for (int k = 0; k < 3; ++k)
        {
            const Point2D& a = p[k];
            const Point2D& b = p[(k + 1) % 3];
            const double side = (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x);
            sides += side > 0 ? 1 : side < 0 ? -1 : 0;
        }
        return std::abs(sides) == 3;
    }
};

/// The triangles that OpenGL draws for a primitive.
std::vector<Triangle> TrianglesOf(const OrvGlyph& glyph, const VertexIndexPolygon& polygon)
{
    const auto point = [&](int position) {
        return glyph.vertices.GetElement(polygon.GetAt(position))->point;
    };
    std::vector<Triangle> triangles;
    for (int i = 0; i + 2 < polygon.GetSize(); ++i)
    {
        switch (polygon.GetType())
        {
            case GL_TRIANGLE_FAN:
                triangles.push_back({point(0), point(i + 1), point(i + 2)});
                break;
            case GL_TRIANGLE_STRIP:
                triangles.push_back({point(i + i % 2), point(i + 1 - i % 2), point(i + 2)});
                break;
            case GL_TRIANGLES:
                if (i % 3 == 0)
                {
                    triangles.push_back({point(i), point(i + 1), point(i + 2)});
                }
                break;
            default:
                ADD_FAILURE() << "primitive type " << polygon.GetType();
        }
    }
    return triangles;
}

struct FaceFacts
{
    std::int64_t area = 0;  ///< twice the area
    bool everyTriangleRunsAsItsPolygonSays = true;
    std::vector<Triangle> triangles;

    int Covering(double x, double y) const
    {
        return static_cast<int>(std::count_if(triangles.begin(), triangles.end(),
                                              [&](const Triangle& t) { return t.Holds(x, y); }));
    }
};

FaceFacts FactsOf(const OrvGlyph& glyph)
{
    FaceFacts facts;
    for (int i = 0; i < glyph.facePolygons.GetSize(); ++i)
    {
        const VertexIndexPolygon& polygon = *glyph.facePolygons.GetElement(i);
        for (const Triangle& triangle : TrianglesOf(glyph, polygon))
        {
            const std::int64_t area = triangle.Area();
            facts.area += std::abs(area);
            if (area != 0 && (area < 0) != (polygon.IsClockwiseWinding() != 0))
            {
                facts.everyTriangleRunsAsItsPolygonSays = false;
            }
            facts.triangles.push_back(triangle);
        }
    }
    return facts;
}

/// Twice the area of the first contour minus twice the areas of the others, which are holes in it.
std::int64_t FilledArea(const OrvGlyph& glyph)
{
    std::int64_t filled = 0;
    for (int c = 0; c < glyph.GetContourCount(); ++c)
    {
        const TTPolyContour& contour = *glyph.contours.GetElement(c);
        std::int64_t area = 0;
        for (int i = 0; i < contour.GetVertexCount(); ++i)
        {
            const Point2D a = contour.GetVertexElement(i)->point;
            const Point2D b = contour.GetNextVertexElement(i)->point;
            area += std::int64_t{a.x} * b.y - std::int64_t{a.y} * b.x;
        }
        filled += c == 0 ? std::abs(area) : -std::abs(area);
    }
    return filled;
}

/// A letter O: a disc of 16 corners with a hole. The hole runs in the direction of the disc or in
/// the opposite direction.
TTGlyph LetterO(bool holeRunsAsTheOuter)
{
    const int unit[16][2] = {{0, 10},  {4, 9},  {7, 7},   {9, 4},   {10, 0},  {9, -4},
                             {7, -7},  {4, -9}, {0, -10}, {-4, -9}, {-7, -7}, {-9, -4},
                             {-10, 0}, {-9, 4}, {-7, 7},  {-4, 9}};
    OutlinePoints outer;
    OutlinePoints inner;
    for (const auto& place : unit)
    {
        outer.push_back(On(500 + place[0] * 50, 500 + place[1] * 50));
        inner.push_back(On(500 + place[0] * 30, 500 + place[1] * 30));
    }
    if (!holeRunsAsTheOuter)
    {
        std::reverse(inner.begin(), inner.end());
    }
    return MakeGlyph({outer, inner});
}

/// A rectangle with a corner at every unit of its outline, so with 2 * (width + height) corners.
OutlinePoints FineRectangle(int left, int bottom, int width, int height)
{
    OutlinePoints points;
    for (int i = 0; i < height; ++i)
    {
        points.push_back(On(left, bottom + i));
    }
    for (int i = 0; i < width; ++i)
    {
        points.push_back(On(left + i, bottom + height));
    }
    for (int i = 0; i < height; ++i)
    {
        points.push_back(On(left + width, bottom + height - i));
    }
    for (int i = 0; i < width; ++i)
    {
        points.push_back(On(left + width - i, bottom));
    }
    return points;
}
}  // namespace

TEST(OrvGlyph, ANewGlyphKeepsDataSizeAndMetricsAndIsValidAndEmpty)
{
    const OrvGlyph glyph(1234, metrics);
    EXPECT_EQ(glyph.GetDataSize(), 1234u);
    EXPECT_EQ(glyph.metrics.gmBlackBoxX, 10u);
    EXPECT_EQ(glyph.metrics.gmBlackBoxY, 20u);
    EXPECT_EQ(glyph.metrics.gmptGlyphOrigin.x, 1);
    EXPECT_EQ(glyph.metrics.gmptGlyphOrigin.y, -2);
    EXPECT_EQ(glyph.metrics.gmCellIncX, 600);
    EXPECT_EQ(glyph.metrics.gmCellIncY, 3);
    EXPECT_EQ(glyph.glyphFlags, 0u);
    EXPECT_EQ(glyph.facePolygons.GetSize(), 0);
    EXPECT_EQ(glyph.GetContourCount(), 0);
    EXPECT_EQ(glyph.IsDefined(), 0);
}

TEST(OrvGlyph, TheInvalidMarkIsBitZeroAndMakesTheAdvanceZero)
{
    OrvGlyph glyph(0, metrics);
    EXPECT_EQ(glyph.GetAdvanceWidth(), 600);
    glyph.glyphFlags = 0x8;
    glyph.SetInvalid();
    EXPECT_EQ(glyph.IsInvalid(), 1);
    EXPECT_EQ(glyph.glyphFlags, 0x9u);
    EXPECT_EQ(glyph.GetAdvanceWidth(), 0);
    glyph.ClearInvalid();
    EXPECT_EQ(glyph.IsInvalid(), 0);
    EXPECT_EQ(glyph.glyphFlags, 0x8u);
    EXPECT_EQ(glyph.GetAdvanceWidth(), 600);
}

TEST(OrvGlyph, AnAdvanceCanBeNegative)
{
    GLYPHMETRICS backwards = metrics;
    backwards.gmCellIncX = -5;
    EXPECT_EQ(OrvGlyph(0, backwards).GetAdvanceWidth(), -5);
}

TEST(OrvGlyph, AddsNoVirtualFunctions)
{
    EXPECT_EQ(std::is_polymorphic_v<OrvGlyph>, std::is_polymorphic_v<TTPolyGlyph>);
}

TEST(OrvGlyph, SizesAreGivenForTheObjectThePrimitivesAndTheOutline)
{
    OrvGlyph glyph(0, metrics);
    EXPECT_EQ(glyph.SizeOf(), sizeof(OrvGlyph));
    EXPECT_EQ(glyph.SizeOfPolygons(), glyph.facePolygons.SizeOf());
    const unsigned long emptyPolygons = glyph.SizeOfPolygons();
    ASSERT_EQ(glyph.FromTTGlyph(SquareWithHoleGlyph(), 1000), 1);
    EXPECT_EQ(glyph.SizeOf(), sizeof(OrvGlyph));
    EXPECT_EQ(glyph.SizeOfPolygons(), glyph.facePolygons.SizeOf());
    EXPECT_GT(glyph.SizeOfPolygons(), emptyPolygons);
    EXPECT_EQ(glyph.SizeOfVerticies(), static_cast<TTPolyGlyph&>(glyph).SizeOf());
}

TEST(OrvGlyph, ConstructGlyphBuildsTheOutlineAndItsFaceAndFreesTheMutex)
{
    OrvGlyph glyph(1, metrics);
    EXPECT_EQ(glyph.ConstructGlyph(SquareGlyph(), 1000), 1);
    EXPECT_TRUE(IsGlyphMutexFree());
    EXPECT_NE(glyph.IsDefined(), 0);
    EXPECT_EQ(glyph.GetContourCount(), 1);
    EXPECT_EQ(glyph.inverseScale, 1.0f / 1000);
    const FaceFacts facts = FactsOf(glyph);
    EXPECT_EQ(facts.area, 2 * 1000 * 1000);
    EXPECT_TRUE(facts.everyTriangleRunsAsItsPolygonSays);
}

TEST(OrvGlyph, ASecondConstructionIsRefusedAndKeepsTheMutex)
{
    OrvGlyph glyph(1, metrics);
    ASSERT_EQ(glyph.ConstructGlyph(SquareGlyph(), 1000), 1);
    const int polygons = glyph.facePolygons.GetSize();
    EXPECT_EQ(glyph.ConstructGlyph(SquareWithHoleGlyph(), 500), 0);
    EXPECT_EQ(glyph.GetContourCount(), 1);
    EXPECT_EQ(glyph.facePolygons.GetSize(), polygons);
    EXPECT_FALSE(IsGlyphMutexFree());

    // The thread that owns the mutex can build further glyphs.
    OrvGlyph other(1, metrics);
    EXPECT_EQ(other.ConstructGlyph(SquareGlyph(), 1000), 1);
    EXPECT_FALSE(IsGlyphMutexFree());

    EXPECT_NE(ReleaseMutex(GetGlyphMutex()), FALSE);
    EXPECT_TRUE(IsGlyphMutexFree());
    EXPECT_EQ(ReleaseMutex(GetGlyphMutex()), FALSE);
}

TEST(OrvGlyph, AnAbandonedMutexCountsAsAcquired)
{
    std::thread([] { WaitForSingleObject(GetGlyphMutex(), INFINITE); }).join();
    OrvGlyph glyph(1, metrics);
    EXPECT_EQ(glyph.ConstructGlyph(SquareGlyph(), 1000), 1);
    EXPECT_TRUE(IsGlyphMutexFree());
}

TEST(OrvGlyph, WithoutAMutexNothingIsBuilt)
{
    DetachLibrary();
    OrvGlyph glyph(1, metrics);
    EXPECT_EQ(glyph.ConstructGlyph(SquareGlyph(), 1000), 0);
    EXPECT_EQ(glyph.IsDefined(), 0);
    EXPECT_EQ(glyph.GetContourCount(), 0);
    AttachLibrary();
    EXPECT_EQ(glyph.ConstructGlyph(SquareGlyph(), 1000), 1);
}

TEST(OrvGlyph, AnUndefinedOutlineIsRefusedAndFreesTheMutex)
{
    TTGlyph undefined = SquareGlyph();
    undefined.ClearDefined();
    OrvGlyph glyph(1, metrics);
    EXPECT_EQ(glyph.ConstructGlyph(undefined, 1000), 0);
    EXPECT_TRUE(IsGlyphMutexFree());
    EXPECT_EQ(glyph.facePolygons.GetSize(), 0);
    EXPECT_EQ(glyph.FromTTGlyph(undefined, 1000), 0);
    // The glyph can still be built from another outline.
    EXPECT_EQ(glyph.ConstructGlyph(SquareGlyph(), 1000), 1);
}

TEST(OrvGlyph, AnEmptyOutlineIsDefinedAndHasNoFace)
{
    OrvGlyph glyph(1, metrics);
    EXPECT_EQ(glyph.ConstructGlyph(EmptyGlyph(), 1000), 1);
    EXPECT_NE(glyph.IsDefined(), 0);
    EXPECT_EQ(glyph.facePolygons.GetSize(), 0);
}

TEST(OrvGlyph, ContoursWithoutVerticesAreDefinedAndHaveNoFace)
{
    OrvGlyph glyph(1, metrics);
    EXPECT_EQ(glyph.FromTTGlyph(MakeGlyph({{}, {On(5, 5)}}), 1000), 1);
    EXPECT_NE(glyph.IsDefined(), 0);
    EXPECT_EQ(glyph.facePolygons.GetSize(), 0);
}

TEST(OrvGlyph, TheHoleOfALetterOStaysOpenWhateverItsDirection)
{
    for (const bool sameDirection : {false, true})
    {
        OrvGlyph glyph(1, metrics);
        ASSERT_EQ(glyph.FromTTGlyph(LetterO(sameDirection), 1000), 1);
        const FaceFacts facts = FactsOf(glyph);
        EXPECT_EQ(facts.area, FilledArea(glyph));
        EXPECT_TRUE(facts.everyTriangleRunsAsItsPolygonSays);
        EXPECT_EQ(facts.Covering(501.3, 503.7), 0);  // in the hole
        EXPECT_EQ(facts.Covering(501.3, 893.7), 1);  // in the stroke
        EXPECT_EQ(facts.Covering(103.7, 501.3), 1);
        EXPECT_EQ(facts.Covering(30.1, 31.7), 0);  // outside
    }
}

TEST(OrvGlyph, EveryShapeIsFilledOnceAndItsWindingsAreRecorded)
{
    const struct
    {
        const char* name;
        TTGlyph glyph;
    } shapes[] = {{"square", SquareGlyph()},   {"square with hole", SquareWithHoleGlyph()},
                  {"quarter", QuarterGlyph()}, {"disc", DiscGlyph()},
                  {"hairpin", HairpinGlyph()}, {"notch", NotchGlyph()}};
    for (const auto& shape : shapes)
    {
        OrvGlyph glyph(1, metrics);
        ASSERT_EQ(glyph.FromTTGlyph(shape.glyph, 1000), 1) << shape.name;
        const FaceFacts facts = FactsOf(glyph);
        EXPECT_EQ(facts.area, FilledArea(glyph)) << shape.name;
        EXPECT_TRUE(facts.everyTriangleRunsAsItsPolygonSays) << shape.name;
    }
}

TEST(OrvGlyph, IndicesOfALaterContourCountFromTheGlyphsFirstVertex)
{
    OrvGlyph glyph(1, metrics);
    ASSERT_EQ(glyph.FromTTGlyph(SquareWithHoleGlyph(), 1000), 1);
    std::vector<bool> used(8);
    for (int i = 0; i < glyph.facePolygons.GetSize(); ++i)
    {
        const VertexIndexPolygon& polygon = *glyph.facePolygons.GetElement(i);
        for (int k = 0; k < polygon.GetSize(); ++k)
        {
            ASSERT_LT(polygon.GetAt(k), 8);
            used[polygon.GetAt(k)] = true;
        }
    }
    EXPECT_EQ(std::count(used.begin(), used.end(), true), 8);
}

TEST(OrvGlyph, AnOutlineThatCrossesItselfHasNoFaceAndIsStillBuilt)
{
    OrvGlyph glyph(1, metrics);
    EXPECT_EQ(glyph.ConstructGlyph(CrossingGlyph(), 1000), 1);
    EXPECT_NE(glyph.IsDefined(), 0);
    EXPECT_EQ(glyph.facePolygons.GetSize(), 0);
    EXPECT_EQ(glyph.contours.GetElement(0)->GetVertexCount(), 4);
    // The error does not affect the next glyph.
    OrvGlyph next(1, metrics);
    EXPECT_EQ(next.ConstructGlyph(SquareGlyph(), 1000), 1);
    EXPECT_GT(next.facePolygons.GetSize(), 0);
}

TEST(OrvGlyph, ACrossingInOneContourLeavesTheWholeGlyphWithoutFaces)
{
    const TTGlyph squareAndCrossing =
        MakeGlyph({{On(2000, 0), On(2000, 1000), On(3000, 1000), On(3000, 0)},
                   {On(0, 0), On(1000, 1000), On(1000, 0), On(0, 1000)}});
    OrvGlyph glyph(1, metrics);
    EXPECT_EQ(glyph.FromTTGlyph(squareAndCrossing, 1000), 1);
    EXPECT_EQ(glyph.facePolygons.GetSize(), 0);
}

TEST(OrvGlyph, AnOutlineOf65535VerticesHasAFaceAndAnOutlineOf65536HasNone)
{
    for (const int more : {0, 1})
    {
        OutlinePoints last = {On(0, 20000), On(0, 21000), On(1000, 20000)};
        if (more)
        {
            last.push_back(On(500, 19000));
        }
        OrvGlyph glyph(1, metrics);
        ASSERT_EQ(glyph.FromTTGlyph(MakeGlyph({FineRectangle(-20000, -20000, 10000, 6383),
                                               FineRectangle(0, -20000, 10000, 6383), last}),
                                    1),
                  1);
        ASSERT_EQ(glyph.totalVertexCount, 65535 + more);
        EXPECT_EQ(glyph.facePolygons.GetSize() > 0, more == 0);
        const FaceFacts facts = FactsOf(glyph);
        EXPECT_EQ(facts.area, more ? 0 : 2LL * 2 * 10000 * 6383 + 1000 * 1000);
    }
}

TEST(OrvGlyph, ACopyHasItsOwnPrimitivesAndTheSourcesVertices)
{
    OrvGlyph source(77, metrics);
    ASSERT_EQ(source.FromTTGlyph(SquareWithHoleGlyph(), 1000), 1);
    source.SetInvalid();
    const int polygons = source.facePolygons.GetSize();

    const OrvGlyph copy(source);
    OrvGlyph assigned(1, GLYPHMETRICS{});
    OrvGlyph& result = assigned = source;
    EXPECT_EQ(&result, &assigned);
    for (const OrvGlyph* const made : {&copy, static_cast<const OrvGlyph*>(&assigned)})
    {
        EXPECT_EQ(made->GetDataSize(), 77u);
        EXPECT_EQ(made->metrics.gmCellIncX, 600);
        EXPECT_EQ(made->metrics.gmptGlyphOrigin.y, -2);
        EXPECT_EQ(made->IsInvalid(), 1);
        EXPECT_NE(made->IsDefined(), 0);
        EXPECT_EQ(made->inverseScale, source.inverseScale);
        EXPECT_EQ(made->GetContourCount(), 2);
        EXPECT_EQ(made->vertices.GetSize(), 0);
        EXPECT_EQ(made->contours.GetElement(1)->GetVertexElement(0),
                  source.contours.GetElement(1)->GetVertexElement(0));
        ASSERT_EQ(made->facePolygons.GetSize(), polygons);
        for (int i = 0; i < polygons; ++i)
        {
            const VertexIndexPolygon& theirs = *source.facePolygons.GetElement(i);
            const VertexIndexPolygon& ours = *made->facePolygons.GetElement(i);
            EXPECT_EQ(ours.GetType(), theirs.GetType());
            EXPECT_EQ(ours.polylineFlags, theirs.polylineFlags);
            ASSERT_EQ(ours.GetSize(), theirs.GetSize());
            EXPECT_TRUE(std::equal(ours.GetElement(0), ours.GetElement(0) + ours.GetSize(),
                                   theirs.GetElement(0)));
            EXPECT_NE(ours.GetElement(0), theirs.GetElement(0));
        }
    }
    source.facePolygons.RemoveAll();
    EXPECT_EQ(copy.facePolygons.GetSize(), polygons);
}

TEST(OrvGlyph, AssignedToItselfItIsUnchanged)
{
    OrvGlyph glyph(77, metrics);
    ASSERT_EQ(glyph.FromTTGlyph(SquareGlyph(), 1000), 1);
    const int polygons = glyph.facePolygons.GetSize();
    const OrvGlyph& self = glyph;
    glyph = self;
    EXPECT_EQ(glyph.GetDataSize(), 77u);
    EXPECT_EQ(glyph.facePolygons.GetSize(), polygons);
    EXPECT_EQ(glyph.vertices.GetSize(), 4);
    EXPECT_EQ(FactsOf(glyph).area, 2 * 1000 * 1000);
}

TEST(OrvGlyph, GlyphsBuiltInSeveralThreadsGetTheirOwnFaces)
{
    std::vector<std::thread> threads;
    std::vector<std::int64_t> areas(4);
    for (std::int64_t& area : areas)
    {
        threads.emplace_back([&area] {
            for (int i = 0; i < 50; ++i)
            {
                OrvGlyph glyph(1, metrics);
                if (glyph.ConstructGlyph(LetterO(i % 2 == 0), 1000) == 1)
                {
                    area += FactsOf(glyph).area - FilledArea(glyph) + 1;
                }
            }
        });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    EXPECT_EQ(areas, std::vector<std::int64_t>(4, 50));
}
