// SPDX-License-Identifier: MIT
// orvane layout: the glyphs and the lines of texts.

#include "tests/support/Json.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

// The font of texts without --font is DejaVu Sans Bold, with 2048 units per em.
constexpr double units = 2048;

ToolResult RunLayout(std::vector<std::string> arguments)
{
    ToolFolder folder;
    arguments.insert(arguments.begin(), "layout");
    return folder.Run(arguments);
}

Json LayoutOf(std::vector<std::string> arguments)
{
    arguments.emplace_back("--json");
    const ToolResult result = RunLayout(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    return Json::parse(result.out);
}

/// The glyphs of a line in the form in which hb-shape writes them, but for places: the number, the
/// first byte and the advance.
std::string GlyphsOf(const Json& line)
{
    std::string text;
    for (const Json& cluster : line.at("clusters"))
    {
        for (const Json& glyph : cluster.at("glyphs"))
        {
            text += text.empty() ? "" : "|";
            text += std::to_string(glyph.at("id").get<int>()) + "=" +
                    std::to_string(cluster.at("begin").get<int>()) + "+" +
                    std::to_string(std::lround(glyph.at("advance").get<double>() * units));
        }
    }
    return text;
}

std::string SetGlyphs(const std::vector<std::string>& arguments)
{
    return GlyphsOf(LayoutOf(arguments).at("lines").at(0));
}

std::vector<std::string> NamesOfFonts(const Json& layout)
{
    std::vector<std::string> names;
    for (const Json& font : layout.at("fonts"))
    {
        names.push_back(font.at("name").get<std::string>());
    }
    return names;
}

using Names = std::vector<std::string>;

// The glyphs in these tests are those that hb-shape 6.0.0 writes with --font-funcs=ot
// --no-glyph-names --utf8-clusters.

TEST(ToolLayout, GlyphsAreThoseOfHbShape)
{
    EXPECT_EQ(SetGlyphs({"AVATAR"}), "36=0+1446|57=1+1446|36=2+1426|55=3+1238|36=4+1585|53=5+1577");
    EXPECT_EQ(SetGlyphs({"ffi", "--font", "DejaVu Sans"}), "5044=0+1980");
    EXPECT_EQ(SetGlyphs({"ffi", "--font", "DejaVu Sans", "--features", "-liga"}),
              "73=0+721|73=1+721|76=2+569");
}

TEST(ToolLayout, TextThatRunsToTheLeftIsListedFromLeftToRight)
{
    const Json line = LayoutOf({"שלום"}).at("lines").at(0);
    EXPECT_EQ(GlyphsOf(line), "1332=6+1426|1324=4+703|1331=2+1239|1344=0+1553");
    EXPECT_EQ(line.at("rightToLeft"), true);
    EXPECT_EQ(line.at("clusters").at(0).at("text"), "ם");
}

TEST(ToolLayout, JsonHasPlacesAndBoxesInEms)
{
    const Json layout = LayoutOf({"AV"});
    EXPECT_EQ(KeysOf(layout),
              (Names{"text", "width", "top", "bottom", "fonts", "lines", "missing"}));
    EXPECT_EQ(layout.at("text"), "AV");
    const Json& font = layout.at("fonts").at(0);
    EXPECT_EQ(font.at("family"), "DejaVu Sans");
    EXPECT_EQ(font.at("style"), "Bold");
    EXPECT_TRUE(font.at("file").get<std::string>().ends_with("/DejaVuSans-Bold.ttf"));
    EXPECT_EQ(font.at("index"), 0);
    const Json& line = layout.at("lines").at(0);
    EXPECT_EQ(line.at("begin"), 0);
    EXPECT_EQ(line.at("end"), 2);
    EXPECT_EQ(line.at("baseline"), 0.0);
    EXPECT_EQ(line.at("left"), 0.0);
    const Json& v = line.at("clusters").at(1);
    EXPECT_EQ(v.at("begin"), 1);
    EXPECT_EQ(v.at("end"), 2);
    // The A is followed after 1446 units, kerning included. hb-shape --show-extents writes
    // <10,1493,1565,-1493> for the V.
    EXPECT_EQ(v.at("glyphs").at(0).at("x"), 1446 / units);
    EXPECT_EQ(v.at("box"),
              (Json{(1446 + 10) / units, 0.0, (1446 + 10 + 1565) / units, 1493 / units}));
    EXPECT_EQ(v.at("glyphs").at(0).at("box"), v.at("box"));
    EXPECT_TRUE(LayoutOf({" "}).at("lines").at(0).at("clusters").at(0).at("box").is_null());
}

TEST(ToolLayout, WithoutJsonItIsATable)
{
    const ToolResult result = RunLayout({"A", "--font", "DejaVu Sans"});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.out.starts_with("font 0: \"DejaVu Sans\" in \"/")) << result.out;
    // 1401 of 2048 units.
    EXPECT_NE(result.out.find("  0-1    \"A\"   0     36     0  0  0.684082 "), std::string::npos)
        << result.out;
}

