// SPDX-License-Identifier: MIT
// Texts of any language in render, export and pick.

#include "apps/cli/commands/SceneText.h"
#include "tests/support/DecodedPicture.h"
#include "tests/support/Json.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace
{

using Arguments = std::vector<std::string>;

/// The bytes of the picture of a text.
std::string PictureOf(Arguments arguments)
{
    ToolFolder folder;
    arguments.insert(arguments.begin(), {"render", "-o", "x.bmp", "--size", "160x90"});
    const ToolResult result = folder.Run(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    return folder.Read("x.bmp");
}

/// The bytes of the mesh of a text.
std::string MeshOf(Arguments arguments)
{
    ToolFolder folder;
    arguments.insert(arguments.begin(), {"export", "-o", "x.stl"});
    const ToolResult result = folder.Run(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    return folder.Read("x.stl");
}

Arguments Plain(Arguments arguments)
{
    arguments.emplace_back("--plain");
    return arguments;
}

// Without kerning and ligatures, a text of a code page is set in the same way by both nodes.
TEST(ToolShapedText, WesternTextWithoutKerningIsDrawnAsThePlainOne)
{
    for (const Arguments& arguments :
         {Arguments{"Hind"},
          {"Hind", "min", "hum", "--style", "round", "--bevel-on", "front"},
          {"Hind", "i", "--style", "square", "--align", "right", "--font", "Liberation Serif"},
          {"Hind", "ein", "--align", "left", "--char-spacing", "0.2", "--line-spacing", "-0.1"},
          {"Hind", "--style", "profile", "--profile", "cove", "--fuse", "line", "--bevel", "0.1"},
          {"Hind", "--style", "profile", "--profile-on", "front"},
          {"Hind", "--outline", "--depth", "1"},
          {"Ünï ß", "--font", "DejaVu Serif", "--face-color", "#ff000080", "--ortho"}})
    {
        EXPECT_TRUE(PictureOf(arguments) == PictureOf(Plain(arguments)))
            << testing::PrintToString(arguments);
    }
}

TEST(ToolShapedText, WesternTextWithoutKerningIsExportedAsThePlainOne)
{
    for (const Arguments& arguments : {Arguments{"Hind", "min"},
                                       {"Hind", "--style", "profile", "--fuse", "text"},
                                       {"Hi", "--solid"}})
    {
        EXPECT_TRUE(MeshOf(arguments) == MeshOf(Plain(arguments)))
            << testing::PrintToString(arguments);
    }
}

// DejaVu Sans Bold moves A and V together by 139 of 2048 units (hb-shape 6.0.0). A plain text, and
// one whose feature kern is off, has no kerning.
TEST(ToolShapedText, LettersAreKernedUnlessTheTextIsPlain)
{
    const Arguments text = {"AVAV"};
    const std::string plain = PictureOf(Plain(text));
    EXPECT_FALSE(PictureOf(text) == plain);
    EXPECT_TRUE(PictureOf({"AVAV", "--features", "-kern"}) == plain);
}

TEST(ToolShapedText, EveryScriptIsDrawnInOneText)
{
    ToolFolder folder;
    const ToolResult result = folder.Run({"render", "AVATAR", "Straße", "Ελλάδα", "السلام عليكم",
                                          "שלום", "-o", "x.png", "--size", "300x300"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_GT(BoxOfContent(DecodePng(folder.Read("x.png"))).Height(), 200);
}

TEST(ToolShapedText, MarkupColoursAndSizesItsParts)
{
    ToolFolder folder;
    const ToolResult result =
        folder.Run({"render", "I<span color=\"#00ff00\" size=\"50%\">I</span>", "--markup",
                    "--face-color", "#ff0000", "--turn", "0,0,0", "-o", "x.bmp", "--size", "90x60",
                    "--style", "square", "--ambient", "white"});
    ASSERT_EQ(result.status, 0) << result.err;
    const DecodedPicture picture = DecodeBmp(folder.Read("x.bmp"));
    const auto red = picture.Count([](const Rgb& p) { return p.red > 200 && p.green < 60; });
    const auto green = picture.Count([](const Rgb& p) { return p.green > 200 && p.red < 60; });
    ASSERT_GT(green, 50u);
    // A letter of half the size has a quarter of the area.
    EXPECT_NEAR(static_cast<double>(red) / static_cast<double>(green), 4, 0.5);

    const ToolResult wrong = folder.Run({"render", "a<b>b", "--markup", "-o", "y.png"});
    EXPECT_EQ(wrong.status, 1);
    EXPECT_NE(wrong.err.find("line 1, column"), std::string::npos) << wrong.err;
    EXPECT_FALSE(folder.Has("y.png"));
}

TEST(ToolShapedText, FontsLinesAndTabsAreTakenAsByLayout)
{
    EXPECT_TRUE(PictureOf({"Hind", "--font", "DejaVu Serif", "--weight", "bold"}) ==
                PictureOf({"Hind", "--font", "DejaVu Serif Bold"}));
    EXPECT_TRUE(PictureOf({"HI HI", "--wrap", "2"}) == PictureOf({"HI", "HI"}));
    EXPECT_FALSE(PictureOf({"HI", "HI", "--line-height", "2"}) == PictureOf({"HI", "HI"}));
    EXPECT_FALSE(PictureOf({"I\tI", "--tab-stops", "1"}) == PictureOf({"I\tI"}));
    EXPECT_TRUE(PictureOf({"I\tI", "--tab-stops", "2"}) == PictureOf({"I\tI"}));
    EXPECT_TRUE(PictureOf({"I\tI", "--tab-interval", "1"}) ==
                PictureOf({"I\tI", "--tab-stops", "1"}));
    EXPECT_FALSE(PictureOf({"a b c d", "--wrap", "2", "--align", "justify"}) ==
                 PictureOf({"a b c d", "--wrap", "2", "--align", "left"}));
}

TEST(ToolShapedText, CharactersThatNoFontHasAreToldWithTheirPackage)
{
    ToolFolder folder;
    folder.UseFonts({ORVANE_TEST_DATA "/EdgeTest.ttf"});
    const std::string told =
        "no installed font has \"日\" (U+65E5), script Han (try the package fonts-noto-cjk)\n";
    const ToolResult drawn =
        folder.Run({"render", "A日", "-o", "x.png", "--size", "60x40", "--save", "s.orv"});
    EXPECT_EQ(drawn.status, 0);
    EXPECT_EQ(drawn.err, "orvane: " + told);
    EXPECT_TRUE(folder.Has("x.png"));
    const ToolResult again =
        folder.Run({"render", "--scene", "s.orv", "-o", "y.png", "--size", "60x40"});
    EXPECT_EQ(again.status, 0);
    EXPECT_EQ(again.err, "orvane: s.orv: " + told);
    for (const Arguments& command : {Arguments{"render", "A日", "-o", "z.png", "--strict"},
                                     {"export", "A日", "-o", "z.stl", "--strict"},
                                     {"render", "--scene", "s.orv", "-o", "z.png", "--strict"}})
    {
        const ToolResult strict = folder.Run(command);
        EXPECT_EQ(strict.status, 1);
        EXPECT_NE(strict.err.find("日"), std::string::npos) << strict.err;
        EXPECT_FALSE(folder.Has("z.png") || folder.Has("z.stl"));
    }
}

// Liberation has no Georgian letters; DejaVu has.
TEST(ToolShapedText, StrictTakesTheNamedFontsAlone)
{
    ToolFolder folder;
    const Arguments text = {"render", "aი",    "--font", "Liberation Sans",
                            "-o",     "x.png", "--size", "40x30"};
    EXPECT_EQ(folder.Run(text).status, 0);
    Arguments strict = text;
    strict.emplace_back("--strict");
    const ToolResult refused = folder.Run(strict);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err,
              "orvane: the named fonts lack \"ი\" (U+10D8), script Georgian\n"
              "orvane: text: --strict: characters are missing\n");
    strict.insert(strict.end(), {"--fallback", "DejaVu Serif"});
    EXPECT_EQ(folder.Run(strict).status, 0);
}

TEST(ToolShapedText, LooksThatAFamilyLacksAreToldAndFailWithStrict)
{
    ToolFolder folder;
    Arguments arguments = {"render", "x",  "--font", "Liberation Sans", "--weight",
                           "900",    "-o", "x.png",  "--size",          "40x30"};
    const std::string told =
        "orvane: font \"Liberation Sans\": the nearest that is installed is \"Liberation Sans "
        "Bold\"\n";
    const ToolResult drawn = folder.Run(arguments);
    EXPECT_EQ(drawn.status, 0);
    EXPECT_EQ(drawn.err, told);
    arguments.emplace_back("--strict");
    const ToolResult strict = folder.Run(arguments);
    EXPECT_EQ(strict.status, 1);
    EXPECT_EQ(strict.err, told + "orvane: fonts: --strict: a font is not as it is asked for\n");
}

TEST(ToolShapedText, ALetterIsPickedWithItsMarks)
{
    ToolFolder folder;
    // An x with two marks has no character of its own.
    const std::string letter = "x\u0304\u0323";
    ASSERT_EQ(folder.Run({"render", letter, "--save", "s.orv", "--turn", "0,0,0"}).status, 0);
    std::string picked;
    for (int x = 20; x < 60 && picked.find("character 0") == std::string::npos; x += 2)
    {
        picked = folder.Run({"pick", "s.orv", std::to_string(x) + ",30", "--size", "80x60"}).out;
    }
    EXPECT_NE(picked.find("character 0 \"" + letter + "\""), std::string::npos) << picked;
}

TEST(ToolShapedText, IsOneSolidPerLineWithAProfile)
{
    ToolFolder folder;
    for (const char* const text : {"سلام", "नमस्ते"})
    {
        const ToolResult result = folder.Run(
            {"export", text, "--style", "profile", "--fuse", "line", "-o", "x.glb", "--json"});
        ASSERT_EQ(result.status, 0) << result.err;
        const Json json = Json::parse(result.out);
        EXPECT_EQ(json.at("closed"), true) << text;
        EXPECT_EQ(json.at("parts").at(0).at("name"), text);
    }
}

TEST(ToolShapedText, OptionsThatThePlainTextLacksAreStatus2)
{
    for (const std::string& name : orvane::shapedOptionNames)
    {
        // Options that are needed or excluded by others are refused as well.
        Arguments arguments = {"render", "x", "-o", "x.png", "--plain", name};
        const bool isFlag = name == "--markup" || name == "--italic" || name == "--break-words";
        if (!isFlag)
        {
            const bool isNumber = name == "--wrap" || name.starts_with("--tab") ||
                                  name == "--line-height" || name == "--font-index";
            arguments.emplace_back(isNumber                ? "1"
                                   : name == "--weight"    ? "bold"
                                   : name == "--width"     ? "condensed"
                                   : name == "--axis"      ? "wght=500"
                                   : name == "--script"    ? "Latn"
                                   : name == "--direction" ? "rtl"
                                                           : "liga");
        }
        if (name == "--break-words")
        {
            arguments.insert(arguments.end(), {"--wrap", "3"});
        }
        if (name == "--font-index")
        {
            arguments.insert(arguments.end(), {"--font-file", "f.ttf"});
        }
        ToolFolder folder;
        const ToolResult result = folder.Run(arguments);
        EXPECT_EQ(result.status, 2) << name;
        EXPECT_NE(result.err.find(": --plain has no such option"), std::string::npos)
            << name << result.err;
    }
}

TEST(ToolShapedText, AFontWithoutANameIsStatus2)
{
    ToolFolder folder;
    const ToolResult result = folder.Run({"render", "x", "-o", "x.png", "--font", ""});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err.find("orvane: --font: the name is empty\n"), 0u) << result.err;
}

TEST(ToolShapedText, JustifiedLinesNeedAWidthAndAreNotPlain)
{
    ToolFolder folder;
    for (const Arguments& more : {Arguments{}, {"--plain"}})
    {
        Arguments arguments = {"render", "x", "-o", "x.png", "--align", "justify"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const ToolResult result = folder.Run(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_NE(result.err.find("--align justify"), std::string::npos) << result.err;
    }
}

// Tools that were built without these options tell so by this list.
TEST(ToolShapedText, TheListOfOptionsHasAllOfTheHelpTextOfLayoutButItsOwn)
{
    ToolFolder folder;
    const std::string help = folder.Run({"layout", "--help"}).out;
    for (const std::string& name : orvane::shapedOptionNames)
    {
        EXPECT_NE(help.find("  " + name + " "), std::string::npos) << name;
    }
    std::size_t count = 0;
    for (std::size_t at = help.find("\n  --"); at != std::string::npos;
         at = help.find("\n  --", at + 1))
    {
        ++count;
    }
    // --text-file, --font, --align, --json, --strict, --max-seconds and --max-memory.
    EXPECT_EQ(count, orvane::shapedOptionNames.size() + 7);
}

}  // namespace
