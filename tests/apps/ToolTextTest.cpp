// SPDX-License-Identifier: MIT
// From the command line's UTF-8 to lines of letters.

#include "tests/support/DecodedPicture.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

namespace
{

/// The picture of some texts; empty when the tool fails.
DecodedPicture PictureOf(const std::vector<std::string>& texts,
                         const std::vector<std::string>& options = {},
                         const std::string& size = "160x90")
{
    ToolFolder folder;
    std::vector<std::string> arguments = {"render", "-o", "x.bmp", "--size"};
    arguments.push_back(size);
    arguments.insert(arguments.end(), options.begin(), options.end());
    arguments.push_back("--");
    arguments.insert(arguments.end(), texts.begin(), texts.end());
    const ToolResult result = folder.Run(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    return result.status == 0 ? DecodeBmp(folder.Read("x.bmp")) : DecodedPicture();
}

DecodedPicture PictureOfFile(const std::string& content, const std::vector<std::string>& texts = {})
{
    ToolFolder folder;
    folder.Write("text", content);
    std::vector<std::string> arguments = {"render", "-o",     "x.bmp", "--text-file",
                                          "text",   "--size", "160x90"};
    arguments.insert(arguments.end(), texts.begin(), texts.end());
    const ToolResult result = folder.Run(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    return result.status == 0 ? DecodeBmp(folder.Read("x.bmp")) : DecodedPicture();
}

/// Runs a text that cannot be drawn with --plain; what the tool says.
std::string Complaint(const std::vector<std::string>& texts)
{
    ToolFolder folder;
    std::vector<std::string> arguments = {"render", "-o", "x.png", "--plain"};
    arguments.insert(arguments.end(), texts.begin(), texts.end());
    const ToolResult result = folder.Run(arguments);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(folder.Names().empty());
    return result.err;
}

TEST(ToolText, LettersOfTwoAlphabetsThatNoCodePageHoldsAreStatus1)
{
    EXPECT_EQ(
        Complaint({"Straße", "Ελλάδα"}),
        "orvane: text, line 2: no code page holds \"Ε\" (U+0395) together with the characters "
        "before it; a text must be western, central European, Baltic, Turkish, Cyrillic or "
        "Greek\n");
}

TEST(ToolText, EachOfTwoAlphabetsAloneIsDrawn)
{
    for (const char* const text : {"Straße", "Ελλάδα"})
    {
        const DecodedPicture picture = PictureOf({text}, {"--font", "DejaVu Sans"});
        EXPECT_GT(BoxOfContent(picture).Width(), 80) << text;
    }
}

TEST(ToolText, EveryCodePageOnOfferIsFound)
{
    for (const char* const text : {"Ærø €", "Łódź", "Ķekava", "İğdır", "Привет", "Ώρα"})
    {
        EXPECT_GT(BoxOfContent(PictureOf({text}, {"--plain"})).Width(), 50) << text;
    }
}

TEST(ToolText, TheSameCodeIsAnotherLetterInAnotherCodePage)
{
    // 0xC6 is both Ж in 1251 and Æ in 1252.
    EXPECT_FALSE(PictureOf({"Ж"}, {"--plain"}) == PictureOf({"Æ"}, {"--plain"}));
}

TEST(ToolText, TheFirstCharacterThatNoCodePageHoldsIsNamedWithItsLine)
{
    EXPECT_EQ(
        Complaint({"one", "two 日本"}),
        "orvane: text, line 2: no code page holds \"日\" (U+65E5); a text must be western, central "
        "European, Baltic, Turkish, Cyrillic or Greek\n");
    EXPECT_NE(Complaint({"smile 😀"}).find("\"😀\" (U+1F600)"), std::string::npos);
}

TEST(ToolText, BytesThatAreNotUtf8AreStatus1)
{
    EXPECT_EQ(Complaint({"fine", "caf\xE9"}),
              "orvane: text, line 2: found bytes that are not UTF-8, or the character U+FFFD\n");
}

TEST(ToolText, ACharacterThatTheFontLacksIsNamed)
{
    EXPECT_EQ(Complaint({"a", "b\x01"}),
              "orvane: text, line 2: the font \"DejaVu Sans Bold\" lacks U+0001\n");

    ToolFolder folder;
    folder.UseFonts({ORVANE_TEST_DATA "/EdgeTest.ttf"});
    const ToolResult result = folder.Run({"render", "ABé", "-o", "x.png", "--plain"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("\"é\" (U+00E9)"), std::string::npos) << result.err;
    EXPECT_TRUE(folder.Names().empty());
}

TEST(ToolText, EachArgumentIsALine)
{
    const DecodedPicture two = PictureOf({"AB", "C"});
    EXPECT_NE(two, PictureOf({"AB C"}));
    EXPECT_EQ(two, PictureOf({"AB\nC"}));
    EXPECT_EQ(two, PictureOf({"AB\r\nC"}));
    EXPECT_NE(two, PictureOf({"AB", "", "C"}));
}

TEST(ToolText, AFilesLinesComeAfterTheArguments)
{
    const DecodedPicture two = PictureOf({"AB", "C"});
    EXPECT_EQ(PictureOfFile("AB\nC"), two);
    EXPECT_EQ(PictureOfFile("AB\nC\n"), two);
    EXPECT_EQ(PictureOfFile("AB\r\nC\r\n"), two);
    EXPECT_EQ(PictureOfFile("AB\rC"), two);
    EXPECT_EQ(PictureOfFile("C\n", {"AB"}), two);
    EXPECT_EQ(PictureOfFile("\xEF\xBB\xBF"
                            "AB\nC"),
              two);  // with a byte order mark
    EXPECT_EQ(PictureOfFile("AB\n\nC"), PictureOf({"AB", "", "C"}));
}

TEST(ToolText, AFileThatCannotBeReadIsStatus1AndNamed)
{
    ToolFolder folder;
    const ToolResult missing = folder.Run({"render", "--text-file", "missing", "-o", "x.png"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "orvane: missing: No such file or directory\n");
    const ToolResult directory = folder.Run({"render", "--text-file", ".", "-o", "x.png"});
    EXPECT_EQ(directory.status, 1);
    EXPECT_EQ(directory.err, "orvane: .: Is a directory\n");
    EXPECT_TRUE(folder.Names().empty());
}

TEST(ToolText, AZeroByteInAFileIsACharacterThatFontsLack)
{
    ToolFolder folder;
    folder.Write("text", std::string("A\0B", 3));
    const ToolResult result =
        folder.Run({"render", "--text-file", "text", "-o", "x.png", "--plain"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("U+0000"), std::string::npos) << result.err;
}

TEST(ToolText, TextThatLooksLikeAnythingElseIsText)
{
    // From a file nothing is taken for a list, an option or a subcommand.
    for (const std::string text :
         {"[A,B]", "[]", "{}", "%%", "render", "fonts", "--size", "-o", "A,B", "++", "a=b"})
    {
        EXPECT_EQ(PictureOf({text}), PictureOfFile(text)) << text;
        EXPECT_EQ(PictureOf({"x", text}), PictureOfFile("x\n" + text)) << text;
    }
    ToolFolder folder;
    EXPECT_EQ(folder.Run({"render", "fonts", "showcase", "-o", "x.png"}).status, 0);
}

TEST(ToolText, ATabOfAPlainTextIsFourSpaces)
{
    EXPECT_EQ(PictureOf({"A\tB"}, {"--plain"}), PictureOf({"A    B"}, {"--plain"}));
}

TEST(ToolText, ATextWithNothingToSeeIsAPictureOfTheBackground)
{
    const DecodedPicture empty = PictureOf({""});
    EXPECT_EQ(empty.Count([](const Rgb& p) { return p == Rgb{0x14, 0x1A, 0x2B}; }), 160u * 90u);
    EXPECT_EQ(PictureOf({"   "}), empty);
    EXPECT_EQ(PictureOf({"", " ", ""}), empty);
    EXPECT_EQ(PictureOfFile(""), empty);
    EXPECT_EQ(PictureOfFile("\n"), empty);
}

TEST(ToolText, AVeryLongLineIsFramedWhole)
{
    EXPECT_EQ(PictureOf({std::string(20000, 'm')}).width, 160);  // a hair, but drawn
    const DecodedPicture picture =
        PictureOf({std::string(400, 'm')}, {"--turn", "0,0,0"}, "1600x90");
    const PixelBox box = BoxOfContent(picture);
    EXPECT_GT(box.left, 80);
    EXPECT_LT(box.right, 1520);
    EXPECT_GT(box.Width(), 1280);
}

TEST(ToolText, TwoHundredLinesAreFramedWhole)
{
    std::vector<std::string> lines(200, "W");
    const DecodedPicture picture = PictureOf(lines, {"--turn", "0,0,0"}, "90x1600");
    const PixelBox box = BoxOfContent(picture);
    EXPECT_GT(box.top, 80);
    EXPECT_LT(box.bottom, 1520);
    EXPECT_GT(box.Height(), 1280);
}

}  // namespace
