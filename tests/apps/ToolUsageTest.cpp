// SPDX-License-Identifier: MIT
#if defined(__GNUC__) && !defined(__clang__)
// GCC 12 warns of std::regex itself where the sanitizers instrument it.
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

// What the command line may say, and what the tool answers when it says something else.

#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>

namespace
{

/// A command line that makes no sense, and what the message must name.
struct Misuse
{
    const char* name;
    std::vector<std::string> arguments;
    std::string named;
};

class ToolMisuse : public testing::TestWithParam<Misuse>
{};

TEST_P(ToolMisuse, IsStatus2WithAMessageAndNoFile)
{
    ToolFolder folder;
    const ToolResult result = folder.Run(GetParam().arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.err.find(GetParam().named), std::string::npos) << result.err;
    EXPECT_EQ(result.err.substr(0, 8), "orvane: ");
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(folder.Names().empty());
}

INSTANTIATE_TEST_SUITE_P(
    All, ToolMisuse,
    testing::Values(
        Misuse{"NoSubcommand", {}, "subcommand"},
        Misuse{"UnknownSubcommand", {"draw", "x", "-o", "x.png"}, "draw"},
        Misuse{"UnknownOption", {"render", "x", "-o", "x.png", "--shiny"}, "--shiny"},
        Misuse{"UnknownOptionOfFonts", {"fonts", "--xml"}, "--xml"},
        Misuse{"UnknownStyle", {"render", "x", "-o", "x.png", "--style", "oval"}, "oval"},
        Misuse{"StyleByNumber", {"render", "x", "-o", "x.png", "--style", "1"}, "--style"},
        Misuse{"UnknownBevelOn", {"render", "x", "-o", "x.png", "--bevel-on", "side"}, "side"},
        Misuse{"UnknownAlign", {"render", "x", "-o", "x.png", "--align", "justify"}, "justify"},
        Misuse{"UnknownFormat", {"render", "x", "-o", "x.gif"}, "x.gif"},
        Misuse{"NoFormat", {"render", "x", "-o", "picture"}, "picture"},
        Misuse{"EmptyOutput", {"render", "x", "-o", ""}, "--output"},
        Misuse{"MissingOutput", {"render", "x"}, "--output"},
        Misuse{"MissingOutputOfShowcase", {"showcase"}, "--output"},
        Misuse{"TwoOutputs", {"render", "x", "-o", "x.png", "-o", "y.png"}, "--output"},
        Misuse{"MissingText",
               {"render", "-o", "x.png"},
               "a text, --outline-file, --import or --scene"},
        Misuse{"ZeroWidth", {"render", "x", "-o", "x.png", "--size", "0x720"}, "0x720"},
        Misuse{"ZeroHeight", {"render", "x", "-o", "x.png", "--size", "1280x0"}, "1280x0"},
        Misuse{"NegativeSize", {"render", "x", "-o", "x.png", "--size", "-5x5"}, "-5x5"},
        Misuse{"SizeWithoutX", {"render", "x", "-o", "x.png", "--size", "640"}, "640"},
        Misuse{"SizeWithMore", {"render", "x", "-o", "x.png", "--size", "9x9x9"}, "9x9x9"},
        Misuse{"SizeBeyondLimit", {"render", "x", "-o", "x.png", "--size", "100001x1"}, "100000"},
        Misuse{"SizeBeyondInteger",
               {"render", "x", "-o", "x.png", "--size", "99999999999x1"},
               "99999999999x1"},
        Misuse{"TurnOfTwo", {"render", "x", "-o", "x.png", "--turn", "1,2"}, "1,2"},
        Misuse{"TurnOfFour", {"render", "x", "-o", "x.png", "--turn", "1,2,3,4"}, "1,2,3,4"},
        Misuse{"TurnOfWords", {"render", "x", "-o", "x.png", "--turn", "a,b,c"}, "\"a\""},
        Misuse{"BevelIsNoNumber", {"render", "x", "-o", "x.png", "--bevel", "wide"}, "wide"},
        Misuse{"BevelIsNan", {"render", "x", "-o", "x.png", "--bevel", "nan"}, "nan"},
        Misuse{"EnvironmentOfTheClassicRenderer",
               {"render", "x", "-o", "x.png", "--environment", "sky"},
               "--renderer studio"},
        Misuse{"NegativeBevel", {"render", "x", "-o", "x.png", "--bevel", "-0.1"}, "-0.1"},
        Misuse{"InfiniteDepth", {"render", "x", "-o", "x.png", "--depth", "inf"}, "inf"},
        Misuse{"NegativeDepth", {"render", "x", "-o", "x.png", "--depth", "-1"}, "--depth"},
        Misuse{
            "UnknownColour", {"render", "x", "-o", "x.png", "--face-color", "blurple"}, "blurple"},
        Misuse{"ColourOfTwoDigits", {"render", "x", "-o", "x.png", "--edge-color", "#ff"}, "#ff"},
        Misuse{"EmptyColour", {"render", "x", "-o", "x.png", "--bevel-color", ""}, "--bevel-color"},
        Misuse{"TransparentBackground",
               {"render", "x", "-o", "x.png", "--background", "#00000080"},
               "--background"},
        Misuse{"TooManySamples", {"render", "x", "-o", "x.png", "--samples", "9"}, "--samples"},
        Misuse{"NothingToWrite", {"render", "x"}, "--save"},
        Misuse{"BitsOfNoBmp", {"render", "x", "-o", "x.bmp", "--bits", "12"}, "12"},
        Misuse{"BitsOfAPng", {"render", "x", "-o", "x.png", "--bits", "32"}, "--bits"},
        Misuse{"SamplesOfDitheredPixels",
               {"render", "x", "-o", "x.bmp", "--bits", "8", "--samples", "2"},
               "--samples"},
        Misuse{"NoDots", {"render", "x", "-o", "x.png", "--dpi", "0"}, "--dpi"},
        Misuse{"PartsOfDots", {"render", "x", "-o", "x.png", "--dpi", "72.5"}, "72.5"},
        Misuse{"LightOutsideThePool", {"render", "x", "-o", "x.png", "--light", "8,on"}, "8"},
        Misuse{"LightNeitherOnNorOff", {"render", "x", "-o", "x.png", "--light", "1,dim"}, "1,dim"},
        Misuse{"LightWithoutState", {"render", "x", "-o", "x.png", "--light", "1"}, "--light"},
        Misuse{"LightOfNoColour", {"render", "x", "-o", "x.png", "--light", "1,on,shiny"}, "shiny"},
        Misuse{"LightsFollowSomethingElse",
               {"render", "x", "-o", "x.png", "--lights-follow", "me"},
               "--lights-follow"},
        Misuse{"AmbientIsNoColour", {"render", "x", "-o", "x.png", "--ambient", "1,2"}, "1,2"},
        Misuse{"NegativeLens", {"render", "x", "-o", "x.png", "--lens", "-5"}, "--lens"},
        Misuse{"FieldOfViewOfHalfACircle", {"render", "x", "-o", "x.png", "--fov", "180"}, "--fov"},
        Misuse{"LensAndFieldOfView",
               {"render", "x", "-o", "x.png", "--lens", "50", "--fov", "30"},
               "--fov"},
        Misuse{"UnknownTextureQuality",
               {"render", "x", "-o", "x.png", "--texture-quality", "best"},
               "best"},
        Misuse{"TextureNeverRepeated",
               {"render", "x", "-o", "x.png", "--texture-repeat", "0"},
               "--texture-repeat"},
        Misuse{"UnknownPlacement",
               {"render", "x", "-o", "x.png", "--background", "b.bmp", "--background-placement",
                "left"},
               "left"},
        Misuse{
            "PlacementOfAColour",
            {"render", "x", "-o", "x.png", "--background", "red", "--background-placement", "tile"},
            "--background-placement"},
        Misuse{"PlaceOfNothing",
               {"render", "x", "-o", "x.png", "--background-at", "1,2"},
               "--background-at"},
        Misuse{"PlaceOfOneNumber",
               {"render", "x", "-o", "x.png", "--background", "b.bmp", "--background-at", "1"},
               "--background-at"},
        Misuse{"BackgroundOfAnotherFormat",
               {"render", "x", "-o", "x.png", "--background", "b.gif"},
               "b.gif"},
        Misuse{"SaveUnderAnotherName", {"render", "x", "--save", "x.png"}, "x.png"},
        Misuse{"TextAndScene", {"render", "x", "--scene", "s.orv", "-o", "x.png"}, "--scene"},
        Misuse{
            "FontOfAScene", {"render", "--scene", "s.orv", "-o", "x.png", "--font", "x"}, "--font"},
        Misuse{"TextureOfAScene",
               {"render", "--scene", "s.orv", "-o", "x.png", "--texture", "t.bmp"},
               "--texture"},
        Misuse{"ViewWithoutAScene", {"render", "x", "-o", "x.png", "--view", "a"}, "--view"},
        Misuse{"ViewAndCamera",
               {"render", "--scene", "s.orv", "-o", "x.png", "--view", "a", "--turn", "1,2,3"},
               "--turn"},
        Misuse{"UnknownMeshFormat", {"export", "x", "-o", "x.dae"}, "x.dae"},
        Misuse{"UnknownMeshFormatByName", {"export", "x", "-o", "x", "--format", "dae"}, "dae"},
        Misuse{"MissingOutputOfExport", {"export", "x"}, "--output"},
        Misuse{"NothingToExport",
               {"export", "-o", "x.stl"},
               "a text, --outline-file, --import or --scene"},
        Misuse{"StandardOutputWithoutFormat", {"export", "x", "-o", "-"}, "format"},
        Misuse{"EmOfNoSize", {"export", "x", "-o", "x.stl", "--em", "0"}, "--em"},
        Misuse{"UnknownUnit", {"export", "x", "-o", "x.stl", "--unit", "ft"}, "ft"},
        Misuse{"UnknownUp", {"export", "x", "-o", "x.stl", "--up", "x"}, "--up"},
        Misuse{"GltfWithZUp", {"export", "x", "-o", "x.glb", "--up", "z"}, "--up"},
        Misuse{"BackgroundOfAMesh",
               {"export", "x", "-o", "x.stl", "--background", "red"},
               "--background"},
        Misuse{"TwoFilters", {"fonts", "sans", "serif"}, "serif"}),
    [](const testing::TestParamInfo<Misuse>& info) { return std::string(info.param.name); });

TEST(ToolUsage, HelpAndVersionAreDataOnStandardOutput)
{
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--help"},
                                                      {"render", "--help"},
                                                      {"fonts", "-h"},
                                                      {"showcase", "--help"},
                                                      {"--version"}})
    {
        ToolFolder folder;
        const ToolResult result = folder.Run(arguments);
        EXPECT_EQ(result.status, 0) << arguments.front();
        EXPECT_NE(result.out, "") << arguments.front();
        EXPECT_EQ(result.err, "") << arguments.front();
    }
}

