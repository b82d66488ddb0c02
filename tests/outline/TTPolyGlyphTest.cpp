// SPDX-License-Identifier: MIT
#include "outline/TTPolyGlyph.h"

#include "tests/support/GlyphShapes.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

namespace
{

using Places = std::vector<std::pair<int, int>>;

Places PlacesOf(TTPolyGlyph& glyph)
{
    Places places;
    for (int i = 0; i < glyph.vertices.GetSize(); ++i)
    {
        places.emplace_back(glyph.vertices[i].point.x, glyph.vertices[i].point.y);
    }
    return places;
}

int CapacityOf(const VertexArray& array)
{
    return static_cast<int>((array.SizeOf() - sizeof array) / sizeof(Vertex));
}

}  // namespace

TEST(TTPolyGlyph, ANewGlyphIsAllZero)
{
    const TTPolyGlyph glyph;
    EXPECT_EQ(glyph.GetContourCount(), 0);
    EXPECT_EQ(glyph.vertices.GetSize(), 0);
    EXPECT_EQ(glyph.contours.GetSize(), 0);
    EXPECT_EQ(glyph.flags, 0u);
    EXPECT_EQ(glyph.inverseScale, 0.0f);
    EXPECT_EQ(glyph.totalVertexCount, 0);
    EXPECT_EQ(glyph.scale, 0.0f);
    EXPECT_EQ(glyph.GetXMax(), 0.0f);
    EXPECT_EQ(glyph.GetYMin(), 0.0f);
}

TEST(TTPolyGlyph, MarksAreBitsOfTheirOwn)
{
    TTPolyGlyph glyph;
    glyph.SetDefined();
    EXPECT_EQ(glyph.IsDefined(), 2);
    EXPECT_EQ(glyph.IsComposite(), 0);
    glyph.SetComposite();
    EXPECT_EQ(glyph.IsComposite(), 1);
    glyph.ClearDefined();
    EXPECT_EQ(glyph.flags, 1u);
    glyph.ClearComposite();
    EXPECT_EQ(glyph.flags, 0u);
}

TEST(TTPolyGlyph, WidthAndHeightSpanTheBounds)
{
    TTPolyGlyph glyph;
    glyph.SetXMax(5.0f);
    glyph.SetXMin(-1.0f);
    glyph.SetYMax(3.0f);
    glyph.SetYMin(1.0f);
    EXPECT_EQ(glyph.GetXMax(), 5.0f);
    EXPECT_EQ(glyph.GetXMin(), -1.0f);
    EXPECT_EQ(glyph.GetYMax(), 3.0f);
    EXPECT_EQ(glyph.GetYMin(), 1.0f);
    EXPECT_EQ(glyph.GetWidth(), 6.0f);
    EXPECT_EQ(glyph.GetHeight(), 2.0f);
}

TEST(TTPolyGlyph, ASquareKeepsItsUnitsAndScalesItsBounds)
{
    TTPolyGlyph glyph;
    glyph.FromTTGlyph(SquareGlyph(), 2000.0f);
    EXPECT_EQ(PlacesOf(glyph), (Places{{0, 0}, {0, 1000}, {1000, 1000}, {1000, 0}}));
    EXPECT_EQ(glyph.totalVertexCount, 4);
    EXPECT_EQ(glyph.scale, 2000.0f);
    EXPECT_EQ(glyph.inverseScale, 1.0f / 2000.0f);
    EXPECT_EQ(glyph.GetXMax(), 1000.0f * (1.0f / 2000.0f));
    EXPECT_EQ(glyph.GetXMin(), 0.0f);
    EXPECT_EQ(glyph.GetHeight(), 0.5f);
    EXPECT_EQ(glyph.IsDefined(), 2);
}

TEST(TTPolyGlyph, ContoursAreRunsOfOnePool)
{
    TTPolyGlyph glyph;
    glyph.FromTTGlyph(SquareWithHoleGlyph(), 1000.0f);
    ASSERT_EQ(glyph.GetContourCount(), 2);
    EXPECT_EQ(glyph.totalVertexCount, 8);
    EXPECT_EQ(glyph.contours[1].GetFirstVertexIndex(), 4);
    EXPECT_EQ(glyph.contours[1].GetVertexCount(), 4);
    EXPECT_EQ(glyph.contours[1].GetVertexElement(0), glyph.vertices.GetElement(4));
    // A hole is treated like any other contour. It is not reversed, and its normals point into the
    // hole.
    EXPECT_EQ(glyph.vertices[4].nextEdgeNormal.y, 10000);
}

TEST(TTPolyGlyph, BoundsBelowZeroAreTheSmallest)
{
    TTPolyGlyph glyph;
    glyph.FromTTGlyph(MakeGlyph({{On(-30, -400), On(-30, -100), On(-10, -100)}}), 1.0f);
    EXPECT_EQ(glyph.GetXMin(), -30.0f);
    EXPECT_EQ(glyph.GetXMax(), -10.0f);
    EXPECT_EQ(glyph.GetYMin(), -400.0f);
    EXPECT_EQ(glyph.GetYMax(), -100.0f);
}

TEST(TTPolyGlyph, AScaleOfZeroCountsAsOne)
{
    TTPolyGlyph glyph;
    glyph.FromTTGlyph(SquareGlyph(), 0.0f);
    EXPECT_EQ(glyph.scale, 1.0f);
    EXPECT_EQ(glyph.inverseScale, 1.0f);
    EXPECT_EQ(glyph.GetXMax(), 1000.0f);
}

