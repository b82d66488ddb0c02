// SPDX-License-Identifier: MIT
#include "outline/TTGlyph.h"

#include "tests/support/GlyphShapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace
{

Bytes SquareBuffer()
{
    return NativeOutline().Start({0, 0}).Lines({{0, 10}, {10, 10}, {10, 0}}).Get();
}

constexpr std::size_t squareSize = 16 + 4 + 3 * 8;

Bytes Joined(const Bytes& a, const Bytes& b)
{
    return RecordBytes().Raw(a.data(), a.size()).Raw(b.data(), b.size());
}

void SetSize(Bytes& buffer, std::size_t polygon, DWORD cb)
{
    const Bytes size = RecordBytes().Dword(cb);
    std::copy(size.begin(), size.end(), buffer.begin() + static_cast<std::ptrdiff_t>(polygon));
}

void ExpectPoint(const TTPoint& point, short type, int x, int y, int resolution)
{
    EXPECT_EQ(point.GetType(), type);
    EXPECT_EQ(point.GetX(), x);
    EXPECT_EQ(point.GetY(), y);
    EXPECT_EQ(point.GetQuadraticResolution(), resolution);
}

/// The point counts of the glyph's contours.
std::vector<int> CountsOf(const TTGlyph& glyph)
{
    std::vector<int> counts;
    for (int i = 0; i < glyph.GetContourCount(); ++i)
    {
        counts.push_back(glyph.GetContours()[i].GetPointCount());
    }
    return counts;
}

using Counts = std::vector<int>;

}  // namespace

TEST(TTGlyph, ANewGlyphIsUndefinedAndEmpty)
{
    const TTGlyph glyph;
    EXPECT_EQ(glyph.GetContourCount(), 0);
    EXPECT_EQ(glyph.GetContours(), nullptr);
    EXPECT_EQ(glyph.IsDefined(), 0);
    EXPECT_EQ(glyph.IsComposite(), 0);
    EXPECT_EQ(glyph.GetLength(), 0u);
    EXPECT_EQ(glyph.GetOffset(), 0u);
    EXPECT_EQ(glyph.GetXMax(), 0);
    EXPECT_EQ(glyph.GetXMin(), 0);
    EXPECT_EQ(glyph.GetYMax(), 0);
    EXPECT_EQ(glyph.GetYMin(), 0);
}

TEST(TTGlyph, MarksAndFieldsAreKept)
{
    TTGlyph glyph;
    glyph.SetDefined();
    EXPECT_EQ(glyph.IsDefined(), 2);
    EXPECT_EQ(glyph.IsComposite(), 0);
    glyph.SetComposite();
    EXPECT_EQ(glyph.IsComposite(), 1);
    glyph.ClearDefined();
    EXPECT_EQ(glyph.IsDefined(), 0);
    EXPECT_EQ(glyph.IsComposite(), 1);
    glyph.ClearComposite();
    EXPECT_EQ(glyph.IsComposite(), 0);

    glyph.SetLength(0xFFFFFFFF);
    glyph.SetOffset(7);
    glyph.SetXMax(1);
    glyph.SetXMin(-2);
    glyph.SetYMax(3);
    glyph.SetYMin(-4);
    EXPECT_EQ(glyph.GetLength(), 0xFFFFFFFFu);
    EXPECT_EQ(glyph.GetOffset(), 7u);
    EXPECT_EQ(glyph.GetXMax(), 1);
    EXPECT_EQ(glyph.GetXMin(), -2);
    EXPECT_EQ(glyph.GetYMax(), 3);
    EXPECT_EQ(glyph.GetYMin(), -4);
}

TEST(TTGlyph, SettingTheCountGivesEmptyContours)
{
    TTGlyph glyph = SquareGlyph();
    glyph.SetContourCount(2);
    EXPECT_EQ(CountsOf(glyph), (Counts{0, 0}));
    glyph.SetContourCount(0);
    EXPECT_EQ(glyph.GetContours(), nullptr);
    glyph.SetContourCount(-3);
    EXPECT_EQ(glyph.GetContourCount(), 0);
}

TEST(TTGlyph, CountsAndSizesSumOverTheContours)
{
    const TTGlyph glyph = MakeGlyph({{On(0, 0), Off(1, 1)}, {On(0, 0), Off(1, 1), Off(2, 2)}});
    EXPECT_EQ(glyph.GetOffCurvePointCount(), 3);
    EXPECT_EQ(glyph.SizeOf(), sizeof(TTGlyph) + 2 * sizeof(TTContour) + 5 * sizeof(TTPoint));
    EXPECT_EQ(TTGlyph().SizeOf(), sizeof(TTGlyph));
}

