// SPDX-License-Identifier: MIT
// The matrix calls with which a font places the characters of a text. Every position is worked out
// by hand from the advances of StubFont: A 0.5, B 0.25, C 0.75, D 1 em.
#include "extrude/OrvFont.h"
#include "extrude/OrvGlyph.h"
#include "platform/Sync.h"
#include "scene/DrawingParameters.h"
#include "scene/OrvString.h"
#include "tests/support/StubFont.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

namespace
{
using Lines = std::vector<std::string>;

std::string Move(double x, double y = 0)
{
    return GlLine("glTranslated", x, y, 0);
}

class OrvFontLayout : public testing::Test
{
protected:
    OrvFontLayout()
    {
        string.SetScale(DVector(1, 1, 1));
        string.SetInterCharacterSpacing(0.125f);
        string.SetInterLineSpacing(0.25f);
        string.ClearAdjustSpacingForBevels();
        parameters.SetRender();
    }

    /// Draws a text and returns its matrix calls.
    Lines Layout(const char* text, int result = 1)
    {
        string.SetTextString(text);
        GlRecording recording;
        EXPECT_EQ(font.TextOutA(&string, &parameters), result);
        EXPECT_TRUE(recording.IsBalanced());
        return recording.Only({"glPushMatrix", "glTranslated", "glPopMatrix"});
    }

    /// Sets a front bevel 0.0625 wide. The letter's depth of 1 does not limit it.
    void Bevel()
    {
        string.SetBevelStyle(1);
        string.SetBevelLocation(0);
        string.SetBevelDepth(0.0625f);
    }

