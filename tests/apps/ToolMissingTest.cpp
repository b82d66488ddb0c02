// SPDX-License-Identifier: MIT
// What the tool says about parts that a scene names and that are not there.

#include "tests/support/BmpFile.h"
#include "tests/support/FontFile.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <thread>

namespace
{

constexpr const char* edgeTest = ORVANE_TEST_DATA "/EdgeTest.ttf";

int CountOf(const std::string& part, const std::string& text)
{
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
    {
        ++count;
    }
    return count;
}

std::string BmpOfOnePixel()
{
    BmpFile file;
    file.width = 1;
    file.height = 1;
    file.pixels = {0, 0, 0, 0};
    const Bytes bytes = file.File();
    return {bytes.begin(), bytes.end()};
}

using Arguments = std::vector<std::string>;

/// A scene with a text of the font Edge Test Regular, in a folder where other fonts are installed.
/// The parameter is what makes the text one of any language or a plain one.
class ToolMissing : public testing::TestWithParam<Arguments>
{
protected:
    explicit ToolMissing(const std::vector<std::string>& fonts = {})
    {
        ToolFolder author;
        author.UseFonts({edgeTest});
        const ToolResult saved =
            author.Run(WithText({"render", "AB", "--save", "s.orv", "--size", "60x40"}));
        EXPECT_EQ(saved.status, 0) << saved.err;
        folder.Write("s.orv", author.Read("s.orv"));
        folder.UseFonts(fonts);
    }

    static Arguments WithText(Arguments arguments)
    {
        arguments.insert(arguments.end(), GetParam().begin(), GetParam().end());
        return arguments;
    }

