// SPDX-License-Identifier: MIT
// SVG files as solids on the command line.
#include "tests/support/Json.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using Arguments = std::vector<std::string>;

/// A red frame around a blue square, 2 units high and 2 wide.
constexpr const char* frame =
    "<svg viewBox='0 0 2 2'>"
    "<path fill='red' fill-rule='evenodd' d='M0 0H2V2H0zM.5.5V1.5H1.5V.5z'/>"
    "<rect fill='blue' x='.5' y='.5' width='1' height='1'/></svg>";
constexpr const char* withText =
    "<svg viewBox='0 0 2 2'><text>a</text><rect width='2' height='2'/></svg>";

class ToolOutlines : public testing::Test
{
protected:
    ToolOutlines() { folder.Write("logo.svg", frame); }

    ToolFolder folder;
};

TEST_F(ToolOutlines, AFileIsDrawnSavedDescribedAndDrawnAgain)
{
    const ToolResult drawn =
        folder.Run({"render", "--outline-file", "logo.svg", "--style", "profile", "--profile",
                    "0,0 -0.0625,-0.03125", "--profile-on", "front", "--align", "left", "--size",
                    "64x64", "-o", "a.png", "--save", "a.orv"});
    ASSERT_EQ(drawn.status, 0) << drawn.err;
    EXPECT_EQ(drawn.err, "");
    const ToolResult told = folder.Run({"info", "a.orv", "--json"});
    ASSERT_EQ(told.status, 0) << told.err;
    const Json node = Json::parse(told.out).at("scene").at("children").at(0);
    EXPECT_EQ(node.at("class"), "OrvOutlineShape");
    EXPECT_EQ(node.at("name"), "logo.svg");
    EXPECT_EQ(node.at("profile"), "0,0 -0.0625,-0.03125");
    EXPECT_EQ(node.at("profileOn"), "front");
    EXPECT_EQ(node.at("align"), "left");
    ASSERT_EQ(node.at("areas").size(), 2u);
    EXPECT_EQ(node.at("areas")[0].at("contours"), (Json{4, 4}));
    EXPECT_EQ(node.at("areas")[0].at("material").at("name"), "#ff0000");
    EXPECT_EQ(node.at("areas")[1].at("contours"), (Json::array({4})));

    const std::string text = folder.Run({"info", "a.orv"}).out;
    EXPECT_NE(text.find("OrvOutlineShape \"logo.svg\""), std::string::npos) << text;
    EXPECT_NE(text.find("2 contours of 8 corners"), std::string::npos) << text;
    EXPECT_NE(text.find("profile \"0,0 -0.0625,-0.03125\" on front"), std::string::npos) << text;

    folder.Write("logo.svg", "");  // the scene does not need it
    const ToolResult again = folder.Run({"render", "--scene", "a.orv", "-o", "again.png"});
    ASSERT_EQ(again.status, 0) << again.err;
    EXPECT_TRUE(folder.Read("again.png") == folder.Read("a.png"));

    const ToolResult picked = folder.Run({"pick", "a.orv", "32,32", "--size", "64x64", "--json"});
    ASSERT_EQ(picked.status, 0) << picked.err;
    const Json hit = Json::parse(picked.out);
    EXPECT_EQ(hit.at("kind"), "area");
    EXPECT_EQ(hit.at("index"), 1);
    EXPECT_EQ(hit.at("color"), "#0000ff");
    EXPECT_EQ(hit.at("part"), "face");
    EXPECT_EQ(folder.Run({"pick", "a.orv", "32,32", "--size", "64x64"}).out,
              "0 OrvOutlineShape \"logo.svg\", area 1 \"#0000ff\", face\n");
}

TEST_F(ToolOutlines, AFileIsExportedAsSolidsOfKnownSize)
{
    const ToolResult result =
        folder.Run({"export", "--outline-file", "logo.svg", "--outline-width", "4", "--style",
                    "square", "--depth", "0.5", "--unit", "mm", "-o", "a.3mf", "--json"});
    ASSERT_EQ(result.status, 0) << result.err;
    const Json json = Json::parse(result.out);
    EXPECT_EQ(json.at("closed"), true);
    // The frame and the square together are 4 by 4 by 0.5.
    EXPECT_NEAR(json.at("volume").get<double>(), 8, 1e-4);
    EXPECT_EQ(json.at("parts").at(0).at("name"), "logo");
}

