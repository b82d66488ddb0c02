// SPDX-License-Identifier: MIT
// survey-outlines [--letters] [--every N] [FILTER]
//
// Builds the glyphs of every installed face as the library does, once from the font's own outlines
// and once from those that the platform hands over, and prints how many come out wrong.
//
//   --letters  only the characters of the western code page
//   --every N  only every Nth glyph
//   FILTER     only faces whose full names contain this text

#include "contours/Areas.h"
#include "platform/posix/TextConversion.h"
#include "platform/posix/fonts/FontFace.h"
#include "platform/posix/fonts/InstalledFonts.h"
#include "tools/survey/BuiltGlyph.h"
#include "tools/survey/OutlineMovement.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <optional>
#include <set>
#include <tuple>

namespace contours = orvane::contours;

namespace
{

/// How many glyphs and contours are wrong, as BuiltGlyph judges them.
struct Counts
{
    long noCaps = 0;
    long falseHoles = 0;
    long wrongContours = 0;
    long contours = 0;     ///< all contours
    long wrongGlyphs = 0;  ///< glyphs with a contour that runs the wrong way

    void Add(const BuiltGlyph& built)
    {
        noCaps += built.hasNoCaps ? 1 : 0;
        falseHoles += built.hasFalseHoles ? 1 : 0;
        contours += built.contourCount;
        wrongContours += built.wrongContours;
        wrongGlyphs += built.wrongContours != 0 ? 1 : 0;
    }
};

/// Everything that is counted.
struct Survey
{
    int faces = 0;
    int cubicFaces = 0;
    int otherFaces = 0;  ///< faces whose outlines cannot be handed over
    int instances = 0;   ///< faces that are named instances of variable fonts
    long glyphs = 0;
    Counts before;        ///< built from the fonts' own outlines
    Counts after;         ///< built from the outlines handed over
    Counts beforeNative;  ///< like before, for the faces with TrueType outlines only
    long nativeGlyphs = 0;
    long repaired = 0;
    long turned = 0;
    long converted = 0;
    long failed = 0;
    long hadCurves = 0;     ///< repaired outlines that had curves before
    long curved = 0;        ///< those of them that still have some
    long changedAreas = 0;  ///< outlines handed over that fill another area than the font's own
    std::vector<std::pair<double, std::string>> movements;  ///< by repairs in em, with the glyphs
    long unmeasured = 0;  ///< repaired outlines whose movement could not be measured
    long compared = 0;    ///< untouched glyphs asked for as they are and as they are handed over
    long different = 0;   ///< those of them whose bytes differ
    std::vector<std::string> failures;
};

bool HasCurves(const contours::NativeOutline& outline)
{
    return std::any_of(outline.points.begin(), outline.points.end(),
                       [](const contours::NativePoint& point) { return !point.onCurve; });
}

/// Counts one glyph.
void LookAt(Survey& survey, const posix::InstalledFace& face, UINT index, int unitsPerEm,
            const contours::NativeOutline& own, const contours::ProvidedOutline& provided)
{
    const contours::NativeOutline& given = provided.outline ? *provided.outline : own;
    const BuiltGlyph before(own, unitsPerEm);
    const BuiltGlyph after = provided.outline ? BuiltGlyph(given, unitsPerEm) : before;
    ++survey.glyphs;
    survey.before.Add(before);
    survey.after.Add(after);
    if (!provided.isConverted)
    {
        ++survey.nativeGlyphs;
        survey.beforeNative.Add(before);
    }
    survey.repaired += provided.isRepaired ? 1 : 0;
    survey.turned += provided.isTurned ? 1 : 0;
    survey.converted += provided.isConverted ? 1 : 0;
    survey.failed += provided.isFailed ? 1 : 0;
    const std::string name =
        face.full + " (" + face.file + "), glyph " + std::to_string(index) + ":";
    if (provided.isRepaired)
    {
        const std::optional<double> moved = RepairMovement(own, given);
        survey.unmeasured += moved ? 0 : 1;
        if (moved)
        {
            survey.movements.emplace_back(*moved / unitsPerEm, name);
        }
    }
    if (provided.isRepaired && HasCurves(own))
    {
        ++survey.hadCurves;
        survey.curved += HasCurves(given) ? 1 : 0;
    }
    // The caps must fill the area that the font's own outline fills by the non-zero rule.
    const double area = contours::NonZeroArea(contours::FlattenAndSeparate(own, unitsPerEm));
    const double em = unitsPerEm;
    const bool changed = provided.outline && !after.hasNoCaps &&
                         std::fabs(after.capArea - area) > 0.03 * area + 0.0005 * em * em;
    survey.changedAreas += changed ? 1 : 0;
    if (after.hasNoCaps || after.hasFalseHoles || after.wrongContours != 0 || changed)
    {
        survey.failures.push_back(name + (after.hasNoCaps ? " no caps" : "") +
                                  (after.hasFalseHoles ? " false holes" : "") +
                                  (after.wrongContours != 0 ? " wrong direction" : "") +
                                  (changed ? " area changed" : "") +
                                  (provided.isFailed ? " (not repaired)" : ""));
        std::fprintf(stderr, "\r%s\n", survey.failures.back().c_str());
    }
}

/// Asks for each of the characters as the font has it and as it is handed over. When the glyph is
/// one that is handed over untouched, both must be the same bytes.
void Compare(Survey& survey, const std::shared_ptr<const posix::InstalledFace>& face,
             int unitsPerEm, const std::vector<char32_t>& characters)
{
    for (std::size_t n = 0; n < characters.size(); ++n)
    {
        const auto code = static_cast<BYTE>(n + 32);
        std::vector<BYTE> asIs;
        std::vector<BYTE> repaired;
        const auto read = [&](UINT outlines, std::vector<BYTE>& bytes) {
            return posix::UseGlyph(
                face, unitsPerEm, characters[n], code, outlines,
                [&bytes](const posix::GlyphOutline& glyph) { bytes = glyph.polygons; });
        };
        if (!read(OUTLINES_AS_IS, asIs) || !read(OUTLINES_REPAIRED, repaired))
        {
            continue;
        }
        const contours::ProvidedOutline* const known =
            face->outlines->Find(posix::GlyphIndexOf(face, characters[n], code));
        if (known != nullptr && !known->outline)
        {
            ++survey.compared;
            survey.different += asIs != repaired ? 1 : 0;
        }
    }
}

/// The characters of the code page 1252 from 32 to 255.
std::vector<char32_t> WesternCharacters()
{
    std::vector<char32_t> characters;
    for (int code = 32; code < 256; ++code)
    {
        characters.push_back(posix::CharacterOf(static_cast<BYTE>(code), 1252));
    }
    return characters;
}

void PrintRow(const char* name, long before, long after, long glyphs)
{
    const auto percent = [glyphs](long count) {
        return glyphs == 0 ? 0.0 : 100.0 * static_cast<double>(count) / static_cast<double>(glyphs);
    };
    std::printf("%-44s %9ld %8.3f %%  %9ld %8.4f %%\n", name, before, percent(before), after,
                percent(after));
}

/// Prints how far repaired outlines moved, and which of them moved farthest.
void PrintMovements(std::vector<std::pair<double, std::string>> movements, long unmeasured)
{
    if (movements.empty())
    {
        return;
    }
    std::sort(movements.begin(), movements.end(), std::greater());
    const auto beyond = [&](double most) {
        return std::count_if(movements.begin(), movements.end(),
                             [most](const auto& movement) { return movement.first > most; });
    };
    std::printf(
        "repaired outlines moved by at most %.5f em, 99.9 %% of them by %.5f em, half by %.5f em; "
        "%ld by more than 0.0008 em; not measured %ld\n",
        movements.front().first, movements[movements.size() / 1000].first,
        movements[movements.size() / 2].first, static_cast<long>(beyond(0.0008)), unmeasured);
    constexpr std::size_t shown = 20;
    std::printf("\nmoved farthest:\n");
    for (std::size_t n = 0; n < std::min(movements.size(), shown); ++n)
    {
        std::printf("  %s %.5f em\n", movements[n].second.c_str(), movements[n].first);
    }
}

void Report(const Survey& survey)
{
    std::printf(
        "%d faces (%d of them with cubic outlines, %d named instances), %ld glyphs; %d other"
        " faces\n\n",
        survey.faces, survey.cubicFaces, survey.instances, survey.glyphs, survey.otherFaces);
    std::printf("%-44s %20s  %20s\n", "what", "before repair", "after");
    PrintRow("no caps (the tessellator refuses)", survey.before.noCaps, survey.after.noCaps,
             survey.glyphs);
    PrintRow("false holes (odd rule is not the non-zero)", survey.before.falseHoles,
             survey.after.falseHoles, survey.glyphs);
    PrintRow("glyphs with contours the wrong way", survey.before.wrongGlyphs,
             survey.after.wrongGlyphs, survey.glyphs);
    std::printf("%-44s %9ld %8.3f %%  %9ld %8.4f %%\n", "contours the wrong way",
                survey.before.wrongContours,
                100.0 * static_cast<double>(survey.before.wrongContours) /
                    std::max(1.0, static_cast<double>(survey.before.contours)),
                survey.after.wrongContours,
                100.0 * static_cast<double>(survey.after.wrongContours) /
                    std::max(1.0, static_cast<double>(survey.after.contours)));
    std::printf(
        "\nof %ld TrueType glyphs alone, before: %ld without caps, %ld with false holes, %ld "
        "with contours the wrong way\n",
        survey.nativeGlyphs, survey.beforeNative.noCaps, survey.beforeNative.falseHoles,
        survey.beforeNative.wrongGlyphs);
    std::printf("repaired %ld, turned %ld, converted %ld, could not be repaired %ld\n",
                survey.repaired, survey.turned, survey.converted, survey.failed);
    std::printf("repaired outlines with curves that keep some: %ld of %ld\n", survey.curved,
                survey.hadCurves);
    std::printf("outlines handed over that fill another area: %ld\n", survey.changedAreas);
    std::printf("untouched glyphs asked for in both ways: %ld, different: %ld\n", survey.compared,
                survey.different);
    PrintMovements(survey.movements, survey.unmeasured);
    std::printf("\nwrong after repair: %zu\n", survey.failures.size());
    for (const std::string& failure : survey.failures)
    {
        std::printf("  %s\n", failure.c_str());
    }
}

}  // namespace

