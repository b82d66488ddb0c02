// SPDX-License-Identifier: MIT
// Materials and the studio renderer on the command line.
#include "tests/support/DecodedPicture.h"
#include "tests/support/Json.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

TEST(ToolMaterials, BuiltInAndSavedOnesAreListed)
{
    ToolFolder folder;
    ASSERT_EQ(folder
                  .Run({"materials", "save", "Brand", "--color", "#0057b880", "--highlight",
                        "white", "--shininess", "90"})
                  .status,
              0);
    const ToolResult names = folder.Run({"materials", "list"});
    EXPECT_EQ(names.status, 0) << names.err;
    EXPECT_EQ(names.out.find("Aluminium\nBrass\n"), 0u) << names.out;
    EXPECT_NE(names.out.find("\nWood\nBrand (saved)\n"), std::string::npos) << names.out;
    const Json all = Json::parse(folder.Run({"materials", "list", "--json"}).out);
    EXPECT_EQ(all.back().at("name"), "Brand");
    EXPECT_EQ(all.back().at("builtIn"), false);
    EXPECT_EQ(all.back().at("shininess"), 90);
    const Json gold = Json::parse(folder.Run({"materials", "show", "gold"}).out);
    EXPECT_EQ(gold.at("name"), "Gold");
    EXPECT_EQ(gold.at("builtIn"), true);
    EXPECT_EQ(folder.Run({"materials", "remove", "brand"}).status, 0);
    const ToolResult again = folder.Run({"materials", "remove", "brand"});
    EXPECT_EQ(again.status, 1);
    EXPECT_EQ(again.err, "orvane: \"brand\": no saved material has this name\n");
}

TEST(ToolMaterials, LettersOfAMaterialAreSavedWithItsName)
{
    ToolFolder folder;
    const ToolResult drawn =
        folder.Run({"render", "I", "--face", "jade", "--edge", "Gold", "--bevel-color", "red",
                    "--size", "64x64", "--save", "i.orv", "-o", "i.png"});
    ASSERT_EQ(drawn.status, 0) << drawn.err;
    const ToolResult told = folder.Run({"info", "i.orv", "--json"});
    for (const char* const name : {"\"Jade\"", "\"Gold\"", "\"Bevel\""})
    {
        EXPECT_NE(told.out.find(name), std::string::npos) << name << told.out;
    }
    const ToolResult unknown = folder.Run({"render", "I", "--face", "jde", "-o", "x.png"});
    EXPECT_NE(unknown.status, 0);
    EXPECT_NE(unknown.err.find("Jade"), std::string::npos) << unknown.err;
    EXPECT_FALSE(folder.Has("x.png"));
}

TEST(ToolMaterials, TheStudioRendererDrawsAnotherPictureOfTheSameLetters)
{
    ToolFolder folder;
    const std::vector<std::string> classic = {"render", "O",     "--face", "Gold",
                                              "--size", "96x96", "-o",     "classic.png"};
    ASSERT_EQ(folder.Run(classic).status, 0);
    std::vector<std::string> studio = classic;
    studio.back() = "studio.png";
    studio.insert(studio.end(), {"--renderer", "studio", "--environment", "sunset"});
    ASSERT_EQ(folder.Run(studio).status, 0);
    std::vector<std::string> ground = studio;
    ground.push_back("--ground");
    ground[7] = "ground.png";
    ASSERT_EQ(folder.Run(ground).status, 0);
    const DecodedPicture before = DecodePng(folder.Read("classic.png"));
    const DecodedPicture after = DecodePng(folder.Read("studio.png"));
    const DecodedPicture shadow = DecodePng(folder.Read("ground.png"));
    ASSERT_EQ(after.pixels.size(), before.pixels.size());
    EXPECT_FALSE(after == before);
    // The ground is darker than the background, and the letter stays as it is.
    std::size_t darker = 0;
    for (std::size_t i = 0; i < after.pixels.size(); ++i)
    {
        ASSERT_LE(shadow.pixels[i].blue, after.pixels[i].blue + 1);
        darker += shadow.pixels[i].blue + 5 < after.pixels[i].blue ? 1 : 0;
    }
    EXPECT_GT(darker, 30u);
    EXPECT_LT(darker, after.pixels.size() / 3);
}

TEST(ToolMaterials, AnEnvironmentThatIsNoPictureIsAnError)
{
    ToolFolder folder;
    folder.Write("x.hdr", "no picture");
    const ToolResult result = folder.Run(
        {"render", "I", "--renderer", "studio", "--environment", "x.hdr", "-o", "x.png"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err,
              "orvane: x.hdr: byte 1: found another beginning, expected #? of a Radiance picture "
              "(.hdr)\n");
    EXPECT_FALSE(folder.Has("x.png"));
}

}  // namespace
