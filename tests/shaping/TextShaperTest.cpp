// SPDX-License-Identifier: MIT
#include "shaping/TextShaper.h"

#include "orvane/Error.h"
#include "tests/shaping/ShapedTexts.h"

#include <gtest/gtest.h>

namespace
{

using namespace orvane;

TextLayout LayOut(const std::string& text, const LayoutOptions& options)
{
    return TextShaper().LayOut(text, options);
}

std::string ProblemOf(const LayoutOptions& options)
{
    try
    {
        LayOut("text", options);
    }
    catch (const OptionError& error)
    {
        return error.what();
    }
    return {};
}

/// A text, and its glyphs as hb-shape 6.0.0 writes them with --font-funcs=ot --no-glyph-names
/// --utf8-clusters --bot --eot and the language.
struct HbShapeCase
{
    const char* font;
    const char* language;
    std::vector<std::string> features;
    const char* text;
    const char* glyphs;
};

TEST(TextShaper, GlyphsAreThoseOfHbShape)
{
    const HbShapeCase cases[] = {
        {"DejaVu Sans",
         "en",
         {},
         "AVATAR",
         "[36=0+1270|57=1+1270|36=2+1242|55=3+1092|36=4+1401|53=5+1423]"},
        {"DejaVu Sans",
         "en",
         {"-kern"},
         "AVATAR",
         "[36=0+1401|57=1+1401|36=2+1401|55=3+1251|36=4+1401|53=5+1423]"},
        {"DejaVu Sans", "en", {}, "office", "[82=0+1253|5044=1+1980|70=4+1126|72=5+1260]"},
        {"DejaVu Sans",
         "en",
         {"liga=0"},
         "office",
         "[82=0+1253|73=1+721|73=2+721|76=3+569|70=4+1126|72=5+1260]"},
        {"DejaVu Sans",
         "el",
         {},
         "Ελλάδα",
         "[811=0+1294|848=2+1212|848=4+1212|833=6+1350|841=8+1253|838=10+1350]"},
        {"DejaVu Sans",
         "ar",
         {},
         "العربية",
         "[5262=12+1098|5358=10+618|5259=8+570|5288=6+1130|5318=4+988|5337=2+624|1365=0+569]"},
        {"DejaVu Sans",
         "he",
         {},
         "שָׁלוֹם",
         "[1332=12+1359|1306=8+0|1324=8+558|1331=6+1164|1305=0+0|1314=0+0|1344=0+1451]"},
        {"DejaVu Sans",
         "hy",
         {},
         "Հայերեն",
         "[1226=0+1466|1256=2+1995|1276=4+556|1260=6+1298|1287=8+1298|1260=10+1298|1277=12+1298]"},
        {"Liberation Serif",
         "en",
         {},
         "To WAVE",
         "[55=0+1108|82=1+1024|3=2+475|58=3+1706|36=4+1215|57=5+1479|40=6+1251]"},
        {"DejaVu Sans", "en", {}, "x\u0304\u0302", "[91=0+1212|693=0@-90,0+0|691=0@-90,0+0]"},
    };
    for (const HbShapeCase& expected : cases)
    {
        LayoutOptions options = InFace(expected.font);
        options.style.language = expected.language;
        options.style.features = expected.features;
        EXPECT_EQ(AsHbShape(LayOut(expected.text, options)), expected.glyphs) << expected.text;
    }
}

TEST(TextShaper, WordsOfBothDirectionsStandInTheirOrder)
{
    // a, alef, bet, 1, b: the Hebrew letters from right to left, and the digit on their left.
    const TextLayout layout = LayOut("a \u05D0\u05D1 1", InFace("DejaVu Sans"));
    std::vector<std::size_t> bytes;
    for (const PlacedGlyph& glyph : layout.glyphs)
    {
        bytes.push_back(glyph.textBegin);
    }
    EXPECT_EQ(bytes, (std::vector<std::size_t>{0, 1, 7, 6, 4, 2}));
    EXPECT_FALSE(layout.glyphs[0].isRightToLeft);
    EXPECT_TRUE(layout.glyphs[4].isRightToLeft);
    EXPECT_FALSE(layout.lines[0].isRightToLeft);
}

TEST(TextShaper, ClustersHaveTheBytesOfTheirCharacters)
{
    const TextLayout layout = LayOut("offe\u0301", InFace("DejaVu Sans"));

    ASSERT_EQ(layout.glyphs.size(), 3U);
    EXPECT_EQ(layout.glyphs[1].textBegin, 1U);  // the ligature ff
    EXPECT_EQ(layout.glyphs[1].textEnd, 3U);
    EXPECT_EQ(layout.glyphs[2].textBegin, 3U);
    EXPECT_EQ(layout.glyphs[2].textEnd, 6U);

    const TextLayout hebrew = LayOut("\u05D0\u05B8\u05D1", InFace("DejaVu Sans"));
    EXPECT_EQ(hebrew.glyphs.front().textBegin, 4U);
    EXPECT_EQ(hebrew.glyphs.front().textEnd, 6U);
    EXPECT_EQ(hebrew.glyphs.back().textBegin, 0U);
    EXPECT_EQ(hebrew.glyphs.back().textEnd, 4U);
}

TEST(TextShaper, LettersThatTheFirstFaceLacksHaveTheNext)
{
    LayoutOptions options = InFace("Liberation Sans");
    options.style.fonts.faces.push_back(InstalledFace("DejaVu Sans"));
    const TextLayout layout = LayOut("a \u10D0 \u10D1", options);

    ASSERT_EQ(layout.faces.size(), 2U);
    ASSERT_EQ(layout.glyphs.size(), 5U);
    EXPECT_EQ(layout.faces[layout.glyphs[0].face]->FamilyName(), "Liberation Sans");
    EXPECT_EQ(layout.faces[layout.glyphs[2].face]->FamilyName(), "DejaVu Sans");
    // A space between letters of one face has that face, any other space the first.
    EXPECT_EQ(layout.glyphs[1].face, layout.glyphs[0].face);
    EXPECT_EQ(layout.glyphs[3].face, layout.glyphs[2].face);
    EXPECT_TRUE(layout.missing.empty());
}

TEST(TextShaper, AnInstalledFontIsTakenForLettersThatNoFaceHas)
{
    LayoutOptions options = InFace("Liberation Sans");
    const TextLayout without = LayOut("a\u10D0\u10D1\u10D0", options);

    ASSERT_EQ(without.missing.size(), 2U);
    EXPECT_EQ(without.missing[0].character, U'\u10D0');
    EXPECT_EQ(without.missing[0].offset, 1U);
    EXPECT_EQ(without.missing[1].character, U'\u10D1');
    EXPECT_EQ(without.missing[1].offset, 4U);
    EXPECT_EQ(without.glyphs[1].glyph, 0U);

    options.style.fonts.usesInstalledFonts = true;
    const TextLayout with = LayOut("a\u10D0\u10D1\u10D0", options);
    EXPECT_TRUE(with.missing.empty());
    EXPECT_EQ(with.faces.size(), 2U);
    for (const PlacedGlyph& glyph : with.glyphs)
    {
        EXPECT_NE(glyph.glyph, 0U);
    }
}

TEST(TextShaper, ACharacterThatNoFontHasIsTold)
{
    LayoutOptions options = InFace("DejaVu Sans");
    options.style.fonts.usesInstalledFonts = true;
    // U+0378 is no character, so no font has it.
    const TextLayout layout = LayOut("ab\u0378", options);

    ASSERT_EQ(layout.missing.size(), 1U);
    EXPECT_EQ(layout.missing[0].character, U'\u0378');
    EXPECT_EQ(layout.missing[0].offset, 2U);
}

TEST(TextShaper, SpansHaveSizesRisesAndFeaturesOfTheirOwn)
{
    LayoutOptions options = InFace("DejaVu Sans Mono");
    StyledSpan large = {1, 2, options.style};
    large.style.size = 2;
    large.style.rise = 0.5;
    options.spans = {large};
    const TextLayout layout = LayOut("aaa", options);

    // Every advance of the font is 1233 of 2048 units.
    const double advance = 1233 / 2048.0;
    ASSERT_EQ(layout.glyphs.size(), 3U);
    EXPECT_DOUBLE_EQ(layout.glyphs[1].x, advance);
    EXPECT_EQ(layout.glyphs[1].y, 0.5);
    EXPECT_EQ(layout.glyphs[1].size, 2);
    EXPECT_DOUBLE_EQ(layout.glyphs[2].x, 3 * advance);
    EXPECT_EQ(layout.glyphs[2].y, 0);
    EXPECT_EQ(layout.glyphs[0].span, noSpan);
    EXPECT_EQ(layout.glyphs[1].span, 0U);
    // The line is as high as its largest letter, raised.
    EXPECT_DOUBLE_EQ(layout.lines[0].ascent, 2 * 1901 / 2048.0 + 0.5);
}

TEST(TextShaper, ASpanThatShapesAlikeSplitsNoLigature)
{
    LayoutOptions options = InFace("DejaVu Sans");
    options.spans = {{2, 4, options.style}};
    EXPECT_EQ(LayOut("office", options).glyphs.size(), 4U);

    // Shaped apart, "of", "fi" and "ce" have the ligature fi.
    options.spans[0].style.features = {"smcp"};
    EXPECT_EQ(LayOut("office", options).glyphs.size(), 5U);
}

TEST(TextShaper, OptionsThatMakeNoSenseAreNamed)
{
    LayoutOptions options;
    EXPECT_EQ(ProblemOf(options), "fonts: at least one face, each not null, found none");
    options = InFace("DejaVu Sans");
    EXPECT_EQ(ProblemOf(options), "");
    options.style.features = {"liga:0"};
    EXPECT_EQ(ProblemOf(options),
              "features: an OpenType feature such as \"smcp\" or \"liga=0\", "
              "found \"liga:0\"");
    options = InFace("DejaVu Sans");
    options.style.script = "Latin";
    EXPECT_EQ(ProblemOf(options),
              "script: four letters (ISO 15924), such as \"Latn\", found \"Latin\"");
    options = InFace("DejaVu Sans");
    options.spans = {{0, 2, options.style}, {1, 3, options.style}};
    EXPECT_EQ(ProblemOf(options),
              "spans: spans in the order of the text, without overlaps, found "
              "bytes 1 to 3");
    options.spans = {{0, 5, options.style}};
    EXPECT_EQ(ProblemOf(options), "spans: offsets of characters in the text, found byte 5");
    options.spans.clear();
    options.tabStops = {2, 2};
    EXPECT_EQ(ProblemOf(options).substr(0, 47), "tabStops: each more than the one before, found ");
    options.tabStops.clear();
    options.width = -1;
    EXPECT_EQ(ProblemOf(options), "width: 0 to 1e+06, found -1");
}

TEST(TextShaper, ATextThatWasShapedBeforeComesOutTheSame)
{
    TextShaper shaper;
    LayoutOptions options = InFace("DejaVu Sans");
    options.width = 10;
    std::string text;
    for (int n = 0; n < 100; ++n)
    {
        text += "Waffles and AVATARs, שלום ";
    }
    const TextLayout first = shaper.LayOut(text, options);
    EXPECT_GT(shaper.CachedBytes(), 0U);
    text[9] = 'x';
    shaper.LayOut(text, options);
    text[9] = 'n';
    const TextLayout again = shaper.LayOut(text, options);
    EXPECT_LE(shaper.CachedBytes(), TextShaper::mostCachedBytes);

    EXPECT_EQ(text.substr(8, 3), "and");
    ASSERT_EQ(again.glyphs.size(), first.glyphs.size());
    for (std::size_t n = 0; n < first.glyphs.size(); ++n)
    {
        EXPECT_EQ(again.glyphs[n].glyph, first.glyphs[n].glyph);
        EXPECT_EQ(again.glyphs[n].x, first.glyphs[n].x);
        EXPECT_EQ(again.glyphs[n].y, first.glyphs[n].y);
    }
}

}  // namespace
