// SPDX-License-Identifier: MIT
// Texts of closed solids on the command line.
#include "tests/support/Json.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using Arguments = std::vector<std::string>;

TEST(ToolProfile, ALetterOfACodePageIsDrawnSavedAndDescribed)
{
    ToolFolder folder;
    const ToolResult drawn =
        folder.Run({"render", "I", "--plain", "--style", "profile", "--profile",
                    "0,0 0.0625,-0.03125", "--profile-on", "front", "--fuse", "line", "--size",
                    "64x64", "-o", "i.png", "--save", "i.orv"});
    ASSERT_EQ(drawn.status, 0) << drawn.err;
    const ToolResult told = folder.Run({"info", "i.orv", "--json"});
    ASSERT_EQ(told.status, 0) << told.err;
    const Json text = Json::parse(told.out).at("scene").at("children").at(0);
    EXPECT_EQ(text.at("class"), "OrvProfileString");
    EXPECT_EQ(text.at("style"), "profile");
    EXPECT_EQ(text.at("profile"), "0,0 0.0625,-0.03125");
    EXPECT_EQ(text.at("bevelOn"), "front");
    EXPECT_EQ(text.at("fusion"), "line");
    const ToolResult again = folder.Run({"render", "--scene", "i.orv", "-o", "again.png"});
    ASSERT_EQ(again.status, 0) << again.err;
    EXPECT_TRUE(folder.Read("again.png") == folder.Read("i.png"));
}

TEST(ToolProfile, EveryNamedProfileIsExportedAsClosedSolids)
{
    ToolFolder folder;
    for (const char* const profile : {"chamfer", "round", "cove", "step", "ogee", "chisel",
                                      "round -0.02", "chamfer -0.5", "cove 0.2 round-corners"})
    {
        const ToolResult result = folder.Run(
            {"export", "A8i", "--style", "profile", "--profile", profile, "-o", "x.stl", "--json"});
        ASSERT_EQ(result.status, 0) << profile << ": " << result.err;
        const Json all = Json::parse(result.out);
        EXPECT_EQ(all.at("closed"), true) << profile;
        EXPECT_GT(all.at("volume").get<double>(), 0) << profile;
    }
}

TEST(ToolProfile, ATextWithoutADepthIsToldAndFailsWithStrict)
{
    const std::string told =
        "the text \"Ada\" is left out: solids need a width, a height and a depth\n";
    for (const Arguments& command : {Arguments{"render", "-o", "a.png", "--size", "40x30"},
                                     {"render", "--save", "a.orv"},
                                     {"export", "-o", "a.stl"},
                                     {"export", "-o", "a.stl", "--solid"}})
    {
        ToolFolder folder;
        Arguments arguments = command;
        arguments.insert(arguments.end(), {"Ada", "--style", "profile", "--depth", "0"});
        const ToolResult result = folder.Run(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "orvane: " + told);
        EXPECT_TRUE(folder.Has(command[2]));

        ToolFolder strict;
        arguments.emplace_back("--strict");
        const ToolResult refused = strict.Run(arguments);
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(refused.err,
                  "orvane: " + told + "orvane: --strict: parts of the scene are missing\n");
        EXPECT_TRUE(strict.Names().empty());
    }

    ToolFolder folder;
    ASSERT_EQ(folder.Run({"render", "Ada", "--style", "profile", "--depth", "0", "--save", "a.orv"})
                  .status,
              0);
    const ToolResult scene =
        folder.Run({"render", "--scene", "a.orv", "-o", "a.png", "--size", "40x30"});
    EXPECT_EQ(scene.status, 0);
    EXPECT_EQ(scene.err, "orvane: a.orv: " + told);
}

TEST(ToolProfile, SolidTellsATextWithoutADepthAndStrictFails)
{
    ToolFolder folder;
    const Arguments arguments = {"export", "Ada", "--style", "square", "--depth",
                                 "0",      "-o",  "a.stl",   "--solid"};
    const ToolResult result = folder.Run(arguments);
    EXPECT_EQ(result.status, 0);
    const std::string told =
        "the text \"Ada\" is left out: solids need a width, a height and a depth\n";
    EXPECT_NE(result.err.find("orvane: " + told), std::string::npos) << result.err;
    Arguments strict = arguments;
    strict[7] = "b.stl";
    strict.emplace_back("--strict");
    const ToolResult refused = folder.Run(strict);
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.err.find("orvane: b.stl: " + told), std::string::npos) << refused.err;
    EXPECT_FALSE(folder.Has("b.stl"));
}

TEST(ToolProfile, OptionsOfProfilesNeedTheirStyle)
{
    ToolFolder folder;
    for (const Arguments& option :
         {Arguments{"--profile", "cove"}, {"--profile-on", "front"}, {"--fuse", "text"}})
    {
        Arguments arguments = {"render", "x", "-o", "x.png"};
        arguments.insert(arguments.end(), option.begin(), option.end());
        const ToolResult result = folder.Run(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_NE(result.err.find(option[0] + ": --style profile is required"), std::string::npos)
            << result.err;
    }
    EXPECT_TRUE(folder.Names().empty());
}

TEST(ToolProfile, AProfileThatFoldsBackIsNamed)
{
    ToolFolder folder;
    const ToolResult result = folder.Run({"render", "x", "-o", "x.png", "--style", "profile",
                                          "--profile", "0,0 0.1,-0.1 0.2,-0.05"});
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.err.find("--profile"), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("step 3"), std::string::npos) << result.err;
    EXPECT_TRUE(folder.Names().empty());
}

}  // namespace