TEST(ToolLayout, LinesAreBrokenAlignedAndSpaced)
{
    const Json lines =
        LayoutOf({"one two", "x", "--wrap", "3", "--align", "right", "--line-height", "2"})
            .at("lines");
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].at("end"), 4);  // with the space
    EXPECT_EQ(lines[1].at("begin"), 4);
    EXPECT_EQ(lines[2].at("begin"), 8);
    EXPECT_FALSE(lines[0].at("endsParagraph"));
    EXPECT_TRUE(lines[1].at("endsParagraph"));
    for (const Json& line : lines)
    {
        EXPECT_NEAR(line.at("left").get<double>() + line.at("width").get<double>(), 3, 1e-9);
    }
    // The font's ascent and descent are 1901 and 483 units, without a gap.
    EXPECT_NEAR(lines[1].at("baseline").get<double>(), -2 * (1901 + 483) / units, 1e-9);
}

TEST(ToolLayout, FontsAreFoundByLooksAndByFile)
{
    EXPECT_EQ(
        NamesOfFonts(LayoutOf({"x", "--font", "Liberation Serif", "--weight", "bold", "--italic"})),
        Names{"Liberation Serif Bold Italic"});
    EXPECT_EQ(NamesOfFonts(LayoutOf({"x", "--font-pattern", "Liberation Mono:bold"})),
              Names{"Liberation Mono Bold"});
    const Json edge = LayoutOf({"A", "--font-file", ORVANE_TEST_DATA "/EdgeTest.ttf"});
    EXPECT_EQ(NamesOfFonts(edge), Names{"Edge Test Regular"});
    EXPECT_EQ(edge.at("fonts").at(0).at("file"), ORVANE_TEST_DATA "/EdgeTest.ttf");
}

