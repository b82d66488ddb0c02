// SPDX-License-Identifier: MIT
#include "shaping/Scripts.h"

#include <gtest/gtest.h>

namespace
{

using namespace orvane;

constexpr ScriptTag latin = MakeScriptTag("Latn");
constexpr ScriptTag hebrew = MakeScriptTag("Hebr");
constexpr ScriptTag han = MakeScriptTag("Hani");
constexpr ScriptTag hiragana = MakeScriptTag("Hira");
constexpr ScriptTag hangul = MakeScriptTag("Hang");

using Scripts = std::vector<ScriptTag>;

TEST(Scripts, SpacesAndDigitsFollowTheLetterBeforeThem)
{
    EXPECT_EQ(ResolveScripts(U"a 1\u05D0 2"),
              (Scripts{latin, latin, latin, hebrew, hebrew, hebrew}));
}

TEST(Scripts, TheStartFollowsTheFirstLetter)
{
    EXPECT_EQ(ResolveScripts(U"1 (\u05D0"), (Scripts{hebrew, hebrew, hebrew, hebrew}));
    EXPECT_EQ(ResolveScripts(U"1 2"), (Scripts{commonScript, commonScript, commonScript}));
    EXPECT_TRUE(ResolveScripts(U"").empty());
}

TEST(Scripts, MarksHaveTheScriptOfTheirLetter)
{
    EXPECT_EQ(ResolveScripts(U"\u05D0\u0301"), (Scripts{hebrew, hebrew}));
}

TEST(Scripts, AClosingBracketHasTheScriptOfItsOpeningOne)
{
    EXPECT_EQ(ResolveScripts(U"a(\u05D0)"), (Scripts{latin, latin, hebrew, latin}));
    // Only brackets of the same kind are a pair.
    EXPECT_EQ(ResolveScripts(U"a(\u05D0]"), (Scripts{latin, latin, hebrew, hebrew}));
    EXPECT_EQ(ResolveScripts(U"a[(\u05D0])"), (Scripts{latin, latin, latin, hebrew, latin, latin}));
}

TEST(Scripts, ManyOpenBracketsDoNoHarm)
{
    const std::u32string text = U"a" + std::u32string(1'000, U'(') + U"\u05D0)";
    EXPECT_EQ(ResolveScripts(text).back(), latin);
}

TEST(Scripts, AScriptHasTheUsersLanguageOrItsMostCommonOne)
{
    const ScriptTag arabic = MakeScriptTag("Arab");
    EXPECT_EQ(LikelyLanguage(arabic, {arabic}, "de-at"), "ar");
    EXPECT_EQ(LikelyLanguage(arabic, {arabic}, "fa-ir"), "fa-ir");
    EXPECT_EQ(LikelyLanguage(latin, {latin}, "de-at"), "de-at");
    EXPECT_EQ(LikelyLanguage(latin, {latin}, "fa-ir"), "");
    EXPECT_EQ(LikelyLanguage(MakeScriptTag("Goth"), {}, "de"), "");
}

TEST(Scripts, HanIsJapaneseBesideKanaAndKoreanBesideHangul)
{
    EXPECT_EQ(LikelyLanguage(han, {han}, ""), "zh");
    EXPECT_EQ(LikelyLanguage(han, {han}, "ja"), "ja");
    EXPECT_EQ(LikelyLanguage(han, {han, hiragana}, "zh-cn"), "ja");
    EXPECT_EQ(LikelyLanguage(han, {han, hangul}, ""), "ko");
}

TEST(Scripts, AScriptIsReadFromFourLetters)
{
    EXPECT_EQ(ParseScript("latn"), latin);
    EXPECT_EQ(ParseScript("Hebr"), hebrew);
    EXPECT_FALSE(ParseScript("Latin"));
    EXPECT_FALSE(ParseScript("La1n"));
    EXPECT_FALSE(ParseScript(""));
}

}  // namespace
