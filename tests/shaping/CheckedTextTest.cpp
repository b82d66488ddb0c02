// SPDX-License-Identifier: MIT
#include "shaping/CheckedText.h"

#include "orvane/Error.h"
#include "platform/Limits.h"

#include <gtest/gtest.h>

namespace
{

using namespace orvane;

std::string ProblemOf(const std::string& text)
{
    try
    {
        ReadUtf8(text);
    }
    catch (const Error& error)
    {
        return error.what();
    }
    return {};
}

/// A letter with a number of combining acute accents (CC 81).
std::string WithMarks(std::size_t count)
{
    std::string text = "a";
    for (std::size_t n = 0; n < count; ++n)
    {
        text += "\xCC\x81";
    }
    return text;
}

TEST(CheckedText, CharactersHaveTheOffsetsOfTheirBytes)
{
    const CheckedText text = ReadUtf8("a\xC3\xA9\xE6\x97\xA5\xF0\x9F\x98\x80");

    EXPECT_EQ(text.characters, U"a\u00E9\u65E5\U0001F600");
    EXPECT_EQ(text.offsets, (std::vector<std::uint32_t>{0, 1, 3, 6, 10}));
    EXPECT_EQ(ReadUtf8("").offsets, std::vector<std::uint32_t>{0});
}

TEST(CheckedText, AnErrorHasTheOffsetAndTheBytes)
{
    EXPECT_EQ(ProblemOf("abc\xFFz"), "text, byte 3: found FF, expected UTF-8");
    EXPECT_EQ(ProblemOf("\xE6\x97"), "text, byte 0: found E6 97, expected UTF-8");
    EXPECT_EQ(ProblemOf("x\xC0\x80"), "text, byte 1: found C0 80, expected UTF-8");
    // A surrogate, which only UTF-16 has, and a number beyond the last character.
    EXPECT_EQ(ProblemOf("\xED\xA0\x80"), "text, byte 0: found ED A0 80, expected UTF-8");
    EXPECT_EQ(ProblemOf("\xF4\x90\x80\x80"), "text, byte 0: found F4 90 80 80, expected UTF-8");
}

TEST(CheckedText, ATextHasAtMost65536Bytes)
{
    EXPECT_EQ(ReadUtf8(std::string(limits::maxTextBytes, 'x')).characters.size(), 65'536U);
    EXPECT_EQ(ProblemOf(std::string(limits::maxTextBytes + 1, 'x')),
              "text: found 65537 bytes, expected at most 65536 bytes");
    EXPECT_EQ(ProblemOf(WithMarks(5 << 20)),
              "text: found 10485761 bytes, expected at most 65536 bytes");
}

TEST(CheckedText, ALetterHasAtMost100Marks)
{
    EXPECT_EQ(ReadUtf8(WithMarks(limits::maxClusterMarks)).characters.size(), 101U);
    EXPECT_EQ(ProblemOf(WithMarks(limits::maxClusterMarks + 1)),
              "text, byte 201: found 101 combining marks in a row, expected at most 100");
}

TEST(CheckedText, MarksJoinersAndSyllablesBelongTogether)
{
    EXPECT_EQ(ClusterEnd(U"ab", 0), 1U);
    EXPECT_EQ(ClusterEnd(U"a\u0301\u0323b", 0), 3U);
    // Devanagari: the vowel sign belongs to its letter.
    EXPECT_EQ(ClusterEnd(U"\u0928\u093F\u0928", 0), 2U);
    // Two flags of two letters each.
    EXPECT_EQ(ClusterEnd(U"\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7", 0), 2U);
    // A picture of three persons, joined.
    EXPECT_EQ(ClusterEnd(U"\U0001F468\u200D\U0001F469\u200D\U0001F466!", 0), 5U);
    // Hangul: leading, vowel and trailing parts.
    EXPECT_EQ(ClusterEnd(U"\u1100\u1161\u11A8\u1100", 0), 3U);
    // A joiner does not take in the next letter.
    EXPECT_EQ(ClusterEnd(U"\u0628\u200D\u0628", 0), 2U);
}

TEST(CheckedText, SpacesHangButThoseThatKeepLinesTogetherDoNot)
{
    for (const char32_t c : {U' ', U'\t', U'\u2003', U'\u3000'})
    {
        EXPECT_TRUE(HangsAtLineEnd(c)) << CodePointName(c);
    }
    for (const char32_t c : {U'a', U'\u00A0', U'\u2007', U'\u202F'})
    {
        EXPECT_FALSE(HangsAtLineEnd(c)) << CodePointName(c);
    }
}

}  // namespace
