// SPDX-License-Identifier: MIT
// The font calls against the figures of an independent implementation, for the faces of DejaVu and
// Liberation and for the test font.

#include "tests/support/FontFigures.h"

#include "tests/support/PrivateFonts.h"

#include <ft2build.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include FT_FREETYPE_H

namespace
{

struct TestedFace
{
    const char* full;
    const char* file;  ///< empty for the test font
    const char* family;
    LONG em;
    bool italic;
};

const TestedFace dejaVuSans = {"DejaVu Sans", "DejaVuSans.ttf", "DejaVu Sans", 2048, false};
const TestedFace liberationSerifItalic = {"Liberation Serif Italic", "LiberationSerif-Italic.ttf",
                                          "Liberation Serif", 2048, true};
const TestedFace edgeTest = {"Edge Test Regular", "", "Edge Test", 1000, false};

std::string FileOf(const TestedFace& face)
{
    return *face.file == '\0' ? ORVANE_TEST_DATA "/EdgeTest.ttf" : FontFilePath(face.file);
}

std::string Printed(const GLYPHMETRICS& metrics)
{
    return std::to_string(metrics.gmBlackBoxX) + 'x' + std::to_string(metrics.gmBlackBoxY) +
           " at " + std::to_string(metrics.gmptGlyphOrigin.x) + ',' +
           std::to_string(metrics.gmptGlyphOrigin.y) + " step " +
           std::to_string(metrics.gmCellIncX) + ',' + std::to_string(metrics.gmCellIncY);
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
                    const std::vector<std::string>& expected)
{
    ASSERT_EQ(delivered.size(), expected.size());
    for (std::size_t n = 0; n < delivered.size(); ++n)
    {
        const EnumeratedFont& font = delivered[n];
        const Json& figures = FontFigures().at("faces").at(expected[n]);
        EXPECT_EQ(font.Full(), expected[n]);
        EXPECT_EQ(font.Style(), figures.at("style").get<std::string>());
        EXPECT_EQ(font.FaceName(), figures.at("face").get<std::string>());
        for (const auto& [key, value] : NumbersOf(font))
        {
            EXPECT_EQ(value, figures.at(key).get<long>()) << key << " of " << font.Full();
        }
    }
}

/// Where our outlines are meant to differ from the reference's, found with FreeType alone.
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

class FontReference : public testing::Test
{
protected:
    // The reference repairs no outline.
    const OutlinesInUse asIs_{OUTLINES_AS_IS};
};

class FaceReference : public FontReference, public testing::WithParamInterface<TestedFace>
{};

TEST_P(FaceReference, EveryGlyphHasTheReferencesBytesAndMetrics)
{
    const TestedFace& face = GetParam();
    const std::string file = FileOf(face);
    const PrivateFonts fonts({file});
    const SelectedFont font(face.family, -face.em, FW_NORMAL, face.italic);
    ExpectedDifferences differences(file);
    std::string offCurve;
    std::string synthesised;
    int compared = 0;
    for (const GlyphFigures& glyph : GlyphsOf(face.full))
    {
        SCOPED_TRACE("code " + std::to_string(glyph.code));
        if (differences.HintsAreSynthesised(glyph.unicode))
        {
            synthesised += static_cast<char>(glyph.unicode);
            continue;
        }
        DWORD result = 0;
        GLYPHMETRICS metrics = {};
        const std::vector<BYTE> bytes = font.Outline(glyph.code, &result, &metrics);
        EXPECT_EQ(Printed(metrics), Printed(glyph.metrics));
        if (differences.StartsOffCurve(glyph.unicode))
        {
            offCurve += static_cast<char>(glyph.unicode);
            EXPECT_NE(Crc32Of(bytes), glyph.crc);
            continue;
        }
        EXPECT_EQ(result, glyph.size);
        EXPECT_EQ(bytes.size(), glyph.size);
        EXPECT_EQ(Crc32Of(bytes), glyph.crc);
        ++compared;
    }
    // The other fonts have neither; J has both.
    const bool isTestFont = *face.file == '\0';
    EXPECT_EQ(synthesised, isTestFont ? "JS" : "");
    EXPECT_EQ(offCurve, isTestFont ? "DEFGINPT" : "");
    EXPECT_EQ(compared, isTestFont ? 249 : 259);
}

TEST_P(FaceReference, EnumerationDescribesTheFaceAsTheReferenceDoes)
{
    const TestedFace& face = GetParam();
    const PrivateFonts fonts({FileOf(face)});
    ExpectDelivery(EnumerateFonts(face.family), {face.full});
}

TEST_P(FaceReference, TheOutlineMetricsAreTheReferences)
{
    const TestedFace& face = GetParam();
    const PrivateFonts fonts({FileOf(face)});
    const SelectedFont font(face.family, -face.em, FW_NORMAL, face.italic);
    const Json& line = FontFigures().at("outlineMetrics").at(face.full);
    const std::vector<BYTE> bytes = font.OutlineMetrics();
    // The reference's pointers have four bytes, so that its record before the texts has 212.
    ASSERT_EQ(bytes.size(), line.at("size").get<std::size_t>() -
                                line.at("sizeof").get<std::size_t>() + sizeof(OUTLINETEXTMETRICA));
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
        EXPECT_EQ(value, line.at(key).get<long>()) << key;
    }
    const RECT& box = record.otmrcFontBox;
    EXPECT_EQ(line.at("box").get<std::vector<long>>(),
              (std::vector<long>{box.left, box.top, box.right, box.bottom}));
    const TEXTMETRICA& metrics = record.otmTextMetrics;
    const Json& text = line.at("tm");
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
        EXPECT_EQ(value, text.at(key).get<long>()) << key;
    }
    const std::pair<const char*, PSTR> names[] = {{"family", record.otmpFamilyName},
                                                  {"face", record.otmpFaceName},
                                                  {"style", record.otmpStyleName},
                                                  {"full", record.otmpFullName}};
    for (const auto& [key, offset] : names)
    {
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes.data()) +
                              reinterpret_cast<std::uintptr_t>(offset)),
                  line.at(key).get<std::string>())
            << key;
    }
}

