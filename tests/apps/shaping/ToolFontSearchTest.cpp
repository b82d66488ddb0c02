// SPDX-License-Identifier: MIT
// orvane fonts --families and --for: what fonts have, and which can set a text.

#include "tests/support/DecodedPicture.h"
#include "tests/support/FontFile.h"
#include "tests/support/Json.h"
#include "tests/support/ToolRun.h"
#include "tests/support/WeightAxis.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

std::string Output(ToolFolder& folder, std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), "fonts");
    const ToolResult result = folder.Run(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    return result.out;
}

// EdgeTest.ttf has some of the letters A to Z and a to z, and neither axes nor features.
TEST(ToolFontSearch, FontsForATextHaveAllOfItsCharacters)
{
    ToolFolder folder;
    folder.UseFonts({ORVANE_TEST_DATA "/EdgeTest.ttf"});
    EXPECT_EQ(Output(folder, {"--for", "A"}), "Edge Test Regular\n");
    EXPECT_EQ(Output(folder, {"--for", "A", "edge TEST"}), "Edge Test Regular\n");
    EXPECT_EQ(Output(folder, {"--for", "A", "other"}), "");
    EXPECT_EQ(Output(folder, {"--for", "A\u65E5"}), "");
    EXPECT_EQ(Output(folder, {"--for", "A", "--json"}),
              "[\n  {\"name\": \"Edge Test Regular\", \"family\": \"Edge Test\", \"style\": "
              "\"Regular\", \"weight\": 400, \"italic\": false}\n]\n");
    EXPECT_EQ(Output(folder, {"--for", "\u65E5", "--json"}), "[]\n");
}

// DejaVu Sans has Georgian letters; Liberation has none.
TEST(ToolFontSearch, FamiliesHaveStylesScriptsAndFeatures)
{
    ToolFolder folder;
    const Json families =
        Json::parse(Output(folder, {"--families", "--for", "\u10D8", "dejavu sans", "--json"}));
    const auto sans = std::find_if(families.begin(), families.end(), [](const Json& family) {
        return family.at("family") == "DejaVu Sans";
    });
    ASSERT_NE(sans, families.end());
    EXPECT_EQ(KeysOf(*sans),
              (std::vector<std::string>{"family", "styles", "scripts", "axes", "features"}));
    const Json& styles = sans->at("styles");
    EXPECT_NE(std::find(styles.begin(), styles.end(), "Bold"), styles.end());
    EXPECT_EQ(sans->at("scripts").at(0).at("script"), "Latn");
    EXPECT_EQ(sans->at("scripts").at(0).at("name"), "Latin");
    const Json& features = sans->at("features");
    EXPECT_NE(std::find(features.begin(), features.end(), "liga"), features.end());
    EXPECT_TRUE(std::is_sorted(features.begin(), features.end()));

    EXPECT_EQ(Output(folder, {"--families", "--for", "\u10D8", "liberation"}), "");
    const std::string text = Output(folder, {"--families", "liberation serif"});
    EXPECT_TRUE(
        text.starts_with("Liberation Serif\n  styles: Bold, Bold Italic, Italic, Regular\n"
                         "  scripts: Latin "))
        << text;
}

TEST(ToolFontSearch, AVariableFamilyHasAxes)
{
    ToolFolder folder;
    const std::string file = folder.Path("variable.ttf");
    FontFile::EdgeTest().Put("fvar", WeightAxis()).Write(file);
    folder.UseFonts({file});
    const Json axis = Json::parse(Output(folder, {"--families", "--json"})).at(0).at("axes").at(0);
    EXPECT_EQ(axis.at("tag"), "wght");
    EXPECT_EQ(axis.at("minimum"), 100.0);
    EXPECT_EQ(axis.at("default"), 400.0);
    EXPECT_EQ(axis.at("maximum"), 900.0);
}

TEST(ToolFontSearch, ItIsNotCombinedWithACheck)
{
    ToolFolder folder;
    EXPECT_EQ(folder.Run({"fonts", "--check", "DejaVu Sans", "--families"}).status, 2);
    EXPECT_EQ(folder.Run({"fonts", "--check", "DejaVu Sans", "--for", "a"}).status, 2);
}

TEST(ToolFontSheet, EachFamilyIsSetInItself)
{
    ToolFolder folder;
    const auto sheetOf = [&folder](const std::string& filter) {
        const ToolResult result = folder.Run({"fonts", filter, "--sample", "-o", "x.png"});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.out, "");
        return DecodePng(folder.Read("x.png"));
    };
    const DecodedPicture serif = sheetOf("liberation serif");
    const DecodedPicture mono = sheetOf("liberation mono");
    EXPECT_GT(BoxOfContent(serif).Width(), 200);
    EXPECT_FALSE(serif == mono);
    // Serif, Sans, Sans Narrow and Mono fill a row; with those of DejaVu there are two.
    const DecodedPicture row = sheetOf("liberation");
    EXPECT_GT(row.width, 3 * serif.width);
    EXPECT_NEAR(row.height, serif.height, 20);
    EXPECT_GT(sheetOf("e").height, row.height + 60);
}

TEST(ToolFontSheet, AFontWithoutTheLettersOfItsNameShowsOthers)
{
    ToolFolder folder;
    folder.UseFonts({ORVANE_TEST_DATA "/EdgeTest.ttf"});
    const ToolResult result = folder.Run({"fonts", "--sample", "-o", "x.bmp"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_GT(BoxOfContent(DecodeBmp(folder.Read("x.bmp"))).Width(), 20);
}

TEST(ToolFontSheet, WithoutFamiliesItIsStatus1AndWithoutAFileStatus2)
{
    ToolFolder folder;
    const ToolResult none = folder.Run({"fonts", "no such family", "--sample", "-o", "x.png"});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.err, "orvane: fonts: no family to show\n");
    EXPECT_EQ(folder.Run({"fonts", "--sample"}).status, 2);
    EXPECT_EQ(folder.Run({"fonts", "--sample", "-o", "x.png", "--json"}).status, 2);
    EXPECT_EQ(folder.Run({"fonts", "-o", "x.png"}).status, 2);
    EXPECT_TRUE(folder.Names().empty());
}

}  // namespace
