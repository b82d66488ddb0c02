// SPDX-License-Identifier: MIT
#include "platform/CodePages.h"

#include "platform/Fonts.h"

#include <gtest/gtest.h>

namespace
{

TEST(CodePages, AsciiFitsEveryCodePage)
{
    for (const UINT codePage : offeredCodePages)
    {
        const CodePageText text = Utf8ToCodePage("Ab~", codePage);
        EXPECT_TRUE(text.Fits());
        EXPECT_EQ(text.text, "Ab~");
    }
}

TEST(CodePages, EachAlphabetHasItsBytes)
{
    struct Row
    {
        UINT codePage;
        const char* utf8;
        const char* bytes;
    };
    // The bytes are those of the published code charts.
    const Row rows[] = {
        {1252, "Straße €",
         "Stra\xDF"
         "e \x80"},
        {1250, "Łódź",
         "\xA3\xF3"
         "d\x9F"},
        {1251, "Жар", "\xC6\xE0\xF0"},
        {1253, "Ελλ", "\xC5\xEB\xEB"},
        {1254, "İğ", "\xDD\xF0"},
        {1257, "Ķū", "\xCD\xFB"},
    };
    for (const Row& row : rows)
    {
        const CodePageText text = Utf8ToCodePage(row.utf8, row.codePage);
        EXPECT_TRUE(text.Fits()) << row.codePage;
        EXPECT_EQ(text.text, row.bytes) << row.codePage;
        EXPECT_EQ(CodePageToUtf8(row.bytes, row.codePage), row.utf8) << row.codePage;
        EXPECT_EQ(FindCodePage(row.utf8).codePage, row.codePage);
    }
}

TEST(CodePages, TheFirstCharacterThatDoesNotFitIsNamed)
{
    const CodePageText text = Utf8ToCodePage("aΩЖ", 1252);
    EXPECT_FALSE(text.Fits());
    EXPECT_EQ(text.text, "a");
    EXPECT_EQ(text.misfit, "Ω");
}

TEST(CodePages, BytesThatAreNotUtf8AreReportedAsTheReplacementCharacter)
{
    for (const char* broken : {"a\xFF", "a\xC3", "a\xC0\xAF", "a\xED\xA0\x80", "a\xF4\x90\x80\x80"})
    {
        EXPECT_EQ(Utf8ToCodePage(broken, 1252).misfit, "\uFFFD");
        EXPECT_EQ(FindCodePage(broken).codePage, 0u);
        EXPECT_EQ(FindCodePage(broken).misfit, "\uFFFD");
    }
}

TEST(CodePages, ATextThatNoCodePageHoldsNamesTheFirstCharacterThatRulesOutTheLastOne)
{
    // Sharp s is western, central European, Turkish and Baltic; the epsilon is Greek alone.
    const CodePageChoice choice = FindCodePage("Straße Ελλάδα");
    EXPECT_EQ(choice.codePage, 0u);
    EXPECT_EQ(choice.misfit, "Ε");
    EXPECT_EQ(FindCodePage("日本").misfit, "日");
    EXPECT_EQ(FindCodePage("").codePage, 1252u);
}

TEST(CodePages, UndefinedBytesGiveTheCharacterOfTheSameNumber)
{
    // 129, 141, 143, 144 and 157 are undefined in code page 1252.
    EXPECT_EQ(CodePageToUtf8("\x81\x8D\x8F\x90\x9D", 1252), "\u0081\u008D\u008F\u0090\u009D");
}

TEST(CodePages, CodePagesNotOnOfferHoldOnlyAscii)
{
    EXPECT_TRUE(Utf8ToCodePage("abc", 932).Fits());
    EXPECT_EQ(Utf8ToCodePage("é", 932).misfit, "é");
}

TEST(CodePages, OnlyOfferedCodePagesCanBeSetForTheProcess)
{
    EXPECT_EQ(GetACP(), 1252u);
    for (const UINT codePage : offeredCodePages)
    {
        EXPECT_TRUE(SetProcessCodePage(codePage));
        EXPECT_EQ(GetACP(), codePage);
    }
    EXPECT_TRUE(SetProcessCodePage(1252));
    EXPECT_FALSE(SetProcessCodePage(932));
    EXPECT_FALSE(SetProcessCodePage(0));
    EXPECT_EQ(GetACP(), 1252u);
}

}  // namespace
