// SPDX-License-Identifier: MIT
// Fonts of every kind: variable, with cubic outlines, bitmaps, damaged, many, and on several
// threads.

#include "tests/platform/FontsFixture.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>

namespace
{

/// The glyphs of the font of edge cases.
constexpr int glyphCount = 23;

/// A table of numbers of 16 bits, high byte first.
FontFile::Table BigWords(std::initializer_list<int> words)
{
    FontFile::Table table;
    for (const int word : words)
    {
        table.push_back(static_cast<std::uint8_t>(word >> 8));
        table.push_back(static_cast<std::uint8_t>(word));
    }
    return table;
}

TEST_F(Fonts, TheDefaultAndEveryNamedInstanceOfAVariableFontAreFaces)
{
    FontFile font = Make({"Variable", "Regular", "Variable Regular", 400, false, 5, "Heavy"});
    // One axis 'wght' from 400, the default, to 900; one instance, at 700, with name id 6.
    font.Put("fvar", BigWords({1,      0,      16,  2, 1,   20, 1,   8,        //
                               0x7767, 0x6874, 400, 0, 400, 0,  900, 0, 0, 2,  //
                               6,      0,      700, 0}));
    // No glyph varies. There is one offset more than there are glyphs.
    constexpr int offsets = 2 * (glyphCount + 1);
    FontFile::Table variations = BigWords({1, 0, 1, 0, 0, 20, glyphCount, 0, 0, 20 + offsets});
    variations.resize(variations.size() + offsets);
    font.Put("gvar", variations);
    InstallFile(font);
    const std::vector<EnumeratedFont> delivered = EnumerateFonts("Variable");
    EXPECT_EQ(FullNames(delivered), (Names{"Variable Regular", "Variable Heavy"}));
    ASSERT_EQ(delivered.size(), 2u);
    const int weights[] = {400, 700};
    for (int n = 0; n < 2; ++n)
    {
        EXPECT_EQ(delivered[n].record.elfLogFont.lfWeight, weights[n]);
        EXPECT_EQ(delivered[n].metrics.ntmFlags, n == 0 ? NTM_REGULAR : NTM_BOLD);
        EXPECT_EQ(delivered[n].type, TRUETYPE_FONTTYPE);
    }
    ExpectEveryRecordSelectsItsFace(delivered);
}

/// A CFF table in which all glyphs are empty.
FontFile::Table CompactOutlines(int glyphs)
{
    FontFile::Table cff = {1, 0, 4, 1};
    const auto index = [&](const std::vector<FontFile::Table>& entries) {
        cff.push_back(0);
        cff.push_back(static_cast<std::uint8_t>(entries.size()));
        if (entries.empty())
        {
            return;
        }
        cff.push_back(1);
        std::size_t offset = 1;
        cff.push_back(1);
        for (const FontFile::Table& entry : entries)
        {
            offset += entry.size();
            cff.push_back(static_cast<std::uint8_t>(offset));
        }
        for (const FontFile::Table& entry : entries)
        {
            cff.insert(cff.end(), entry.begin(), entry.end());
        }
    };
    index({{'C'}});
    // The char strings follow this dictionary of 11 bytes, the 5 other bytes of its index, and two
    // empty indices of 2 bytes each. The private dictionary is empty.
    const auto charStrings = static_cast<std::uint8_t>(cff.size() + 5 + 11 + 2 + 2);
    index({{28, 0, charStrings, 17, 28, 0, 0, 28, 0, charStrings, 18}});
    index({});
    index({});
    constexpr std::uint8_t endOfGlyph = 14;
    index(std::vector<FontFile::Table>(static_cast<std::size_t>(glyphs), {endOfGlyph}));
    return cff;
}

/// A face with a CFF table.
FontFile Compact(const Made& face)
{
    FontFile font = Make(face);
    constexpr std::uint32_t compactFlavour = 0x4F54544F;  // OTTO
    return font.Flavour(compactFlavour)
        .Remove("glyf")
        .Remove("loca")
        .Put("CFF ", CompactOutlines(glyphCount));
}

constexpr const char* bitmapFont = R"(STARTFONT 2.1
FONT -Test-Bitmap-Medium-R-Normal--8-80-75-75-C-80-ISO10646-1
SIZE 8 75 75
FONTBOUNDINGBOX 8 8 0 0
STARTPROPERTIES 8
CHARSET_REGISTRY "ISO10646"
CHARSET_ENCODING "1"
FAMILY_NAME "Bitmap"
WEIGHT_NAME "Medium"
SLANT "R"
PIXEL_SIZE 8
FONT_ASCENT 8
FONT_DESCENT 0
ENDPROPERTIES
CHARS 1
STARTCHAR A
ENCODING 65
SWIDTH 1000 0
DWIDTH 8 0
BBX 8 8 0 0
BITMAP
FF
FF
FF
FF
FF
FF
FF
FF
ENDCHAR
ENDFONT
)";

