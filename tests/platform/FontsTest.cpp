// SPDX-License-Identifier: MIT
// Enumerating fonts and finding them by descriptions, over fonts made for each test.

#include "platform/posix/fonts/FontCatalog.h"
#include "tests/support/FontFile.h"
#include "tests/support/PrivateFonts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>

namespace
{

using Names = std::vector<std::string>;

/// A face to be made from the edge cases' font.
struct Made
{
    std::string family;
    std::string style;
    std::string full;
    int weight = 400;
    bool italic = false;
    int width = 5;
    std::string postScript = "";
};

FontFile Make(const Made& face)
{
    FontFile file = FontFile::EdgeTest();
    const std::string postScript = face.postScript.empty() ? face.full : face.postScript;
    file.Names(face.family, face.style, face.full, postScript)
        .Weight(face.weight)
        .Width(face.width)
        .BoldAndItalic(face.weight >= 700, face.italic);
    return file;
}

class Fonts : public testing::Test
{
protected:
    ~Fonts() override { SetProcessCodePage(1252); }

    void Install(const std::vector<Made>& faces)
    {
        for (const Made& face : faces)
        {
            InstallFile(Make(face));
        }
    }

    std::string InstallFile(const FontFile& font)
    {
        const std::string file = NewFile(".ttf");
        font.Write(file);
        fonts_.Install(file);
        return file;
    }

    std::string NewFile(const std::string& extension)
    {
        return fonts_.Folder() + '/' + std::to_string(++files_) + extension;
    }

