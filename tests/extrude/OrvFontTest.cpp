// SPDX-License-Identifier: MIT
#include "extrude/OrvFont.h"

#include "extrude/OrvGlyph.h"
#include "geometry/DVector.h"
#include "scene/OrvString.h"
#include "tests/support/StubFont.h"

#include <gtest/gtest.h>

namespace
{
// Names and flags.

TEST(OrvFont, ComparesFullNamesByTheirBytes)
{
    const StubFont upper("Gothic");
    const StubFont lower("gothic");
    const StubFont accent("\xE9");
    const StubFont same("gothic");
    EXPECT_TRUE(upper < &lower);
    EXPECT_TRUE(upper <= &lower);
    EXPECT_FALSE(upper > &lower);
    EXPECT_FALSE(upper >= &lower);
    EXPECT_FALSE(upper == &lower);
    EXPECT_TRUE(accent > &lower);
    EXPECT_TRUE(lower == &same);
    EXPECT_TRUE(lower <= &same);
    EXPECT_TRUE(lower >= &same);
    EXPECT_FALSE(lower < &same);
}

TEST(OrvFont, TheLoadedAndPreloadedFlagsAreSeparate)
{
    OrvFont font;
    EXPECT_EQ(font.IsLoaded(), 0);
    EXPECT_EQ(font.IsPreloaded(), 0);
    font.SetPreloaded();
    EXPECT_EQ(font.IsPreloaded(), 2);
    EXPECT_EQ(font.IsLoaded(), 0);
    font.SetLoaded();
    font.ClearPreloaded();
    EXPECT_EQ(font.IsLoaded(), 1);
    EXPECT_EQ(font.IsPreloaded(), 0);
    font.ClearLoaded();
    EXPECT_EQ(font.IsLoaded(), 0);
}

TEST(OrvFont, ANewFontIsEmpty)
{
    const OrvFont font;
    EXPECT_EQ(font.glyphs.GetSize(), 0);
    EXPECT_EQ(font.glyphCount, 0);
    EXPECT_EQ(font.GetFullName(), "");
    EXPECT_EQ(font.outlineMetrics, nullptr);
    EXPECT_EQ(font.outlineMetricsSize, 0u);
    EXPECT_EQ(font.SizeOf(), sizeof(OrvFont));
}

TEST(OrvFont, CreateRefusesNullRecords)
{
    OrvFont font;
    const ENUMLOGFONTA record = {};
    const NEWTEXTMETRICA metrics = {};
    EXPECT_EQ(font.Create(nullptr, &metrics), 0);
    EXPECT_EQ(font.Create(&record, nullptr), 0);
}

// Characters and glyphs.

TEST(OrvFont, ACharacterBelowTheFirstWrapsAndIsShownAsTheDefaultCharacter)
{
    const StubFont font;
    EXPECT_EQ(font.LookupGlyphIndex('A'), 0);
    EXPECT_EQ(font.LookupGlyphIndex('D'), 3);
    EXPECT_EQ(font.LookupGlyphIndex('A' - 1), 3);
    EXPECT_EQ(font.LookupGlyphIndex(10), 3);
    EXPECT_EQ(font.LookupGlyphIndex(0), 3);
}

TEST(OrvFont, TheCodeOnePastTheLastIsLookedUpAsTheGlyphCount)
{
    StubFont font;
    EXPECT_EQ(font.LookupGlyphIndex('E'), 4);
    EXPECT_EQ(font.LookupGlyphIndex('F'), 3);
    EXPECT_EQ(font.GetGlyphAdvanceWidth(4), 0);
    EXPECT_EQ(font.ConstructOrvGlyph(4), 0);
}

TEST(OrvFont, AdvancesAreDesignUnitsAnd0ForAnInvalidGlyph)
{
    StubFont font;
    EXPECT_EQ(font.GetGlyphAdvanceWidth(0), 500);
    EXPECT_EQ(font.GetGlyphAdvanceWidth(3), 1000);
    font.Glyph('A')->SetInvalid();
    EXPECT_EQ(font.GetGlyphAdvanceWidth(0), 0);
    EXPECT_EQ(font.GetGlyphAdvanceWidth(0xFFFF), 0);
}

TEST(OrvFont, AGlyphThatIsBuiltIsNotBuiltAgain)
{
    StubFont font;
    const OrvGlyph* const glyph = font.Glyph('A');
    EXPECT_EQ(font.ConstructOrvGlyph(0), 0);
    EXPECT_EQ(font.ConstructOrvGlyph(-1), 0);
    EXPECT_EQ(font.Glyph('A'), glyph);
}

TEST(OrvFont, SizeOfCountsTheNameTheMetricsAndTheValidGlyphs)
{
    StubFont font("Four");
    font.outlineMetricsSize = 100;
    unsigned long expected = sizeof(OrvFont) + 100 + 4;
    for (const char character : {'A', 'C', 'D'})
    {
        const OrvGlyph& glyph = *font.Glyph(character);
        expected += glyph.SizeOf() + glyph.SizeOfPolygons() + glyph.SizeOfVerticies();
    }
    font.Glyph('B')->SetInvalid();
    EXPECT_EQ(font.SizeOf(), expected);
    font.glyphs.RemoveAll();
    EXPECT_EQ(font.SizeOf(), sizeof(OrvFont) + 100 + 4);
}

// Measuring. Expected sizes are worked out by hand from the advances of StubFont: A 0.5, B 0.25, C
// 0.75, D 1 em. In y, A reaches from 0 to 1 em and B from -0.25 to 0.5 em.

class OrvFontExtents : public testing::Test
{
protected:
    OrvFontExtents()
    {
        string.SetInterCharacterSpacing(0.125f);
        string.SetInterLineSpacing(0.25f);
        string.ClearAdjustSpacingForBevels();
        string.SetScale(DVector(1, 1, 1));
    }

