// SPDX-License-Identifier: MIT
#include "apps/cli/PrintableText.h"

#include <gtest/gtest.h>

namespace
{

using orvane::Printable;

TEST(PrintableText, OrdinaryTextStaysAsItIs)
{
    for (const char* const text :
         {"", "DejaVu Sans", "Caf\u00e9 \u041f\u0440\u0438\u0432\u0435\u0442",
          "\u00a0 \u4f60\u597d \U0001F600", "a\"b\\c"})
    {
        EXPECT_EQ(Printable(text), text);
    }
}

TEST(PrintableText, ControlCharactersAreEscapedUpToU009F)
{
    EXPECT_EQ(Printable("a\nb\rc\td"), "a\\nb\\rc\\u0009d");
    EXPECT_EQ(Printable("\x1B[2J\x7F"), "\\u001b[2J\\u007f");
    EXPECT_EQ(Printable("\u0080\u009b31m\u009f"), "\\u0080\\u009b31m\\u009f");
    EXPECT_EQ(Printable(std::string_view("a\0b", 3)), "a\\u0000b");
}

TEST(PrintableText, SeparatorsOfLinesAndMarksOfDirectionAreEscaped)
{
    EXPECT_EQ(Printable("\u2028\u2029"), "\\u2028\\u2029");
    EXPECT_EQ(Printable("\u202egnp.exe\u202c"), "\\u202egnp.exe\\u202c");
    EXPECT_EQ(Printable("\u061c\u200e\u200f\u2066\u2069"), "\\u061c\\u200e\\u200f\\u2066\\u2069");
    EXPECT_EQ(Printable("\u2027\u202f\u2065"), "\u2027\u202f\u2065");  // their neighbours
}

TEST(PrintableText, BytesThatAreNotUtf8AreReplaced)
{
    // Each byte by itself: a lone C1 control, a cut character, and a newline in two bytes.
    EXPECT_EQ(Printable("\x9B"
                        "31m"),
              "\uFFFD"
              "31m");
    EXPECT_EQ(Printable("\xE2\x82"), "\uFFFD\uFFFD");
    EXPECT_EQ(Printable("\xC0\x8A"), "\uFFFD\uFFFD");
}

TEST(PrintableText, MarkedCharactersGetABackslash)
{
    EXPECT_EQ(Printable("a\"b\\c\n", "\"\\"), "a\\\"b\\\\c\\n");
}

}  // namespace