TEST_F(ToolOutlines, BevelsLieInsideOfTheOutline)
{
    const auto volume = [this](const Arguments& look) {
        Arguments arguments = {"export", "--outline-file", "square.svg", "--depth", "0.5",
                               "-o",     "a.stl",          "--json"};
        arguments.insert(arguments.end(), look.begin(), look.end());
        const ToolResult result = folder.Run(arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        const Json json = Json::parse(result.out);
        EXPECT_EQ(json.at("closed"), true);
        EXPECT_NEAR(json.at("bounds").at("maximum")[0].get<double>(), 0.5, 1e-5);
        return json.at("volume").get<double>();
    };
    folder.Write("square.svg", "<svg viewBox='0 0 1 1'><rect width='1' height='1'/></svg>");
    // Both bevels go from a face of 0.75 to a wall of 1.
    const double frustum = (1 - 0.75 * 0.75 * 0.75) / 6;
    EXPECT_NEAR(volume({"--bevel", "0.125"}), 2 * frustum + 0.25, 1e-4);
    EXPECT_NEAR(volume({"--bevel", "0.125", "--bevel-on", "back"}), frustum + 0.375, 1e-4);
    EXPECT_NEAR(volume({"--bevel", "0.125", "--style", "profile"}), 2 * frustum + 0.25, 1e-4);
    EXPECT_NEAR(volume({"--style", "square"}), 0.5, 1e-5);
    EXPECT_NEAR(volume({"--bevel", "0"}), 0.5, 1e-5);
    const double round = volume({"--bevel", "0.125", "--style", "round"});
    EXPECT_GT(round, 2 * frustum + 0.25);
    EXPECT_LT(round, 0.5);
}

TEST_F(ToolOutlines, TextsMeshesAndSeveralFilesStandSideBySide)
{
    const ToolResult result = folder.Run(
        {"export", "I", "--outline-file", "logo.svg", "--outline-height", "2", "--outline-file",
         "logo.svg", "--outline-at", "-5,0,0", "--texture-repeat", "2", "-o", "a.ply", "--json"});
    ASSERT_EQ(result.status, 0) << result.err;
    const Json parts = Json::parse(result.out).at("parts");
    ASSERT_EQ(parts.size(), 3u);
    const auto low = [&](std::size_t part) {
        return parts[part].at("bounds").at("minimum")[0].get<double>();
    };
    const auto high = [&](std::size_t part) {
        return parts[part].at("bounds").at("maximum")[0].get<double>();
    };
    // The text's own bounds are wider than its mesh by the sides of the letter I.
    EXPECT_GT(low(1), high(0) + 0.5);
    EXPECT_NEAR(high(1) - low(1), 2, 1e-5);
    EXPECT_NEAR(low(2), -5.5, 1e-5);
}

TEST_F(ToolOutlines, FaceColorIsTheCurrentColour)
{
    folder.Write("icon.svg",
                 "<svg viewBox='0 0 1 1'><rect fill='currentColor' width='1' "
                 "height='1'/></svg>");
    const ToolResult result = folder.Run(
        {"render", "--outline-file", "icon.svg", "--face-color", "#123456", "--save", "a.orv"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_NE(folder.Run({"info", "a.orv"}).out.find("#123456"), std::string::npos);
}

TEST_F(ToolOutlines, ColoursOfSidesAndBevelsNeedAText)
{
    for (const char* const option : {"--edge-color", "--bevel-color"})
    {
        const Arguments arguments = {"render", "--outline-file", "logo.svg", option,
                                     "red",    "--save",         "a.orv"};
        const ToolResult result = folder.Run(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_NE(result.err.find(std::string(option) + ": a text is required"), std::string::npos)
            << result.err;
        Arguments withText = arguments;
        withText.emplace_back("I");
        EXPECT_EQ(folder.Run(withText).status, 0);
    }
}

TEST_F(ToolOutlines, WhatIsNotSupportedIsToldAndFailsWithStrict)
{
    folder.Write("text.svg", withText);
    for (const char* const command : {"render", "export"})
    {
        const std::string output = command == std::string("render") ? "a.png" : "a.stl";
        Arguments arguments = {command, "--outline-file", "text.svg", "-o", output};
        const ToolResult drawn = folder.Run(arguments);
        EXPECT_EQ(drawn.status, 0);
        EXPECT_EQ(drawn.err, "orvane: text.svg: line 1: <text>: is not supported and left out\n");
        EXPECT_TRUE(folder.Has(output));
        arguments.back() = "strict-" + output;
        arguments.emplace_back("--strict");
        const ToolResult strict = folder.Run(arguments);
        EXPECT_EQ(strict.status, 1);
        EXPECT_NE(strict.err.find("text.svg: --strict: parts of the file are not supported"),
                  std::string::npos)
            << strict.err;
        EXPECT_FALSE(folder.Has("strict-" + output));
    }
}

TEST_F(ToolOutlines, WrongFilesAreStatus1)
{
    folder.Write("empty.svg", "<svg viewBox='0 0 1 1'><text>a</text></svg>");
    folder.Write("broken.svg", "<svg viewBox='0 0 1 1'><path d='M0 0 L x'/></svg>");
    for (const auto& [file, named] :
         {std::pair("missing.svg", "missing.svg"),
          std::pair("empty.svg", "the file draws nothing that is supported; <text> is not"),
          std::pair("broken.svg", "broken.svg: line 1")})
    {
        const ToolResult result = folder.Run({"render", "--outline-file", file, "-o", "a.png"});
        EXPECT_EQ(result.status, 1);
        EXPECT_NE(result.err.find(named), std::string::npos) << result.err;
    }
    EXPECT_FALSE(folder.Has("a.png"));
}

TEST_F(ToolOutlines, MisuseIsStatus2)
{
    for (const auto& [arguments, named] : {
             std::pair(Arguments{"--outline-height", "1"}, "there is no --outline-file before it"),
             std::pair(Arguments{"--outline-file", "logo.svg", "--outline-height", "1",
                                 "--outline-width", "1"},
                       "--outline-height: cannot be combined with --outline-width"),
             std::pair(Arguments{"--outline-file", "logo.svg", "--outline-height", "0"},
                       "--outline-height"),
             std::pair(Arguments{"--outline-file", "logo.svg", "--outline-at", "1,2"},
                       "--outline-at"),
             std::pair(Arguments{"--outline-file", "logo.svg", "--depth", "0"}, "--depth"),
             std::pair(Arguments{"--outline-file", "logo.svg", "--scene", "a.orv"}, "--scene"),
             std::pair(Arguments{"--outline-file", "logo.svg", "--profile", "cove"},
                       "--profile: --style profile is required"),
         })
    {
        Arguments command = {"render", "-o", "a.png"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        const ToolResult result = folder.Run(command);
        EXPECT_EQ(result.status, 2) << named;
        EXPECT_NE(result.err.find(named), std::string::npos) << result.err;
    }
    EXPECT_FALSE(folder.Has("a.png"));
}

}  // namespace
