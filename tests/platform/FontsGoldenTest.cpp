// SPDX-License-Identifier: MIT
// The font calls against dumps of an independent implementation's. The dumps are of DejaVu's and
// Liberation's faces and of the edge cases' font; a test whose dump or faces are missing is
// skipped.

#include "tests/support/GoldenFonts.h"
#include "tests/support/PrivateFonts.h"

#include <ft2build.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include FT_FREETYPE_H

namespace
{

/// A dump of one face.
struct FaceDump
{
    const char* dump;
    const char* file;  // empty: the edge cases' font
    const char* family;
    LONG em;
    bool italic;
};

const FaceDump dejaVuSans = {"gdi-DejaVu-Sans.jsonl", "DejaVuSans.ttf", "DejaVu Sans", 2048, false};
const FaceDump liberationSerifItalic = {"gdi-Liberation-Serif-Italic.jsonl",
                                        "LiberationSerif-Italic.ttf", "Liberation Serif", 2048,
                                        true};
const FaceDump edgeTest = {"gdi-Edge-Test-Regular.jsonl", "", "Edge Test", 1000, false};

std::string FileOf(const FaceDump& face)
{
    return *face.file == '\0' ? ORVANE_TEST_DATA "/EdgeTest.ttf" : ReferenceFile(face.file);
}

std::string Printed(const GLYPHMETRICS& metrics)
{
    return std::to_string(metrics.gmBlackBoxX) + 'x' + std::to_string(metrics.gmBlackBoxY) +
           " at " + std::to_string(metrics.gmptGlyphOrigin.x) + ',' +
           std::to_string(metrics.gmptGlyphOrigin.y) + " step " +
           std::to_string(metrics.gmCellIncX) + ',' + std::to_string(metrics.gmCellIncY);
}

GLYPHMETRICS GoldenMetrics(const GoldenLine& line)
{
    const GoldenLine metrics = line.Object("gm");
    return {static_cast<UINT>(metrics.Number("bbX")),
            static_cast<UINT>(metrics.Number("bbY")),
            {static_cast<LONG>(metrics.Number("orgX")), static_cast<LONG>(metrics.Number("orgY"))},
            static_cast<SHORT>(metrics.Number("incX")),
            static_cast<SHORT>(metrics.Number("incY"))};
}

/// Every number that the reference tells of an enumerated face.
std::map<std::string, long> NumbersOf(const EnumeratedFont& font)
{
    const LOGFONTA& lf = font.record.elfLogFont;
    const NEWTEXTMETRICA& tm = font.metrics;
    return {
        {"height", lf.lfHeight},
        {"width", lf.lfWidth},
        {"esc", lf.lfEscapement},
        {"orient", lf.lfOrientation},
        {"weight", lf.lfWeight},
        {"italic", lf.lfItalic},
        {"underline", lf.lfUnderline},
        {"strikeout", lf.lfStrikeOut},
        {"charset", lf.lfCharSet},
        {"outprec", lf.lfOutPrecision},
        {"clipprec", lf.lfClipPrecision},
        {"quality", lf.lfQuality},
        {"pitch", lf.lfPitchAndFamily},
        {"tmHeight", tm.tmHeight},
        {"tmAscent", tm.tmAscent},
        {"tmDescent", tm.tmDescent},
        {"tmInternalLeading", tm.tmInternalLeading},
        {"tmExternalLeading", tm.tmExternalLeading},
        {"tmAveCharWidth", tm.tmAveCharWidth},
        {"tmMaxCharWidth", tm.tmMaxCharWidth},
        {"tmWeight", tm.tmWeight},
        {"tmOverhang", tm.tmOverhang},
        {"tmDigitizedAspectX", tm.tmDigitizedAspectX},
        {"tmDigitizedAspectY", tm.tmDigitizedAspectY},
        {"tmFirstChar", tm.tmFirstChar},
        {"tmLastChar", tm.tmLastChar},
        {"tmDefaultChar", tm.tmDefaultChar},
        {"tmBreakChar", tm.tmBreakChar},
        {"tmItalic", tm.tmItalic},
        {"tmUnderlined", tm.tmUnderlined},
        {"tmStruckOut", tm.tmStruckOut},
        {"tmPitchAndFamily", tm.tmPitchAndFamily},
        {"tmCharSet", tm.tmCharSet},
        {"ntmFlags", tm.ntmFlags},
        {"ntmSizeEM", tm.ntmSizeEM},
        {"ntmCellHeight", tm.ntmCellHeight},
        {"ntmAvgWidth", tm.ntmAvgWidth},
        {"type", font.type},
    };
}

void ExpectDelivery(const std::vector<EnumeratedFont>& delivered,
                    const std::vector<GoldenLine>& expected)
{
    ASSERT_EQ(delivered.size(), expected.size());
    for (std::size_t n = 0; n < delivered.size(); ++n)
    {
        const EnumeratedFont& font = delivered[n];
        const GoldenLine& line = expected[n];
        EXPECT_EQ(font.Full(), line.String("full"));
        EXPECT_EQ(font.Style(), line.String("style"));
        EXPECT_EQ(font.FaceName(), line.Object("lf").String("face"));
        for (const auto& [key, value] : NumbersOf(font))
        {
            EXPECT_EQ(value, line.Number(key)) << key << " of " << font.Full();
        }
    }
}

/// Where the dumps are meant to differ, found with FreeType alone.
class ExpectedDifferences
{
public:
    explicit ExpectedDifferences(const std::string& file)
    {
        FT_Init_FreeType(&library_);
        FT_New_Face(library_, file.c_str(), 0, &face_);
        FT_Set_Pixel_Sizes(face_, face_->units_per_EM, face_->units_per_EM);
    }
    ~ExpectedDifferences()
    {
        FT_Done_Face(face_);
        FT_Done_FreeType(library_);
    }
    ExpectedDifferences(const ExpectedDifferences&) = delete;
    ExpectedDifferences& operator=(const ExpectedDifferences&) = delete;