TEST(TTPolyGlyph, WithoutVerticesTheBoundsAreZero)
{
    for (const TTGlyph& empty : {EmptyGlyph(), MakeGlyph({{On(5, 5)}})})
    {
        TTPolyGlyph glyph;
        glyph.FromTTGlyph(SquareGlyph(), 1.0f);
        glyph.FromTTGlyph(empty, 1.0f);
        EXPECT_EQ(glyph.totalVertexCount, 0);
        EXPECT_EQ(glyph.GetXMax(), 0.0f);
        EXPECT_EQ(glyph.GetXMin(), 0.0f);
        EXPECT_EQ(glyph.GetYMax(), 0.0f);
        EXPECT_EQ(glyph.GetYMin(), 0.0f);
        EXPECT_EQ(glyph.GetWidth(), 0.0f);
        EXPECT_EQ(glyph.GetHeight(), 0.0f);
        EXPECT_EQ(glyph.IsDefined(), 2);
    }
}

TEST(TTPolyGlyph, MarksOfTheOutlineAreAdded)
{
    TTGlyph outline = SquareGlyph();
    outline.ClearDefined();
    outline.SetComposite();
    TTPolyGlyph glyph;
    glyph.FromTTGlyph(outline, 1.0f);
    EXPECT_EQ(glyph.flags, 1u);
    glyph.FromTTGlyph(SquareGlyph(), 1.0f);
    EXPECT_EQ(glyph.flags, 3u);
}

TEST(TTPolyGlyph, BuildingAgainReplacesEverything)
{
    TTPolyGlyph glyph;
    glyph.FromTTGlyph(SquareWithHoleGlyph(), 1.0f);
    glyph.FromTTGlyph(HairpinGlyph(), 1.0f);
    EXPECT_EQ(glyph.GetContourCount(), 1);
    EXPECT_EQ(glyph.contours.GetSize(), 1);
    EXPECT_EQ(PlacesOf(glyph), (Places{{0, 0}, {40, 1000}, {80, 0}}));
}

TEST(TTPolyGlyph, ThePoolHasNoRoomToSpare)
{
    TTPolyGlyph glyph;
    glyph.FromTTGlyph(DiscGlyph(), 1.0f);
    EXPECT_EQ(glyph.vertices.GetSize(), 20);
    EXPECT_EQ(CapacityOf(glyph.vertices), 20);
    EXPECT_EQ(glyph.SizeOf(), sizeof glyph + 20 * sizeof(Vertex) + sizeof(TTPolyContour));
}

TEST(TTPolyGlyph, SettingTheContourCountEmptiesThePool)
{
    TTPolyGlyph glyph;
    glyph.FromTTGlyph(SquareGlyph(), 1.0f);
    glyph.SetContourCount(2);
    EXPECT_EQ(glyph.GetContourCount(), 2);
    EXPECT_EQ(glyph.vertices.GetSize(), 0);
    EXPECT_EQ(glyph.contours[1].vertices, &glyph.vertices);
    EXPECT_EQ(glyph.contours[1].GetVertexCount(), 0);
    glyph.SetContourCount(0);
    EXPECT_EQ(glyph.contours.GetSize(), 0);
}

TEST(TTPolyGlyph, ACopyUsesTheVertexPoolOfItsSource)
{
    TTPolyGlyph source;
    source.FromTTGlyph(SquareWithHoleGlyph(), 500.0f);
    source.SetComposite();
    const TTPolyGlyph copy = source;
    EXPECT_EQ(copy.vertices.GetSize(), 0);
    ASSERT_EQ(copy.GetContourCount(), 2);
    EXPECT_EQ(copy.contours[1].vertices, &source.vertices);
    EXPECT_EQ(copy.contours[1].GetVertexElement(0), source.vertices.GetElement(4));
    EXPECT_EQ(copy.flags, 3u);
    EXPECT_EQ(copy.scale, 500.0f);
    EXPECT_EQ(copy.inverseScale, 1.0f / 500.0f);
    EXPECT_EQ(copy.totalVertexCount, 8);
    EXPECT_EQ(copy.GetXMax(), 2.0f);

    TTPolyGlyph assigned;
    assigned.FromTTGlyph(HairpinGlyph(), 1.0f);
    assigned = source;
    EXPECT_EQ(assigned.vertices.GetSize(), 0);
    EXPECT_EQ(assigned.contours[0].vertices, &source.vertices);
}

TEST(TTPolyGlyph, AssigningAGlyphToItselfDoesNothing)
{
    TTPolyGlyph glyph;
    glyph.FromTTGlyph(SquareGlyph(), 1.0f);
    TTPolyGlyph& itself = glyph;
    glyph = itself;
    EXPECT_EQ(glyph.vertices.GetSize(), 4);
    EXPECT_EQ(glyph.contours[0].GetVertexCount(), 4);
}

TEST(TTPolyGlyph, WhereTwoContoursTouchTheVertexOfTheLaterOneMoves)
{
    TTPolyGlyph glyph;
    glyph.FromTTGlyph(TouchingGlyph(), 1000.0f);
    // The corner of the later square has the average normal (-0.7071, -0.7071), and the next vertex
    // lies above. So the corner moves against its normal, by (1.4142, 1.4142).
    EXPECT_EQ(PlacesOf(glyph), (Places{{0, 0},
                                       {0, 500},
                                       {500, 500},
                                       {500, 0},
                                       {501, 501},
                                       {500, 1000},
                                       {1000, 1000},
                                       {1000, 500}}));
    // The vertex keeps the normals that it had before the move.
    EXPECT_EQ(glyph.vertices[4].vertexNormal.x, -7071);
    EXPECT_EQ(glyph.vertices[4].nextEdgeNormal.x, -10000);
}
