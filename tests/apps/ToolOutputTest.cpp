// SPDX-License-Identifier: MIT
// Where the tool's pictures and lists go, and what is left when that fails.

#include "tests/support/DecodedPicture.h"
#include "tests/support/ToolRun.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

namespace
{

// Small, so that drawing takes no time.
const std::vector<std::string> smallX = {"render", "x", "--size", "64x36"};

std::vector<std::string> SmallX(const std::string& output)
{
    std::vector<std::string> arguments = smallX;
    arguments.insert(arguments.end(), {"-o", output});
    return arguments;
}

bool Contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

TEST(ToolOutput, TheFormatFollowsTheName)
{
    ToolFolder folder;
    EXPECT_EQ(folder.Run(SmallX("a.png")).status, 0);
    EXPECT_EQ(folder.Run(SmallX("b.BMP")).status, 0);
    const DecodedPicture png = DecodePng(folder.Read("a.png"));
    const DecodedPicture bmp = DecodeBmp(folder.Read("b.BMP"));
    EXPECT_EQ(png.width, 64);
    EXPECT_EQ(png.height, 36);
    EXPECT_EQ(bmp.width, 64);
    EXPECT_EQ(bmp.height, 36);
    EXPECT_EQ(png, bmp);
}

TEST(ToolOutput, RowsOfABmpArePaddedToFourBytes)
{
    ToolFolder folder;
    EXPECT_EQ(folder.Run({"render", "x", "--size", "5x3", "-o", "x.bmp"}).status, 0);
    // The pixels begin at a multiple of four, too.
    EXPECT_EQ(folder.Read("x.bmp").size(), 56u + 3 * 16);
}

TEST(ToolOutput, AMinusIsAPngOnStandardOutputAndNothingElse)
{
    ToolFolder folder;
    const ToolResult toStream = folder.Run(SmallX("-"));
    EXPECT_EQ(toStream.status, 0);
    EXPECT_EQ(toStream.err, "");
    EXPECT_EQ(folder.Run(SmallX("x.png")).status, 0);
    EXPECT_TRUE(toStream.out == folder.Read("x.png"));
    EXPECT_EQ(DecodePng(toStream.out).width, 64);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"x.png"});
}

TEST(ToolOutput, SuccessSaysNothingWhenNobodyWatches)
{
    ToolFolder folder;
    const ToolResult result = folder.Run(SmallX("x.png"));
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
}

TEST(ToolOutput, ProgressAppearsOnATerminal)
{
    ToolFolder folder;
    // Nobody reads before the end: the terminal would not hold the names of thousands of fonts.
    folder.UseFonts({ORVANE_TEST_DATA "/EdgeTest.ttf"});
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_NE(terminal, -1);
    ASSERT_EQ(grantpt(terminal), 0);
    ASSERT_EQ(unlockpt(terminal), 0);
    const int otherEnd = open(ptsname(terminal), O_RDWR | O_NOCTTY);  // keeps what is written
    folder.SetStandardError(ptsname(terminal));
    EXPECT_EQ(folder.Run({"render", "A", "--size", "64x64", "-o", "x.png"}).status, 0);
    fcntl(terminal, F_SETFL, O_NONBLOCK);
    std::string seen;
    char block[4096];
    for (ssize_t count; (count = read(terminal, block, sizeof block)) > 0;)
    {
        seen.append(block, count);
    }
    close(otherEnd);
    close(terminal);
    EXPECT_TRUE(Contains(seen, "Drawing [##############################] 100 %")) << seen;
    // At the end the line is wiped.
    EXPECT_TRUE(seen.ends_with("\r\x1b[K")) << seen;
}

TEST(ToolOutput, AFolderThatIsNotThereIsStatus1AndNamed)
{
    ToolFolder folder;
    const ToolResult result = folder.Run(SmallX("/nonexistent/x.png"));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "orvane: /nonexistent/x.png: No such file or directory\n");
    EXPECT_FALSE(fs::exists("/nonexistent"));
    EXPECT_TRUE(folder.Names().empty());
}

TEST(ToolOutput, APathThatCannotBeWrittenIsFoundBeforeAnythingElse)
{
    ToolFolder folder;
    folder.UseFonts({});  // which would be the next complaint
    const ToolResult result = folder.Run(SmallX("missing/x.png"));
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(Contains(result.err, "missing/x.png")) << result.err;
}

TEST(ToolOutput, AFailureAfterTheCheckLeavesNothing)
{
    ToolFolder folder;
    folder.UseFonts({});
    EXPECT_EQ(folder.Run(SmallX("x.png")).status, 1);
    EXPECT_TRUE(folder.Names().empty());
}

TEST(ToolOutput, AFolderInTheFilesPlaceIsStatus1)
{
    ToolFolder folder;
    fs::create_directory(folder.Path("x.png"));
    const ToolResult result = folder.Run(SmallX("x.png"));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "orvane: x.png: Is a directory\n");
    EXPECT_TRUE(fs::is_directory(folder.Path("x.png")));
}

