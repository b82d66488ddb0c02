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

TEST(OrvFont, KeepsTwoFlagsOfItsOwn)
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

TEST(OrvFont, OneCodePastTheLastIsLookedUpAsTheGlyphCount)
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

TEST(OrvFont, ATakenSlotIsNotBuiltAgain)
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

// Measuring, by hand from the advances of StubFont: A 0.5, B 0.25, C 0.75, D 1 em. A is 0 to 1 em
// high, B -0.25 to 0.5.

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

TEST_F(OrvFontExtents, ALineIsAsWideAsItsAdvancesWithTheSpacingBetween)
{
    string.SetScale(DVector(2, 4, 0.5));
    Measure("AB");
    // 0.5 + 0.125 + 0.25, from the foot of B to the top of A; the spacing does not scale.
    EXPECT_TRUE(Is(unscaled, 0.875, 1.25, 1));
    EXPECT_TRUE(Is(scaled, 1.625, 5, 0.5));
    EXPECT_TRUE(Is(third, 0, 0, 0));
    EXPECT_EQ(string.GetFirstLineOffset(), 4.0f);
}

TEST_F(OrvFontExtents, ATextOfEmptyGlyphsHasAWidthAlone)
{
    Measure("D");
    EXPECT_TRUE(Is(unscaled, 1, 0, 1));
    EXPECT_TRUE(Is(scaled, 1, 0, 1));
    EXPECT_EQ(string.GetFirstLineOffset(), 0.0f);
}

TEST_F(OrvFontExtents, AnInvalidGlyphCountsForNothingNotEvenItsSpacing)
{
    font.Glyph('B')->SetInvalid();
    Measure("ABC");
    // 0.5 + 0.125 behind A + 0.75.
    EXPECT_TRUE(Is(unscaled, 1.375, 1, 1));

    // With no valid glyph at all the spans stay inside out.
    Measure("B");
    EXPECT_TRUE(Is(unscaled, 0, 0, 1));
    EXPECT_TRUE(Is(scaled, 0, 0, 1));
    EXPECT_EQ(string.GetFirstLineOffset(), -1e7f);
}

TEST_F(OrvFontExtents, ALineFeedBehindACarriageReturnIsPassedOverAndAnotherMeasured)
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

TEST_F(OrvFontExtents, BevelsWidenTheTextByItsOptions)
{
    // Two lines of A at scale (2, 4, 1), a = 0.0625. Line starts: 0, or 2 a = 0.125, scaled 0.25.
    // Line steps: 1.25 and 4.25, or with 2 a and the line spacing 1.375 and 4.375, scaled 4.75.
    const ExtentsCase cases[] = {
        {false, false, 1, 0.625, 2.25, 1.125, 8.25, 4},
        {false, true, 1, 0.625, 2.25, 1.25, 8.25, 4},
        {true, false, 1, 0.625, 2.5, 1.125, 8.5, 4.0625},
        {true, true, 1, 0.625, 2.5, 1.25, 9.25, 4.25},
        // Mirrored, tops are below; the second line is higher up by a step.
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
