// SPDX-License-Identifier: MIT
#include "material/NamedColor.h"

#include "host/CWinApp.h"
#include "host/Resources.h"
#include "tests/support/ExpectVector.h"
#include "tests/support/RecordBytes.h"
#include "tests/support/TemporaryFile.h"

#include <cmath>
#include <filesystem>

TEST(NamedColor, StartsAsMediumGray)
{
    const NamedColor color;
    EXPECT_STREQ(color.GetName(), "Medium Gray");
    EXPECT_RGBA(color.GetAmbientColor(), 0.5f, 0.5f, 0.5f, 1.0f);
    EXPECT_RGBA(color.GetDiffuseColor(), 0.5f, 0.5f, 0.5f, 1.0f);
    EXPECT_RGBA(color.GetSpecularColor(), 0.5f, 0.5f, 0.5f, 1.0f);
    EXPECT_RGBA(color.GetEmissionColor(), 0.0f, 0.0f, 0.0f, 1.0f);
    EXPECT_EQ(color.GetShininess(), 64.0f);
    EXPECT_EQ(color.GetColorGroup(), 0ul);
    EXPECT_EQ(color.IsTransparent(), 0);
}

TEST(NamedColor, AMaterialMadeFromANameIsMediumGray)
{
    const NamedColor color("Slate");
    EXPECT_STREQ(color.GetName(), "Slate");
    EXPECT_RGBA(color.GetAmbientColor(), 0.5f, 0.5f, 0.5f, 1.0f);
    EXPECT_RGBA(color.GetDiffuseColor(), 0.5f, 0.5f, 0.5f, 1.0f);
    EXPECT_RGBA(color.GetSpecularColor(), 0.5f, 0.5f, 0.5f, 1.0f);
    EXPECT_RGBA(color.GetEmissionColor(), 0.0f, 0.0f, 0.0f, 1.0f);
    EXPECT_EQ(color.GetShininess(), 64.0f);
    EXPECT_EQ(color.GetColorGroup(), 0ul);
}

TEST(NamedColor, NamesAColor)
{
    Color red;
    red.SetDiffuseColor(ColorVector(1, 0, 0, 0.5f));
    const NamedColor color(red, "Glass");
    EXPECT_STREQ(color.GetName(), "Glass");
    EXPECT_RGBA(color.GetDiffuseColor(), 1.0f, 0.0f, 0.0f, 0.5f);
    EXPECT_EQ(color.GetColorGroup(), 0ul);
}

TEST(NamedColor, CopiesCarryColourGroupAndName)
{
    NamedColor color("Slate");
    color.SetColorGroup(7);
    color.SetShininess(3);
    const NamedColor copy(color);
    EXPECT_STREQ(copy.GetName(), "Slate");
    EXPECT_EQ(copy.GetColorGroup(), 7ul);
    EXPECT_EQ(copy.GetShininess(), 3.0f);

    color.SetName("Chalk");
    NamedColor assigned;
    assigned = color;
    EXPECT_STREQ(assigned.GetName(), "Chalk");
    EXPECT_EQ(assigned.GetColorGroup(), 7ul);
    EXPECT_STREQ(copy.GetName(), "Slate");
}

TEST(NamedColor, ACopyUnderAnotherNameTakesOnlyTheColours)
{
    NamedColor slate("Slate");
    slate.SetColorGroup(7);
    slate.SetShininess(3);
    const NamedColor chalk(slate, "Chalk");
    EXPECT_STREQ(chalk.GetName(), "Chalk");
    EXPECT_EQ(chalk.GetColorGroup(), 0ul);
    EXPECT_EQ(chalk.GetShininess(), 3.0f);
}

TEST(NamedColor, AssigningAColorKeepsGroupAndName)
{
    NamedColor slate("Slate");
    slate.SetColorGroup(7);
    NamedColor chalk("Chalk");
    chalk.SetShininess(3);
    static_cast<Color&>(slate) = chalk;
    EXPECT_STREQ(slate.GetName(), "Slate");
    EXPECT_EQ(slate.GetColorGroup(), 7ul);
    EXPECT_EQ(slate.GetShininess(), 3.0f);
    static_cast<Color&>(slate) = Color();
    EXPECT_STREQ(slate.GetName(), "Slate");
    EXPECT_EQ(slate.GetShininess(), 64.0f);
}