    /// Whether a polygon of the glyph has its contour's first point off the curve. The reference
    /// starts there, which bends the letter.
    bool StartsOffCurve(FT_ULong character)
    {
        FT_Load_Char(face_, character, FT_LOAD_NO_SCALE);
        const FT_Outline& outline = face_->glyph->outline;
        bool off = false;
        int first = 0;
        for (int contour = 0; contour < outline.n_contours; ++contour)
        {
            const int last = outline.contours[contour];
            off = off || (last > first && (outline.tags[first] & 1) == 0);
            first = last + 1;
        }
        return off;
    }

    /// Whether the reference moved the glyph's points by hints that the font does not have.
    bool HintsAreSynthesised(FT_ULong character)
    {
        return Points(character, 0) != Points(character, FT_LOAD_NO_AUTOHINT);
    }

private:
    std::vector<std::pair<FT_Pos, FT_Pos>> Points(FT_ULong character, FT_Int32 flags)
    {
        FT_Load_Char(face_, character, FT_LOAD_NO_BITMAP | flags);
        const FT_Outline& outline = face_->glyph->outline;
        std::vector<std::pair<FT_Pos, FT_Pos>> points;
        for (int point = 0; point < outline.n_points; ++point)
        {
            points.emplace_back(outline.points[point].x, outline.points[point].y);
        }
        return points;
    }

    FT_Library library_ = nullptr;
    FT_Face face_ = nullptr;
};

class FontsGolden : public testing::Test
{
protected:
    void SetUp() override
    {
        if (GoldenFolder().empty())
        {
            GTEST_SKIP() << "no reference dumps at " ORVANE_SHARED;
        }
    }

