// SPDX-License-Identifier: MIT
#include "shaping/LineBreaks.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using namespace orvane;

/// The text with '|' where a line may end, as far as it is ASCII; other characters become '?'.
std::string Marked(const std::u32string& text)
{
    const std::vector<bool> breaks = FindLineBreaks(text, "");
    std::string marked;
    for (std::size_t n = 0; n < text.size(); ++n)
    {
        marked += text[n] < 0x80 ? static_cast<char>(text[n]) : '?';
        marked += breaks[n] ? "|" : "";
    }
    return marked;
}

TEST(LineBreaks, LinesEndAfterSpacesAndHyphens)
{
    EXPECT_EQ(Marked(U"to be  or not-to (be)"), "to |be  |or |not-|to |(be)");
    EXPECT_EQ(Marked(U""), "");
    EXPECT_EQ(Marked(U"word"), "word");
}

TEST(LineBreaks, SpacesThatKeepLinesTogetherDo)
{
    EXPECT_EQ(Marked(U"10\u00A0km"), "10?km");
    EXPECT_EQ(Marked(U"a\u2060b"), "a?b");
    EXPECT_EQ(Marked(U"a\u200Bb"), "a?|b");
}

// Cases of the Unicode conformance file LineBreakTest.txt (version 15).
TEST(LineBreaks, HanLinesEndBetweenLettersButNotBeforeTheirFullStop)
{
    // 4E00 x 002E / 4E00 x 002E
    EXPECT_EQ(Marked(U"\u4E00.\u4E00."), "?.|?.");
    // 308B x 3002 / 3053
    EXPECT_EQ(Marked(U"\u308B\u3002\u3053"), "??|?");
    // 51FA / 5178 x 003A x 0020 / 30D5
    EXPECT_EQ(Marked(U"\u51FA\u5178: \u30D5"), "?|?: |?");
}

// libunibreak 1.1 would end the process.
TEST(LineBreaks, LinesEndBetweenFlagsAndNoncharactersDoNoHarm)
{
    EXPECT_EQ(Marked(U"\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7"), "??|??");
    EXPECT_EQ(FindLineBreaks(U"a\uFFFFb", "").size(), 3U);
}

}  // namespace