TEST_F(Fonts, CubicFacesCountAsTrueTypeUnlessOutlinesAreTakenAsTheyAre)
{
    InstallFile(Compact({"Compact", "Regular", "Compact"}));
    Install({{"TrueType", "Regular", "TrueType"}});
    const std::vector<EnumeratedFont> families = EnumerateFonts(nullptr);
    ASSERT_EQ(families.size(), 2u);
    EXPECT_EQ(families[0].FaceName(), "Compact");
    EXPECT_EQ(families[0].type, TRUETYPE_FONTTYPE);
    EXPECT_EQ(FullNames(EnumerateAsRegistry()), (Names{"Compact", "TrueType"}));
    EXPECT_EQ(SelectedFont("Compact", -20).Full(), "Compact");

    const SelectedFont font("Compact", -20);
    const OutlinesInUse asIs(OUTLINES_AS_IS);
    EXPECT_EQ(FullNames(EnumerateAsRegistry()), (Names{"TrueType"}));
    EXPECT_EQ(font.Full(), "TrueType");
}

TEST_F(Fonts, ATrueTypeFaceIsPreferredToACubicOneOfTheSameName)
{
    InstallFile(Compact({"Alike", "Regular", "Alike"}));
    Install({{"Alike", "Regular", "Alike"}});
    // All glyphs of the CFF table are empty, so an outline shows that the other face was taken.
    EXPECT_FALSE(SelectedFont("Alike", -1000).Outline('H').empty());
    EXPECT_EQ(FullNames(EnumerateAsRegistry()).front(), "Alike");
}

TEST_F(Fonts, BitmapAndType1FacesAreEnumeratedButNeverRegistered)
{
    const OutlinesInUse asIs(OUTLINES_AS_IS);
    InstallFile(Compact({"Compact", "Regular", "Compact"}));
    const std::string bitmap = NewFile(".bdf");
    std::ofstream(bitmap) << bitmapFont;
    fonts_.Install(bitmap);
    Install({{"TrueType", "Regular", "TrueType"}});

    const std::vector<EnumeratedFont> families = EnumerateFonts(nullptr);
    ASSERT_EQ(families.size(), 3u);
    EXPECT_EQ(families[0].FaceName(), "Bitmap");
    EXPECT_EQ(families[0].type, RASTER_FONTTYPE);
    EXPECT_EQ(families[1].FaceName(), "Compact");
    EXPECT_EQ(families[1].type, DEVICE_FONTTYPE);
    EXPECT_EQ(families[2].type, TRUETYPE_FONTTYPE);
    EXPECT_EQ(FullNames(EnumerateAsRegistry()), (Names{"TrueType"}));
    // Asked for by name, they are replaced by a usable face.
    EXPECT_EQ(SelectedFont("Compact", -20).Full(), "TrueType");
    EXPECT_EQ(SelectedFont("Bitmap", -20).Full(), "TrueType");
}

TEST_F(Fonts, AMixedFamilyIsDeliveredByItsTrueTypeFace)
{
    const OutlinesInUse asIs(OUTLINES_AS_IS);
    InstallFile(Compact({"Mixed", "Regular", "Mixed Compact"}));
    Install({{"Mixed", "Bold", "Mixed Bold", 700}});
    EXPECT_EQ(FullNames(EnumerateAsRegistry()), (Names{"Mixed Bold"}));
}