TEST(NamedColor, AssigningANewMaterialMakesItMediumGray)
{
    NamedColor color("Slate");
    color.SetColorGroup(7);
    color.SetDiffuseColor(ColorVector(1, 0, 0, 0.5f));
    color = NamedColor();
    EXPECT_STREQ(color.GetName(), "Medium Gray");
    EXPECT_EQ(color.GetColorGroup(), 0ul);
    EXPECT_RGBA(color.GetDiffuseColor(), 0.5f, 0.5f, 0.5f, 1.0f);
}

TEST(NamedColor, ResetKeepsTheGroup)
{
    NamedColor color("Slate");
    color.SetColorGroup(7);
    color.SetShininess(3);
    color.Reset();
    EXPECT_STREQ(color.GetName(), "Medium Gray");
    EXPECT_EQ(color.GetShininess(), 64.0f);
    EXPECT_EQ(color.GetColorGroup(), 7ul);
}

TEST(NamedColor, BecomesACompleteMaterialFromAPaletteColor)
{
    NamedColor color("Old");
    color.SetColorGroup(7);
    color.SetShininess(3);
    color.SetDiffuseColor(ColorVector(0, 0, 0, 0.25f));
    color.SetAmbientColor(ColorVector(0, 0, 0, 0.5f));
    color.SetEmissionColor(ColorVector(1, 1, 1, 0));
    color.SetSpecularColor(ColorVector(0, 0, 0, 0.75f));
    color = 0xFF8000;
    EXPECT_RGBA(color.GetDiffuseColor(), 0.0f, 0x1.010102p-1f, 1.0f, 0.25f);
    EXPECT_RGBA(color.GetAmbientColor(), 0.0f, 0x1.010102p-2f, 0.5f, 1.0f);
    EXPECT_RGBA(color.GetEmissionColor(), 0.0f, 0.0f, 0.0f, 1.0f);
    EXPECT_RGBA(color.GetSpecularColor(), 0.0f, 0x1.010102p-1f, 1.0f, 0.75f);
    EXPECT_EQ(color.GetShininess(), 64.0f);
    EXPECT_STREQ(color.GetName(), "Palette Color - R0 G50 B100");
    EXPECT_EQ(color.GetColorGroup(), 7ul);
}

TEST(NamedColor, APaletteColorsSpecularIsItsHueAtFullBrightness)
{
    // The brightest is 51 / 255 = 0.2: five times as bright.
    NamedColor color;
    color = 0x003319ul;
    const ColorVector specular = color.GetSpecularColor();
    EXPECT_NEAR(specular.red, 25.0 / 51.0, 1e-6);
    EXPECT_NEAR(specular.green, 1.0, 1e-6);
    EXPECT_EQ(specular.blue, 0.0f);
    EXPECT_STREQ(color.GetName(), "Palette Color - R9 G20 B0");
}

TEST(NamedColor, ABlackPaletteColorHasNoSpecularHue)
{
    NamedColor color;
    color = 0ul;
    EXPECT_TRUE(std::isnan(color.GetSpecularColor().red));
    EXPECT_RGBA(color.GetDiffuseColor(), 0.0f, 0.0f, 0.0f, 1.0f);
    EXPECT_STREQ(color.GetName(), "Palette Color - R0 G0 B0");
}

TEST(NamedColor, RecordIsThatOfColorThenVersionGroupAndName)
{
    NamedColor color("Slate");
    color.SetColorGroup(0x89ABCDEF);
    const Bytes expected = RecordBytes()
                               .Dword(1)
                               .Floats({0.5f, 0.5f, 0.5f, 1})
                               .Floats({0.5f, 0.5f, 0.5f, 1})
                               .Floats({0, 0, 0, 1})
                               .Floats({0.5f, 0.5f, 0.5f, 1})
                               .Float(64)
                               .Dword(1)
                               .Dword(0x89ABCDEF)
                               .String("Slate");
    EXPECT_EQ(Stored(color), expected);

    NamedColor loaded;
    LoadRecord(loaded, expected);
    EXPECT_STREQ(loaded.GetName(), "Slate");
    EXPECT_EQ(loaded.GetColorGroup(), 0x89ABCDEFul);
    EXPECT_EQ(Stored(loaded), expected);
}

