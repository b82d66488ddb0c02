// SPDX-License-Identifier: MIT
// The lines of laid out texts. Every advance of DejaVu Sans Mono is 1233 of 2048 units, and lines
// are 1901 + 483 units apart.
#include "orvane/Error.h"
#include "shaping/TextShaper.h"
#include "tests/shaping/ShapedTexts.h"

#include <gtest/gtest.h>

namespace
{

using namespace orvane;

constexpr double advance = 1233 / 2048.0;
constexpr double ascent = 1901 / 2048.0;
constexpr double descent = 483 / 2048.0;

using Lines = std::vector<std::string>;

/// Options for lines as wide as a number of letters.
LayoutOptions OfLetters(double letters)
{
    LayoutOptions options = InFace("DejaVu Sans Mono");
    options.width = letters * advance;
    return options;
}

TextLayout LayOut(const std::string& text, const LayoutOptions& options)
{
    return TextShaper().LayOut(text, options);
}

Lines Split(const std::string& text, const LayoutOptions& options)
{
    return LinesOf(LayOut(text, options), text);
}

/// The x of each glyph of a layout, in letters.
std::vector<double> Places(const TextLayout& layout)
{
    std::vector<double> places;
    for (const PlacedGlyph& glyph : layout.glyphs)
    {
        places.push_back(std::round(glyph.x / advance * 1000) / 1000);
    }
    return places;
}

TEST(TextLines, LineEndsSeparateLines)
{
    const LayoutOptions options = OfLetters(0);
    EXPECT_EQ(Split("a\nb\r\nc\rd\u0085e\u2029f", options), (Lines{"a", "b", "c", "d", "e", "f"}));
    EXPECT_EQ(Split("", options), Lines{""});
    EXPECT_EQ(Split("a\n", options), (Lines{"a", ""}));
    EXPECT_EQ(Split("\n\n", options), (Lines{"", "", ""}));
    // U+2028 ends a line, but not its paragraph.
    const TextLayout layout = LayOut("a\u2028b", options);
    ASSERT_EQ(layout.lines.size(), 2U);
    EXPECT_FALSE(layout.lines[0].endsParagraph);
    EXPECT_TRUE(layout.lines[1].endsParagraph);
    EXPECT_EQ(Split("a\u2028", options).size(), 2U);
}

TEST(TextLines, LinesAreAsFarApartAsTheFontSaysTimesTheFactor)
{
    LayoutOptions options = OfLetters(0);
    TextLayout layout = LayOut("a\n\nb", options);
    ASSERT_EQ(layout.lines.size(), 3U);
    EXPECT_EQ(layout.lines[0].baseline, 0);
    EXPECT_DOUBLE_EQ(layout.lines[1].baseline, -(ascent + descent));
    EXPECT_DOUBLE_EQ(layout.lines[2].baseline, -2 * (ascent + descent));
    EXPECT_DOUBLE_EQ(layout.top, ascent);
    EXPECT_DOUBLE_EQ(layout.bottom, -2 * (ascent + descent) - descent);
    EXPECT_DOUBLE_EQ(layout.glyphs[1].y, layout.lines[2].baseline);

    options.lineHeight = 1.5;
    layout = LayOut("a\nb", options);
    EXPECT_DOUBLE_EQ(layout.lines[1].baseline, -1.5 * (ascent + descent));
}

TEST(TextLines, WithoutAFactorLinesAreAsFarApartAsTheirLargestLetterIsHigh)
{
    LayoutOptions options = OfLetters(0);
    options.lineHeight.reset();
    options.spans.push_back({2, 3, options.style});  // the first letter of the second line
    options.spans.back().style.size = 2.5;
    const TextLayout layout = LayOut("a\nbb\n\na", options);
    ASSERT_EQ(layout.lines.size(), 4U);
    EXPECT_EQ(layout.lines[1].baseline, -2.5);
    EXPECT_EQ(layout.lines[2].baseline, -3.5);
    EXPECT_EQ(layout.lines[3].baseline, -4.5);
}

TEST(TextLines, LinesAreBrokenAtTheWidthBetweenWords)
{
    EXPECT_EQ(Split("aaa bb cc", OfLetters(6)), (Lines{"aaa bb ", "cc"}));
    EXPECT_EQ(Split("aaa bb cc", OfLetters(9)), Lines{"aaa bb cc"});
    EXPECT_EQ(Split("aaa bb cc", OfLetters(8.9)), (Lines{"aaa bb ", "cc"}));
    EXPECT_EQ(Split("aaa-bb", OfLetters(4)), (Lines{"aaa-", "bb"}));
    EXPECT_EQ(Split("a b\nc d", OfLetters(1)), (Lines{"a ", "b", "c ", "d"}));
}

TEST(TextLines, ALongWordSticksOutOrIsBroken)
{
    LayoutOptions options = OfLetters(3);
    EXPECT_EQ(Split("a bbbbbbb c", options), (Lines{"a ", "bbbbbbb ", "c"}));
    EXPECT_DOUBLE_EQ(LayOut("a bbbbbbb c", options).lines[1].width, 7 * advance);

    options.breaksWords = true;
    EXPECT_EQ(Split("a bbbbbbb c", options), (Lines{"a ", "bbb", "bbb", "b c"}));
    // Marks stay with their letter.
    EXPECT_EQ(Split("e\u0301e\u0301e\u0301e\u0301", options),
              (Lines{"e\u0301e\u0301e\u0301", "e\u0301"}));
    options.width = 0.1;
    EXPECT_EQ(Split("ab", options), (Lines{"a", "b"}));
}

TEST(TextLines, SpacesAtTheEndOfALineHang)
{
    const TextLayout layout = LayOut("aa    bb", OfLetters(3));

    ASSERT_EQ(layout.lines.size(), 2U);
    EXPECT_DOUBLE_EQ(layout.lines[0].width, 2 * advance);
    EXPECT_EQ(layout.lines[0].glyphCount, 6U);
    EXPECT_DOUBLE_EQ(layout.glyphs[6].x, 0);
}

TEST(TextLines, LinesAreAlignedWithinTheWidth)
{
    LayoutOptions options = OfLetters(6);
    const std::string text = "aa bb cc ddd";  // "aa bb " and "cc ddd"
    options.alignment = LineAlignment::Left;
    EXPECT_EQ(LayOut(text, options).lines[0].left, 0);
    options.alignment = LineAlignment::Right;
    EXPECT_NEAR(LayOut(text, options).lines[0].left, 1 * advance, 1e-12);
    options.alignment = LineAlignment::Center;
    EXPECT_NEAR(LayOut(text, options).lines[0].left, 0.5 * advance, 1e-12);
    EXPECT_NEAR(LayOut(text, options).glyphs[0].x, 0.5 * advance, 1e-12);

    // Without a width, the widest line is the width.
    options.width = 0;
    options.alignment = LineAlignment::Right;
    const TextLayout layout = LayOut("a\nbbb", options);
    EXPECT_DOUBLE_EQ(layout.width, 3 * advance);
    EXPECT_DOUBLE_EQ(layout.lines[0].left, 2 * advance);
}

TEST(TextLines, JustifiedLinesHaveWiderSpaces)
{
    LayoutOptions options = OfLetters(8);
    options.alignment = LineAlignment::Justified;
    // "a b c " has 5 letters and 2 spaces inside: 3 letters are divided among the 2 spaces.
    const TextLayout layout = LayOut("a b c dddd", options);

    ASSERT_EQ(layout.lines.size(), 2U);
    EXPECT_DOUBLE_EQ(layout.lines[0].width, 8 * advance);
    EXPECT_EQ(Places(layout), (std::vector<double>{0, 1, 3.5, 4.5, 7, 8, 0, 1, 2, 3}));
    // The last line of a paragraph, and one that a line end ends, stay as they are.
    EXPECT_DOUBLE_EQ(LayOut("a b", options).lines[0].width, 3 * advance);
    EXPECT_DOUBLE_EQ(LayOut("a b\u2028c", options).lines[0].width, 3 * advance);
}

TEST(TextLines, TabsGoToTheNextStop)
{
    LayoutOptions options = OfLetters(0);
    options.tabStops = {4 * advance, 6 * advance};
    options.tabInterval = 3 * advance;

    EXPECT_EQ(Places(LayOut("a\tb\tc\td", options)), (std::vector<double>{0, 1, 4, 5, 6, 7, 9}));
    // A letter that ends at a stop is followed by the next.
    EXPECT_EQ(Places(LayOut("aaaa\tb", options)), (std::vector<double>{0, 1, 2, 3, 4, 6}));
    options.tabStops.clear();
    EXPECT_EQ(Places(LayOut("a\tb", options)), (std::vector<double>{0, 1, 3}));
}

TEST(TextLines, SpacesBeforeATabAreNotWidened)
{
    LayoutOptions options = OfLetters(10);
    options.alignment = LineAlignment::Justified;
    options.tabInterval = 4 * advance;
    // a, space, b, tab to 4, c, space, d: the line of 7 letters becomes 10 wide behind the tab.
    EXPECT_EQ(Places(LayOut("a b\tc d eeeee", options)),
              (std::vector<double>{0, 1, 2, 3, 4, 5, 9, 10, 0, 1, 2, 3, 4}));
}

TEST(TextLines, ParagraphsFromRightToLeftStartOnTheRight)
{
    LayoutOptions options = OfLetters(0);
    options.style.fonts.faces = {InstalledFace("DejaVu Sans")};
    options.width = 10;
    const TextLayout layout = LayOut("\u05D0\u05D1 \u05D2", options);
    EXPECT_TRUE(layout.lines[0].isRightToLeft);
    EXPECT_DOUBLE_EQ(layout.lines[0].left, 10 - layout.lines[0].width);

    // The space at the end hangs on the left.
    const TextLayout spaced = LayOut("\u05D0 ", options);
    ASSERT_EQ(spaced.glyphs.size(), 2U);
    EXPECT_EQ(spaced.glyphs[0].textBegin, 2U);
    EXPECT_DOUBLE_EQ(spaced.glyphs[1].x, spaced.lines[0].left);
    EXPECT_NEAR(spaced.glyphs[0].x + spaced.glyphs[0].advance, spaced.lines[0].left, 1e-12);
}

TEST(TextLines, ArabicLettersThatALineEndSplitsAreShapedAgain)
{
    LayoutOptions options = OfLetters(0);
    options.style.fonts.faces = {InstalledFace("DejaVu Sans")};
    options.style.language = "ar";
    options.breaksWords = true;
    options.width = 1.2;
    const TextLayout layout = LayOut("\u0633\u0644\u0627\u0645", options);

    EXPECT_GT(layout.lines.size(), 1U);
    for (const TextLine& line : layout.lines)
    {
        EXPECT_TRUE(line.width <= options.width + 1e-6 || line.glyphCount == 1U);
    }
}

TEST(TextLines, ATextIsMadeAsLargeAsItsBoxAllows)
{
    TextShaper shaper;
    const LayoutOptions options = OfLetters(0);
    // A word of 4 letters in a box that is high enough.
    FittedText fitted = shaper.FitToBox("aaaa", options, 8, 100);
    EXPECT_NEAR(fitted.size, 8 / (4 * advance), 1e-4);
    EXPECT_EQ(fitted.layout.lines.size(), 1U);
    // One line in a box that is wide enough.
    fitted = shaper.FitToBox("aaaa", options, 100, 3);
    EXPECT_NEAR(fitted.size, 3 / (ascent + descent), 1e-4);
    // Two lines are larger than one would be: 2 lines of 4 letters.
    const double size = 8 / (4 * advance);
    fitted = shaper.FitToBox("aaaa aaaa", options, 8, 2 * size * (ascent + descent) + 0.01);
    EXPECT_NEAR(fitted.size, size, 1e-4);
    EXPECT_EQ(fitted.layout.lines.size(), 2U);
    EXPECT_THROW(shaper.FitToBox("a", options, 0, 1), OptionError);
}

}  // namespace