    ToolResult Render(const std::vector<std::string>& more = {})
    {
        std::vector<std::string> arguments = {"render", "--scene", "s.orv", "-o", "x.png"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return folder.Run(arguments);
    }

    ToolFolder folder;
};

TEST_P(ToolMissing, WithoutAnyFontTheTextsAreToldToBeLeftOut)
{
    const ToolResult result = Render();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err,
              "orvane: s.orv: the font \"Edge Test Regular\" is not installed, and no other font "
              "is; its texts are left out\n");
    EXPECT_TRUE(folder.Has("x.png"));
}

TEST_P(ToolMissing, StrictFailsWithoutAFontAndWritesNothing)
{
    const ToolResult result = Render({"--strict", "--save", "t.orv"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(CountOf("the font \"Edge Test Regular\" is not installed", result.err), 1);
    EXPECT_EQ(CountOf("orvane: s.orv: --strict: ", result.err), 1);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"s.orv"});
}

TEST_P(ToolMissing, ASceneThatIsSavedWithoutItsFontStillNamesIt)
{
    ASSERT_EQ(Render({"--save", "t.orv"}).status, 0);
    EXPECT_EQ(CountOf("Edge Test Regular", folder.Read("t.orv")),
              CountOf("Edge Test Regular", folder.Read("s.orv")));
    ToolFolder reader;
    reader.UseFonts({edgeTest});
    for (const char* const name : {"s.orv", "t.orv"})
    {
        reader.Write(name, folder.Read(name));
        const ToolResult result =
            reader.Run({"render", "--scene", name, "-o", std::string(name) + ".png"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
    }
    EXPECT_TRUE(reader.Read("s.orv.png") == reader.Read("t.orv.png"));
}

class ToolMissingFont : public ToolMissing
{
protected:
    ToolMissingFont() : ToolMissing({OtherFont()}) {}

    /// A font of another name.
    static std::string OtherFont()
    {
        static const ToolFolder fonts;
        FontFile::EdgeTest()
            .Names("Other", "Regular", "Other Regular", "Other-Regular")
            .Write(fonts.Path("other.ttf"));
        return fonts.Path("other.ttf");
    }
};

TEST_P(ToolMissingFont, TheFontThatIsUsedInsteadIsTold)
{
    const ToolResult result = Render();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(
        result.err,
        "orvane: s.orv: the font \"Edge Test Regular\" is not installed, \"Other Regular\" is "
        "used instead\n");
    EXPECT_EQ(Render({"--strict"}).status, 1);
    // The saved scene names the font that is missing.
    ASSERT_EQ(Render({"--save", "t.orv"}).status, 0);
    EXPECT_EQ(
        CountOf("Edge Test Regular", folder.Run({"render", "--scene", "t.orv", "-o", "y.png"}).err),
        1);
}

TEST_P(ToolMissingFont, InfoAndPickTellTheFontAndPickCanFail)
{
    const std::string told =
        "orvane: s.orv: the font \"Edge Test Regular\" is not installed, \"Other Regular\" is used "
        "instead\n";
    const ToolResult info = folder.Run({"info", "s.orv"});
    EXPECT_EQ(info.status, 0);
    EXPECT_EQ(info.err, told);
    EXPECT_NE(info.out, "");
    const std::vector<std::string> pick = {"pick", "s.orv", "30,20", "--size", "60x40"};
    const ToolResult picked = folder.Run(pick);
    EXPECT_EQ(picked.status, 0);
    EXPECT_EQ(picked.err, told);
    EXPECT_NE(picked.out, "");
    std::vector<std::string> strict = pick;
    strict.push_back("--strict");
    const ToolResult failed = folder.Run(strict);
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.err, told + "orvane: s.orv: --strict: parts of the scene are missing\n");
    EXPECT_EQ(failed.out, "");
}

/// Counts how often other programs have closed a file that they had opened.
class CloseCounter
{
public:
    explicit CloseCounter(const std::string& path) : watch_(inotify_init1(IN_CLOEXEC))
    {
        // Openings are watched too: without them, several closings in a row would be one event.
        inotify_add_watch(watch_, path.c_str(), IN_OPEN | IN_CLOSE);
    }
    ~CloseCounter() { close(watch_); }
    CloseCounter(const CloseCounter&) = delete;
    CloseCounter& operator=(const CloseCounter&) = delete;

    /// Waits for a number of closings, but no longer than the given milliseconds for each event.
    /// Returns how many there were.
    int WaitFor(int count, int milliseconds)
    {
        int closings = 0;
        pollfd event = {watch_, POLLIN, 0};
        while (closings < count && poll(&event, 1, milliseconds) == 1)
        {
            // The event of a file itself has no name, so one event is read at a time.
            inotify_event change = {};
            if (read(watch_, &change, sizeof change) != sizeof change)
            {
                break;
            }
            closings += (change.mask & IN_CLOSE) != 0 ? 1 : 0;
        }
        return closings;
    }

private:
    int watch_;
};

TEST(ToolMissingPicture, ABackgroundThatIsCutOffWhileItIsDrawnIsToldOrIsAnError)
{
    ToolFolder folder;
    const std::string background = folder.Path("p.bmp");
    folder.Write("p.bmp", BmpOfOnePixel());
    ASSERT_EQ(folder.Run({"render", " ", "--background", "p.bmp", "--save", "s.orv"}).status, 0);
    // How often the file is read before the drawing. In the runs below it is cut off then, while
    // the many bands of a large picture are drawn.
    CloseCounter before(background);
    ASSERT_EQ(folder.Run({"render", "--scene", "s.orv", "--save", "t.orv"}).status, 0);
    const int readings = before.WaitFor(1000, 0);
    ASSERT_GT(readings, 0);
    for (const bool isStrict : {false, true})
    {
        folder.Write("p.bmp", BmpOfOnePixel());
        std::filesystem::remove(folder.Path("x.png"));
        CloseCounter now(background);
        std::thread other([&] {
            EXPECT_EQ(now.WaitFor(readings, 30'000), readings);
            std::filesystem::resize_file(background, 10);
        });
        std::vector<std::string> command = {"render", "--scene", "s.orv",    "-o",
                                            "x.png",  "--size",  "4000x4000"};
        if (isStrict)
        {
            command.push_back("--strict");
        }
        const ToolResult result = folder.Run(command);
        other.join();
        EXPECT_EQ(CountOf("p.bmp", result.err), 1) << result.err;
        EXPECT_EQ(CountOf("could not be read completely", result.err), 1) << result.err;
        EXPECT_EQ(result.status, isStrict ? 1 : 0);
        EXPECT_EQ(folder.Has("x.png"), !isStrict);
    }
}

TEST(ToolMissingPicture, APictureThatIsGoneMakesStrictFail)
{
    ToolFolder scenes;
    scenes.Write("p.bmp", BmpOfOnePixel());
    const ToolResult saved =
        scenes.Run({"render", " ", "--background", "p.bmp", "--save", "s.orv"});
    ASSERT_EQ(saved.status, 0) << saved.err;
    EXPECT_EQ(scenes.Run({"render", "--scene", "s.orv", "-o", "x.png", "--strict"}).status, 0);
    std::filesystem::remove(scenes.Path("p.bmp"));
    std::filesystem::remove(scenes.Path("x.png"));
    const ToolResult strict = scenes.Run({"render", "--scene", "s.orv", "-o", "x.png", "--strict"});
    EXPECT_EQ(strict.status, 1);
    EXPECT_EQ(CountOf("p.bmp\" is left out", strict.err), 1) << strict.err;
    EXPECT_FALSE(scenes.Has("x.png"));
    EXPECT_EQ(scenes.Run({"render", "--scene", "s.orv", "-o", "x.png"}).status, 0);
}

class ToolMissingLetter : public ToolMissing
{};

TEST_P(ToolMissingLetter, ALetterThatCannotBeBuiltIsToldOnceOnOneLine)
{
    const ToolFolder fonts;
    // The outline of A, at byte 26 of its table, claims more contours than it has.
    FontFile::EdgeTest().PutWord("glyf", 26, 0x7FFF).Write(fonts.Path("broken.ttf"));
    folder.UseFonts({fonts.Path("broken.ttf")});
    const ToolResult result =
        folder.Run(WithText({"render", "ABA", "A", "-o", "x.png", "--size", "60x40"}));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(
        result.err,
        "orvane: the letter \"A\" is left out: the font \"Edge Test Regular\" has no readable "
        "outline of it\n");
    EXPECT_TRUE(folder.Has("x.png"));

    const ToolResult strict =
        folder.Run(WithText({"render", "ABA", "-o", "y.png", "--size", "60x40", "--strict"}));
    EXPECT_EQ(strict.status, 1);
    EXPECT_EQ(CountOf("the letter \"A\"", strict.err), 1);
    EXPECT_EQ(CountOf("--strict", strict.err), 1);
    EXPECT_FALSE(folder.Has("y.png"));

    // A scene tells it with its name, and so does a pick.
    ASSERT_EQ(folder.Run(WithText({"render", "AB", "--save", "s.orv"})).status, 0);
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"render", "--scene", "s.orv", "-o", "z.png", "--size", "60x40"},
          {"pick", "s.orv", "30,20", "--size", "60x40"}})
    {
        const ToolResult told = folder.Run(command);
        EXPECT_EQ(told.status, 0);
        EXPECT_EQ(told.err,
                  "orvane: s.orv: the letter \"A\" is left out: the font \"Edge Test Regular\" has "
                  "no readable outline of it\n");
    }
}

std::string NameOfText(const testing::TestParamInfo<Arguments>& info)
{
    return info.param.empty() ? "OfAnyLanguage" : "Plain";
}

const auto texts = testing::Values(Arguments(), Arguments{"--plain"});

INSTANTIATE_TEST_SUITE_P(Texts, ToolMissing, texts, NameOfText);
INSTANTIATE_TEST_SUITE_P(Texts, ToolMissingFont, texts, NameOfText);
INSTANTIATE_TEST_SUITE_P(Texts, ToolMissingLetter, texts, NameOfText);

}  // namespace
