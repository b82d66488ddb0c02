// SPDX-License-Identifier: MIT
// Times the building of every glyph of a face, stage by stage, against the two steps that cannot be
// left out: loading the glyph with FreeType and tessellating it with GLU.

#include "bench/Scenes.h"
#include "bench/Summary.h"
#include "orvane.h"
#include "profiles/ProfileSolid.h"
#include "profiles/RegionOffsets.h"

#include <benchmark/benchmark.h>
#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace
{

constexpr int firstCode = 33;
constexpr int lastCode = 255;
constexpr int codeCount = lastCode - firstCode + 1;

/// Reads glyph outlines of the bench font, at one pixel per design unit.
class OutlineSource
{
public:
    OutlineSource() : dc_(CreateCompatibleDC(nullptr))
    {
        LOGFONTA description = BenchFont()->GetEnumLogFont()->elfLogFont;
        description.lfHeight = -2048;
        description.lfWidth = 0;
        font_ = CreateFontIndirectA(&description);
        previous_ = SelectObject(dc_, font_);
    }
    ~OutlineSource()
    {
        SelectObject(dc_, previous_);
        DeleteObject(font_);
        DeleteDC(dc_);
    }
    OutlineSource(const OutlineSource&) = delete;
    OutlineSource& operator=(const OutlineSource&) = delete;

    /// Reads one outline with two calls, as OrvFont does: one for the size, one for the bytes.
    /// Returns the size in bytes, 0 when there is no outline.
    DWORD Read(UINT code, std::vector<BYTE>& buffer, GLYPHMETRICS& metrics) const
    {
        const MAT2 identity = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};
        const DWORD size = GetGlyphOutlineA(dc_, code, GGO_NATIVE, &metrics, 0, nullptr, &identity);
        if (size == GDI_ERROR)
        {
            return 0;
        }
        buffer.resize(size);
        GetGlyphOutlineA(dc_, code, GGO_NATIVE, &metrics, size, buffer.data(), &identity);
        return size;
    }

private:
    HDC dc_;
    HFONT font_;
    HGDIOBJ previous_;
};

/// The bench font, opened directly with FreeType.
class FreeTypeFace
{
public:
    FreeTypeFace()
    {
        FT_Init_FreeType(&library_);
        FcPattern* const pattern =
            FcNameParse(reinterpret_cast<const FcChar8*>("DejaVu Sans:style=Book"));
        FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
        FcDefaultSubstitute(pattern);
        FcResult result;
        FcPattern* const match = FcFontMatch(nullptr, pattern, &result);
        FcChar8* file = nullptr;
        if (match == nullptr || FcPatternGetString(match, FC_FILE, 0, &file) != FcResultMatch ||
            FT_New_Face(library_, reinterpret_cast<const char*>(file), 0, &face_) != 0)
        {
            std::fprintf(stderr, "bench: DejaVu Sans cannot be opened\n");
            std::exit(1);
        }
        FT_Set_Pixel_Sizes(face_, 2048, 2048);
        FcPatternDestroy(match);
        FcPatternDestroy(pattern);
    }
    ~FreeTypeFace()
    {
        FT_Done_Face(face_);
        FT_Done_FreeType(library_);
    }
    FreeTypeFace(const FreeTypeFace&) = delete;
    FreeTypeFace& operator=(const FreeTypeFace&) = delete;

    void Load(unsigned code) const
    {
        FT_Load_Char(face_, code, FT_LOAD_DEFAULT | FT_LOAD_NO_BITMAP | FT_LOAD_NO_AUTOHINT);
    }

private:
    FT_Library library_ = nullptr;
    FT_Face face_ = nullptr;
};

/// The flattened contours of a glyph in the form that GLU's tessellator takes.
using Contours = std::vector<std::vector<std::array<GLdouble, 3>>>;

Contours ContoursOf(const TTPolyGlyph& glyph)
{
    Contours contours(static_cast<std::size_t>(glyph.GetContourCount()));
    for (std::size_t k = 0; k < contours.size(); ++k)
    {
        const TTPolyContour contour = glyph.contours.GetAt(static_cast<int>(k));
        for (int i = 0; i < contour.GetVertexCount(); ++i)
        {
            const Vector point = contour.GetVertexOutlinePoint(i);
            contours[k].push_back({point.x, point.y, 0});
        }
    }
    return contours;
}

void CALLBACK Ignore() {}