TEST(ToolLayout, LooksThatAFamilyLacksAreTold)
{
    const ToolResult result = RunLayout({"x", "--font", "Liberation Sans", "--weight", "900"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err,
              "orvane: font \"Liberation Sans\": the nearest that is installed is \"Liberation "
              "Sans Bold\"\n");
}

// Liberation has no Georgian letters; DejaVu has.
TEST(ToolLayout, StrictTakesTheNamedFontsAlone)
{
    const std::vector<std::string> arguments = {"aი", "--font", "Liberation Sans"};
    EXPECT_EQ(NamesOfFonts(LayoutOf(arguments)).size(), 2U);

    std::vector<std::string> strict = arguments;
    strict.emplace_back("--strict");
    const ToolResult refused = RunLayout(strict);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(refused.err,
              "orvane: the named fonts lack \"ი\" (U+10D8), script Georgian\n"
              "orvane: text: --strict: characters are missing\n");

    strict.insert(strict.end(), {"--fallback", "DejaVu Serif"});
    EXPECT_EQ(NamesOfFonts(LayoutOf(strict)), (Names{"Liberation Sans", "DejaVu Serif"}));
}

TEST(ToolLayout, MissingCharactersAreToldWithThePackageThatHasThem)
{
    ToolFolder folder;
    folder.UseFonts({ORVANE_TEST_DATA "/EdgeTest.ttf"});
    const ToolResult result = folder.Run({"layout", "A日本日ក", "--json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err,
              "orvane: no installed font has \"日\" (U+65E5), \"本\" (U+672C), script Han (try the "
              "package fonts-noto-cjk)\n"
              "orvane: no installed font has \"ក\" (U+1780), script Khmer (try the package "
              "fonts-noto-core)\n");
    const Json missing = Json::parse(result.out).at("missing");
    ASSERT_EQ(missing.size(), 3U);
    EXPECT_EQ(missing[1], Json::parse(R"({"character": "本", "codePoint": "U+672C", "offset": 4,
                                          "script": "Hani", "package": "fonts-noto-cjk"})"));
}

TEST(ToolLayout, WithoutFontsItIsStatus1)
{
    ToolFolder folder;
    folder.UseFonts({});
    const ToolResult result = folder.Run({"layout", "x"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err,
              "orvane: fonts: no font is installed (try the package fonts-dejavu-core)\n");
}

TEST(ToolLayout, MarkupGivesPartsTheirOwnFontAndSize)
{
    const Json layout = LayoutOf({"a<b>b</b><span size=\"200%\">c</span>", "--markup", "--font",
                                  "Liberation Serif", "--italic"});
    EXPECT_EQ(layout.at("text"), "abc");
    EXPECT_EQ(NamesOfFonts(layout),
              (Names{"Liberation Serif Italic", "Liberation Serif Bold Italic"}));
    const Json& clusters = layout.at("lines").at(0).at("clusters");
    EXPECT_EQ(clusters.at(1).at("glyphs").at(0).at("font"), 1);
    EXPECT_EQ(clusters.at(2).at("glyphs").at(0).at("size"), 2.0);

    const ToolResult wrong = RunLayout({"a", "<b>b", "--markup"});
    EXPECT_EQ(wrong.status, 1);
    EXPECT_NE(wrong.err.find("line 2, column"), std::string::npos) << wrong.err;
}

TEST(ToolLayout, AFileKeepsItsTabsAndAddsItsLines)
{
    ToolFolder folder;
    folder.Write("text", "b\tc\nd\n");
    const ToolResult result = folder.Run({"layout", "a", "--text-file", "text", "--json"});
    EXPECT_EQ(Json::parse(result.out).at("text"), "a\nb\tc\nd");
}

TEST(ToolLayout, BadTextIsStatus1)
{
    const ToolResult result = RunLayout({"ab\xFFz"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "orvane: text, byte 2: found FF, expected UTF-8\n");
    EXPECT_EQ(RunLayout({"x", "--font", "No Such Font"}).status, 1);
    EXPECT_EQ(RunLayout({"x", "--font-file", "missing.ttf"}).status, 1);
}

TEST(ToolLayout, WrongUsageIsStatus2AndNamesTheOption)
{
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--weight", "1001"},
                                                      {"--weight", "heavyish"},
                                                      {"--width", "5"},
                                                      {"--axis", "wght"},
                                                      {"--axis", "wght=bold"},
                                                      {"--features", "kern[3:5]"},
                                                      {"--script", "Latin"},
                                                      {"--direction", "down"},
                                                      {"--align", "middle"},
                                                      {"--wrap", "0"},
                                                      {"--line-height", "-1"},
                                                      {"--font-index", "1"}})
    {
        std::vector<std::string> command = {"x"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        const ToolResult result = RunLayout(command);
        EXPECT_EQ(result.status, 2) << arguments[0];
        EXPECT_NE(result.err.find(arguments[0]), std::string::npos) << result.err;
        EXPECT_EQ(result.out, "");
    }
    EXPECT_EQ(RunLayout({"x", "--font", "a", "--font-file", "b"}).status, 2);
    EXPECT_EQ(RunLayout({}).status, 2);
}

}  // namespace
