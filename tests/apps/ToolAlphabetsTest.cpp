// SPDX-License-Identifier: MIT
// Texts in the alphabets of every code page, in DejaVu Sans, drawn, saved and loaded by the tool.

#include "platform/Fonts.h"
#include "tests/support/Alphabets.h"
#include "tests/support/DecodedPicture.h"
#include "tests/support/Json.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace
{

class ToolAlphabets : public testing::TestWithParam<Alphabet>
{
protected:
    /// Saves the text in its code page in a scene, s.orv, and draws it.
    std::string SaveAndDraw()
    {
        const ToolResult result =
            folder.Run({"render", GetParam().text, "--plain", "--font", "DejaVu Sans", "--size",
                        "320x90", "--save", "s.orv", "-o", "s.bmp"});
        EXPECT_EQ(result.status, 0) << result.err;
        return folder.Read("s.bmp");
    }

    ToolFolder folder;
};

TEST_P(ToolAlphabets, IsDrawnFromItsFileAsItWas)
{
    const std::string drawn = SaveAndDraw();
    EXPECT_GT(BoxOfContent(DecodeBmp(drawn)).Width(), 100);
    const ToolResult again =
        folder.Run({"render", "--scene", "s.orv", "--size", "320x90", "-o", "again.bmp"});
    EXPECT_EQ(again.status, 0) << again.err;
    EXPECT_EQ(folder.Read("again.bmp"), drawn);
}

TEST_P(ToolAlphabets, IsShownByInfoWithItsCodePage)
{
    SaveAndDraw();
    const ToolResult result = folder.Run({"info", "--json", "s.orv"});
    ASSERT_EQ(result.status, 0) << result.err;
    const Json info = Json::parse(result.out);
    EXPECT_EQ(info.at("codePage").get<double>(), GetParam().codePage);
    const Json& node = info.at("scene").at("children").at(0);
    EXPECT_EQ(node.at("text").get<std::string>(), GetParam().text);
    EXPECT_EQ(node.at("font").get<std::string>(), "DejaVu Sans");
}

TEST_P(ToolAlphabets, HasItsCharacterSetInTheStoredDescriptionOfTheFont)
{
    SaveAndDraw();
    const std::string file = folder.Read("s.orv");
    const std::size_t faceName = file.find(std::string("DejaVu Sans\0", 12));
    ASSERT_NE(faceName, std::string::npos);
    constexpr std::size_t before = offsetof(LOGFONTA, lfFaceName) - offsetof(LOGFONTA, lfCharSet);
    EXPECT_EQ(static_cast<unsigned char>(file.at(faceName - before)), GetParam().characterSet);
}

INSTANTIATE_TEST_SUITE_P(CodePages, ToolAlphabets, AllAlphabets(), NameOf);

}  // namespace