/// Tessellates and ignores the result, so that only the tessellator's own time is measured.
void Tessellate(Contours& contours)
{
    GLUtesselator* const tessellator = gluNewTess();
    gluTessCallback(tessellator, GLU_BEGIN, Ignore);
    gluTessCallback(tessellator, GLU_VERTEX, Ignore);
    gluTessCallback(tessellator, GLU_END, Ignore);
    gluTessCallback(tessellator, GLU_ERROR, Ignore);
    gluBeginPolygon(tessellator);
    for (std::size_t k = 0; k < contours.size(); ++k)
    {
        if (k > 0)
        {
            gluNextContour(tessellator, GLU_UNKNOWN);
        }
        for (auto& vertex : contours[k])
        {
            gluTessVertex(tessellator, vertex.data(), vertex.data());
        }
    }
    gluEndPolygon(tessellator);
    gluDeleteTess(tessellator);
}

struct Stages
{
    std::vector<double> outline;
    std::vector<double> flatten;
    std::vector<double> duplicates;
    std::vector<double> build;
    std::vector<double> freeType;
    std::vector<double> tessellate;
    std::vector<double> ratio;
};

void Measure()
{
    const OutlineSource source;
    const FreeTypeFace face;
    std::vector<std::vector<BYTE>> buffers(codeCount);
    std::vector<GLYPHMETRICS> metrics(codeCount);
    std::vector<TTGlyph> glyphs(codeCount);
    std::vector<Contours> contours(codeCount);
    std::vector<std::unique_ptr<TTPolyGlyph>> flat(codeCount);
    unsigned long bytes = 0;

    const auto each = [](auto function) {
        return Seconds([&] {
            for (int i = 0; i < codeCount; ++i)
            {
                function(i);
            }
        });
    };
    Stages stages;
    for (int turn = 0; turn < 15; ++turn)
    {
        const double outline = each([&](int i) {
            const DWORD size =
                source.Read(static_cast<UINT>(firstCode + i), buffers[i], metrics[i]);
            glyphs[i].FromGlyphOutline(buffers[i].data(), size);
        });
        const double freeType =
            each([&](int i) { face.Load(static_cast<unsigned>(firstCode + i)); });
        const double flatten = each([&](int i) {
            flat[i] = std::make_unique<TTPolyGlyph>();
            flat[i]->FromTTGlyph(glyphs[i], 2048.0f);
        });
        const double duplicates = each([&](int i) { flat[i]->CorrectDuplicateVerticies(); });
        if (turn == 0)
        {
            each([&](int i) { contours[i] = ContoursOf(*flat[i]); });
        }
        const double tessellate = each([&](int i) { Tessellate(contours[i]); });
        std::vector<std::unique_ptr<OrvGlyph>> built(codeCount);
        const double construct = each([&](int i) {
            built[i] = std::make_unique<OrvGlyph>(buffers[i].size(), metrics[i]);
            built[i]->ConstructGlyph(glyphs[i], 2048.0f);
        });
        if (turn == 0)
        {
            each([&](int i) {
                bytes +=
                    built[i]->SizeOf() + built[i]->SizeOfPolygons() + built[i]->SizeOfVerticies();
            });
        }
        stages.outline.push_back(outline);
        stages.flatten.push_back(flatten);
        stages.duplicates.push_back(duplicates);
        stages.build.push_back(outline + construct);
        stages.freeType.push_back(freeType);
        stages.tessellate.push_back(tessellate);
        stages.ratio.push_back((outline + construct) / (freeType + tessellate));
    }

    const auto micro = [](std::vector<double> seconds) {
        char text[40];
        std::snprintf(text, sizeof text, "%.1f us", Median(std::move(seconds)) / codeCount * 1e6);
        return std::string(text);
    };
    char ratio[40];
    std::snprintf(ratio, sizeof ratio, ", %.2f x ", Median(stages.ratio));
    AddSummary("build a glyph (mean of " + std::to_string(codeCount) + " of DejaVu Sans)",
               micro(stages.build) + ratio + "FreeType load (" + micro(stages.freeType) +
                   ") + GLU tessellation (" + micro(stages.tessellate) + ")");
    AddSummary("  of it: outline", micro(stages.outline));
    AddSummary("  of it: flattening, normals, duplicates", micro(stages.flatten));
    AddSummary("  of it: duplicate search alone", micro(stages.duplicates));
    AddSummary("bytes held by a built glyph", std::to_string(bytes / codeCount));
}
const SummaryPart part("glyph", Measure);

