// SPDX-License-Identifier: MIT
#include "platform/ShapingFace.h"

#include "platform/Fonts.h"
#include "tests/shaping/ShapedTexts.h"
#include "tests/support/FontFile.h"
#include "tests/support/WeightAxis.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>

namespace
{

using namespace orvane;

/// A file in a folder of the test.
class ShapingFaceFile : public testing::Test
{
protected:
    ShapingFaceFile() { std::filesystem::create_directories(folder_); }
    ~ShapingFaceFile() override { std::filesystem::remove_all(folder_); }

    std::string Path() const { return folder_ + "/font.ttf"; }

private:
    std::string folder_ = std::filesystem::temp_directory_path() / "orvane-shaping-face";
};

TEST(ShapingFace, MeasuresAreThoseOfTheFontsTables)
{
    // hhea of DejaVu Sans: ascender 1901, descender -483, gap 0; 2048 units per em.
    const auto face = InstalledFace("DejaVu Sans");

    EXPECT_EQ(face->Metrics().unitsPerEm, 2048);
    EXPECT_EQ(face->Metrics().ascent, 1901 / 2048.0);
    EXPECT_EQ(face->Metrics().descent, 483 / 2048.0);
    EXPECT_EQ(face->Metrics().lineGap, 0);
    EXPECT_EQ(face->FamilyName(), "DejaVu Sans");
    EXPECT_EQ(face->Weight(), 400);
    EXPECT_FALSE(face->IsItalic());
    EXPECT_TRUE(face->Axes().empty());

    // OS/2 of Liberation Sans.
    const FaceMetrics liberation = InstalledFace("Liberation Sans")->Metrics();
    EXPECT_EQ(liberation.capHeight, 1409 / 2048.0);
    EXPECT_EQ(liberation.xHeight, 1082 / 2048.0);
}

TEST(ShapingFace, AFaceThatIsOpenIsNotOpenedAgain)
{
    const auto face = InstalledFace("DejaVu Sans");

    EXPECT_EQ(InstalledFace("DejaVu Sans"), face);
    EXPECT_NE(InstalledFace("DejaVu Sans Bold")->Id(), face->Id());
}

TEST(ShapingFace, ComposedLettersAreCoveredByTheirParts)
{
    const auto face = InstalledFace("DejaVu Sans");
    const auto covers = [&](std::u32string_view text) {
        return face->Covers(text.data(), text.size());
    };
    EXPECT_TRUE(covers(U"e\u0301"));
    EXPECT_TRUE(covers(U"a\u200D"));
    EXPECT_TRUE(covers(U"\uFE0F"));
    EXPECT_FALSE(covers(U"\u65E5"));
    EXPECT_FALSE(covers(U"a\u302E"));
}

TEST(ShapingFace, FeaturesAreReadAsHarfBuzzWritesThem)
{
    EXPECT_EQ(ParseFontFeature("smcp")->tag, "smcp");
    EXPECT_EQ(ParseFontFeature("smcp")->value, 1U);
    EXPECT_EQ(ParseFontFeature("-liga")->value, 0U);
    EXPECT_EQ(ParseFontFeature("liga=0")->value, 0U);
    EXPECT_EQ(ParseFontFeature("salt=3")->value, 3U);
    EXPECT_FALSE(ParseFontFeature("kern[3:5]"));
    EXPECT_EQ(ParseFontFeature(" kern off ")->value, 0U);
    EXPECT_EQ(ParseFontFeature("salt=65535")->value, 65'535U);
    EXPECT_FALSE(ParseFontFeature("salt=65536"));
    EXPECT_FALSE(ParseFontFeature("liga=1e2"));
    EXPECT_FALSE(ParseFontFeature("-liga=1"));
    EXPECT_FALSE(ParseFontFeature("ligature"));
    EXPECT_FALSE(ParseFontFeature("x="));
    EXPECT_FALSE(ParseFontFeature(""));
}

TEST(ShapingFace, OutlinesByGlyphNumberAreThoseOfTheCharacters)
{
    const auto face = InstalledFace("DejaVu Sans");
    const MAT2 identity = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};
    LOGFONTA description = {};
    description.lfHeight = -2048;
    std::strcpy(description.lfFaceName, "DejaVu Sans");
    const auto outline = [&](HFONT font, UINT character, UINT format) {
        HDC dc = CreateCompatibleDC(nullptr);
        SelectObject(dc, font);
        GLYPHMETRICS metrics = {};
        std::vector<BYTE> bytes(10'000);
        const DWORD size =
            GetGlyphOutlineA(dc, character, format, &metrics, static_cast<DWORD>(bytes.size()),
                             bytes.data(), &identity);
        bytes.resize(size == GDI_ERROR ? 0 : size);
        DeleteDC(dc);
        return std::pair(bytes, metrics.gmCellIncX);
    };
    HFONT byNumber = face->MakeFont(-2048);
    HFONT byName = CreateFontIndirectA(&description);
    ASSERT_NE(byNumber, nullptr);
    for (const char letter : {'A', 'g', '%'})
    {
        const UINT glyph = face->GlyphOf(static_cast<unsigned char>(letter));
        const auto expected = outline(byName, static_cast<unsigned char>(letter), GGO_NATIVE);
        EXPECT_FALSE(expected.first.empty());
        EXPECT_EQ(outline(byNumber, glyph, GGO_NATIVE | GGO_GLYPH_INDEX), expected);
        EXPECT_EQ(outline(byNumber, static_cast<unsigned char>(letter), GGO_NATIVE), expected);
    }
    // Glyph 5044, the ligature ffi, has no code of one byte. Its advance is 1980 units.
    EXPECT_EQ(outline(byNumber, 5044, GGO_NATIVE | GGO_GLYPH_INDEX).second, 1980);
    EXPECT_FALSE(outline(byNumber, 5044, GGO_NATIVE | GGO_GLYPH_INDEX).first.empty());
    EXPECT_TRUE(outline(byNumber, 70'000, GGO_NATIVE | GGO_GLYPH_INDEX).first.empty());
    DeleteObject(byNumber);
    DeleteObject(byName);
}

TEST_F(ShapingFaceFile, AxesHaveAnyValueWithinTheirRange)
{
    FontFile::EdgeTest().Put("fvar", WeightAxis()).Write(Path());
    std::vector<std::string> notices;
    const auto weightOf = [&](int index, const std::vector<AxisValue>& axes) {
        notices.clear();
        const auto face = ShapingFace::Open({Path(), index, axes}, nullptr, &notices);
        return face ? face->AxisValues().at(0).value : -1;
    };
    EXPECT_EQ(weightOf(0, {}), 400);
    EXPECT_EQ(weightOf(0, {{"wght", 650.5}}), 650.5);
    EXPECT_TRUE(notices.empty());
    EXPECT_EQ(weightOf(1 << 16, {}), 700);
    EXPECT_EQ(weightOf(1 << 16, {{"wght", 300}}), 300);
    EXPECT_EQ(weightOf(0, {{"wght", 1'000}}), 900);
    EXPECT_EQ(notices,
              std::vector<std::string>{"axis wght is 900, because 1000 is not within 100 to 900"});
    EXPECT_EQ(weightOf(0, {{"wdth", 80}}), 400);
    EXPECT_EQ(notices, std::vector<std::string>{"has no axis wdth"});
    EXPECT_EQ(weightOf(2 << 16, {}), -1);

    FontQuery query;
    query.file = Path();
    query.instance = "regular";
    EXPECT_EQ(OpenFont(query).face->AxisValues().at(0).value, 700);
    query.weight = 500;
    EXPECT_EQ(OpenFont(query).face->AxisValues().at(0).value, 500);
}

TEST_F(ShapingFaceFile, FontsWithoutOutlinesOrGlyphsAreRefused)
{
    const auto problem = [&] {
        std::string text;
        EXPECT_FALSE(ShapingFace::Open({Path(), 0, {}}, &text));
        return text;
    };
    FontFile::EdgeTest().Remove("glyf").Write(Path());
    EXPECT_EQ(problem(), "no outlines");
    FontFile::EdgeTest().Remove("maxp").Write(Path());
    EXPECT_EQ(problem(), "no glyphs");
}

TEST_F(ShapingFaceFile, ADamagedTableOfLigaturesDoesNoHarm)
{
    // Offsets that point far beyond the table.
    FontFile::EdgeTest().Put("GSUB", FontFile::Table(200, 0xFF)).Write(Path());
    const auto face = ShapingFace::Open({Path(), 0, {}}, nullptr);
    ASSERT_TRUE(face);
    const std::u32string text = U"AVA";
    ShapingRun run;
    run.text = text.data();
    run.textSize = run.end = text.size();
    run.script = MakeScriptTag("Latn");

    EXPECT_EQ(face->Shape(run).size(), 3U);
}

}  // namespace
