// SPDX-License-Identifier: MIT
// What info tells of texts of any language.

#include "tests/support/Json.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

/// A scene with a text of two fonts and two sizes, and a character that no font has.
class ToolShapedInfo : public testing::Test
{
protected:
    ToolShapedInfo()
    {
        const ToolResult saved = folder.Run(
            {"render",
             "a<b>b</b><span size=\"50%\" rise=\"0.25\" color=\"#ff0000\">c</span>\U0010FFFD",
             "--markup", "--font", "DejaVu Serif", "--fallback", "DejaVu Sans", "--features",
             "-liga", "--wrap", "3", "--direction", "ltr", "--save", "s.orv"});
        EXPECT_EQ(saved.status, 0) << saved.err;
    }

    ToolFolder folder;
};

TEST_F(ToolShapedInfo, JsonHasFontsSpansLinesAndMissingCharacters)
{
    const ToolResult told = folder.Run({"info", "s.orv", "--json"});
    ASSERT_EQ(told.status, 0) << told.err;
    const Json node = Json::parse(told.out).at("scene").at("children").at(0);
    EXPECT_EQ(node.at("class"), "OrvShapedString");
    EXPECT_EQ(node.at("text"), "abc\U0010FFFD");
    EXPECT_EQ(node.at("font"), "DejaVu Serif");

    const Json& asked = node.at("fontsAskedFor");
    ASSERT_EQ(asked.size(), 3u);
    EXPECT_EQ(asked[0].at("name"), "DejaVu Serif");
    EXPECT_EQ(asked[0].at("was").at("fileName"), "DejaVuSerif.ttf");
    EXPECT_EQ(asked[1].at("name"), "DejaVu Sans");
    EXPECT_EQ(asked[2].at("weight"), 700);
    EXPECT_EQ(asked[2].at("was").at("name"), "DejaVu Serif Bold");
    const Json& taken = node.at("fontsTaken");
    ASSERT_EQ(taken.size(), 2u);
    EXPECT_EQ(taken[0].at("name"), "DejaVu Serif");
    EXPECT_EQ(taken[1].at("name"), "DejaVu Serif Bold");

    EXPECT_EQ(node.at("setIn").at("features"), Json{"-liga"});
    EXPECT_EQ(node.at("lines").at("width"), 3);
    EXPECT_EQ(node.at("lines").at("direction"), "ltr");
    EXPECT_TRUE(node.at("lines").at("lineHeight").is_null());

    const Json& spans = node.at("spans");
    ASSERT_GE(spans.size(), 3u);
    EXPECT_EQ(spans[1].at("text"), "b");
    EXPECT_EQ(spans[1].at("fonts"), (Json{2, 0, 1}));
    EXPECT_EQ(spans[2].at("begin"), 2);
    EXPECT_EQ(spans[2].at("end"), 3);
    EXPECT_EQ(spans[2].at("fontSize"), 0.5);
    EXPECT_EQ(spans[2].at("rise"), 0.25);
    EXPECT_EQ(spans[2].at("face"), "#ff0000");

    const Json& missing = node.at("missing");
    ASSERT_EQ(missing.size(), 1u);
    EXPECT_EQ(missing[0].at("codePoint"), "U+10FFFD");
    EXPECT_EQ(missing[0].at("offset"), 3);
}

TEST_F(ToolShapedInfo, TextHasThemInRows)
{
    const std::string told = folder.Run({"info", "s.orv"}).out;
    for (const char* const part :
         {"asks for 0  \"DejaVu Serif\"; was \"DejaVu Serif\" in \"DejaVuSerif.ttf\", CRC ",
          "asks for 2  \"DejaVu Serif\", weight 700; was \"DejaVu Serif Bold\"",
          "takes       \"DejaVu Serif Bold\" in \"/",
          "set in      size 1, font 0, font 1, features -liga\n",
          "lines       direction ltr, wrapped at 3, tabs every 2\n",
          "span        bytes 2-3 \"c\", size 0.5, rise 0.25, font 0, font 1, features -liga, face "
          "#ff0000\n",
          "missing     no installed font has \"\U0010FFFD\" (U+10FFFD)\n"})
    {
        EXPECT_NE(told.find(part), std::string::npos) << part << "\n" << told;
    }
}

TEST_F(ToolShapedInfo, AFontThatIsNotInstalledIsStillAskedFor)
{
    folder.UseFonts({ORVANE_TEST_DATA "/EdgeTest.ttf"});
    const ToolResult told = folder.Run({"info", "s.orv", "--json"});
    ASSERT_EQ(told.status, 0) << told.err;
    EXPECT_NE(told.err.find("the font \"DejaVu Serif\" is not installed, \"Edge Test Regular\" is "
                            "used instead"),
              std::string::npos)
        << told.err;
    const Json node = Json::parse(told.out).at("scene").at("children").at(0);
    EXPECT_EQ(node.at("fontsAskedFor").at(0).at("was").at("name"), "DejaVu Serif");
    EXPECT_EQ(node.at("fontsTaken").at(0).at("name"), "Edge Test Regular");
}

}  // namespace