TEST(TTGlyph, CopiesShareTheirContours)
{
    TTGlyph copy;
    {
        TTGlyph glyph = SquareGlyph();
        glyph.SetXMax(77);
        copy = glyph;
        EXPECT_EQ(copy.GetContours(), glyph.GetContours());
        glyph.GetContours()[0].GetPoints()[0].SetX(-9);
        glyph.SetContourCount(0);
    }
    EXPECT_EQ(copy.GetContourCount(), 1);
    EXPECT_EQ(copy.GetContours()[0].GetPoints()[0].GetX(), -9);
    EXPECT_EQ(copy.GetXMax(), 77);
    EXPECT_EQ(copy.IsDefined(), 2);
}

TEST(TTGlyph, AnEmptyBufferIsADefinedGlyphWithoutContours)
{
    TTGlyph glyph = SquareGlyph();
    glyph.ClearDefined();
    EXPECT_EQ(glyph.FromGlyphOutline(nullptr, 0), 1);
    EXPECT_EQ(glyph.GetContourCount(), 0);
    EXPECT_EQ(glyph.IsDefined(), 2);
}

TEST(TTGlyph, LinesGiveOnCurvePointsOnly)
{
    const TTGlyph glyph =
        ReadOutline(NativeOutline().Start({1, 2}).Lines({{3, 4}, {5, 6}}).Lines({{7, 8}}).Get());
    ASSERT_EQ(CountsOf(glyph), (Counts{4}));
    const TTPoint* const points = glyph.GetContours()[0].GetPoints();
    ExpectPoint(points[0], 2, 1, 2, 0);
    ExpectPoint(points[1], 2, 3, 4, 0);
    ExpectPoint(points[2], 2, 5, 6, 0);
    ExpectPoint(points[3], 2, 7, 8, 0);
}

TEST(TTGlyph, OnlyTheLastPointOfASplineLiesOnTheCurve)
{
    const TTGlyph glyph =
        ReadOutline(NativeOutline().Start({0, 0}).Spline({{0, 10}, {10, 10}, {10, 0}}).Get());
    ASSERT_EQ(CountsOf(glyph), (Counts{4}));
    const TTPoint* const points = glyph.GetContours()[0].GetPoints();
    ExpectPoint(points[0], 2, 0, 0, 0);
    ExpectPoint(points[1], 1, 0, 10, 5);
    ExpectPoint(points[2], 1, 10, 10, 5);
    ExpectPoint(points[3], 2, 10, 0, 0);
}

TEST(TTGlyph, CurvesOfAnyOtherTypeAreReadAsSplines)
{
    for (const WORD type : {WORD{0}, WORD{3}, WORD{65535}})
    {
        const TTGlyph glyph =
            ReadOutline(NativeOutline().Start({0, 0}).Curve(type, {{5, 5}, {9, 0}}).Get());
        ASSERT_EQ(CountsOf(glyph), (Counts{3}));
        ExpectPoint(glyph.GetContours()[0].GetPoints()[1], 1, 5, 5, 5);
        ExpectPoint(glyph.GetContours()[0].GetPoints()[2], 2, 9, 0, 0);
    }
}

TEST(TTGlyph, CoordinatesAreRoundedDown)
{
    const TTGlyph glyph =
        ReadOutline(NativeOutline().Start({10.75, -3.25}).Lines({{-0.5, 32767.9}}).Get());
    ASSERT_EQ(CountsOf(glyph), (Counts{2}));
    ExpectPoint(glyph.GetContours()[0].GetPoints()[0], 2, 10, -4, 0);
    ExpectPoint(glyph.GetContours()[0].GetPoints()[1], 2, -1, 32767, 0);
}

TEST(TTGlyph, ContoursComeInTheOrderOfTheBuffer)
{
    const TTGlyph glyph = ReadOutline(NativeOutline()
                                          .Start({1, 0})
                                          .Lines({{1, 1}})
                                          .Start({2, 0})
                                          .Spline({{2, 1}, {2, 2}})
                                          .Start({3, 0})
                                          .Get());
    ASSERT_EQ(CountsOf(glyph), (Counts{2, 3, 1}));
    for (int i = 0; i < 3; ++i)
    {
        EXPECT_EQ(glyph.GetContours()[i].GetPoints()[0].GetX(), i + 1);
    }
}

TEST(TTGlyph, ReadingDoesNotChangeBoundsLengthAndOffset)
{
    TTGlyph glyph;
    glyph.SetXMax(5);
    glyph.SetLength(6);
    glyph.SetOffset(7);
    glyph.SetComposite();
    Bytes buffer = SquareBuffer();
    glyph.FromGlyphOutline(buffer.data(), buffer.size());
    EXPECT_EQ(glyph.GetXMax(), 5);
    EXPECT_EQ(glyph.GetLength(), 6u);
    EXPECT_EQ(glyph.GetOffset(), 7u);
    EXPECT_EQ(glyph.IsComposite(), 1);
}