    PrivateFonts fonts_{{}};

private:
    int files_ = 0;
};

/// The full name of the face that a record's description selects.
std::string SelectedBy(const EnumeratedFont& font)
{
    LOGFONTA description = font.record.elfLogFont;
    description.lfHeight = -1000;
    description.lfWidth = 0;
    return SelectedFont(description).Full();
}

void ExpectEveryRecordSelectsItsFace(const std::vector<EnumeratedFont>& fonts)
{
    for (const EnumeratedFont& font : fonts)
    {
        EXPECT_EQ(SelectedBy(font), font.Full());
    }
}

const std::vector<Made> usualFamily = {
    {"Lato", "Bold Italic", "Lato Bold Italic", 700, true},
    {"Lato", "Regular", "Lato Regular"},
    {"Lato", "Italic", "Lato Italic", 400, true},
    {"Lato", "Bold", "Lato Bold", 700},
};

TEST_F(Fonts, EveryFamilyIsDeliveredOnceByItsRegularFaceInTheOrderOfTheNames)
{
    Install(usualFamily);
    Install({{"Bodoni", "Bold", "Bodoni Bold", 700}, {"Zapf", "Light", "Zapf Light", 300}});
    EXPECT_EQ(FullNames(EnumerateFonts(nullptr)),
              (Names{"Bodoni Bold", "Lato Regular", "Zapf Light"}));
}

TEST_F(Fonts, AFamilysNameDeliversItsFourStylesInOrder)
{
    Install(usualFamily);
    const std::vector<EnumeratedFont> delivered = EnumerateFonts("Lato");
    EXPECT_EQ(FullNames(delivered),
              (Names{"Lato Regular", "Lato Bold", "Lato Italic", "Lato Bold Italic"}));
    const DWORD flags[] = {NTM_REGULAR, NTM_BOLD, NTM_ITALIC, NTM_BOLD | NTM_ITALIC};
    for (int n = 0; n < 4; ++n)
    {
        EXPECT_EQ(delivered[n].FaceName(), "Lato");
        EXPECT_EQ(delivered[n].metrics.ntmFlags, flags[n]);
        EXPECT_EQ(delivered[n].record.elfLogFont.lfWeight, n % 2 == 0 ? 400 : 700);
        EXPECT_EQ(delivered[n].record.elfLogFont.lfItalic, n < 2 ? 0 : 255);
    }
}

TEST_F(Fonts, TheRegularFacesFullNameDeliversTheWholeFamily)
{
    Install(usualFamily);
    EXPECT_EQ(FullNames(EnumerateFonts("Lato Regular")), FullNames(EnumerateFonts("Lato")));
    EXPECT_EQ(EnumerateAsRegistry().size(), 4u);
}

TEST_F(Fonts, AnotherFullNameDeliversThatFaceAlone)
{
    Install(usualFamily);
    EXPECT_EQ(FullNames(EnumerateFonts("Lato Bold Italic")), (Names{"Lato Bold Italic"}));
    EXPECT_TRUE(EnumerateFonts("Lato Black").empty());
}

TEST_F(Fonts, AFamilyWithoutARegularFaceIsWholeToo)
{
    Install({{"Impact", "Bold", "Impact Bold", 800},
             {"Impact", "Bold Italic", "Impact Bold Italic", 800, true},
             {"Impact", "Light", "Impact Light", 300}});
    EXPECT_EQ(FullNames(EnumerateFonts(nullptr)), (Names{"Impact Light"}));
    EXPECT_EQ(FullNames(EnumerateAsRegistry()),
              (Names{"Impact Light", "Impact Bold", "Impact Bold Italic"}));
}

TEST_F(Fonts, AFullNameThatIsAnotherFamilysNameTooLosesNeither)
{
    Install({{"Univers", "Book", "Univers Book"},
             {"Univers", "Bold", "Univers Bold", 700},
             {"Univers Book", "Regular", "Univers Book Regular"}});
    Names names = FullNames(EnumerateAsRegistry());
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    EXPECT_EQ(names, (Names{"Univers Bold", "Univers Book", "Univers Book Regular"}));
}

TEST_F(Fonts, ARecordSelectsExactlyItsFaceInAUsualFamily)
{
    Install(usualFamily);
    ExpectEveryRecordSelectsItsFace(EnumerateFonts("Lato"));
}

TEST_F(Fonts, ARecordSelectsExactlyItsFaceAmongManyWeights)
{
    std::vector<Made> faces;
    for (int weight = 100; weight <= 900; weight += 100)
    {
        const std::string name = "W" + std::to_string(weight);
        faces.push_back({"Many", name, "Many " + name, weight});
        faces.push_back({"Many", name + " Italic", "Many " + name + " Italic", weight, true});
    }
    Install(faces);
    const std::vector<EnumeratedFont> delivered = EnumerateFonts("Many");
    ASSERT_EQ(delivered.size(), 18u);
    for (const EnumeratedFont& font : delivered)
    {
        EXPECT_EQ(font.FaceName(), "Many");
    }
    ExpectEveryRecordSelectsItsFace(delivered);
}

TEST_F(Fonts, FacesAlikeInFamilyWeightAndSlantAreToldApartByTheirFullNames)
{
    Install({{"Futura", "Regular", "Futura"},
             {"Futura", "Condensed", "Futura Condensed", 400, false, 3},
             {"Futura", "Wide", "Futura Wide", 400, false, 7},
             {"Futura", "Condensed", "Futura Condensed Bold", 700, false, 3}});
    const std::vector<EnumeratedFont> delivered = EnumerateFonts("Futura");
    ASSERT_EQ(delivered.size(), 4u);
    ExpectEveryRecordSelectsItsFace(delivered);
    EXPECT_EQ(SelectedFont("Futura", -20).Full(), "Futura");
    for (const EnumeratedFont& font : delivered)
    {
        // The family's name serves wherever it is enough.
        const bool enough = font.Full() == "Futura" || font.Full() == "Futura Condensed Bold";
        EXPECT_EQ(font.FaceName(), enough ? "Futura" : font.Full());
    }
}

TEST_F(Fonts, LongNamesAreCutAndStillSelectTheirFaces)
{
    // 40 characters; the families differ only behind the 31st
    const std::string start = "A family with a name much longer than a ";
    ASSERT_EQ(start.size(), 40u);
    const std::string longFull = start + "record holds, and with a full name to match it: ";
    Install({{start + "record", "Regular", longFull + "one", 400, false, 5, "LongOne"},
             {start + "record", "Bold", longFull + "one, bold", 700, false, 5, "LongOne-Bold"},
             {start + "field", "Regular", "Second", 400, false, 5, "LongTwo"}});
    const std::vector<EnumeratedFont> registered = EnumerateAsRegistry();
    ASSERT_EQ(registered.size(), 3u);
    for (const EnumeratedFont& font : registered)
    {
        EXPECT_LT(font.FaceName().size(), 32u);
        EXPECT_LT(font.Full().size(), 64u);
        EXPECT_EQ(font.record.elfFullName[63], 0);
    }
    ExpectEveryRecordSelectsItsFace(registered);
    EXPECT_EQ(registered[0].Full(), "Second");
    EXPECT_EQ(registered[1].Full(), longFull.substr(0, 63));
    EXPECT_EQ(registered[1].metrics.tmWeight + registered[2].metrics.tmWeight, 1100);
    EXPECT_EQ(registered[1].record.elfLogFont.lfWeight, 400);
    // The bold one's records differ from the regular one's, so that both are found again.
    GLYPHMETRICS metrics = {};
    SelectedFont(registered[2].record.elfLogFont).Outline('!', nullptr, &metrics);
    EXPECT_GT(metrics.gmCellIncX, 0);
}

TEST_F(Fonts, NamesThatDifferOnlyInCaseAreDifferentNames)
{
    Install({{"Sans", "Regular", "Sans Text"}, {"SANS", "Regular", "SANS TEXT"}});
    EXPECT_EQ(FullNames(EnumerateAsRegistry()), (Names{"SANS TEXT", "Sans Text"}));
    ExpectEveryRecordSelectsItsFace(EnumerateFonts(nullptr));
    // Otherwise case does not matter.
    Install({{"Serif", "Regular", "Serif Text"}});
    EXPECT_EQ(FullNames(EnumerateFonts("sERIF")), (Names{"Serif Text"}));
    EXPECT_EQ(SelectedFont("serif", -20).Full(), "Serif Text");
}

TEST_F(Fonts, NamesAreInTheProcessesCodePageAndCharacterSet)
{
    struct Row
    {
        UINT codePage;
        BYTE characterSet;
    };
    Install({{"Ελλάς", "Κανονικά", "Ελλάς Κανονικά", 400, false, 5, "Hellas-Regular"}});
    SetProcessCodePage(1253);
    const std::vector<EnumeratedFont> greek = EnumerateFonts("\xC5\xEB\xEB\xDC\xF2");
    ASSERT_EQ(greek.size(), 1u);
    EXPECT_EQ(greek[0].FaceName(), "\xC5\xEB\xEB\xDC\xF2");
    EXPECT_EQ(greek[0].record.elfLogFont.lfCharSet, 161);
    EXPECT_EQ(greek[0].metrics.tmCharSet, 161);
    ExpectEveryRecordSelectsItsFace(greek);
    for (const Row& row :
         {Row{1250, 238}, Row{1251, 204}, Row{1252, 0}, Row{1254, 162}, Row{1257, 186}})
    {
        SetProcessCodePage(row.codePage);
        const std::vector<EnumeratedFont> other = EnumerateFonts(nullptr);
        ASSERT_EQ(other.size(), 1u);
        EXPECT_EQ(other[0].record.elfLogFont.lfCharSet, row.characterSet);
        // Without the letters, the PostScript name stands in.
        EXPECT_EQ(other[0].FaceName(), "Hellas");
        EXPECT_EQ(other[0].Full(), "Hellas-Regular");
        ExpectEveryRecordSelectsItsFace(other);
    }
}

TEST_F(Fonts, AFontMadeBeforeTheCodePageWasChosenFindsItsFaceAnew)
{
    Install({{"First", "Regular", "First"}});
    const SelectedFont font("Second", -20);
    EXPECT_EQ(font.Full(), "First");
    Install({{"Second", "Regular", "Second"}});
    EXPECT_EQ(font.Full(), "Second");
    SetProcessCodePage(1250);
    EXPECT_EQ(font.Full(), "Second");
}

TEST_F(Fonts, DescriptionsFindFamiliesThenFullNamesThenPostScriptNames)
{
    Install(usualFamily);
    Install({{"Other", "Regular", "Other Face", 400, false, 5, "OtherPS"}});
    EXPECT_EQ(SelectedFont("Lato", -20).Full(), "Lato Regular");
    EXPECT_EQ(SelectedFont("Lato", -20, 0).Full(), "Lato Regular");
    EXPECT_EQ(SelectedFont("Lato", -20, 700).Full(), "Lato Bold");
    EXPECT_EQ(SelectedFont("Lato", -20, 900).Full(), "Lato Bold");
    EXPECT_EQ(SelectedFont("Lato", -20, 400, true).Full(), "Lato Italic");
    EXPECT_EQ(SelectedFont("Lato", -20, 700, true).Full(), "Lato Bold Italic");
    EXPECT_EQ(SelectedFont("Lato Bold", -20).Full(), "Lato Bold");
    EXPECT_EQ(SelectedFont("Other Face", -20).Full(), "Other Face");
    EXPECT_EQ(SelectedFont("OtherPS", -20).Full(), "Other Face");
}

TEST_F(Fonts, AnUnknownNameFindsSomeFace)
{
    Install({{"Only", "Regular", "Only One"}});
    EXPECT_EQ(SelectedFont("No Such Font", -20).Full(), "Only One");
    EXPECT_EQ(SelectedFont("", -20, 700, true).Full(), "Only One");
}

TEST_F(Fonts, ADeviceContextWithoutAFontHasADefaultOne)
{
    Install({{"Only", "Regular", "Only One"}});
    const HDC dc = CreateCompatibleDC(nullptr);
    GLYPHMETRICS metrics = {};
    EXPECT_EQ(GetGlyphOutlineA(dc, 'H', GGO_METRICS, &metrics, 0, nullptr, &identityMatrix), 0u);
    EXPECT_GT(metrics.gmCellIncX, 0);
    DeleteDC(dc);
}

TEST_F(Fonts, ANameThatFillsItsFieldIsReadNoFurther)
{
    Install({{"Only", "Regular", "Only One"}});
    LOGFONTA description = {};
    std::memset(description.lfFaceName, 'x', sizeof description.lfFaceName);
    EXPECT_EQ(SelectedFont(description).Full(), "Only One");
    EXPECT_EQ(CreateFontIndirectA(nullptr), nullptr);
}

TEST_F(Fonts, WithoutAnyFontTheListIsEmptyAndOutlinesAreRefused)
{
    EXPECT_TRUE(EnumerateFonts(nullptr).empty());
    EXPECT_TRUE(EnumerateFonts("Lato").empty());
    const SelectedFont font("Lato", -20);
    DWORD result = 0;
    font.Outline('A', &result);
    EXPECT_EQ(result, GDI_ERROR);
    EXPECT_TRUE(font.OutlineMetrics().empty());
}

int CALLBACK CountAndStop(const LOGFONTA*, const TEXTMETRICA*, DWORD, LPARAM data)
{
    int& count = *reinterpret_cast<int*>(data);
    return ++count < 2 ? 7 : 0;
}

TEST_F(Fonts, EnumerationStopsAtNoughtAndReturnsTheLastResult)
{
    const HDC dc = CreateCompatibleDC(nullptr);
    int count = 0;
    EXPECT_EQ(EnumFontFamiliesA(dc, nullptr, CountAndStop, reinterpret_cast<LPARAM>(&count)), 1);
    EXPECT_EQ(count, 0);
    Install({{"A", "Regular", "A"}});
    EXPECT_EQ(EnumFontFamiliesA(dc, nullptr, CountAndStop, reinterpret_cast<LPARAM>(&count)), 7);
    EXPECT_EQ(count, 1);
    Install({{"B", "Regular", "B"}, {"C", "Regular", "C"}});
    count = 0;
    EXPECT_EQ(EnumFontFamiliesA(dc, nullptr, CountAndStop, reinterpret_cast<LPARAM>(&count)), 0);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(EnumFontFamiliesA(dc, nullptr, nullptr, 0), 0);
    DeleteDC(dc);
}

TEST_F(Fonts, EveryFaceOfACollectionIsFound)
{
    const std::string file = NewFile(".ttc");
    FontFile::WriteCollection(
        {Make({"First", "Regular", "First Face"}),
         Make({"Second", "Bold", "Second Face", 700}).PutWord("hmtx", 0, 321)},
        file);
    fonts_.Install(file);
    const std::vector<EnumeratedFont> registered = EnumerateAsRegistry();
    EXPECT_EQ(FullNames(registered), (Names{"First Face", "Second Face"}));
    ExpectEveryRecordSelectsItsFace(registered);
    GLYPHMETRICS metrics = {};
    SelectedFont("Second", -1000).Outline('!', nullptr, &metrics);
    EXPECT_EQ(metrics.gmCellIncX, 321);
}

TEST_F(Fonts, AFaceInstalledTwiceIsDeliveredOnce)
{
    Install({{"Twice", "Regular", "Twice"}, {"Twice", "Regular", "Twice"}});
    EXPECT_EQ(EnumerateFonts("Twice").size(), 1u);
}

/// Of the edge cases' font.
constexpr int glyphCount = 23;

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

TEST_F(Fonts, OfAVariableFontTheDefaultInstanceAndEveryNamedOneAreFaces)
{
    FontFile font = Make({"Variable", "Regular", "Variable Regular", 400, false, 5, "Heavy"});
    // One axis 'wght' from 400, the default, to 900; one instance, at 700, with name id 6.
    font.Put("fvar", BigWords({1,      0,      16,  2, 1,   20, 1,   8,        //
                               0x7767, 0x6874, 400, 0, 400, 0,  900, 0, 0, 2,  //
                               6,      0,      700, 0}));
    // No variations of any glyph: one offset more than there are glyphs.
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

/// A table of compact outlines, all empty.
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
    // The char strings lie behind this 11-byte dictionary in its index (5 bytes more) and two empty
    // indices of 2 bytes each; the private dictionary is empty.
    const auto charStrings = static_cast<std::uint8_t>(cff.size() + 5 + 11 + 2 + 2);
    index({{28, 0, charStrings, 17, 28, 0, 0, 28, 0, charStrings, 18}});
    index({});
    index({});
    constexpr std::uint8_t endOfGlyph = 14;
    index(std::vector<FontFile::Table>(static_cast<std::size_t>(glyphs), {endOfGlyph}));
    return cff;
}

/// A face whose outlines are compact ones.
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

TEST_F(Fonts, AFaceWithCubicOutlinesIsATrueTypeFaceUnlessOutlinesAreAsTheyAre)
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

TEST_F(Fonts, OfTwoFacesAlikeTheOneWithTrueTypeOutlinesIsTaken)
{
    InstallFile(Compact({"Alike", "Regular", "Alike"}));
    Install({{"Alike", "Regular", "Alike"}});
    // The compact one's glyphs are all empty.
    EXPECT_FALSE(SelectedFont("Alike", -1000).Outline('H').empty());
    EXPECT_EQ(FullNames(EnumerateAsRegistry()).front(), "Alike");
}

TEST_F(Fonts, FacesWithoutTrueTypeOutlinesAreOfOtherTypesAndNeverRegistered)
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
    // Asked for by name, they give way to one with outlines of the right kind.
    EXPECT_EQ(SelectedFont("Compact", -20).Full(), "TrueType");
    EXPECT_EQ(SelectedFont("Bitmap", -20).Full(), "TrueType");
}

TEST_F(Fonts, AFamilyOfMixedKindsIsRepresentedByATrueTypeFace)
{
    const OutlinesInUse asIs(OUTLINES_AS_IS);
    InstallFile(Compact({"Mixed", "Regular", "Mixed Compact"}));
    Install({{"Mixed", "Bold", "Mixed Bold", 700}});
    EXPECT_EQ(FullNames(EnumerateAsRegistry()), (Names{"Mixed Bold"}));
}

TEST_F(Fonts, AFaceWhoseFileHasGoneIsPassedOver)
{
    Install({{"Stays", "Regular", "Stays"}});
    const std::string gone = InstallFile(Make({"Gone", "Regular", "Gone"}));
    EXPECT_TRUE(EnumerateFonts("None").empty());  // the catalogue is made while the file is there
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
        posix::ReloadFonts();
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

TEST_F(Fonts, ManyFacesAndSizesTakeTurns)
{
    // More faces than are kept open, and more sizes than are kept of each.
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