TEST(ToolOutput, AFullDiskIsStatus1AndLeavesNothing)
{
    // A limit of the size of files stands for the disk.
    ToolFolder folder;
    for (const char* const name : {"x.png", "x.bmp"})
    {
        const ToolResult result = folder.RunInShell(
            "ulimit -f 1; exec \"$@\"", {"render", "xyz", "--size", "800x450", "-o", name});
        EXPECT_EQ(result.status, 1);
        EXPECT_TRUE(result.err.starts_with(std::string("orvane: ") + name + ": ")) << result.err;
        EXPECT_TRUE(result.err.ends_with("File too large\n")) << result.err;
        EXPECT_TRUE(folder.Names().empty());
    }
}

TEST(ToolOutput, AFailedWriteKeepsTheOldFile)
{
    ToolFolder folder;
    folder.Write("x.png", "precious");
    const ToolResult result = folder.RunInShell(
        "ulimit -f 1; exec \"$@\"", {"render", "xyz", "--size", "800x450", "-o", "x.png"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(folder.Read("x.png"), "precious");
    EXPECT_EQ(folder.Names().size(), 1u);
}

TEST(ToolOutput, ASuccessReplacesTheOldFile)
{
    ToolFolder folder;
    folder.Write("x.png", "stale");
    EXPECT_EQ(folder.Run(SmallX("x.png")).status, 0);
    EXPECT_EQ(DecodePng(folder.Read("x.png")).width, 64);
    EXPECT_EQ(folder.Names().size(), 1u);
}

TEST(ToolOutput, PictureAndSceneAreBothWrittenOrNeither)
{
    ToolFolder folder;
    for (const char* const picture : {"x.png", "x.bmp"})
    {
        folder.Write(picture, "old picture");
        folder.Write("x.orv", "old scene");
        // The picture fits under the limit of 1024 bytes, and the scene does not.
        const ToolResult result =
            folder.RunInShell("ulimit -f 2; exec \"$@\"",
                              {"render", "x", "--size", "8x8", "-o", picture, "--save", "x.orv"});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err, "orvane: x.orv: File too large\n");
        EXPECT_EQ(folder.Read(picture), "old picture");
        EXPECT_EQ(folder.Read("x.orv"), "old scene");
    }
    EXPECT_EQ(folder.Run({"render", "x", "--size", "8x8", "-o", "x.png", "--save", "x.orv"}).status,
              0);
    EXPECT_EQ(DecodePng(folder.Read("x.png")).width, 8);
    EXPECT_GT(folder.Read("x.orv").size(), 1024U);
    EXPECT_EQ(folder.Names().size(), 3U);
}

TEST(ToolOutput, ASceneThatCannotBeWrittenIsNotPlacedWhenThePictureGoesToAStream)
{
    ToolFolder folder;
    folder.Write("x.orv", "old scene");
    const ToolResult result = folder.RunInShell(
        "exec \"$@\" > /dev/full", {"render", "x", "--size", "8x8", "-o", "-", "--save", "x.orv"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(folder.Read("x.orv"), "old scene");
    EXPECT_EQ(folder.Names().size(), 1U);
}

TEST(ToolOutput, ReplacedFilesKeepTheirPermissions)
{
    ToolFolder folder;
    for (const std::string name : {"x.png", "x.bmp", "x.orv"})
    {
        folder.Write(name, "old");
        fs::permissions(folder.Path(name), fs::perms(0600));
        EXPECT_EQ(
            folder.Run({"render", "x", "--size", "8x8", name == "x.orv" ? "--save" : "-o", name})
                .status,
            0);
        EXPECT_EQ(fs::status(folder.Path(name)).permissions(), fs::perms(0600)) << name;
        EXPECT_NE(folder.Read(name), "old");
    }
}

TEST(ToolOutput, AKilledRunLeavesNothingThatTheNextOneDoesNotRemove)
{
    ToolFolder folder;
    const ToolResult result = folder.InterruptWriting(
        {"render", "x", "--size", "6000x6000", "--samples", "1", "-o", "x.png"}, SIGKILL);
    EXPECT_EQ(result.status, 128 + SIGKILL);
    EXPECT_EQ(folder.Run(SmallX("y.png")).status, 0);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"y.png"});
}

TEST(ToolOutput, AReadOnlyFileIsNotReplaced)
{
    if (geteuid() == 0)
    {
        GTEST_SKIP() << "the superuser may write everything";
    }
    ToolFolder folder;
    folder.Write("x.png", "precious");
    fs::permissions(folder.Path("x.png"), fs::perms::owner_read);
    EXPECT_EQ(folder.Run(SmallX("x.png")).status, 1);
    EXPECT_EQ(folder.Read("x.png"), "precious");
}

TEST(ToolOutput, AFullDeviceIsStatus1AndStaysADevice)
{
    ToolFolder folder;
    fs::create_symlink("/dev/full", folder.Path("x.png"));
    const ToolResult result = folder.Run(SmallX("x.png"));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "orvane: x.png: No space left on device\n");
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
    EXPECT_TRUE(fs::is_symlink(folder.Path("x.png")));
}