    void Measure(const char* text)
    {
        string.SetTextString(text);
        font.CalculateStringExtents(&string, &unscaled, &scaled, &third);
    }

    StubFont font;
    OrvString string;
    DVector unscaled{7, 7, 7};
    DVector scaled{7, 7, 7};
    DVector third{7, 7, 7};
};

testing::AssertionResult Is(const DVector& vector, double x, double y, double z)
{
    if (vector.x == x && vector.y == y && vector.z == z)
    {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure()
           << "(" << vector.x << ", " << vector.y << ", " << vector.z << ")";
}

TEST_F(OrvFontExtents, AnEmptyTextMeasuresZeroAndKeepsItsOffset)
{
    string.SetFirstLineOffset(0.5f);
    Measure("");
    EXPECT_TRUE(Is(unscaled, 0, 0, 0));
    EXPECT_TRUE(Is(scaled, 0, 0, 0));
    EXPECT_TRUE(Is(third, 0, 0, 0));
    EXPECT_EQ(string.GetFirstLineOffset(), 0.5f);
}

TEST_F(OrvFontExtents, ALineIsAsWideAsItsAdvancesAndTheSpacingsBetweenThem)
{
    string.SetScale(DVector(2, 4, 0.5));
    Measure("AB");
    // The width is 0.5 + 0.125 + 0.25, where the scale does not change the spacing of 0.125. The
    // height reaches from the foot of B to the top of A.
    EXPECT_TRUE(Is(unscaled, 0.875, 1.25, 1));
    EXPECT_TRUE(Is(scaled, 1.625, 5, 0.5));
    EXPECT_TRUE(Is(third, 0, 0, 0));
    EXPECT_EQ(string.GetFirstLineOffset(), 4.0f);
}

TEST_F(OrvFontExtents, ATextOfEmptyGlyphsHasAWidthButNoHeight)
{
    Measure("D");
    EXPECT_TRUE(Is(unscaled, 1, 0, 1));
    EXPECT_TRUE(Is(scaled, 1, 0, 1));
    EXPECT_EQ(string.GetFirstLineOffset(), 0.0f);
}

TEST_F(OrvFontExtents, AnInvalidGlyphAddsNeitherWidthNorSpacing)
{
    font.Glyph('B')->SetInvalid();
    Measure("ABC");
    // The width is 0.5 for A, 0.125 for the spacing after A, and 0.75 for C.
    EXPECT_TRUE(Is(unscaled, 1.375, 1, 1));

    // Without any valid glyph, the span in y is still empty, with its initial maximum of -1e7.
    Measure("B");
    EXPECT_TRUE(Is(unscaled, 0, 0, 1));
    EXPECT_TRUE(Is(scaled, 0, 0, 1));
    EXPECT_EQ(string.GetFirstLineOffset(), -1e7f);
}

TEST_F(OrvFontExtents, ALineFeedAfterACarriageReturnIsSkippedAndASecondOneIsMeasured)
{
    Measure("A\r\nA");
    EXPECT_TRUE(Is(unscaled, 0.5, 2.25, 1));
    Measure("A\r\n\nA");
    // The second line begins with the default character, D.
    EXPECT_TRUE(Is(unscaled, 1.625, 2.25, 1));
}

struct ExtentsCase
{
    bool adjusts;
    bool scalesBevels;
    double sign;
    double unscaledWidth, unscaledHeight;
    double scaledWidth, scaledHeight;
    float offset;
};

TEST_F(OrvFontExtents, BevelsWidenTheTextAsItsOptionsSay)
{
    // The text is two lines of A at the scale (2, 4, 1), with a bevel b = 0.0625 wide. A line
    // starts at x = 0 if spacing is adjusted for bevels. Otherwise it starts at 2 b = 0.125, or at
    // 0.25 with scaled bevels. The step from line to line is 1.25 unscaled and 4.25 scaled; if
    // spacing is adjusted, it is 1.375 and 4.375, or 4.75 with scaled bevels.
    const ExtentsCase cases[] = {{false, false, 1, 0.625, 2.25, 1.125, 8.25, 4},
                                 {false, true, 1, 0.625, 2.25, 1.25, 8.25, 4},
                                 {true, false, 1, 0.625, 2.5, 1.125, 8.5, 4.0625},
                                 {true, true, 1, 0.625, 2.5, 1.25, 9.25, 4.25},
                                 // With a negative scale, the tops of letters point down, and the
                                 // second line lies above the first.
                                 {false, false, -1, 0.625, 2.25, 1.125, 8.25, 4.25},
                                 {false, true, -1, 0.625, 2.25, 1.25, 8.25, 4.25},
                                 {true, false, -1, 0.625, 2.5, 1.125, 8.5, 4.4375},
                                 {true, true, -1, 0.625, 2.5, 1.25, 9.25, 5}};
    string.SetBevelStyle(1);
    string.SetBevelLocation(0);
    string.SetBevelDepth(0.0625f);
    for (const ExtentsCase& test : cases)
    {
        SCOPED_TRACE(testing::Message() << "adjusts " << test.adjusts << ", scales "
                                        << test.scalesBevels << ", sign " << test.sign);
        string.SetScale(DVector(2 * test.sign, 4 * test.sign, 1));
        test.adjusts ? string.SetAdjustSpacingForBevels() : string.ClearAdjustSpacingForBevels();
        test.scalesBevels ? string.SetScaleBevels() : string.ClearScaleBevels();
        Measure("A\rA");
        EXPECT_TRUE(Is(unscaled, test.unscaledWidth, test.unscaledHeight, 1));
        EXPECT_TRUE(Is(scaled, test.scaledWidth, test.scaledHeight, 1));
        EXPECT_EQ(string.GetFirstLineOffset(), test.offset);
    }
}
}  // namespace