int main(int argc, char** argv)
{
    bool lettersOnly = false;
    UINT every = 1;
    const char* filter = "";
    for (int n = 1; n < argc; ++n)
    {
        if (std::strcmp(argv[n], "--letters") == 0)
        {
            lettersOnly = true;
        }
        else if (std::strcmp(argv[n], "--every") == 0 && n + 1 < argc)
        {
            every = static_cast<UINT>(std::max(1, std::atoi(argv[++n])));
        }
        else
        {
            filter = argv[n];
        }
    }
    const std::vector<char32_t> western = WesternCharacters();
    Survey survey;
    auto faces = posix::ListInstalledFaces();
    std::sort(faces.begin(), faces.end(), [](const auto& a, const auto& b) {
        return std::tie(a->full, a->file, a->index) < std::tie(b->full, b->file, b->index);
    });
    for (const auto& face : faces)
    {
        if (face->full.find(filter) == std::string::npos)
        {
            continue;
        }
        const auto design = posix::DesignOf(face);
        if (!design)
        {
            ++survey.otherFaces;
            continue;
        }
        ++survey.faces;
        survey.cubicFaces += face->kind == posix::OutlineKind::Cubic ? 1 : 0;
        survey.instances += face->index >> 16 != 0 ? 1 : 0;
        std::set<UINT> glyphs;
        if (lettersOnly)
        {
            for (std::size_t n = 0; n < western.size(); ++n)
            {
                glyphs.insert(posix::GlyphIndexOf(face, western[n], static_cast<BYTE>(n + 32)));
            }
        }
        else
        {
            for (UINT index = 0; index < posix::GlyphCountOf(face); index += every)
            {
                glyphs.insert(index);
            }
        }
        for (const UINT index : glyphs)
        {
            posix::InspectGlyph(
                face, index,
                [&](const contours::NativeOutline& own, const contours::ProvidedOutline& provided) {
                    LookAt(survey, *face, index, design->unitsPerEm, own, provided);
                });
        }
        Compare(survey, face, design->unitsPerEm, western);
        std::fprintf(stderr, "\r%d faces", survey.faces);
    }
    std::fprintf(stderr, "\n");
    Report(survey);
    return survey.different == 0 ? 0 : 1;
}