TEST(ToolOutput, AFullStandardOutputIsStatus1ForEveryCommand)
{
    ToolFolder folder;
    for (const std::vector<std::string>& arguments :
         {SmallX("-"), {"fonts"}, {"fonts", "--json"}, {"--help"}, {"render", "--help"}})
    {
        const ToolResult result = folder.RunInShell("exec \"$@\" > /dev/full", arguments);
        EXPECT_EQ(result.status, 1) << arguments.front();
        EXPECT_EQ(result.err, "orvane: standard output: No space left on device\n");
    }
}

TEST(ToolOutput, AClosedStandardOutputIsStatus1)
{
    ToolFolder folder;
    for (const std::vector<std::string>& arguments : {SmallX("-"), {"fonts"}})
    {
        const ToolResult result = folder.RunInShell("exec \"$@\" >&-", arguments);
        EXPECT_EQ(result.status, 1) << arguments.front();
        EXPECT_TRUE(Contains(result.err, "standard output")) << result.err;
    }
}

TEST(ToolOutput, ClosedStandardStreamsDoNotReachThePicture)
{
    ToolFolder folder;
    EXPECT_EQ(folder.RunInShell("exec \"$@\" <&- >&- 2>&-", SmallX("x.png")).status, 0);
    EXPECT_EQ(DecodePng(folder.Read("x.png")).width, 64);
}

TEST(ToolOutput, APipeThatNobodyReadsIsStatus1)
{
    ToolFolder folder;
    const ToolResult result = folder.RunInShell("{ \"$@\"; echo $? > status; } | true",
                                                {"render", "x", "--size", "800x450", "-o", "-"});
    EXPECT_EQ(folder.Read("status"), "1\n");
    EXPECT_EQ(result.err, "orvane: standard output: Broken pipe\n");
}

class ToolInterruption : public testing::TestWithParam<int>
{};

TEST_P(ToolInterruption, WhileWritingLeavesNothing)
{
    ToolFolder folder;
    const ToolResult result = folder.InterruptWriting(
        {"render", "x", "--size", "6000x6000", "--samples", "1", "-o", "x.png"}, GetParam());
    EXPECT_EQ(result.status, 128 + GetParam());
    EXPECT_TRUE(folder.Names().empty());
}

INSTANTIATE_TEST_SUITE_P(All, ToolInterruption, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST(ToolOutput, PermissionsFollowTheUmask)
{
    ToolFolder folder;
    EXPECT_EQ(folder.RunInShell("umask 022; exec \"$@\"", SmallX("a.png")).status, 0);
    EXPECT_EQ(folder.RunInShell("umask 077; exec \"$@\"", SmallX("b.png")).status, 0);
    EXPECT_EQ(fs::status(folder.Path("a.png")).permissions(), fs::perms(0644));
    EXPECT_EQ(fs::status(folder.Path("b.png")).permissions(), fs::perms(0600));
}

TEST(ToolOutput, ASymbolicLinkStaysAndLeadsToThePicture)
{
    ToolFolder folder;
    fs::create_directory(folder.Path("real"));
    folder.Write("real/old.png", "stale");
    fs::create_symlink("real/old.png", folder.Path("old.png"));
    fs::create_symlink("real/new.png", folder.Path("new.png"));  // which is not there yet
    for (const std::string name : {"old.png", "new.png"})
    {
        EXPECT_EQ(folder.Run(SmallX(name)).status, 0);
        EXPECT_TRUE(fs::is_symlink(folder.Path(name)));
        EXPECT_TRUE(fs::is_regular_file(folder.Path("real/" + name)));
        EXPECT_EQ(DecodePng(folder.Read("real/" + name)).width, 64);
    }
}

TEST(ToolOutput, LinksThatLeadInACircleAreStatus1)
{
    ToolFolder folder;
    fs::create_symlink("b.png", folder.Path("a.png"));
    fs::create_symlink("a.png", folder.Path("b.png"));
    const ToolResult result = folder.Run(SmallX("a.png"));
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(Contains(result.err, "a.png")) << result.err;
    EXPECT_TRUE(fs::is_symlink(folder.Path("a.png")));
}

TEST(ToolOutput, TheLongestFileNameWorks)
{
    ToolFolder folder;
    const std::string name = std::string(251, 'n') + ".png";
    EXPECT_EQ(folder.Run(SmallX(name)).status, 0);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{name});
}

}  // namespace