INSTANTIATE_TEST_SUITE_P(Faces, FaceReference,
                         testing::Values(dejaVuSans, liberationSerifItalic, edgeTest),
                         [](const auto& info) {
                             std::string name = info.param.family;
                             name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
                             return name;
                         });

TEST_F(FontReference, ALetterOfAnotherCodePageIsTheReferencesLetterOfThatCharacter)
{
    for (const TestedFace& face : {dejaVuSans, liberationSerifItalic})
    {
        const PrivateFonts fonts({FileOf(face)});
        ASSERT_TRUE(SetProcessCodePage(1257));
        const SelectedFont font(face.family, -face.em, FW_NORMAL, face.italic);
        // A with macron, U+0100, is 194 in the Baltic code page.
        GLYPHMETRICS metrics = {};
        const std::vector<BYTE> bytes = font.Outline(194, nullptr, &metrics);
        SetProcessCodePage(1252);
        const GlyphFigures expected = AWithMacronOf(face.full);
        EXPECT_EQ(bytes.size(), expected.size);
        EXPECT_EQ(Crc32Of(bytes), expected.crc);
        EXPECT_EQ(Printed(metrics), Printed(expected.metrics));
    }
}

TEST_F(FontReference, EnumerationDeliversTheSameRecordsAsTheReference)
{
    const PrivateFonts fonts(FontFiles());
    const Json& enumerations = FontFigures().at("enumerations");
    // All families; 7 by family, 7 by full name; 3 names of other kinds.
    EXPECT_EQ(enumerations.size(), 18u);
    for (const Json& call : enumerations)
    {
        SCOPED_TRACE(call.at("call").get<std::string>() + " " + call.at("name").dump());
        auto expected = call.at("faces").get<std::vector<std::string>>();
        if (call.at("name").is_null())
        {
            // The reference's order is that of its files, ours that of the names.
            std::sort(expected.begin(), expected.end());
            ExpectDelivery(EnumerateFonts(nullptr), expected);
        }
        else
        {
            ExpectDelivery(EnumerateFonts(call.at("name").get<std::string>().c_str()), expected);
        }
    }
}

TEST_F(FontReference, TheRegistrysEnumerationFindsTheReferencesFaces)
{
    const PrivateFonts fonts(FontFiles());
    std::vector<std::string> names = FullNames(EnumerateAsRegistry());
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    EXPECT_EQ(names.size(), 22u);
    EXPECT_EQ(names, RegistryNames());
}

}  // namespace
