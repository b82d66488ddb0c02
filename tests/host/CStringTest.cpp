// SPDX-License-Identifier: MIT
#include "host/CString.h"

#include "host/Resources.h"
#include "platform/MultibyteCompare.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

TEST(CString, NullTextIsEmpty)
{
    CString text(static_cast<LPCSTR>(nullptr));
    EXPECT_TRUE(text.IsEmpty());
    text = "a";
    text = static_cast<LPCSTR>(nullptr);
    EXPECT_STREQ(text, "");
    EXPECT_TRUE(CString(static_cast<LPCSTR>(nullptr), 5).IsEmpty());
    EXPECT_EQ(text.Find(static_cast<LPCSTR>(nullptr)), 0);
    EXPECT_EQ(text.Compare(nullptr), 0);
    text += static_cast<LPCSTR>(nullptr);
    EXPECT_EQ(text + static_cast<LPCSTR>(nullptr), "");
}

TEST(CString, KeepsZeroCharactersWhenBuiltWithALength)
{
    const CString text("a\0b", 3);
    EXPECT_EQ(text.GetLength(), 3);
    EXPECT_EQ(text[2], 'b');
    EXPECT_TRUE(text == CString("a\0b", 3));
    EXPECT_FALSE(text == CString("a"));
}

TEST(CString, CharactersOutsideReadAsZeroAndAreNotSet)
{
    CString text("abc");
    text.SetAt(1, 'x');
    text.SetAt(3, 'y');
    text.SetAt(-1, 'z');
    EXPECT_STREQ(text, "axc");
    EXPECT_EQ(text.GetAt(3), '\0');
    EXPECT_EQ(text[-1], '\0');
}

TEST(CString, ComparesBytesAsUnsigned)
{
    EXPECT_GT(CString("\xE9").Compare("z"), 0);
    EXPECT_LT(CString("a").Compare("b"), 0);
    EXPECT_TRUE(CString("a") < CString("\x80"));
    EXPECT_TRUE(CString("b") > "a" && CString("a") <= "a" && CString("a") >= CString("a"));
    EXPECT_TRUE("a" == CString("a") && CString("a") != "A" && CString("a") != CString("b"));
}

TEST(CString, CaseIsFoldedForAToZAlone)
{
    EXPECT_EQ(CString("Zebra").CompareNoCase("zEBRA"), 0);
    EXPECT_LT(CString("ab").CompareNoCase("ABC"), 0);
    EXPECT_NE(CString("\xC9").CompareNoCase("\xE9"), 0);
    CString text("a\xE9Z[");
    text.MakeUpper();
    EXPECT_STREQ(text, "A\xE9Z[");
    text.MakeLower();
    EXPECT_STREQ(text, "a\xE9z[");
}

TEST(CString, FindsFromAPlaceOn)
{
    const CString text("banana");
    EXPECT_EQ(text.Find("an"), 1);
    EXPECT_EQ(text.Find("an", 2), 3);
    EXPECT_EQ(text.Find('a', 4), 5);
    EXPECT_EQ(text.Find('x'), -1);
    EXPECT_EQ(text.Find("a", 99), -1);
    EXPECT_EQ(text.Find('b', -3), 0);
    EXPECT_EQ(text.ReverseFind('n'), 4);
    EXPECT_EQ(text.ReverseFind('x'), -1);
}

TEST(CString, PartsBeyondTheTextGiveWhatThereIs)
{
    const CString text("abcde");
    EXPECT_EQ(text.Left(2), "ab");
    EXPECT_EQ(text.Left(9), "abcde");
    EXPECT_EQ(text.Left(-1), "");
    EXPECT_EQ(text.Mid(3), "de");
    EXPECT_EQ(text.Mid(9), "");
    EXPECT_EQ(text.Mid(-2, 3), "abc");
    EXPECT_EQ(text.Mid(1, 2), "bc");
    EXPECT_EQ(text.Mid(1, 99), "bcde");
    EXPECT_EQ(text.Mid(1, -1), "");
    EXPECT_EQ(text.Right(2), "de");
    EXPECT_EQ(text.Right(9), "abcde");
    EXPECT_EQ(text.Right(-1), "");
}

