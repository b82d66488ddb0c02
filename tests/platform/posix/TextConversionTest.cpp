// SPDX-License-Identifier: MIT
#include "platform/posix/TextConversion.h"

#include <gtest/gtest.h>

#include <string>

using namespace posix;

namespace
{

/// Bytes that may be zero, from a text.
template <std::size_t size>
std::string Bytes(const char (&text)[size])
{
    return std::string(text, size - 1);
}

TEST(TextConversion, Utf16WithoutSurrogatesIsConvertedUnitByUnit)
{
    EXPECT_EQ(Utf8FromUtf16(""), "");
    EXPECT_EQ(Utf8FromUtf16(Bytes("\0A\x04\x16\x20\xAC")), "A\u0416\u20AC");
}

TEST(TextConversion, APairOfSurrogatesIsOneCharacter)
{
    EXPECT_EQ(Utf8FromUtf16(Bytes("\0A\xD8\x3D\xDE\x00\0B")), "A\U0001F600B");
}

TEST(TextConversion, ASurrogateWithoutItsPartnerIsReplacedAndTheRestIsRead)
{
    EXPECT_EQ(Utf8FromUtf16(Bytes("\xD8\x3D\0A\x04\x16")), "\uFFFDA\u0416");
    EXPECT_EQ(Utf8FromUtf16(Bytes("\xDE\x00\0A")), "\uFFFDA");
    EXPECT_EQ(Utf8FromUtf16(Bytes("\0A\xD8\x3D")), "A\uFFFD");
}

TEST(TextConversion, HalfAUnitAtTheEndIsReplaced)
{
    EXPECT_EQ(Utf8FromUtf16(Bytes("\0A\0")), "A\uFFFD");
}

TEST(TextConversion, ACharacterThatTheCodePageLacksIsAQuestionMark)
{
    bool isComplete = true;
    EXPECT_EQ(ToCodePage("A\u00E9\u0416", 1252, &isComplete), "A\xE9?");
    EXPECT_FALSE(isComplete);
    EXPECT_EQ(ToCodePage("\u00E9", 1252, &isComplete), "\xE9");
    EXPECT_TRUE(isComplete);
}

TEST(TextConversion, OtherCodePagesHoldAsciiOnly)
{
    EXPECT_FALSE(IsOfferedCodePage(932));
    EXPECT_EQ(CodeOf(U'A', 932), 'A');
    EXPECT_EQ(CodeOf(U'\u00E9', 932), std::nullopt);
    EXPECT_EQ(CharacterOf(0xE9, 932), U'\u00E9');
    EXPECT_EQ(ToCodePage("A\u00E9", 932), "A?");
}

}  // namespace
