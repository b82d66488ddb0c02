// SPDX-License-Identifier: MIT
// Nothing that comes from a file or from the command line changes the terminal or forges a line.

#include "document/SceneDocument.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "tests/support/FontFile.h"
#include "tests/support/Json.h"
#include "tests/support/PrivateFonts.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace
{

// A line break and a forged message, an escape sequence, and a C1 control in UTF-8.
const std::string evil = "a\norvane: forged\r\x1B[2J\u009b31mz";

std::vector<std::string> LinesOf(const std::string& text)
{
    std::istringstream in(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
    {
        lines.push_back(line);
    }
    return lines;
}

/// No character of the text changes a terminal: no control character but line feeds.
void ExpectHarmless(const std::string& text)
{
    EXPECT_TRUE(std::none_of(text.begin(), text.end(), [](unsigned char c) {
        return (c < 0x20 && c != '\n') || c == 0x7F;
    })) << text;
    for (std::size_t at = text.find('\xC2'); at != std::string::npos;
         at = text.find('\xC2', at + 1))
    {
        EXPECT_GE(static_cast<unsigned char>(text.at(at + 1)), 0xA0) << text;
    }
    for (const std::string& line : LinesOf(text))
    {
        EXPECT_NE(line.rfind("orvane: forged", 0), 0u) << text;
    }
}

/// A message about usage, or one line for each message.
void ExpectMessages(const ToolResult& result, int status, std::size_t lines)
{
    EXPECT_EQ(result.status, status) << result.err;
    ExpectHarmless(result.err);
    EXPECT_EQ(LinesOf(result.err).size(), lines) << result.err;
}

TEST(ToolTerminal, NamesOnTheCommandLineForgeNoMessage)
{
    ToolFolder folder;
    ExpectMessages(folder.Run({"info", evil + ".orv"}), 1, 1);
    ExpectMessages(folder.Run({"render", "x", "-o", "x.png", "--texture", evil}), 1, 1);
    ExpectMessages(folder.Run({"render", "x", "-o", "x.png", "--font", evil}), 1, 1);
    ExpectMessages(folder.Run({"render", "x", "-o", "x.png", "--style", evil}), 2, 2);
    ExpectMessages(folder.Run({evil}), 2, 2);
}

TEST(ToolTerminal, AFileOfAnotherKindForgesNoMessage)
{
    ToolFolder folder;
    // A record of a class whose name is the message.
    std::string record("\xFF\xFF\x01\x00", 4);
    record += static_cast<char>(evil.size());
    record.push_back('\0');
    folder.Write("s.orv", record + evil);
    ExpectMessages(folder.Run({"info", "s.orv"}), 1, 1);
}

TEST(ToolTerminal, NamesInASceneForgeNoLine)
{
    ToolFolder folder;
    orvane::SceneDocument document;
    TextureMap& background = *document.scene->GetTexture();
    background.SetFilename(evil.c_str());
    background.SetName(evil.c_str());
    document.view->SaveCurrentView(evil.c_str());
    folder.Write("s.orv", document.Bytes());

    const std::vector<std::string> render = {"render", "--scene", "s.orv", "-o",
                                             "x.png",  "--size",  "16x9"};
    ExpectMessages(folder.Run(render), 0, 1);
    std::vector<std::string> otherView = render;
    otherView.insert(otherView.end(), {"--view", "none"});
    const ToolResult noView = folder.Run(otherView);
    ExpectMessages(noView, 1, 2);
    EXPECT_NE(noView.err.find("saved views: \"a\\norvane: forged\\r\\u001b[2J"), std::string::npos)
        << noView.err;
    const ToolResult info = folder.Run({"info", "s.orv"});
    EXPECT_EQ(info.status, 0);
    ExpectHarmless(info.out);

    // JSON has every name exactly.
    const Json json = Json::parse(folder.Run({"info", "s.orv", "--json"}).out);
    EXPECT_EQ(json.at("background").at("picture").at("file").get<std::string>(), evil);
}

TEST(ToolTerminal, NamesOfFontsForgeNoLine)
{
    ToolFolder folder;
    const std::string name = "a\norvane: forged\r\x1B[2Jz";
    FontFile font = FontFile::EdgeTest();
    font.Names(name, "Regular", name, "Evil");
    font.Write(folder.Path("evil.ttf"));
    folder.UseFonts({folder.Path("evil.ttf")});

    const ToolResult list = folder.Run({"fonts"});
    EXPECT_EQ(list.out, "a\\norvane: forged\\r\\u001b[2Jz\n");
    const ToolResult check = folder.Run({"fonts", "--check", name});
    EXPECT_EQ(check.status, 0) << check.err;
    ExpectHarmless(check.out);
    EXPECT_EQ(LinesOf(check.out).size(), 1u);
    ExpectMessages(folder.Run({"fonts", "--check", "other"}), 1, 1);
    const Json json = Json::parse(folder.Run({"fonts", "--json"}).out);
    EXPECT_EQ(json.at(0).at("name").get<std::string>(), name);
}

}  // namespace
