// SPDX-License-Identifier: MIT
#include "platform/FontMatching.h"

#include "tests/support/FontFile.h"
#include "tests/support/PrivateFonts.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace
{

using namespace orvane;

TEST(FontMatching, AnInstalledFontIsFoundForACharacter)
{
    // Georgian letters are in DejaVu Sans, and in no other font that the tests need.
    const std::vector<InstalledFont> fonts = FindFallbackFonts(U'\u10D0', "ka", {}, 3);

    ASSERT_FALSE(fonts.empty());
    EXPECT_LE(fonts.size(), 3U);
    for (const InstalledFont& font : fonts)
    {
        const auto face = ShapingFace::Open(font.file, nullptr);
        ASSERT_TRUE(face) << font.file.file;
        EXPECT_NE(face->GlyphOf(U'\u10D0'), 0U) << font.fullName;
    }
}

TEST(FontMatching, FontsThatAreInstalledLaterAreFoundAfterReloadFonts)
{
    const std::string folder = std::filesystem::temp_directory_path() / "orvane-font-matching";
    std::filesystem::create_directories(folder);
    const std::string file = folder + "/later.ttf";
    FontFile::EdgeTest().Names("Later", "Regular", "Later Regular", "Later").Write(file);
    {
        PrivateFonts fonts({});
        EXPECT_FALSE(FindFontOfFamily("Later", {}));
        EXPECT_TRUE(FindFallbackFonts(U'A', "en", {}, 3).empty());
        EXPECT_TRUE(InstalledFamilies().empty());
        fonts.Install(file);
        ASSERT_TRUE(FindFontOfFamily("LATER", {}));
        EXPECT_EQ(FindFontOfFamily("Later", {})->fullName, "Later Regular");
        EXPECT_EQ(FindFallbackFonts(U'A', "en", {}, 3).size(), 1U);
        EXPECT_EQ(InstalledFamilies(), std::vector<std::string>{"Later"});
        ASSERT_EQ(InstalledFonts().size(), 1U);
        EXPECT_EQ(InstalledFonts()[0].fullName, "Later Regular");
    }
    std::filesystem::remove_all(folder);
    EXPECT_TRUE(FindFontOfFamily("DejaVu Sans", {}));
}

}  // namespace
