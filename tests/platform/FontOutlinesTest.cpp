// SPDX-License-Identifier: MIT
// Outlines and metrics of the font of edge cases, worked out by hand from its tables. It has 1000
// units per em, a cell ascent of 810, a descent of 210 and no instructions, so at 1000 pixels per
// em a unit is a pixel. In comments, "*" marks a point off the curve.

#include "platform/Limits.h"
#include "tests/support/FontFile.h"
#include "tests/support/PrivateFonts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace
{

constexpr LONG em = 1000;

struct At
{
    double x;
    double y;
};

/// The contents of a native buffer, as a list of polygons.
class Polygons
{
public:
    Polygons& Start(At point)
    {
        polygon_ = bytes_.size();
        bytes_.resize(bytes_.size() + 8);
        Put<DWORD>(polygon_ + 4, 24);
        Point(point);
        return Measure();
    }
    Polygons& Line(std::initializer_list<At> points) { return Curve(1, points); }
    Polygons& Spline(std::initializer_list<At> points) { return Curve(2, points); }

    const std::vector<BYTE>& Bytes() const { return bytes_; }

private:
    template <typename Value>
    void Put(std::size_t offset, Value value)
    {
        std::memcpy(&bytes_[offset], &value, sizeof value);
    }

    Polygons& Curve(WORD type, std::initializer_list<At> points)
    {
        const std::size_t curve = bytes_.size();
        bytes_.resize(curve + 4);
        Put<WORD>(curve, type);
        Put<WORD>(curve + 2, static_cast<WORD>(points.size()));
        for (const At& point : points)
        {
            Point(point);
        }
        return Measure();
    }

    Polygons& Measure()
    {
        Put<DWORD>(polygon_, static_cast<DWORD>(bytes_.size() - polygon_));
        return *this;
    }

    void Point(At point)
    {
        const std::size_t end = bytes_.size();
        bytes_.resize(end + 8);
        // A half, 32 of 64, repeated to sixteen bits: 1000 0010 0000 1000.
        const auto fixed = [](double value) {
            const auto whole = static_cast<SHORT>(std::floor(value));
            return FIXED{value != whole ? WORD{0x8208} : WORD{0}, whole};
        };
        Put<FIXED>(end, fixed(point.x));
        Put<FIXED>(end + 4, fixed(point.y));
    }

    std::vector<BYTE> bytes_;
    std::size_t polygon_ = 0;
};

class FontOutlines : public testing::Test
{
protected:
    // Some of these outlines cross themselves, so they are taken as they are.
    const OutlinesInUse asIs_{OUTLINES_AS_IS};
    const PrivateFonts fonts_{{ORVANE_TEST_DATA "/EdgeTest.ttf"}};
    const SelectedFont font_{"Edge Test", -em};
};

TEST_F(FontOutlines, AContourThatStartsOffCurveStartsAtItsLastPointWhenThatIsOnCurve)
{
    // 0,101* 100,500 501,500* 600,0: the contour starts at the last point, which also ends the last
    // spline.
    EXPECT_EQ(font_.Outline('F'), Polygons()
                                      .Start({600, 0})
                                      .Spline({{0, 101}, {100, 500}})
                                      .Spline({{501, 500}, {600, 0}})
                                      .Bytes());
    // 0,0* 0,300
    EXPECT_EQ(font_.Outline('T'), Polygons().Start({0, 300}).Spline({{0, 0}, {0, 300}}).Bytes());
}

TEST_F(FontOutlines, AContourThatStartsAndEndsOffCurveStartsMidway)
{
    // 100,100* 301,401*
    EXPECT_EQ(
        font_.Outline('D'),
        Polygons().Start({200.5, 250.5}).Spline({{100, 100}, {301, 401}, {200.5, 250.5}}).Bytes());
    // 0,101* 100,500* 501,500* 600,0*: no point is on the curve
    EXPECT_EQ(font_.Outline('E'),
              Polygons()
                  .Start({300, 50.5})
                  .Spline({{0, 101}, {100, 500}, {501, 500}, {600, 0}, {300, 50.5}})
                  .Bytes());
    // 0,101* 100,500 501,500 600,0*
    EXPECT_EQ(font_.Outline('G'), Polygons()
                                      .Start({300, 50.5})
                                      .Spline({{0, 101}, {100, 500}})
                                      .Line({{501, 500}})
                                      .Spline({{600, 0}, {300, 50.5}})
                                      .Bytes());
}

TEST_F(FontOutlines, MidpointsBelowZeroAreFloored)
{
    // -10,-31* -100,-500* 301,-400*: the midpoint is 145.5, -215.5.
    EXPECT_EQ(font_.Outline('N'),
              Polygons()
                  .Start({145.5, -215.5})
                  .Spline({{-10, -31}, {-100, -500}, {301, -400}, {145.5, -215.5}})
                  .Bytes());
}

TEST_F(FontOutlines, AContourThatEndsOffCurveIsClosedByItsStart)
{
    // 0,0 0,300* 100,400* 200,401* 301,300 300,0* and a triangle
    EXPECT_EQ(font_.Outline('S'), Polygons()
                                      .Start({0, 0})
                                      .Spline({{0, 300}, {100, 400}, {200, 401}, {301, 300}})
                                      .Spline({{300, 0}, {0, 0}})
                                      .Start({10, 10})
                                      .Line({{290, 10}, {150, 200}})
                                      .Bytes());
}

TEST_F(FontOutlines, AClosingPointThatTheFontRepeatsIsKept)
{
    EXPECT_EQ(font_.Outline('H'),
              Polygons().Start({0, 0}).Line({{0, 500}, {500, 500}, {500, 0}, {0, 0}}).Bytes());
}

TEST_F(FontOutlines, ContoursOfOnePointAreLeftOut)
{
    // A is 100,100 alone; R is 100,100* alone.
    for (const char letter : {'A', 'R'})
    {
        DWORD result = 1;
        EXPECT_TRUE(font_.Outline(letter, &result).empty());
        EXPECT_EQ(result, 0u);
    }
}

TEST_F(FontOutlines, CompositeGlyphsComeAsOneOutline)
{
    // E moved by 10, -20, then H moved by 700, 3
    EXPECT_EQ(font_.Outline('I'),
              Polygons()
                  .Start({310, 30.5})
                  .Spline({{10, 81}, {110, 480}, {511, 480}, {610, -20}, {310, 30.5}})
                  .Start({700, 3})
                  .Line({{700, 503}, {1200, 503}, {1200, 3}, {700, 3}})
                  .Bytes());
}

TEST_F(FontOutlines, ASpaceHasNoBytesAndABoxOfOnePixel)
{
    DWORD result = 1;
    GLYPHMETRICS metrics = {};
    EXPECT_TRUE(font_.Outline('M', &result, &metrics).empty());
    EXPECT_EQ(result, 0u);
    EXPECT_EQ(metrics.gmBlackBoxX, 1u);
    EXPECT_EQ(metrics.gmBlackBoxY, 1u);
    EXPECT_EQ(metrics.gmptGlyphOrigin.x, 0);
    EXPECT_EQ(metrics.gmptGlyphOrigin.y, 0);
    EXPECT_EQ(metrics.gmCellIncX, 598);
    EXPECT_EQ(metrics.gmCellIncY, 0);
}

TEST_F(FontOutlines, AMissingCharacterHasTheOutlineOfTheMissingMark)
{
    const std::vector<BYTE> box =
        Polygons().Start({50, 0}).Line({{50, 700}, {450, 700}, {450, 0}}).Bytes();
    EXPECT_EQ(font_.Outline('!'), box);
    EXPECT_EQ(font_.Outline(0), box);
    EXPECT_EQ(font_.Outline(255), box);
}

TEST_F(FontOutlines, OnlyTheLowByteOfACharacterCounts)
{
    EXPECT_EQ(font_.Outline(0x100 + 'H'), font_.Outline('H'));
    EXPECT_EQ(font_.Outline(0x4100 + 'H'), font_.Outline('H'));
}

TEST_F(FontOutlines, ASizeOfZeroOrANullBufferAsksForTheSize)
{
    GLYPHMETRICS metrics = {};
    BYTE bytes[64] = {};
    // 16 for the header, 4 and 3 points of 8 for the curve
    EXPECT_EQ(GetGlyphOutlineA(font_.Dc(), '!', GGO_NATIVE, &metrics, 0, nullptr, &identityMatrix),
              44u);
    EXPECT_EQ(GetGlyphOutlineA(font_.Dc(), '!', GGO_NATIVE, &metrics, 0, bytes, &identityMatrix),
              44u);
    EXPECT_EQ(GetGlyphOutlineA(font_.Dc(), '!', GGO_NATIVE, &metrics, 64, nullptr, &identityMatrix),
              44u);
    EXPECT_EQ(bytes[0], 0);
    EXPECT_EQ(metrics.gmBlackBoxX, 400u);
    EXPECT_EQ(metrics.gmBlackBoxY, 700u);
    EXPECT_EQ(metrics.gmptGlyphOrigin.x, 50);
    EXPECT_EQ(metrics.gmptGlyphOrigin.y, 700);
    EXPECT_EQ(metrics.gmCellIncX, 500);
}

TEST_F(FontOutlines, ABufferThatIsTooSmallIsRefusedAndNotWritten)
{
    GLYPHMETRICS metrics = {};
    BYTE bytes[45] = {};
    EXPECT_EQ(GetGlyphOutlineA(font_.Dc(), '!', GGO_NATIVE, &metrics, 43, bytes, &identityMatrix),
              GDI_ERROR);
    EXPECT_EQ(bytes[0], 0);
    EXPECT_EQ(GetGlyphOutlineA(font_.Dc(), '!', GGO_NATIVE, &metrics, 44, bytes, &identityMatrix),
              44u);
    EXPECT_EQ(bytes[0], 44);
    EXPECT_EQ(bytes[44], 0);
}

TEST_F(FontOutlines, AskingForMetricsCopiesNoOutline)
{
    GLYPHMETRICS metrics = {};
    BYTE bytes[64] = {};
    EXPECT_EQ(GetGlyphOutlineA(font_.Dc(), '!', GGO_METRICS, &metrics, 64, bytes, &identityMatrix),
              0u);
    EXPECT_EQ(bytes[0], 0);
    EXPECT_EQ(metrics.gmCellIncX, 500);
}

TEST_F(FontOutlines, AnythingButTheIdentityMatrixIsRefused)
{
    GLYPHMETRICS metrics = {};
    for (int element = 0; element < 4; ++element)
    {
        for (const FIXED value : {FIXED{0, 2}, FIXED{1, 0}, FIXED{1, 1}})
        {
            MAT2 matrix = identityMatrix;
            std::memcpy(reinterpret_cast<BYTE*>(&matrix) + element * sizeof value, &value,
                        sizeof value);
            EXPECT_EQ(GetGlyphOutlineA(font_.Dc(), '!', GGO_NATIVE, &metrics, 0, nullptr, &matrix),
                      GDI_ERROR);
        }
    }
    EXPECT_EQ(GetGlyphOutlineA(font_.Dc(), '!', GGO_NATIVE, &metrics, 0, nullptr, nullptr),
              GDI_ERROR);
}

TEST_F(FontOutlines, OtherFormatsNullMetricsAndInvalidDeviceContextsAreRefused)
{
    GLYPHMETRICS metrics = {};
    constexpr UINT bitmap = 1;
    EXPECT_EQ(GetGlyphOutlineA(font_.Dc(), '!', bitmap, &metrics, 0, nullptr, &identityMatrix),
              GDI_ERROR);
    EXPECT_EQ(GetGlyphOutlineA(font_.Dc(), '!', GGO_NATIVE, nullptr, 0, nullptr, &identityMatrix),
              GDI_ERROR);
    EXPECT_EQ(GetGlyphOutlineA(nullptr, '!', GGO_NATIVE, &metrics, 0, nullptr, &identityMatrix),
              GDI_ERROR);
    EXPECT_EQ(GetOutlineTextMetricsA(nullptr, 0, nullptr), 0u);
}

TEST_F(FontOutlines, ANegativeHeightMeansTheEmAndAPositiveHeightTheCell)
{
    // The mark for missing characters advances by half an em; the cell is 1020 of 1000 units.
    const auto advance = [](LONG height) {
        const SelectedFont font("Edge Test", height);
        GLYPHMETRICS metrics = {};
        font.Outline('!', nullptr, &metrics);
        return metrics.gmCellIncX;
    };
    EXPECT_EQ(advance(-2000), 1000);
    EXPECT_EQ(advance(-100), 50);
    EXPECT_EQ(advance(2040), 1000);
    EXPECT_EQ(advance(102), 50);
    // 12 points at 96 dots per inch
    EXPECT_EQ(advance(0), 8);
    EXPECT_EQ(orvane::limits::maxFontHeight, 16384);
    // A larger height is reduced to 16384 pixels per em; the advance is half of them.
    EXPECT_EQ(advance(-16382), 8191);
    EXPECT_EQ(advance(-16384), 8192);
    EXPECT_EQ(advance(-16386), 8192);
    EXPECT_EQ(advance(INT32_MIN), 8192);
    // So is a huge cell: 16384 * 1000 / 1020 is 16063 pixels per em; half an em rounds up.
    EXPECT_EQ(advance(INT32_MAX), 8032);
}

TEST_F(FontOutlines, TheBoxIsCutToTheCell)
{
    // At a cell of 102 pixels the ascent is 81 and the descent 21; N reaches down to -50.
    const SelectedFont small("Edge Test", 102);
    GLYPHMETRICS metrics = {};
    small.Outline('N', nullptr, &metrics);
    EXPECT_EQ(metrics.gmptGlyphOrigin.y - static_cast<LONG>(metrics.gmBlackBoxY), -21);
}

TEST_F(FontOutlines, OutlineMetricsAreFilledUpToTheSizeGiven)
{
    const std::vector<BYTE> whole = font_.OutlineMetrics();
    // "Edge Test", "Edge Test Regular", "Regular", "Edge Test" with their ends
    ASSERT_EQ(whole.size(), sizeof(OUTLINETEXTMETRICA) + 10 + 18 + 8 + 10);
    std::vector<BYTE> part(whole.size(), 0xAA);
    EXPECT_EQ(
        GetOutlineTextMetricsA(font_.Dc(), 100, reinterpret_cast<OUTLINETEXTMETRICA*>(part.data())),
        100u);
    EXPECT_TRUE(std::equal(part.begin(), part.begin() + 100, whole.begin()));
    EXPECT_EQ(part[100], 0xAA);
    // Bytes beyond the record stay as they are.
    std::vector<BYTE> more(whole.size() + 8, 0xAA);
    EXPECT_EQ(GetOutlineTextMetricsA(font_.Dc(), static_cast<UINT>(more.size()),
                                     reinterpret_cast<OUTLINETEXTMETRICA*>(more.data())),
              whole.size());
    EXPECT_EQ(more[whole.size()], 0xAA);
}

/// The font of edge cases with repaired outlines. S is rebuilt, because a triangle lies on a
/// contour of the same direction.
class RepairedFontOutlines : public testing::Test
{
protected:
    const OutlinesInUse repaired_{OUTLINES_REPAIRED};
    const PrivateFonts fonts_{{ORVANE_TEST_DATA "/EdgeTest.ttf"}};
    const SelectedFont font_{"Edge Test", -em};

    static std::vector<BYTE> AsIs(char letter)
    {
        const OutlinesInUse asIs(OUTLINES_AS_IS);
        return SelectedFont("Edge Test", -em).Outline(letter);
    }
};

TEST_F(RepairedFontOutlines, RepairIsTheDefault)
{
    // Another test in this process may have changed the mode and restored it.
    EXPECT_EQ(GetProcessOutlines(), OUTLINES_REPAIRED);
}

TEST_F(RepairedFontOutlines, TheSizeAskedForIsThatOfTheBytes)
{
    GLYPHMETRICS metrics = {};
    const DWORD size =
        GetGlyphOutlineA(font_.Dc(), 'S', GGO_NATIVE, &metrics, 0, nullptr, &identityMatrix);
    const std::vector<BYTE> bytes = font_.Outline('S');
    EXPECT_EQ(size, bytes.size());
    EXPECT_NE(bytes, AsIs('S'));
}

TEST_F(RepairedFontOutlines, ARepairedOutlineIsTheSameEachTime)
{
    const std::vector<BYTE> first = font_.Outline('S');
    font_.Outline('H');
    EXPECT_EQ(font_.Outline('S'), first);
    EXPECT_EQ(SelectedFont("Edge Test", -em).Outline('S'), first);
    ReloadFonts();  // drops the outlines kept so far
    EXPECT_EQ(font_.Outline('S'), first);
}

TEST_F(RepairedFontOutlines, AnOutlineThatNeedsNoRepairIsTheSameInBothModes)
{
    // H is a square with a closing point, '!' the box of missing characters.
    for (const char letter : {'H', '!', 'A', 'M'})
    {
        EXPECT_EQ(font_.Outline(letter), AsIs(letter));
    }
}

TEST_F(RepairedFontOutlines, RepairDoesNotChangeTheMetrics)
{
    for (int character = 33; character < 127; ++character)
    {
        GLYPHMETRICS repaired = {};
        GLYPHMETRICS own = {};
        font_.Outline(static_cast<UINT>(character), nullptr, &repaired);
        const OutlinesInUse asIs(OUTLINES_AS_IS);
        font_.Outline(static_cast<UINT>(character), nullptr, &own);
        EXPECT_EQ(std::memcmp(&repaired, &own, sizeof own), 0) << character;
    }
}

TEST_F(RepairedFontOutlines, AtAnotherSizeTheRepairedOutlineIsScaled)
{
    const std::vector<BYTE> whole = font_.Outline('S');
    const std::vector<BYTE> twice = SelectedFont("Edge Test", -2 * em).Outline('S');
    ASSERT_EQ(twice.size(), whole.size());
    // The start points of the first polygons
    POINTFX start;
    POINTFX scaled;
    std::memcpy(&start, &whole[8], sizeof start);
    std::memcpy(&scaled, &twice[8], sizeof scaled);
    EXPECT_EQ(scaled.x.value, 2 * start.x.value);
    EXPECT_EQ(scaled.y.value, 2 * start.y.value);
}

TEST_F(RepairedFontOutlines, OnlyTheTwoModesCanBeSet)
{
    EXPECT_FALSE(SetProcessOutlines(2));
    EXPECT_EQ(GetProcessOutlines(), OUTLINES_REPAIRED);
}

TEST_F(RepairedFontOutlines, ACheckCountsEveryGlyphOfTheFace)
{
    OUTLINECHECK check = {};
    ASSERT_TRUE(CheckFontOutlines(font_.Dc(), &check));
    EXPECT_EQ(check.glyphs, 23u);
    EXPECT_GT(check.repaired, 0u);
    EXPECT_LE(check.repaired + check.turned + check.unrepaired, check.glyphs);
    EXPECT_EQ(check.converted, 0u);
    // The check does not depend on the mode.
    OUTLINECHECK again = {};
    const OutlinesInUse asIs(OUTLINES_AS_IS);
    ASSERT_TRUE(CheckFontOutlines(font_.Dc(), &again));
    EXPECT_EQ(std::memcmp(&again, &check, sizeof check), 0);
    EXPECT_FALSE(CheckFontOutlines(nullptr, &check));
    EXPECT_FALSE(CheckFontOutlines(font_.Dc(), nullptr));
}

/// The first, default and break characters that follow from a font's first character.
struct CharacterRow
{
    int first;
    int last;
    BYTE expectedFirst;
    BYTE expectedDefault;
    BYTE expectedBreak;
    BYTE expectedLast;
};

class FontCharacters : public testing::TestWithParam<CharacterRow>
{};

TEST_P(FontCharacters, RangeFollowsTheFontsFirstAndLastCharacter)
{
    const CharacterRow& row = GetParam();
    PrivateFonts fonts({});
    const std::string file = fonts.Folder() + "/font.ttf";
    FontFile::EdgeTest().PutWord("OS/2", 64, row.first).PutWord("OS/2", 66, row.last).Write(file);
    fonts.Install(file);
    const std::vector<EnumeratedFont> delivered = EnumerateFonts("Edge Test");
    ASSERT_EQ(delivered.size(), 1u);
    const NEWTEXTMETRICA& metrics = delivered[0].metrics;
    EXPECT_EQ(metrics.tmFirstChar, row.expectedFirst);
    EXPECT_EQ(metrics.tmDefaultChar, row.expectedDefault);
    EXPECT_EQ(metrics.tmBreakChar, row.expectedBreak);
    EXPECT_EQ(metrics.tmLastChar, row.expectedLast);
}

INSTANTIATE_TEST_SUITE_P(Rows, FontCharacters,
                         testing::Values(CharacterRow{0, 100, 0, 1, 2, 100},
                                         CharacterRow{1, 254, 1, 2, 3, 254},
                                         CharacterRow{2, 255, 0, 1, 2, 255},
                                         CharacterRow{33, 256, 31, 32, 33, 255},
                                         CharacterRow{255, 0xFFFF, 253, 254, 255, 255},
                                         CharacterRow{256, 0xFFFF, 30, 31, 32, 255},
                                         CharacterRow{0xF020, 0xF0FF, 30, 31, 32, 255}));

}  // namespace
