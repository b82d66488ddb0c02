// SPDX-License-Identifier: MIT
// Fonts whose tables the library does not read by itself, so that FreeType describes them, and
// fonts that FreeType refuses.

#include "tests/platform/FontsFixture.h"

#include <cstring>
#include <fstream>

namespace
{

/// What follows the record of outline metrics at an offset that the record gives.
std::string TextAt(const std::vector<BYTE>& metrics, PSTR offset)
{
    return reinterpret_cast<const char*>(metrics.data()) + reinterpret_cast<std::uintptr_t>(offset);
}

TEST_F(Fonts, AFontWithoutOs2IsMeasuredByItsHeader)
{
    InstallFile(Make({"Bare", "Regular", "Bare Regular"}).Remove("OS/2"));
    const std::vector<BYTE> bytes = SelectedFont("Bare", -1000).OutlineMetrics();
    ASSERT_FALSE(bytes.empty());
    OUTLINETEXTMETRICA metrics;
    std::memcpy(&metrics, bytes.data(), sizeof metrics);
    // The header (hhea) has the ascent 800, the descent -200, the line gap 90 and the largest width
    // 654, and an em has 1000 units.
    EXPECT_EQ(metrics.otmTextMetrics.tmAscent, 800);
    EXPECT_EQ(metrics.otmTextMetrics.tmDescent, 200);
    EXPECT_EQ(metrics.otmTextMetrics.tmExternalLeading, 90);
    EXPECT_EQ(metrics.otmTextMetrics.tmAveCharWidth, 654);
    EXPECT_EQ(metrics.otmAscent, 800);
    EXPECT_EQ(metrics.otmDescent, -200);
    EXPECT_EQ(TextAt(bytes, metrics.otmpFaceName), "Bare Regular");
    // The unique name, which the fixture makes the same as the full name
    EXPECT_EQ(TextAt(bytes, metrics.otmpFullName), "Bare Regular");
}

/// The glyph of a character in a font with one character map. The font lacks the names of glyphs,
/// out of which FreeType would make a map.
WORD GlyphOf(char character, const char* family)
{
    const SelectedFont font(family, -100);
    WORD index = 0xFFFF;
    EXPECT_EQ(GetGlyphIndicesA(font.Dc(), &character, 1, &index, 0), 1U);
    return index;
}

TEST_F(Fonts, ASymbolFontMapsTheCodeOfACharacterInThePrivateArea)
{
    // Platform 3, encoding 0, format 4 with two segments: 0xF041 is glyph 3, and the last segment.
    FontFile::Table map = {0, 0, 0, 1, 0, 3, 0, 0, 0, 0, 0, 12};
    for (const int word :
         {4, 32, 0, 4, 4, 1, 0, 0xF041, 0xFFFF, 0, 0xF041, 0xFFFF, 3 - 0xF041, 1, 0, 0})
    {
        map.push_back(static_cast<std::uint8_t>(word >> 8));
        map.push_back(static_cast<std::uint8_t>(word));
    }
    InstallFile(Make({"Signs", "Regular", "Signs"}).Remove("post").Put("cmap", map));
    EXPECT_EQ(GlyphOf('A', "Signs"), 3);
    EXPECT_EQ(GlyphOf('B', "Signs"), 0);
}

TEST_F(Fonts, AFontWithAMapOfAnotherKindIsReadByTheCodeOfACharacter)
{
    // Platform 1, encoding 0, format 0: a glyph for each of 256 codes.
    FontFile::Table map = {0, 0, 0, 1, 0, 1, 0, 0, 0, 0, 0, 12, 0, 0, 1, 6, 0, 0};
    map.resize(map.size() + 256);
    map[18 + 'A'] = 5;
    InstallFile(Make({"Roman", "Regular", "Roman"}).Remove("post").Put("cmap", map));
    EXPECT_EQ(GlyphOf('A', "Roman"), 5);
    EXPECT_EQ(GlyphOf('B', "Roman"), 0);
}

TEST_F(Fonts, GlyphsThatCannotBeLoadedAreRefused)
{
    // Every glyph states 0x7F7F contours, and so has too few bytes for them.
    constexpr std::size_t glyphBytes = 532;  // as the font of edge cases has
    InstallFile(
        Make({"Broken", "Regular", "Broken"}).Put("glyf", FontFile::Table(glyphBytes, 0x7F)));
    for (const UINT outlines : {OUTLINES_REPAIRED, OUTLINES_AS_IS})
    {
        const OutlinesInUse use(outlines);
        const SelectedFont font("Broken", -1000);
        DWORD result = 0;
        font.Outline('H', &result);
        EXPECT_EQ(result, GDI_ERROR);
    }
    OUTLINECHECK check = {};
    EXPECT_TRUE(CheckFontOutlines(SelectedFont("Broken", -1000).Dc(), &check));
    EXPECT_EQ(check.glyphs, 23U);
    EXPECT_EQ(check.repaired + check.turned + check.converted + check.unrepaired, 0U);
}

TEST_F(Fonts, AFileThatHasBecomeAFontOfAnotherKindIsSkipped)
{
    Install({{"Stays", "Regular", "Stays"}});
    const std::string file = InstallFile(Make({"Turned", "Regular", "Turned"}));
    EXPECT_TRUE(EnumerateFonts("None").empty());  // makes the catalogue of the file as it is
    std::ofstream(file) << "STARTFONT 2.1\nFONT a\nSIZE 8 75 75\nFONTBOUNDINGBOX 8 1 0 0\nCHARS 1\n"
                           "STARTCHAR A\nENCODING 65\nSWIDTH 1000 0\nDWIDTH 8 0\nBBX 8 1 0 0\n"
                           "BITMAP\nFF\nENDCHAR\nENDFONT\n";
    EXPECT_EQ(FullNames(EnumerateFonts(nullptr)), (Names{"Stays"}));
    DWORD result = 0;
    SelectedFont("Turned", -20).Outline('A', &result);
    EXPECT_EQ(result, GDI_ERROR);
}

}  // namespace