TEST(TTGlyph, ReadingAgainReplacesTheContours)
{
    TTGlyph glyph = SquareWithHoleGlyph();
    const TTGlyph before = glyph;
    Bytes buffer = SquareBuffer();
    glyph.FromGlyphOutline(buffer.data(), buffer.size());
    EXPECT_EQ(CountsOf(glyph), (Counts{4}));
    EXPECT_EQ(CountsOf(before), (Counts{4, 4}));
}

TEST(TTGlyph, TheBufferNeedsNoAlignment)
{
    Bytes shifted = Joined({0}, SquareBuffer());
    TTGlyph glyph;
    glyph.FromGlyphOutline(shifted.data() + 1, shifted.size() - 1);
    ASSERT_EQ(CountsOf(glyph), (Counts{4}));
    ExpectPoint(glyph.GetContours()[0].GetPoints()[2], 2, 10, 10, 0);
}

TEST(TTGlyph, APolygonOfItsHeaderAloneHasOnePoint)
{
    EXPECT_EQ(CountsOf(ReadOutline(NativeOutline().Start({5, 6}).Get())), (Counts{1}));
}

TEST(TTGlyph, APolygonPastTheBufferEndsTheReading)
{
    const Bytes two = Joined(SquareBuffer(), SquareBuffer());
    for (std::size_t size = squareSize; size < two.size(); ++size)
    {
        const TTGlyph glyph = ReadOutline(Bytes(two.data(), two.data() + size));
        EXPECT_EQ(CountsOf(glyph), (Counts{4})) << size;
        EXPECT_EQ(glyph.IsDefined(), 2);
    }
    Bytes huge = two;
    SetSize(huge, squareSize, 0xFFFFFFFF);
    EXPECT_EQ(CountsOf(ReadOutline(huge)), (Counts{4}));
}

TEST(TTGlyph, APolygonShorterThanItsHeaderEndsTheReading)
{
    for (const DWORD cb : {0u, 1u, 15u})
    {
        Bytes buffer = Joined(SquareBuffer(), Joined(SquareBuffer(), SquareBuffer()));
        SetSize(buffer, squareSize, cb);
        EXPECT_EQ(CountsOf(ReadOutline(buffer)), (Counts{4})) << cb;
    }
}

TEST(TTGlyph, ACurvePastItsPolygonEndsTheReadingThere)
{
    // The polygon has two runs. The second claims one point more than the polygon's bytes hold; the
    // bytes of the next contour must not be read for it.
    Bytes buffer = NativeOutline().Start({1, 1}).Lines({{2, 2}}).Lines({{3, 3}, {4, 4}}).Get();
    buffer[16 + 12 + 2] = 3;
    const TTGlyph glyph = ReadOutline(Joined(buffer, SquareBuffer()));
    ASSERT_EQ(CountsOf(glyph), (Counts{2}));
    ExpectPoint(glyph.GetContours()[0].GetPoints()[1], 2, 2, 2, 0);
}

TEST(TTGlyph, BytesTooFewForACurveEndTheReading)
{
    Bytes buffer = Joined(SquareBuffer(), {1, 0, 0});
    SetSize(buffer, 0, squareSize + 3);
    EXPECT_EQ(CountsOf(ReadOutline(Joined(buffer, SquareBuffer()))), (Counts{4}));
}

TEST(TTGlyph, ACurveWithoutPointsIsSkipped)
{
    const TTGlyph glyph =
        ReadOutline(NativeOutline().Start({1, 1}).Lines({}).Lines({{2, 2}}).Get());
    EXPECT_EQ(CountsOf(glyph), (Counts{2}));
}

TEST(TTGlyph, AContourKeepsAtMost65535Points)
{
    // Each of two runs has 40,000 points, so the second would bring the number of points above
    // 65,535.
    RecordBytes run;
    run.Word(TT_PRIM_LINE).Word(40000);
    for (int i = 0; i < 40000; ++i)
    {
        run.Dword(0).Dword(0);
    }
    const DWORD size = static_cast<DWORD>(16 + 2 * run.Get().size());
    const Bytes buffer =
        RecordBytes().Dword(size).Dword(TT_POLYGON_TYPE).Dword(0).Dword(0).Append(run).Append(run);
    EXPECT_EQ(CountsOf(ReadOutline(buffer)), (Counts{40001}));
}

TEST(TTGlyph, AGlyphKeepsAtMost32767Contours)
{
    const Bytes one = NativeOutline().Start({1, 1}).Get();
    RecordBytes many;
    for (int i = 0; i < 33000; ++i)
    {
        many.Raw(one.data(), one.size());
    }
    EXPECT_EQ(ReadOutline(many).GetContourCount(), 32767);
}
