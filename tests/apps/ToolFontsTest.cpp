// SPDX-License-Identifier: MIT
// Lists of fonts, and fonts by their names.

#include "tests/support/DecodedPicture.h"
#include "tests/support/Json.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace
{

std::vector<std::string> LinesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
    {
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> ListFonts(const std::vector<std::string>& arguments = {})
{
    ToolFolder folder;
    std::vector<std::string> command = {"fonts"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    const ToolResult result = folder.Run(command);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    return LinesOf(result.out);
}

/// The names in quotation marks after "near names:".
std::vector<std::string> NamesIn(const std::string& message)
{
    std::vector<std::string> names;
    std::istringstream in(message.substr(message.find("near names:")));
    std::string between;
    for (std::string name; std::getline(in, between, '"') && std::getline(in, name, '"');)
    {
        names.push_back(name);
    }
    return names;
}

TEST(ToolFonts, AreListedOneALineInTheOrderOfTheirBytes)
{
    const std::vector<std::string> fonts = ListFonts();
    EXPECT_NE(std::find(fonts.begin(), fonts.end(), "DejaVu Sans Bold"), fonts.end());
    EXPECT_NE(std::find(fonts.begin(), fonts.end(), "DejaVu Sans"), fonts.end());
    EXPECT_TRUE(std::is_sorted(fonts.begin(), fonts.end()));
    EXPECT_EQ(std::adjacent_find(fonts.begin(), fonts.end()), fonts.end());
}

TEST(ToolFonts, AFilterIsAPartOfTheNameInEitherCase)
{
    const std::vector<std::string> fonts = ListFonts();
    std::vector<std::string> bold;
    std::copy_if(fonts.begin(), fonts.end(), std::back_inserter(bold), [](const std::string& name) {
        return name.find("Bold") != std::string::npos || name.find("bold") != std::string::npos;
    });
    EXPECT_FALSE(bold.empty());
    EXPECT_LT(bold.size(), fonts.size());
    EXPECT_EQ(ListFonts({"bold"}), bold);
    EXPECT_EQ(ListFonts({"BOLD"}), bold);
    EXPECT_EQ(ListFonts({""}), fonts);
    EXPECT_TRUE(ListFonts({"no such font"}).empty());
}

TEST(ToolFonts, JsonHasTheSameNamesInTheSameOrder)
{
    for (const std::string filter : {"", "mono", "no such font"})
    {
        ToolFolder folder;
        const ToolResult result = folder.Run({"fonts", "--json", filter});
        EXPECT_EQ(result.status, 0);
        std::vector<std::string> names;
        for (const Json& font : Json::parse(result.out))
        {
            names.push_back(font.at("name").get<std::string>());
        }
        EXPECT_EQ(names, ListFonts({filter}));
    }
}

TEST(ToolFonts, JsonDescribesEachFace)
{
    ToolFolder folder;
    const ToolResult result = folder.Run({"fonts", "--json", "Liberation Serif Bold Italic"});
    EXPECT_EQ(result.out,
              "[\n  {\"name\": \"Liberation Serif Bold Italic\", \"family\": \"Liberation Serif\", "
              "\"style\": \"Bold Italic\", \"weight\": 700, \"italic\": true}\n]\n");
}

TEST(ToolFonts, OnlyInstalledFontsAreListed)
{
    ToolFolder folder;
    folder.UseFonts({ORVANE_TEST_DATA "/EdgeTest.ttf"});
    EXPECT_EQ(folder.Run({"fonts"}).out, "Edge Test Regular\n");
    EXPECT_EQ(folder.Run({"render", "A", "-o", "x.png"}).status, 0);  // the first there is
}

TEST(ToolFonts, WithoutFontsListsAreEmptyAndPicturesStatus1)
{
    ToolFolder folder;
    folder.UseFonts({});
    const ToolResult list = folder.Run({"fonts"});
    EXPECT_EQ(list.status, 0);
    EXPECT_EQ(list.out, "");
    EXPECT_EQ(folder.Run({"fonts", "--json"}).out, "[]\n");
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"render", "x", "-o", "x.png"},
          {"render", "x", "-o", "x.png", "--font", "DejaVu Sans"},
          {"render", "x", "-o", "x.png", "--font", "DejaVu Sans", "--plain"},
          {"showcase", "-o", "x.png"}})
    {
        const ToolResult result = folder.Run(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_TRUE(result.err.starts_with("orvane: fonts: no ")) << result.err;
        EXPECT_TRUE(result.err.ends_with("font is installed (try the package fonts-dejavu-core)\n"))
            << result.err;
        EXPECT_TRUE(folder.Names().empty());
    }
}

class ToolUnknownFont : public testing::TestWithParam<std::vector<std::string>>
{
protected:
    ToolResult Render(const std::string& font)
    {
        std::vector<std::string> arguments = {"render", "--font", font, "x", "-o", "x.png"};
        arguments.insert(arguments.end(), GetParam().begin(), GetParam().end());
        return folder.Run(arguments);
    }

    ToolFolder folder;
};

TEST_P(ToolUnknownFont, IsStatus1AndNearNamesAreSuggested)
{
    const ToolResult nothing = Render("No Such Font");
    EXPECT_EQ(nothing.status, 1);
    const std::string start = "orvane: font \"No Such Font\": not installed; near names: \"";
    ASSERT_TRUE(nothing.err.starts_with(start)) << nothing.err;
    const std::vector<std::string> fonts = ListFonts();
    const std::vector<std::string> near = NamesIn(nothing.err);
    EXPECT_EQ(near.size(), std::min<std::size_t>(fonts.size(), 5));
    for (const std::string& name : near)
    {
        EXPECT_NE(std::find(fonts.begin(), fonts.end(), name), fonts.end()) << name;
    }
    EXPECT_TRUE(folder.Names().empty());

    // The nearest comes first: by what it contains, else by the fewest changes.
    const auto nearest = [this](const std::string& name) {
        return NamesIn(Render(name).err).at(0);
    };
    EXPECT_EQ(nearest("DejaVu Sans Bolt"), "DejaVu Sans Bold");
    EXPECT_EQ(nearest("Liberatoin Serif Itallic"), "Liberation Serif Italic");
    EXPECT_EQ(nearest("NARROW bold italic"), "Liberation Sans Narrow Bold Italic");
    if (!GetParam().empty())
    {
        EXPECT_EQ(nearest(""), fonts.front());
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, ToolUnknownFont,
                         testing::Values(std::vector<std::string>(),
                                         std::vector<std::string>{"--plain"}),
                         [](const testing::TestParamInfo<std::vector<std::string>>& info) {
                             return info.param.empty() ? "OfAnyLanguage" : "Plain";
                         });

TEST(ToolFonts, ACheckCountsRepairedGlyphs)
{
    ToolFolder folder;
    folder.UseFonts({ORVANE_TEST_DATA "/EdgeTest.ttf"});
    const ToolResult check = folder.Run({"fonts", "--check", "edge test regular"});
    EXPECT_EQ(check.status, 0);
    EXPECT_EQ(check.out.rfind("Edge Test Regular: 23 glyphs, ", 0), 0u) << check.out;
    EXPECT_NE(check.out.find(" repaired, "), std::string::npos);
    EXPECT_NE(check.out.find(", 0 converted, 0 could not be repaired\n"), std::string::npos);
    EXPECT_EQ(folder.Run({"fonts", "--check", "No Such Font"}).status, 1);
    EXPECT_EQ(folder.Run({"fonts", "--check", "Edge Test Regular", "--json"}).status, 2);
    EXPECT_EQ(folder.Run({"fonts", "--check"}).status, 2);
}

TEST(ToolFonts, OutlinesCanBeTakenAsTheyAre)
{
    ToolFolder folder;
    const auto draw = [&folder](const std::string& text, const std::string& outlines) {
        const ToolResult result =
            folder.Run({"render", text, "-o", "x.png", "--size", "80x60", "--turn", "0,0,0",
                        "--font", "DejaVu Sans", "--outlines", outlines});
        EXPECT_EQ(result.status, 0) << result.err;
        return DecodePng(folder.Read("x.png"));
    };
    // The cedilla lies over the letter, which then has no faces.
    EXPECT_FALSE(draw("Ç", "as-is") == draw("Ç", "repaired"));
    EXPECT_TRUE(draw("E", "as-is") == draw("E", "repaired"));
    EXPECT_EQ(folder.Run({"fonts", "--outlines", "as-is"}).status, 0);
    EXPECT_EQ(folder.Run({"fonts", "--outlines", "better"}).status, 2);
}

TEST(ToolFonts, LetterCaseOfANameDoesNotMatter)
{
    ToolFolder folder;
    const auto draw = [&folder](const std::vector<std::string>& font) {
        std::vector<std::string> arguments = {"render", "Rg", "-o", "x.png", "--size", "80x45"};
        arguments.insert(arguments.end(), font.begin(), font.end());
        EXPECT_EQ(folder.Run(arguments).status, 0);
        return DecodePng(folder.Read("x.png"));
    };
    const DecodedPicture serif = draw({"--font", "DejaVu Serif"});
    EXPECT_EQ(draw({"--font", "dejavu SERIF"}), serif);
    const DecodedPicture bold = draw({"--font", "DejaVu Sans Bold"});
    EXPECT_NE(bold, serif);
    EXPECT_EQ(draw({}), bold);  // the default
}

}  // namespace