TEST(NamedColor, RefusesRecordsOfOtherVersions)
{
    NamedColor color;
    Bytes record = Stored(color);
    const std::size_t ownVersion = 4 + 17 * 4;
    ASSERT_EQ(record[ownVersion], 1);

    Bytes colorTooNew = record;
    colorTooNew[0] = 2;
    EXPECT_EQ(LoadCause(color, colorTooNew), CArchiveException::badSchema);
    record[ownVersion] = 2;
    EXPECT_EQ(LoadCause(color, record), CArchiveException::badSchema);
}

namespace
{
/// Each test has a profile file of its own.
class NamedColorProfile : public testing::Test
{
protected:
    NamedColorProfile()
        : before_(AfxGetApp()->GetProfilePath()), path_(TemporaryFolder() + "NamedColorTest.ini")
    {
        std::filesystem::remove(path_);
        AfxGetApp()->SetProfilePath(path_.c_str());
    }
    ~NamedColorProfile() override
    {
        AfxGetApp()->SetProfilePath(before_);
        std::filesystem::remove(path_);
    }

    /// -1 when there is no such entry.
    static int Entry(const char* section, const char* entry)
    {
        return static_cast<int>(AfxGetApp()->GetProfileInt(section, entry, -1));
    }

    CString before_;
    std::filesystem::path path_;
};

NamedColor Colorful()
{
    NamedColor color("Slate");
    color.SetColorGroup(7);
    color.SetAmbientColor(ColorVector(0.01f, 0.02f, 0.03f, 0.5f));
    color.SetDiffuseColor(ColorVector(0.04f, 0.05f, 0.06f, 0.5f));
    color.SetEmissionColor(ColorVector(0.2f, 0.3f, 0.4f, 0.5f));
    color.SetSpecularColor(ColorVector(0.08f, 0.9f, 1.0f, 0.5f));
    color.SetShininess(12.9f);
    return color;
}

// The names of the entries, in the order of ColorVector's fields.
const char* const components[] = {
    "Ambient Red",  "Ambient Green", "Ambient Blue", "Diffuse Red",    "Diffuse Green",
    "Diffuse Blue", "Transparency",  "Specular Red", "Specular Green", "Specular Blue",
};
}  // namespace

TEST_F(NamedColorProfile, SavesPercentagesUnderTheSectionPrefixAndIndex)
{
    EXPECT_EQ(Colorful().Save(12, "Material Colors", "Material Color Number "), 1);
    const char* const section = "Material Colors\\Material Color Number 12";
    EXPECT_STREQ(AfxGetApp()->GetProfileString(section, "Name", "none"), "Slate");
    // Of the float products; 0.9 * 100 is 90 in float and 89.99 in double.
    const int percentages[] = {1, 2, 3, 4, 5, 6, 50, 8, 90, 100};
    for (int i = 0; i < 10; ++i)
    {
        EXPECT_EQ(Entry(section, components[i]), percentages[i]) << components[i];
    }
    EXPECT_EQ(Entry(section, "Shininess"), 12);
}

TEST_F(NamedColorProfile, LoadsBackAllButEmissionAndGroup)
{
    Colorful().Save(0, "S", "P");

    NamedColor loaded("Old");
    loaded.SetColorGroup(3);
    loaded.SetEmissionColor(ColorVector(0.5f, 0.5f, 0.5f, 0.5f));
    EXPECT_EQ(loaded.Load(0, "S", "P"), 1);
    EXPECT_STREQ(loaded.GetName(), "Slate");
    EXPECT_RGBA(loaded.GetAmbientColor(), 0.01f, 0.02f, 0.03f, 1.0f);
    EXPECT_RGBA(loaded.GetDiffuseColor(), 0.04f, 0.05f, 0.06f, 0.5f);
    EXPECT_RGBA(loaded.GetSpecularColor(), 0.08f, 0.9f, 1.0f, 1.0f);
    EXPECT_RGBA(loaded.GetEmissionColor(), 0.5f, 0.5f, 0.5f, 0.5f);
    EXPECT_EQ(loaded.GetShininess(), 12.0f);
    EXPECT_EQ(loaded.GetColorGroup(), 3ul);
}