    StubFont font;
    OrvString string;
    DrawingParameters parameters;
};

TEST_F(OrvFontLayout, AnEmptyTextDrawsNothing)
{
    string.SetTextString("");
    const GlRecording recording;
    EXPECT_EQ(font.TextOutA(&string, &parameters), 1);
    EXPECT_EQ(recording.Lines(), Lines{});
}

TEST_F(OrvFontLayout, CarriageReturnAndLineFeedDrawTwoLines)
{
    string.SetUnscaledDimensions(DVector(1, 2, 1));
    string.SetFirstLineOffset(0.75f);
    // The first line lies at y = 2 / 2 - 0.75, the second line 0.25 + 1 below the first.
    EXPECT_EQ(Layout("AB\r\nC"), (Lines{"glPushMatrix", Move(0, 0.25), Move(-0.0), Move(0.625),
                                        Move(0.375), "glPopMatrix", "glPushMatrix", Move(0, -1),
                                        Move(-0.0), Move(0.875), "glPopMatrix"}));
}

TEST_F(OrvFontLayout, ACarriageReturnAloneEndsALineToo)
{
    EXPECT_EQ(Layout("A\rC"),
              (Lines{"glPushMatrix", Move(0, 0), Move(-0.0), Move(0.625), "glPopMatrix",
                     "glPushMatrix", Move(0, -1.25), Move(-0.0), Move(0.875), "glPopMatrix"}));
}

TEST_F(OrvFontLayout, ALineFeedAloneIsACharacterOfTheLine)
{
    // The face has no line feed, so the default character, D, is shown for it.
    EXPECT_EQ(Layout("AB\nC"), (Lines{"glPushMatrix", Move(0, 0), Move(-0.0), Move(0.625),
                                      Move(0.375), Move(1.125), Move(0.875), "glPopMatrix"}));
}

TEST_F(OrvFontLayout, OnlyOneLineFeedIsSkippedAndAnEmptyLineTakesTheHeightOfALine)
{
    EXPECT_EQ(Layout("\r\n\nA\r"),
              (Lines{"glPushMatrix", Move(0, 0), Move(-0.0), "glPopMatrix", "glPushMatrix",
                     Move(0, -1.25), Move(-0.0), Move(1.125), Move(0.625), "glPopMatrix"}));
}

TEST_F(OrvFontLayout, SpacingIsMeasuredBetweenCharactersAndDrawnAfterEach)
{
    // The line is 0.5 + 0.125 + 0.25 wide.
    string.SetJustification(1);
    EXPECT_EQ(Layout("AB"), (Lines{"glPushMatrix", Move(0, 0), Move(-0.4375), Move(0.625),
                                   Move(0.375), "glPopMatrix"}));
    string.SetJustification(2);
    EXPECT_EQ(Layout("AB"), (Lines{"glPushMatrix", Move(0, 0), Move(-0.875), Move(0.625),
                                   Move(0.375), "glPopMatrix"}));
}

TEST_F(OrvFontLayout, NegativeSpacingCanExtendALineToTheLeftOfItsStart)
{
    // The pen's x takes the values 0, 0.5, -0.5 and -0.25, so the line reaches from -0.5 to 0.5.
    string.SetInterCharacterSpacing(-1.0f);
    EXPECT_EQ(Layout("AB")[2], Move(0.5));
    string.SetJustification(1);
    EXPECT_EQ(Layout("AB")[2], Move(-0.0));
    string.SetJustification(2);
    EXPECT_EQ(Layout("AB")[2], Move(-0.5));
}

TEST_F(OrvFontLayout, RightAlignedTextEndsAtZeroWithItsBevelAllowance)
{
    Bevel();
    string.SetAdjustSpacingForBevels();
    string.SetInterCharacterSpacing(0);
    string.SetJustification(2);
    // b is the width of the bevel. The line starts at -b and has two characters with 2 b each, so
    // it ends at 0.75 + 3 b. B starts 0.5 + 2 b after A, so B's right edge lies at -b and its bevel
    // ends at -0.9375 + 0.625 + 0.25 + 0.0625 = 0.
    EXPECT_EQ(Layout("AB"), (Lines{"glPushMatrix", Move(0, 0), Move(-0.9375), Move(0.625),
                                   Move(0.375), "glPopMatrix"}));
}

struct StepCase
{
    bool adjusts;
    bool scalesBevels;
    double sign;
    double start;    ///< the x at which a left-aligned A starts
    double step;     ///< from A to the next character
    double descent;  ///< from one line to the next
};

TEST_F(OrvFontLayout, StepsFollowTheScaleTheBevelAndItsOptions)
{
    // The scale is (2, 4) or (-2, -4), the bevel b is 0.0625 wide, and the spacings are 0.125
    // between characters and 0.25 between lines.
    const StepCase cases[] = {// 2 · 0.5 + 0.125; 0.25 + 4
                              {false, false, 1, 0.0625, 1.125, 4.25},
                              {false, true, 1, 0.125, 1.125, 4.25},
                              // 2 · 0.5 + 0.125 + 0.125; 0.125 + 0.25 + 4
                              {true, false, 1, 0.0625, 1.25, 4.375},
                              // (0.125 + 0.5) · 2 + 0.125; 0.25 + 1.125 · 4
                              {true, true, 1, 0.125, 1.375, 4.75},
                              // With a negative scale, A runs from 0.0625 to -0.9375, or 2 b
                              // further.
                              {false, false, -1, 0.9375, -1.125, -4.25},
                              {false, true, -1, 0.875, -1.125, -4.25},
                              {true, false, -1, 1.0625, -1.25, -4.375},
                              {true, true, -1, 1.125, -1.375, -4.75}};
    Bevel();
    for (const StepCase& test : cases)
    {
        SCOPED_TRACE(testing::Message() << "adjusts " << test.adjusts << ", scales "
                                        << test.scalesBevels << ", sign " << test.sign);
        string.SetScale(DVector(2 * test.sign, 4 * test.sign, 1));
        test.adjusts ? string.SetAdjustSpacingForBevels() : string.ClearAdjustSpacingForBevels();
        test.scalesBevels ? string.SetScaleBevels() : string.ClearScaleBevels();
        EXPECT_EQ(Layout("A\r"), (Lines{"glPushMatrix", Move(0, 0 * test.sign), Move(test.start),
                                        Move(test.step), "glPopMatrix"}));
        EXPECT_EQ(Layout("\rA")[5], Move(0, -test.descent));
    }
}

TEST_F(OrvFontLayout, SolidIsDrawnWhenBothSolidAndWireframeAreRequested)
{
    string.SetTextString("A");
    const auto primitives = [&] {
        const GlRecording recording;
        EXPECT_EQ(font.TextOutA(&string, &parameters), 1);
        return std::pair(recording.Count("glNormal3f") > 0,
                         recording.Only({"glBegin"}) == Lines(2, "glBegin GL_LINE_LOOP"));
    };
    EXPECT_EQ(primitives(), std::pair(true, false));
    parameters.SetOutline();
    EXPECT_EQ(primitives(), std::pair(true, false));
    parameters.ClearRender();
    EXPECT_EQ(primitives(), std::pair(false, true));
    // Without solid and wireframe, the text is only laid out.
    parameters.ClearOutline();
    EXPECT_EQ(primitives(), std::pair(false, false));
}

TEST_F(OrvFontLayout, AnInvalidGlyphDrawsNothingAndAdvancesByTheSpacingAlone)
{
    font.Glyph('B')->SetInvalid();
    EXPECT_EQ(Layout("ABC"), (Lines{"glPushMatrix", Move(0, 0), Move(-0.0), Move(0.625),
                                    Move(0.125), Move(0.875), "glPopMatrix"}));
}

TEST_F(OrvFontLayout, AFontWithoutAnEmSquareDoesNotAdvance)
{
    font.metrics.otmEMSquare = 0;
    EXPECT_EQ(Layout("A"),
              (Lines{"glPushMatrix", Move(0, 0), Move(-0.0), Move(0.125), "glPopMatrix"}));
}

TEST_F(OrvFontLayout, CharactersAbove127AreLookedUpAsPositiveCodes)
{
    // As a positive code, 0xC0 has the index 127; as a negative number it would lie before A. The
    // face has no 0xC0, so the default character is found.
    EXPECT_EQ(font.LookupGlyphIndex(0xC0), 3);
    font.textMetric.tmLastChar = 0xC0;
    font.glyphCount = 0xC0 - 'A' + 1;
    font.glyphs.SetSize(font.glyphCount);
    font.glyphs.SetAt(0xC0 - 'A', new OrvGlyph(*font.Glyph('B')));
    EXPECT_EQ(Layout("\xC0"),
              (Lines{"glPushMatrix", Move(0, 0), Move(-0.0), Move(0.375), "glPopMatrix"}));
}

TEST_F(OrvFontLayout, ASignalledEventEndsTheDrawingBeforeTheNextGlyphWithABalancedStack)
{
    const HANDLE event = CreateEventA(nullptr, TRUE, TRUE, nullptr);
    parameters.SetTerminationEvent(event);
    EXPECT_EQ(Layout("AB\rC", 0), (Lines{"glPushMatrix", Move(0, 0), Move(-0.0), "glPopMatrix"}));
    // The event stays signalled, but with SetNoTerminate it is ignored and the whole text is drawn.
    parameters.SetNoTerminate();
    EXPECT_EQ(Layout("A").size(), 5u);
    CloseHandle(event);
}
}  // namespace
