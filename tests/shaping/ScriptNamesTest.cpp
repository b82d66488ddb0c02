// SPDX-License-Identifier: MIT
#include "shaping/ScriptNames.h"

#include <gtest/gtest.h>

namespace
{

using namespace orvane;

TEST(ScriptNames, ScriptsHaveLettersANameAndAPackage)
{
    EXPECT_EQ(ScriptLetters(ScriptOf(U'a')), "Latn");
    EXPECT_EQ(ScriptName(ScriptOf(U'a')), "Latin");
    EXPECT_EQ(ScriptName(ScriptOf(U'\u1780')), "Khmer");
    EXPECT_EQ(PackageForScript(ScriptOf(U'\u1780')), "fonts-noto-core");
    EXPECT_EQ(PackageForScript(ScriptOf(U'\uAC00')), "fonts-noto-cjk");
    // The first and the last row of the table.
    EXPECT_EQ(ScriptName(MakeScriptTag("Adlm")), "Adlam");
    EXPECT_EQ(ScriptName(MakeScriptTag("Zanb")), "Zanabazar Square");
}

TEST(ScriptNames, CharactersOfNoScriptHaveNoName)
{
    EXPECT_EQ(ScriptName(commonScript), "");
    EXPECT_EQ(PackageForScript(commonScript), "fonts-symbola");
    EXPECT_EQ(PackageFor(U'\u2603'), "fonts-symbola");  // a snowman
    EXPECT_EQ(PackageFor(U'\1'), "");
    EXPECT_EQ(PackageFor(U'\u009F'), "");
    EXPECT_EQ(PackageForScript(unknownScript), "");
    EXPECT_EQ(PackageForScript(MakeScriptTag("Kits")), "");
}

}  // namespace