TEST_F(NamedColorProfile, AnOpacityOfOneHalfIsStoredAsTransparencyFifty)
{
    NamedColor color;
    color.SetDiffuseColor(ColorVector(1, 1, 1, 0.5f));
    color.Save(1, "S", "P");
    EXPECT_EQ(Entry("S\\P1", "Transparency"), 50);
    EXPECT_EQ(NamedColor(1, "S", "P").GetDiffuseColor().alpha, 0.5f);
}

TEST_F(NamedColorProfile, EachEntryIsReadIntoItsComponent)
{
    for (int i = 0; i < 10; ++i)
    {
        AfxGetApp()->WriteProfileInt("S\\P5", components[i], 10 + i);
    }
    const NamedColor color(5, "S", "P");
    EXPECT_RGBA(color.GetAmbientColor(), 0.1f, 0.11f, 0.12f, 1.0f);
    EXPECT_RGBA(color.GetDiffuseColor(), 0.13f, 0.14f, 0.15f, 0.16f);
    EXPECT_RGBA(color.GetSpecularColor(), 0.17f, 0.18f, 0.19f, 1.0f);
}

TEST_F(NamedColorProfile, AMissingSectionGivesABlackInvalidMaterial)
{
    const NamedColor color(3, "Nowhere", "P");
    EXPECT_STREQ(color.GetName(), "Invalid Material");
    EXPECT_RGBA(color.GetAmbientColor(), 0.0f, 0.0f, 0.0f, 1.0f);
    EXPECT_RGBA(color.GetDiffuseColor(), 0.0f, 0.0f, 0.0f, 0.0f);
    EXPECT_RGBA(color.GetSpecularColor(), 0.0f, 0.0f, 0.0f, 1.0f);
    EXPECT_RGBA(color.GetEmissionColor(), 0.0f, 0.0f, 0.0f, 1.0f);
    EXPECT_EQ(color.GetShininess(), 0.0f);
    EXPECT_EQ(color.GetColorGroup(), 0ul);
}

TEST_F(NamedColorProfile, ComponentsOutOfRangeAreKept)
{
    NamedColor color;
    color.SetAmbientColor(ColorVector(-0.5f, 2.5f, INFINITY, 1));
    color.SetDiffuseColor(ColorVector(NAN, 1e30f, -1e30f, 1));
    color.Save(0, "S", "P");
    EXPECT_EQ(Entry("S\\P0", "Ambient Red"), -50);
    const NamedColor loaded(0, "S", "P");
    EXPECT_RGBA(loaded.GetAmbientColor(), -0.5f, 2.5f, -0.01f, 1.0f);
    EXPECT_RGBA(loaded.GetDiffuseColor(), 0.0f, -0.01f, 0.0f, 1.0f);
}

TEST_F(NamedColorProfile, EntryNamesAreStringResourcesLookedUpAtEveryCall)
{
    AfxSetResourceString(321, "Glanz");
    NamedColor().Save(0, "S", "P");
    AfxSetResourceString(321, "Shininess");
    EXPECT_EQ(Entry("S\\P0", "Glanz"), 64);
    EXPECT_EQ(Entry("S\\P0", "Shininess"), -1);
    EXPECT_EQ(NamedColor(0, "S", "P").GetShininess(), 0.0f);
}

TEST_F(NamedColorProfile, TheListNamesOfAnApplicationAreResources)
{
    const std::pair<UINT, const char*> texts[] = {{300, "Material Colors"},
                                                  {301, "Material Color Number "},
                                                  {302, "Material Color Count"},
                                                  {303, "Current Material Color"}};
    for (const auto& [resource, expected] : texts)
    {
        CString text;
        EXPECT_TRUE(text.LoadString(resource));
        EXPECT_STREQ(text, expected);
    }
}
