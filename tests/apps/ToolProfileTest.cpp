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

TEST(ToolProfile, ALetterIsDrawnSavedAndDescribed)
{
    ToolFolder folder;
    const ToolResult drawn = folder.Run(
        {"render", "I", "--style", "profile", "--profile", "0,0 0.0625,-0.03125", "--profile-on",
         "front", "--fuse", "line", "--size", "64x64", "-o", "i.png", "--save", "i.orv"});
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
