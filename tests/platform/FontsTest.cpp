// SPDX-License-Identifier: MIT
// Enumeration of fonts, and the choice of a face for a description, with fonts made for each test.

#include "platform/Fonts.h"

#include "platform/posix/fonts/FontCatalog.h"
#include "tests/platform/FontsFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>

namespace
{

TEST_F(Fonts, EachFamilyIsDeliveredOnceByItsRegularFaceInOrderOfName)
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

TEST_F(Fonts, AFamilyWithoutARegularFaceIsDeliveredWhole)
{
    Install({{"Impact", "Bold", "Impact Bold", 800},
             {"Impact", "Bold Italic", "Impact Bold Italic", 800, true},
             {"Impact", "Light", "Impact Light", 300}});
    EXPECT_EQ(FullNames(EnumerateFonts(nullptr)), (Names{"Impact Light"}));
    EXPECT_EQ(FullNames(EnumerateAsRegistry()),
              (Names{"Impact Light", "Impact Bold", "Impact Bold Italic"}));
}

TEST_F(Fonts, AFullNameThatEqualsAnotherFamilysNameHidesNeither)
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

TEST_F(Fonts, FacesOfTheSameFamilyWeightAndSlantAreFoundByFullName)
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
        // The record has the family's name where that selects the face.
        const bool enough = font.Full() == "Futura" || font.Full() == "Futura Condensed Bold";
        EXPECT_EQ(font.FaceName(), enough ? "Futura" : font.Full());
    }
}

TEST_F(Fonts, LongNamesAreCutAndStillSelectTheirFaces)
{
    // Names of 40 characters; the families differ only after the 31st.
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
    // The records of the bold and the regular face differ, so each finds its own face.
    GLYPHMETRICS metrics = {};
    SelectedFont(registered[2].record.elfLogFont).Outline('!', nullptr, &metrics);
    EXPECT_GT(metrics.gmCellIncX, 0);
}

TEST_F(Fonts, NamesThatDifferOnlyInCaseAreDifferentNames)
{
    Install({{"Sans", "Regular", "Sans Text"}, {"SANS", "Regular", "SANS TEXT"}});
    EXPECT_EQ(FullNames(EnumerateAsRegistry()), (Names{"SANS TEXT", "Sans Text"}));
    ExpectEveryRecordSelectsItsFace(EnumerateFonts(nullptr));
    // Where no name matches exactly, case is ignored.
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
        // A code page without these letters gives the PostScript name.
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

TEST_F(Fonts, AnUnknownNameFindsASubstitute)
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

TEST_F(Fonts, ANameThatFillsItsFieldIsNotReadPastItsEnd)
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

TEST_F(Fonts, EnumerationStopsWhenTheCallbackReturnsZero)
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

TEST_F(Fonts, AFontInstalledSinceTheListingIsFoundAfterReloadFonts)
{
    Install({{"Beta", "Regular", "Beta Regular"}});
    const SelectedFont font("Alpha", -20);
    EXPECT_EQ(font.Full(), "Beta Regular");
    const std::string file = NewFile(".ttf");
    Make({"Alpha", "Regular", "Alpha Regular"}).Write(file);
    const std::string place = fonts_.Place(file);
    // Neither a font in use nor an enumeration with a name looks for new files.
    EXPECT_EQ(font.Full(), "Beta Regular");
    EXPECT_TRUE(EnumerateFonts("Alpha").empty());

    ReloadFonts();
    EXPECT_EQ(FullNames(EnumerateFonts("Alpha")), (Names{"Alpha Regular"}));
    EXPECT_EQ(FullNames(EnumerateFonts(nullptr)), (Names{"Alpha Regular", "Beta Regular"}));
    EXPECT_EQ(font.Full(), "Alpha Regular");

    std::filesystem::remove(place);
    ReloadFonts();
    EXPECT_TRUE(EnumerateFonts("Alpha").empty());
    EXPECT_EQ(font.Full(), "Alpha Regular");  // a font in use keeps its face
    EXPECT_EQ(SelectedFont("Alpha", -20).Full(), "Beta Regular");
}

TEST_F(Fonts, WithoutANewFontReloadFontsGivesTheSameFaces)
{
    Install(usualFamily);
    const Names before = FullNames(EnumerateFonts("Lato"));
    const SelectedFont font("Lato", -1000);
    const std::vector<BYTE> outline = font.Outline('C');
    ReloadFonts();
    ReloadFonts();
    EXPECT_EQ(FullNames(EnumerateFonts("Lato")), before);
    EXPECT_EQ(font.Outline('C'), outline);
}

TEST_F(Fonts, ThePanoseNumbersDecideTheFamilyOfAFace)
{
    // The kind of family and the style of serifs are the first two PANOSE numbers.
    constexpr std::size_t panose = 32;
    struct Row
    {
        const char* name;
        int numbers;
        int family;  // FF_DONTCARE, FF_ROMAN, FF_SWISS, FF_SCRIPT, FF_DECORATIVE
    };
    const Row rows[] = {{"Any", 0x0000, 0x00},    {"Text", 0x0200, 0x00},  {"Serif", 0x0202, 0x10},
                        {"Serifs", 0x020A, 0x10}, {"Plain", 0x020B, 0x20}, {"Hand", 0x0300, 0x40},
                        {"Ornate", 0x0400, 0x50}, {"Signs", 0x0500, 0x00}};
    for (const Row& row : rows)
    {
        InstallFile(Make({row.name, "Regular", row.name}).PutWord("OS/2", panose, row.numbers));
        const std::vector<EnumeratedFont> fonts = EnumerateFonts(row.name);
        ASSERT_EQ(fonts.size(), 1U) << row.name;
        EXPECT_EQ(fonts[0].metrics.tmPitchAndFamily & 0xF0, row.family) << row.name;
    }
}

TEST_F(Fonts, AFaceInstalledTwiceIsDeliveredOnce)
{
    Install({{"Twice", "Regular", "Twice"}, {"Twice", "Regular", "Twice"}});
    EXPECT_EQ(EnumerateFonts("Twice").size(), 1u);
}

}  // namespace