TEST(CString, TrimsWhiteSpaceAtEitherEnd)
{
    CString text(" \t a b\r\n");
    text.TrimRight();
    EXPECT_STREQ(text, " \t a b");
    text.TrimLeft();
    EXPECT_STREQ(text, "a b");
    CString blank("  ");
    blank.TrimLeft();
    EXPECT_TRUE(blank.IsEmpty());
    blank = "  ";
    blank.TrimRight();
    EXPECT_TRUE(blank.IsEmpty());
}

TEST(CString, FormatsLikePrintf)
{
    CString text;
    text.Format("%s\\%s%u", "Colors", "Number ", 7u);
    EXPECT_STREQ(text, "Colors\\Number 7");
    text.Format("%s", std::string(5000, 'x').c_str());
    EXPECT_EQ(text.GetLength(), 5000);
}

TEST(CString, FormatsItsOwnText)
{
    CString text("ab");
    text.Format("%s-%s", static_cast<LPCSTR>(text), static_cast<LPCSTR>(text));
    EXPECT_STREQ(text, "ab-ab");
}

TEST(CString, JoinsAndAppends)
{
    CString text = CString("a") + "b" + 'c' + CString("d");
    text = "<" + text;
    text += '>';
    text += text;
    EXPECT_STREQ(text, "<abcd><abcd>");
    text = 'x';
    EXPECT_STREQ(text, "x");
    text.Empty();
    EXPECT_EQ(text.GetLength(), 0);
}

TEST(CString, TakesTextWrittenIntoItsBuffer)
{
    CString text("abc");
    std::strcpy(text.GetBuffer(10), "hello");
    text.ReleaseBuffer();
    EXPECT_EQ(text.GetLength(), 5);
    std::memcpy(text.GetBuffer(4), "12345", 5);
    text.ReleaseBuffer(3);
    EXPECT_STREQ(text, "123");
}

TEST(CString, LoadsTheLibrarysTexts)
{
    const struct
    {
        UINT number;
        const char* text;
    } rows[] = {
        {300, "Material Colors"},
        {301, "Material Color Number "},
        {302, "Material Color Count"},
        {303, "Current Material Color"},
        {311, "Ambient Red"},
        {312, "Ambient Green"},
        {313, "Ambient Blue"},
        {314, "Diffuse Red"},
        {315, "Diffuse Green"},
        {316, "Diffuse Blue"},
        {317, "Specular Red"},
        {318, "Specular Green"},
        {319, "Specular Blue"},
        {320, "Transparency"},
        {321, "Shininess"},
        {20000, "Invalid file."},
        {21000, "Name"},
        {21001, "Filename"},
        {21100, "Unable to create %s.\nVerify that the disk and/or file are not read-only."},
        {21101,
         "Cannot create the specified file.  Verify that there\n"
         "is space on your disk for a file of %u bytes.\n"},
    };
    for (const auto& row : rows)
    {
        CString text;
        EXPECT_TRUE(text.LoadString(row.number));
        EXPECT_STREQ(text, row.text);
    }
}

TEST(CString, LoadingAnUnknownTextEmptiesIt)
{
    CString text("before");
    EXPECT_FALSE(text.LoadString(304));
    EXPECT_TRUE(text.IsEmpty());
}

TEST(Resources, HostAddsAndReplacesTexts)
{
    CString text;
    AfxSetResourceString(7, "seven");
    EXPECT_TRUE(text.LoadString(7));
    EXPECT_STREQ(text, "seven");
    AfxSetResourceString(7, "sept");
    EXPECT_TRUE(text.LoadString(7));
    EXPECT_STREQ(text, "sept");
}

TEST(MultibyteCompare, ComparesBytesAsUnsigned)
{
    EXPECT_GT(CompareMultibyte("\xE9", "z"), 0);
    EXPECT_LT(CompareMultibyte("Z", "a"), 0);
    EXPECT_EQ(CompareMultibyte("same", "same"), 0);
}