    // The reference repairs nothing.
    const OutlinesInUse asIs_{OUTLINES_AS_IS};
};

class FaceGolden : public FontsGolden, public testing::WithParamInterface<FaceDump>
{
protected:
    void SetUp() override
    {
        FontsGolden::SetUp();
        if (!IsSkipped() && FileOf(GetParam()).empty())
        {
            GTEST_SKIP() << GetParam().file << " is not installed";
        }
    }
};

TEST_P(FaceGolden, EveryGlyphHasTheReferencesBytesAndMetrics)
{
    const FaceDump& face = GetParam();
    const std::string file = FileOf(face);
    const PrivateFonts fonts({file});
    const SelectedFont font(face.family, -face.em, FW_NORMAL, face.italic);
    ExpectedDifferences differences(file);
    std::string offCurve;
    std::string synthesised;
    int compared = 0;
    for (const GoldenLine& line : ReadGolden(face.dump))
    {
        if (!line.Has("code"))
        {
            continue;
        }
        const std::vector<BYTE> expected = line.Polygons();
        // The dump is understood in full.
        ASSERT_EQ(GoldenChecksum(expected), line.String("crc"));
        const auto code = static_cast<UINT>(line.Number("code"));
        const FT_ULong character = std::stoul(line.String("cp1252"), nullptr, 16);
        if (differences.HintsAreSynthesised(character))
        {
            synthesised += static_cast<char>(character);
            continue;
        }
        DWORD result = 0;
        GLYPHMETRICS metrics = {};
        const std::vector<BYTE> bytes = font.Outline(code, &result, &metrics);
        EXPECT_EQ(Printed(metrics), Printed(GoldenMetrics(line))) << line.Text();
        if (differences.StartsOffCurve(character))
        {
            offCurve += static_cast<char>(character);
            EXPECT_NE(bytes, expected) << line.Text();
            continue;
        }
        EXPECT_EQ(result, static_cast<DWORD>(line.Number("ret"))) << line.Text();
        EXPECT_EQ(bytes, expected) << line.Text();
        ++compared;
    }
    // Other fonts have neither; J has both.
    const bool edges = *face.file == '\0';
    EXPECT_EQ(synthesised, edges ? "JS" : "");
    EXPECT_EQ(offCurve, edges ? "DEFGINPT" : "");
    EXPECT_EQ(compared, edges ? 249 : 259);
}

TEST_P(FaceGolden, EnumerationDescribesTheFaceAsTheReferenceDoes)
{
    const FaceDump& face = GetParam();
    const PrivateFonts fonts({FileOf(face)});
    const GoldenLine line = ReadGolden(face.dump).at(0);
    ASSERT_EQ(line.String("call"), "enum");
    ExpectDelivery(EnumerateFonts(face.family), {line});
}

TEST_P(FaceGolden, TheOutlineMetricsAreTheReferences)
{
    const FaceDump& face = GetParam();
    const PrivateFonts fonts({FileOf(face)});
    const SelectedFont font(face.family, -face.em, FW_NORMAL, face.italic);
    const GoldenLine line = ReadGolden(face.dump).at(1).Object("otm");
    const std::vector<BYTE> bytes = font.OutlineMetrics();
    // The reference's pointers have four bytes, so that its record before the texts has 212.
    ASSERT_EQ(bytes.size(), static_cast<std::size_t>(line.Number("size") - line.Number("sizeof")) +
                                sizeof(OUTLINETEXTMETRICA));
    OUTLINETEXTMETRICA record;
    std::memcpy(static_cast<void*>(&record), bytes.data(), sizeof record);
    EXPECT_EQ(record.otmSize, bytes.size());

    const std::map<std::string, long> numbers = {
        {"otmEMSquare", record.otmEMSquare},         {"otmAscent", record.otmAscent},
        {"otmDescent", record.otmDescent},           {"otmLineGap", record.otmLineGap},
        {"otmsCapEmHeight", record.otmsCapEmHeight}, {"otmsXHeight", record.otmsXHeight},
        {"otmMacAscent", record.otmMacAscent},       {"otmMacDescent", record.otmMacDescent},
        {"otmMacLineGap", record.otmMacLineGap},     {"otmusMinimumPPEM", record.otmusMinimumPPEM},
        {"otmfsSelection", record.otmfsSelection},   {"otmfsType", record.otmfsType},
        {"slopeRise", record.otmsCharSlopeRise},     {"slopeRun", record.otmsCharSlopeRun},
        {"italicAngle", record.otmItalicAngle},      {"underSize", record.otmsUnderscoreSize},
        {"underPos", record.otmsUnderscorePosition}, {"strikeSize", record.otmsStrikeoutSize},
        {"strikePos", record.otmsStrikeoutPosition}, {"charset", record.otmTextMetrics.tmCharSet},
    };
    for (const auto& [key, value] : numbers)
    {
        EXPECT_EQ(value, line.Number(key)) << key;
    }
    const RECT& box = record.otmrcFontBox;
    EXPECT_EQ(line.Numbers("box"), (std::vector<long>{box.left, box.top, box.right, box.bottom}));
    const TEXTMETRICA& metrics = record.otmTextMetrics;
    const GoldenLine text = line.Object("tm");
    const std::map<std::string, long> textNumbers = {
        {"height", metrics.tmHeight},      {"ascent", metrics.tmAscent},
        {"descent", metrics.tmDescent},    {"il", metrics.tmInternalLeading},
        {"el", metrics.tmExternalLeading}, {"ave", metrics.tmAveCharWidth},
        {"max", metrics.tmMaxCharWidth},   {"first", metrics.tmFirstChar},
        {"last", metrics.tmLastChar},      {"default", metrics.tmDefaultChar},
        {"break", metrics.tmBreakChar},
    };
    for (const auto& [key, value] : textNumbers)
    {
        EXPECT_EQ(value, text.Number(key)) << key;
    }
    const std::pair<const char*, PSTR> names[] = {{"family", record.otmpFamilyName},
                                                  {"face", record.otmpFaceName},
                                                  {"style", record.otmpStyleName},
                                                  {"full", record.otmpFullName}};
    for (const auto& [key, offset] : names)
    {
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes.data()) +
                              reinterpret_cast<std::uintptr_t>(offset)),
                  line.String(key))
            << key;
    }
}