/// Times the rings and the solids of profiled edges against GLU's tessellation of the same
/// outlines.
void MeasureProfiles()
{
    const OutlineSource source;
    std::vector<orvane::PlaneRegion> regions;
    std::vector<Contours> contours;
    for (int code = firstCode; code <= lastCode; ++code)
    {
        std::vector<BYTE> buffer;
        GLYPHMETRICS metrics;
        const DWORD size = source.Read(static_cast<UINT>(code), buffer, metrics);
        TTGlyph outline;
        outline.FromGlyphOutline(buffer.data(), size);
        TTPolyGlyph flat;
        flat.FromTTGlyph(outline, 2048.0f);
        flat.CorrectDuplicateVerticies();
        regions.push_back(orvane::RegionOf(flat));
        contours.push_back(ContoursOf(flat));
    }
    const auto tessellate = [&] {
        for (Contours& glyph : contours)
        {
            Tessellate(glyph);
        }
    };
    const auto summarize = [](const std::string& what, const Paired& times) {
        char figure[100];
        std::snprintf(figure, sizeof figure, "%.1f us a glyph, %.2f x GLU tessellation (%.1f us)",
                      times.ours / codeCount * 1e6, times.ratio, times.floor / codeCount * 1e6);
        AddSummary(what, figure);
    };
    for (const char* name : {"chamfer 0.02", "round 0.02", "round -0.02"})
    {
        const orvane::EdgeProfile profile = orvane::ParseProfile(name);
        const auto rings = [&] {
            for (const orvane::PlaneRegion& region : regions)
            {
                const orvane::profiles::RegionOffsets offsets(region, profile.corners, 0.02);
                for (const orvane::ProfileStep& step : profile.steps)
                {
                    benchmark::DoNotOptimize(offsets.At(step.offset * offsets.UnitsPerEm()));
                }
            }
        };
        const auto solids = [&] {
            for (const orvane::PlaneRegion& region : regions)
            {
                benchmark::DoNotOptimize(orvane::BuildProfileSolid(region, profile));
            }
        };
        summarize(std::string("rings of the profile ") + name, TimeInTurns(15, rings, tessellate));
        summarize(std::string("solids of the profile ") + name,
                  TimeInTurns(15, solids, tessellate));
    }
}
const SummaryPart profilePart("profiles", MeasureProfiles);

/// Builds every glyph, as a new font does.
void BuildAll(UINT outlines)
{
    SetProcessOutlines(outlines);
    const OutlineSource source;
    std::vector<BYTE> buffer;
    GLYPHMETRICS metrics;
    for (int code = firstCode; code <= lastCode; ++code)
    {
        const DWORD size = source.Read(static_cast<UINT>(code), buffer, metrics);
        TTGlyph outline;
        outline.FromGlyphOutline(buffer.data(), size);
        OrvGlyph glyph(size, metrics);
        glyph.ConstructGlyph(outline, 2048.0f);
    }
}

/// The processor time that a call takes, in seconds.
template <typename Function>
double ProcessorSeconds(Function function)
{
    const std::clock_t start = std::clock();
    function();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// Measures, in processor time, what it costs to check outlines and to repair faulty ones. Each
/// turn loads the list of fonts again, so that no result of an earlier check is used.
void MeasureRepair()
{
    const auto build = [](UINT outlines) {
        return [outlines] {
            double least = 1e9;
            for (int n = 0; n < 5; ++n)
            {
                ReloadFonts();
                SetProcessOutlines(outlines);
                // Opens the face and prepares its size, which is not to be measured.
                const OutlineSource source;
                std::vector<BYTE> buffer;
                GLYPHMETRICS metrics;
                source.Read(' ', buffer, metrics);
                least = std::min(least, ProcessorSeconds([outlines] { BuildAll(outlines); }));
            }
            return least;
        };
    };
    std::vector<double> ratios;
    std::vector<double> repaired;
    std::vector<double> asIs;
    for (int turn = 0; turn < 11; ++turn)
    {
        // The two take turns in going first, so that neither always finds the caches filled by the
        // other.
        if (turn % 2 == 0)
        {
            repaired.push_back(build(OUTLINES_REPAIRED)());
            asIs.push_back(build(OUTLINES_AS_IS)());
        }
        else
        {
            asIs.push_back(build(OUTLINES_AS_IS)());
            repaired.push_back(build(OUTLINES_REPAIRED)());
        }
        ratios.push_back(repaired.back() / asIs.back());
    }
    SetProcessOutlines(OUTLINES_REPAIRED);
    char figure[100];
    std::snprintf(
        figure, sizeof figure, "%.1f us a glyph, %.2f x with outlines as they are (%.1f us)",
        Median(repaired) / codeCount * 1e6, Median(ratios), Median(asIs) / codeCount * 1e6);
    AddSummary("build them with outlines tried and repaired", figure);
}
const SummaryPart repairPart("repair", MeasureRepair);

void BuildAllGlyphs(benchmark::State& state)
{
    for (auto _ : state)
    {
        BuildAll(OUTLINES_REPAIRED);
    }
    state.SetItemsProcessed(state.iterations() * codeCount);
}
BENCHMARK(BuildAllGlyphs)->Unit(benchmark::kMillisecond);

}  // namespace
