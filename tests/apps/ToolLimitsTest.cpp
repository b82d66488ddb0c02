// SPDX-License-Identifier: MIT
// What strangers' files and command lines may cost: sizes, texts, names, time and memory.

#include "orvane/Options.h"
#include "platform/Limits.h"
#include "scene/OrvFontString.h"
#include "tests/support/DecodedPicture.h"
#include "tests/support/SavedScene.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

namespace
{

using Arguments = std::vector<std::string>;

void ExpectContains(const std::string& text, const std::string& part)
{
    EXPECT_NE(text.find(part), std::string::npos) << text << "\nlacks " << part;
}

/// The run must fail with these words in its message, and leave no file.
/// \param present how many files there were before
void ExpectRefusal(ToolFolder& folder, const Arguments& arguments, const Arguments& words,
                   std::size_t present = 0)
{
    const ToolResult result = folder.Run(arguments);
    EXPECT_EQ(result.status, 1);
    for (const std::string& word : words)
    {
        ExpectContains(result.err, word);
    }
    EXPECT_EQ(folder.Names().size(), present);
}

class ToolLimits : public SavedScene
{
protected:
    /// Saves a scene that was framed for a picture of that size.
    void SaveFramedFor(double width, double height)
    {
        AddText("A");
        view.SetUnscaledSize(width, height);
        view.SaveReferenceAspect();
        Save();
    }
};

TEST_F(ToolLimits, AStoredSizeAtTheLimitIsDrawn)
{
    SaveFramedFor(orvane::limits::maxPictureSide, 1);
    const ToolResult result = folder.Run({"render", "--scene", "s.orv", "-o", "x.png"});
    EXPECT_EQ(result.status, 0) << result.err;
}

TEST_F(ToolLimits, AStoredSizeBeyondTheLimitIsRefusedUnlessASizeIsGiven)
{
    SaveFramedFor(orvane::limits::maxPictureSide + 1, 1);
    ExpectRefusal(folder, {"render", "--scene", "s.orv", "-o", "x.png"},
                  {"s.orv", "100001 x 1 pixels", "at most 100000"}, 1);
    const ToolResult given =
        folder.Run({"render", "--scene", "s.orv", "-o", "x.png", "--size", "16x9"});
    EXPECT_EQ(given.status, 0) << given.err;
}

TEST_F(ToolLimits, AStoredSizeOfAMillionMillionPixelsIsRefused)
{
    SaveFramedFor(1e6, 1e6);
    ExpectRefusal(folder, {"render", "--scene", "s.orv", "-o", "x.png"},
                  {"s.orv", "1000000 x 1000000 pixels", "at most 100000"}, 1);
}

TEST_F(ToolLimits, TheNumberOfPixelsIsLimitedWhoeverAsksForThem)
{
    SaveFramedFor(100, 50);
    for (const Arguments& picture :
         {Arguments{"--scene", "s.orv"}, Arguments{"A", "--size", "100x50"}})
    {
        Arguments arguments = {"render", "-o", "x.png", "--max-pixels", "4999"};
        arguments.insert(arguments.end(), picture.begin(), picture.end());
        ExpectRefusal(folder, arguments, {"100 x 50 are 5000 pixels", "--max-pixels allows 4999"},
                      1);
        arguments[4] = "5000";
        EXPECT_EQ(folder.Run(arguments).status, 0);
        std::filesystem::remove(folder.Path("x.png"));
    }
}

TEST_F(ToolLimits, ADrawingEndsWhenItsSecondsAreOver)
{
    ExpectRefusal(folder,
                  {"render", "AAAA", "-o", "x.png", "--size", "30000x30000", "--save", "x.orv",
                   "--max-seconds", "0.5"},
                  {"x.png", "% is drawn after", "--max-seconds allows 0.5"});
}

TEST_F(ToolLimits, ACommandThatDoesNotStopByItselfIsEndedWhenItsSecondsAreOver)
{
    // Opening the pipe waits for a program that writes into it.
    const ToolResult result =
        folder.RunInShell("mkfifo p; exec \"$@\"",
                          {"render", "--text-file", "p", "-o", "x.png", "--max-seconds", "0.1"});
    EXPECT_EQ(result.status, 1);
    ExpectContains(result.err, "--max-seconds allows 0.1");
    EXPECT_EQ(folder.Names(), Arguments{"p"});
}

TEST_F(ToolLimits, TooMuchMemoryEndsTheCommand)
{
    ExpectRefusal(folder,
                  {"render", "A", "-o", "x.png", "--size", "5000x5000", "--max-memory", "20"},
                  {"MiB of memory are in use", "--max-memory allows 20"});
    const ToolResult enough = folder.Run({"render", "A", "-o", "x.png", "--max-memory", "4000",
                                          "--max-seconds", "1000", "--size", "16x9"});
    EXPECT_EQ(enough.status, 0) << enough.err;
}

TEST_F(ToolLimits, InfoAndPickAreLimitedToo)
{
    AddText("A");
    Save();
    for (const Arguments& command :
         {Arguments{"info", "s.orv"}, Arguments{"pick", "s.orv", "1,1", "--size", "9x9"}})
    {
        Arguments arguments = command;
        arguments.insert(arguments.end(), {"--max-memory", "1"});
        ExpectRefusal(folder, arguments, {"--max-memory allows 1"}, 1);
        arguments.insert(arguments.end(), {"--max-seconds", "1000"});
        *(arguments.end() - 3) = "4000";
        EXPECT_EQ(folder.Run(arguments).status, 0);
    }
}

TEST_F(ToolLimits, ATextAtTheLimitIsSavedAndOpened)
{
    folder.Write("t", std::string(orvane::limits::maxTextBytes, 'A'));
    const ToolResult saved = folder.Run({"render", "--text-file", "t", "--save", "s.orv"});
    EXPECT_EQ(saved.status, 0) << saved.err;
    const ToolResult opened = RunInfo();
    EXPECT_EQ(opened.status, 0) << opened.err;
}

TEST_F(ToolLimits, ATextBeyondTheLimitIsRefused)
{
    const std::string tooLong(orvane::limits::maxTextBytes + 1, 'A');
    folder.Write("t", tooLong);
    ExpectRefusal(folder, {"render", "--text-file", "t", "-o", "x.png"},
                  {"65537 bytes", "at most 65536 bytes"}, 1);
    ExpectRefusal(folder, {"render", "--text-file", "t", "-o", "x.png", "--plain"},
                  {"65537 bytes of text", "at most 65536 bytes"}, 1);
    // Two bytes of a plain text are for the line end between the texts.
    folder.Write("t", std::string(orvane::limits::maxTextBytes - 2, 'A'));
    ExpectRefusal(folder, {"render", "A", "--text-file", "t", "-o", "x.png", "--plain"},
                  {"65537 bytes of text", "at most 65536 bytes"}, 1);
    folder.Write("t", std::string(orvane::limits::maxTextBytes - 1, 'A'));
    ExpectRefusal(folder, {"render", "A", "--text-file", "t", "-o", "x.png"},
                  {"at most 65536 bytes"}, 1);
}

TEST_F(ToolLimits, AFileOfTextWithoutEndIsReadUpToTheLimit)
{
    const ToolResult result = folder.Run({"render", "--text-file", "/dev/zero", "-o", "x.png"});
    EXPECT_EQ(result.status, 1);
    ExpectContains(result.err, "/dev/zero: found more than 65536 bytes");
    EXPECT_TRUE(folder.Names().empty());
}

TEST_F(ToolLimits, ALongTextInASceneIsRefusedByItsNode)
{
    AddText("A");
    OrvFontString& child = AddText("A", scene.GetChildByIndex(0));
    child.SetTextString(CString(std::string(orvane::limits::maxTextBytes, 'A').c_str()));
    Save();
    EXPECT_EQ(RunInfo().status, 0);
    child.SetTextString(CString(std::string(orvane::limits::maxTextBytes + 1, 'A').c_str()));
    Save();
    ExpectRefusal(folder, {"info", "s.orv"},
                  {"s.orv: node 0.0", "a text of 65537 bytes", "at most 65536"}, 1);
}

TEST_F(ToolLimits, ALongNameIsRefusedWithoutASearch)
{
    AddText("A");
    Save();
    for (const char* const option : {"--font", "--view"})
    {
        const bool isFont = std::string(option) == "--font";
        Arguments arguments =
            isFont ? Arguments{"render", "A"} : Arguments{"render", "--scene", "s.orv"};
        arguments.insert(arguments.end(), {"-o", "x.png", option});
        arguments.emplace_back(orvane::limits::maxNameBytes, 'a');
        const ToolResult atLimit = folder.Run(arguments);
        EXPECT_EQ(atLimit.status, 1);  // there is no such font or view
        arguments.back() += 'a';
        const ToolResult beyond = folder.Run(arguments);
        EXPECT_EQ(beyond.status, 2);
        ExpectContains(beyond.err,
                       std::string(option) + ": a name of at most 1024 bytes, found 1025 bytes");
    }
}

// The scene, the texts and the letters of the last text are levels.
TEST_F(ToolLimits, NodesAtTheDeepestLevelAreDrawn)
{
    DrawingObject* parent = &scene;
    for (int level = 2; level < orvane::limits::maxDrawnLevels - 1; ++level)
    {
        parent = &AddText(" ", parent);
    }
    AddText("B", parent);
    Save();
    const ToolResult result = folder.Run(
        {"render", "--scene", "s.orv", "-o", "x.png", "--size", "16x9", "--turn", "0,0,0"});
    EXPECT_EQ(result.status, 0) << result.err;
    const DecodedPicture picture = DecodePng(folder.Read("x.png"));
    EXPECT_NE(std::count(picture.pixels.begin(), picture.pixels.end(), picture.pixels.front()),
              static_cast<std::ptrdiff_t>(picture.pixels.size()));
}

TEST_F(ToolLimits, DeeperNodesAreRefusedBeforeTheDrawing)
{
    DrawingObject* parent = &scene;
    for (int level = 2; level < orvane::limits::maxDrawnLevels; ++level)
    {
        parent = &AddText(" ", parent);
    }
    AddText("A", parent);
    Save();
    const std::string problem =
        "s.orv: found nodes that nest 31 levels deep, expected at most 30, as OpenGL draws them";
    ExpectRefusal(folder, {"render", "--scene", "s.orv", "-o", "x.png"}, {problem}, 1);
    ExpectRefusal(folder, {"pick", "s.orv", "1,1", "--size", "9x9"}, {problem}, 1);
    EXPECT_EQ(RunInfo().status, 0);
}

// A pipe that no program writes into could be opened only by waiting.
TEST_F(ToolLimits, APipeIsNoSceneAndNoMesh)
{
    for (const Arguments& arguments :
         {Arguments{"render", "--scene", "p", "-o", "x.png"},
          Arguments{"render", "--import", "p", "-o", "x.png"}, Arguments{"info", "p"},
          Arguments{"info", "--dump", "x", "p"}, Arguments{"pick", "p", "1,1", "--size", "9x9"}})
    {
        const ToolResult result =
            folder.RunInShell("test -p p || mkfifo p; exec \"$@\"", arguments);
        EXPECT_EQ(result.status, 1) << arguments[0];
        ExpectContains(result.err, "p: ");
        EXPECT_EQ(folder.Names(), Arguments{"p"});
    }
}

}  // namespace