INSTANTIATE_TEST_SUITE_P(Dumps, FaceGolden,
                         testing::Values(dejaVuSans, liberationSerifItalic, edgeTest),
                         [](const auto& info) {
                             std::string name = info.param.family;
                             name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
                             return name;
                         });

TEST_F(FontsGolden, ALetterOfAnotherCodePageIsTheReferencesLetterOfThatCharacter)
{
    for (const FaceDump& face : {dejaVuSans, liberationSerifItalic})
    {
        if (FileOf(face).empty())
        {
            GTEST_SKIP() << face.file << " is not installed";
        }
        const PrivateFonts fonts({FileOf(face)});
        ASSERT_TRUE(SetProcessCodePage(1257));
        const SelectedFont font(face.family, -face.em, FW_NORMAL, face.italic);
        // A with macron, U+0100, is 194 in the Baltic code page.
        GLYPHMETRICS metrics = {};
        const std::vector<BYTE> bytes = font.Outline(194, nullptr, &metrics);
        SetProcessCodePage(1252);
        int found = 0;
        for (const GoldenLine& line : ReadGolden(face.dump))
        {
            if (line.Has("wcode") && line.Number("wcode") == 0x100)
            {
                EXPECT_EQ(bytes, line.Polygons());
                EXPECT_EQ(Printed(metrics), Printed(GoldenMetrics(line)));
                ++found;
            }
        }
        EXPECT_EQ(found, 1);
    }
}

/// The reference's deliveries for the western character set, by the call and the name asked for.
std::map<std::string, std::vector<GoldenLine>> GoldenEnumerations()
{
    std::map<std::string, std::vector<GoldenLine>> calls;
    for (const GoldenLine& line : ReadGolden("enum.jsonl"))
    {
        if (line.Has("lf") && line.Object("lf").Number("charset") == 0)
        {
            const std::string name = line.Text().find("\"family\":null") != std::string::npos
                                         ? ""
                                         : line.String("family");
            calls[line.String("call") + '|' + name].push_back(line);
        }
    }
    return calls;
}

TEST_F(FontsGolden, EnumerationDeliversWhatTheReferenceDelivers)
{
    const std::vector<std::string> files = ReferenceFiles();
    if (files.size() != 22)
    {
        GTEST_SKIP() << "only " << files.size() << " of the 22 reference faces are installed";
    }
    const PrivateFonts fonts(files);
    std::size_t calls = 0;
    for (auto& [call, expected] : GoldenEnumerations())
    {
        SCOPED_TRACE(call);
        const std::string family = call.substr(call.find('|') + 1);
        if (family.empty())
        {
            // The reference's order is that of its files, ours that of the names.
            std::sort(expected.begin(), expected.end(),
                      [](const GoldenLine& a, const GoldenLine& b) {
                          return a.String("name") < b.String("name");
                      });
        }
        ExpectDelivery(EnumerateFonts(family.empty() ? nullptr : family.c_str()), expected);
        ++calls;
    }
    EXPECT_EQ(calls, 18u);  // all families; 7 by family, 7 by full name; 3 names of other kinds
}

TEST_F(FontsGolden, TheRegistrysEnumerationFindsTheReferencesFaces)
{
    const std::vector<std::string> files = ReferenceFiles();
    if (files.empty())
    {
        GTEST_SKIP() << "none of the reference faces is installed";
    }
    const PrivateFonts fonts(files);
    std::vector<std::string> names = FullNames(EnumerateAsRegistry());
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());

    const std::vector<std::string> expected = GoldenRegistry();
    ASSERT_EQ(expected.size(), 22u);
    if (files.size() == expected.size())
    {
        EXPECT_EQ(names, expected);
        return;
    }
    std::cout << "only " << files.size() << " of the 22 reference faces are installed\n";
    EXPECT_EQ(names.size(), files.size());
    EXPECT_TRUE(std::includes(expected.begin(), expected.end(), names.begin(), names.end()));
}

}  // namespace
