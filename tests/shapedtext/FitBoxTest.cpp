// SPDX-License-Identifier: MIT
// Texts that fill a box.
#include "extrude/OrvFont.h"
#include "orvane/Error.h"
#include "shapedtext/OrvShapedString.h"
#include "tests/shapedtext/ShapedSettings.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{
using orvane::FitBox;
using orvane::OrvShapedString;
using orvane::PlacedLetter;
using orvane::ShapedTextSettings;

// In DejaVu Sans, of 2,048 units per em, H has an advance of 1,540 units, and lines have an ascent
// of 1,901 and a descent of 483 units.
constexpr double em = 2048;
constexpr double widthOfH = 1540 / em;
constexpr double heightOfLine = (1901 + 483) / em;

class TextInBox : public testing::Test
{
protected:
    TextInBox()
    {
        text.SetScale(DVector(1, 1, 0.25));
        text.SetJustification(static_cast<int>(orvane::Alignment::Left));
        text.ClearAdjustSpacingForBevels();
    }

    std::vector<PlacedLetter> Fit(const std::string& characters, const FitBox& box)
    {
        settings.fit = box;
        text.SetText(characters, settings);
        text.CalculateBounds();
        std::vector<PlacedLetter> letters;
        text.PlaceSolids([&](const PlacedLetter& letter) { letters.push_back(letter); });
        return letters;
    }

    ShapedTextSettings settings = InFont("DejaVu Sans");
    OrvShapedString text;
};

TEST_F(TextInBox, IsAsWideOrAsHighAsTheBox)
{
    EXPECT_NEAR(Fit("HH", {3, 100, false})[1].x, 1.5, 1e-9);
    EXPECT_NEAR(Fit("HH", {100, 2, false})[1].x, widthOfH * 2 / heightOfLine, 1e-9);
    // Lines are one em apart.
    const std::vector<PlacedLetter> lines = Fit("H\nH", {100, 2, false});
    EXPECT_NEAR(lines[0].y - lines[1].y, 2 / (1 + heightOfLine), 1e-9);
    settings.lineHeight = 2;
    const std::vector<PlacedLetter> apart = Fit("H\nH", {100, 3, false});
    EXPECT_NEAR(apart[0].y - apart[1].y, 2, 1e-9);
}

TEST_F(TextInBox, BreaksLinesWhereTheLettersBecomeLargest)
{
    EXPECT_NEAR(Fit("HH HH", {2, 100, true})[1].x, 1, 1e-6);
    EXPECT_EQ(Fit("HH HH", {2, 100, true}).back().line, 1);
    EXPECT_EQ(Fit("HH HH", {100, 2, true}).back().line, 0);
}

TEST_F(TextInBox, KeepsTheLinesOfItsWidth)
{
    settings.width = 3;
    const std::vector<PlacedLetter> letters = Fit("HH HH HH", {2, 100, false});
    EXPECT_EQ(letters.back().line, 2);
    EXPECT_NEAR(letters[1].x, 1, 1e-9);
    EXPECT_THROW(Fit("HH", {2, 100, true}), orvane::OptionError);
}

TEST_F(TextInBox, LeavesRoomForBevelsAndSpacing)
{
    text.SetBevelStyle(1);
    text.SetBevelDepth(0.1f);
    for (const bool breaksLines : {false, true})
    {
        text.SetAdjustSpacingForBevels();
        text.SetInterCharacterSpacing(0.05f);
        Fit("HHHH", {9, 100, breaksLines});
        EXPECT_NEAR(text.GetScaledDimensions().x, 9, 1e-4) << breaksLines;
        Fit("HHHH HHHH HHHH", {9, 100, breaksLines});
        EXPECT_NEAR(text.GetScaledDimensions().x, 9, 1e-4) << breaksLines;
        // A change of the spacing changes the size of the letters.
        text.SetInterCharacterSpacing(0.25f);
        text.CalculateBounds();
        EXPECT_NEAR(text.GetScaledDimensions().x, 9, 1e-4) << breaksLines;
    }
}

TEST_F(TextInBox, GrowsSpansAndTabsAlike)
{
    settings.spans.push_back({1, 2, settings.style});
    settings.spans[0].style.size = 2;
    const std::vector<PlacedLetter> letters = Fit("HHH", {4, 100, false});
    EXPECT_NEAR(letters[1].x, 1, 1e-9);
    EXPECT_NEAR(letters[2].x, 3, 1e-9);
    settings.spans.clear();
    // H at the tab stop of 2 ems, and its advance.
    const double whole = 2 + widthOfH;
    EXPECT_NEAR(Fit("H\tH", {whole * 3, 100, false}).back().x, 6, 1e-9);
}

TEST_F(TextInBox, ATextOfSpacesHasNoSize)
{
    EXPECT_EQ(Fit("  ", {3, 2, false}).size(), 2u);
    EXPECT_EQ(Fit("", {3, 2, false}).size(), 0u);
    EXPECT_EQ(Fit("", {3, 2, true}).size(), 0u);
}

TEST_F(TextInBox, ABoxThatMakesNoSenseIsRefused)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const FitBox& box :
         {FitBox{0, 1, false}, FitBox{1, 0, false}, FitBox{1001, 1, false}, FitBox{1, nan, false}})
    {
        EXPECT_THROW(Fit("H", box), orvane::OptionError);
    }
}

}  // namespace