TEST_F(Fonts, AFaceWhoseFileIsMissingIsSkipped)
{
    Install({{"Stays", "Regular", "Stays"}});
    const std::string gone = InstallFile(Make({"Gone", "Regular", "Gone"}));
    EXPECT_TRUE(EnumerateFonts("None").empty());  // makes the catalogue while the file exists
    std::filesystem::remove(gone);
    EXPECT_EQ(FullNames(EnumerateFonts(nullptr)), (Names{"Stays"}));
    const SelectedFont font("Gone", -20);
    DWORD result = 0;
    font.Outline('A', &result);
    EXPECT_EQ(result, GDI_ERROR);
}

TEST_F(Fonts, ADamagedFontGivesNoOutlinesButDoesNoHarm)
{
    const std::string file = InstallFile(Make({"Damaged", "Regular", "Damaged"}));
    const auto size = std::filesystem::file_size(file);
    for (std::uintmax_t kept = 0; kept < size; kept += 61)
    {
        FontFile font = Make({"Damaged", "Regular", "Damaged"});
        font.Write(file);
        std::filesystem::resize_file(file, kept);
        ReloadFonts();
        const SelectedFont selected("Damaged", -1000);
        DWORD result = 0;
        for (UINT character = 0; character < 256; character += 5)
        {
            selected.Outline(character, &result);
        }
        if (kept == 0)
        {
            EXPECT_EQ(result, GDI_ERROR);
        }
        EnumerateAsRegistry();
    }
}

TEST_F(Fonts, AFontThatIsCutOffWhileItIsOpenGivesNoMoreOutlinesButDoesNoHarm)
{
    // A long table before the outlines, so that they do not lie on the first page.
    FontFile font = Make({"Shrunk", "Regular", "Shrunk"});
    font.Put("AAAA", FontFile::Table(100'000));
    const std::string file = InstallFile(font);
    const SelectedFont selected("Shrunk", -1000);
    EXPECT_FALSE(selected.Outline('H').empty());
    std::filesystem::resize_file(file, 5'000);
    for (const UINT character : {'H', 'I', ' '})
    {
        DWORD result = 0;
        selected.Outline(character, &result);
        EXPECT_EQ(result, GDI_ERROR) << character;
    }
}

TEST_F(Fonts, MoreFacesAndSizesThanAreKeptOpenCanTakeTurns)
{
    // More faces than are kept open, and more sizes than are kept for each.
    std::vector<Made> faces;
    for (int n = 0; n < 20; ++n)
    {
        const std::string name = "Face" + std::to_string(n);
        faces.push_back({name, "Regular", name});
    }
    Install(faces);
    for (int round = 0; round < 2; ++round)
    {
        for (int n = 0; n < 20; ++n)
        {
            for (LONG height = 1000; height <= 6000; height += 1000)
            {
                const SelectedFont font(("Face" + std::to_string(n)).c_str(), -height);
                GLYPHMETRICS metrics = {};
                font.Outline('!', nullptr, &metrics);
                EXPECT_EQ(metrics.gmCellIncX, height / 2);
            }
        }
    }
}

TEST_F(Fonts, ThreadsShareTheFonts)
{
    Install(usualFamily);
    const std::vector<BYTE> expected = SelectedFont("Lato", -1000).Outline('H');
    ASSERT_FALSE(expected.empty());
    std::vector<std::thread> threads;
    std::vector<int> wrong(4);
    for (std::size_t n = 0; n < wrong.size(); ++n)
    {
        threads.emplace_back([&, n] {
            for (int round = 0; round < 50; ++round)
            {
                const bool bold = (n + round) % 2 != 0;
                wrong[n] += SelectedFont("Lato", -1000, bold ? 700 : 400).Outline('H') != expected;
                wrong[n] += EnumerateFonts("Lato").size() != 4;
            }
        });
    }
    for (std::thread& thread : threads)
    {
        thread.join();
    }
    EXPECT_EQ(wrong, std::vector<int>(4));
}

}  // namespace