TEST(ToolUsage, WrongUsageIsFoundBeforeTheTextFileIsRead)
{
    ToolFolder folder;
    const ToolResult result =
        folder.Run({"render", "--text-file", "missing", "-o", "x.png", "--turn", "1"});
    EXPECT_EQ(result.status, 2);
}

/// Every option of the help text, by its long name.
std::set<std::string> OptionsIn(const std::string& text)
{
    const std::regex option("--[a-z][a-z-]*[a-z]");
    std::set<std::string> found;
    for (auto it = std::sregex_iterator(text.begin(), text.end(), option);
         it != std::sregex_iterator(); ++it)
    {
        found.insert(it->str());
    }
    return found;
}

std::string ReadDocument()
{
    std::ifstream in(ORVANE_TEST_DATA "/../../docs/tool.md");
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TEST(ToolUsage, TheDocumentNamesExactlyTheOptionsOfTheHelpTexts)
{
    ToolFolder folder;
    std::string help;
    for (const char* const command : {"render", "export", "info", "pick", "fonts", "showcase"})
    {
        help += folder.Run({command, "--help"}).out;
    }
    for (const char* const action : {"list", "show", "save", "remove"})
    {
        help += folder.Run({"materials", action, "--help"}).out;
    }
    help += folder.Run({"--help"}).out;
    const std::set<std::string> documented = OptionsIn(ReadDocument());
#if defined(ORVANE_WITH_SHAPING)
    help += folder.Run({"layout", "--help"}).out;
    EXPECT_EQ(documented, OptionsIn(help));
#else
    // The document is about a tool that sets texts of any language, too.
    const std::set<std::string> options = OptionsIn(help);
    EXPECT_TRUE(
        std::includes(documented.begin(), documented.end(), options.begin(), options.end()));
#endif
}

TEST(ToolUsage, TheDocumentHasTheDefaultsOfTheHelpTexts)
{
    ToolFolder folder;
    const std::string help = folder.Run({"render", "--help"}).out +
                             folder.Run({"export", "--help"}).out +
                             folder.Run({"materials", "save", "--help"}).out;
    const std::string document = ReadDocument();
    // "| `--bevel D` | `0.035` | ..."
    const std::regex row(R"(\| `(?:-o`, `)?(--[a-z-]+)[^|]*(?:\\\|[^|]*)*` \| `([^`]+)` \|)");
    int count = 0;
    for (auto it = std::sregex_iterator(document.begin(), document.end(), row);
         it != std::sregex_iterator(); ++it, ++count)
    {
        const std::string option = it->str(1);
        const std::size_t begin = help.find(option + " ");
#if !defined(ORVANE_WITH_SHAPING)
        if (begin == std::string::npos)
        {
            continue;  // the document is about a tool that sets texts of any language, too
        }
#endif
        ASSERT_NE(begin, std::string::npos) << option;
        const std::string about = help.substr(begin, help.find("\n  -", begin) - begin);
        EXPECT_NE(about.find("[" + it->str(2) + "]"), std::string::npos)
            << option << " has the default " << it->str(2) << " in the document, but: " << about;
    }
    EXPECT_GE(count, 15);
}

}  // namespace
