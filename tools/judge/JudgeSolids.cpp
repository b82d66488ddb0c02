// SPDX-License-Identifier: MIT
// judge-solids [--letters] [--every N] [--slices N] [--no-meshes] [--part I/N] [--smallest-first]
// [--done FILE] [FILTER]
//
// Makes the solid of every glyph of every face that fontconfig lists, with every named profile, at
// five widths outward and inward, and writes the meshes to standard output for profiles.mjs. Judges
// them itself, too: edges, triangles that cross, volume, and the volume found by slicing. After
// each face it writes a line about the face.
//
//   --letters    only the characters of the western code page, of faces with all letters A to z
//   --every N    only every Nth glyph
//   --slices N   compare the volume of every Nth solid, and of the deepest chisel of every glyph,
//   with
//                that of slices
//   --no-meshes  write nothing to standard output
//   --part I/N   of every N faces, only the one with the number I, from 0
//   --smallest-first  judge the faces of small files before those of large ones, which have more
//                letters or more points, instead of in the order of their names
//   --done FILE  leave out the faces that have a line in this file; see profiles.mjs
//   FILTER       only faces whose full names contain this text

#include "extrude/OrvGlyph.h"
#include "orvane/Error.h"
#include "outline/TTGlyph.h"
#include "platform/posix/TextConversion.h"
#include "platform/posix/fonts/FontFace.h"
#include "platform/posix/fonts/GlyphPolygons.h"
#include "platform/posix/fonts/InstalledFonts.h"
#include "profiles/ProfileSolid.h"
#include "tests/support/ClosedSurface.h"
#include "tests/support/SlicedVolume.h"
#include "tests/support/TriangleCrossings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace contours = orvane::contours;
using namespace orvane;

namespace
{

/// Of the profiles, outward and inward; ems.
constexpr std::array widths = {0.005, 0.01, 0.02, 0.04, 0.08};

struct Options
{
    bool lettersOnly = false;
    bool writesMeshes = true;
    bool smallestFirst = false;
    UINT every = 1;
    long slicesEvery = 0;
    std::size_t part = 0;
    std::size_t parts = 1;
    std::set<std::string> done;
    std::string filter;
};

struct Counts
{
    int faces = 0;
    long glyphs = 0;
    long solids = 0;
    long empty = 0;
    long triangles = 0;
    long failed = 0;   ///< not made, not closed, or without volume
    long crossed = 0;  ///< with triangles that cross
    long sliced = 0;
    long wrongVolumes = 0;         ///< more than 0.5 % from the sliced one
    double largestDifference = 0;  ///< of a volume from the sliced one, as a part of that
    std::string worstName;         ///< of the solid with that difference
    std::string exceptions;        ///< with their reasons
    double seconds = 0;            ///< of the processor, for making the solids
    double slowest = 0;
    std::string slowestName;
};

double ProcessorSeconds()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

void Complain(Counts& counts, const std::string& name, const std::string& why)
{
    counts.exceptions += (counts.exceptions.empty() ? "" : "; ") + name + ": " + why;
    std::fprintf(stderr, "%s: %s\n", name.c_str(), why.c_str());
}

/// The sizes of a record's parts, as profiles.mjs reads them, and its kind: 0 for a mesh, 1 for the
/// line about a face.
void WriteHeader(const std::string& name, std::size_t positions, std::size_t triangles,
                 std::uint32_t kind, double volume)
{
    const std::uint32_t sizes[4] = {static_cast<std::uint32_t>(name.size()),
                                    static_cast<std::uint32_t>(positions),
                                    static_cast<std::uint32_t>(triangles), kind};
    std::fwrite(sizes, sizeof sizes, 1, stdout);
    std::fwrite(&volume, sizeof volume, 1, stdout);
    std::fwrite(name.data(), 1, name.size(), stdout);
}

void WriteMesh(const std::string& name, const ProfileSolid& solid, double volume)
{
    static std::vector<std::array<std::uint32_t, 3>> corners;
    corners.clear();
    for (const SolidTriangle& triangle : solid.triangles)
    {
        corners.push_back(triangle.corners);
    }
    WriteHeader(name, solid.positions.size(), corners.size(), 0, volume);
    std::fwrite(solid.positions.data(), sizeof solid.positions[0], solid.positions.size(), stdout);
    std::fwrite(corners.data(), sizeof corners[0], corners.size(), stdout);
}

void Slice(Counts& counts, const std::string& name, const PlaneRegion& region,
           const EdgeProfile& profile, double volume)
{
    const int slices = 2 + 32 / static_cast<int>(profile.steps.size());
    const double sliced = SlicedVolume(region, profile, {}, slices);
    const double difference = std::abs(volume - sliced) / sliced;
    ++counts.sliced;
    if (difference > counts.largestDifference)
    {
        counts.largestDifference = difference;
        counts.worstName = name;
    }
    if (!(difference <= 0.005))
    {
        ++counts.wrongVolumes;
        char text[100];
        std::snprintf(text, sizeof text, "volume %.6g, by slices %.6g, %+.2f %%", volume, sliced,
                      (volume / sliced - 1) * 100);
        Complain(counts, name, text);
    }
}

void Judge(Counts& counts, const Options& options, const std::string& name,
           const PlaneRegion& region, const EdgeProfile& profile)
{
    ProfileSolid solid;
    try
    {
        const double start = ProcessorSeconds();
        solid = BuildProfileSolid(region, profile);
        const double took = ProcessorSeconds() - start;
        counts.seconds += took;
        if (took > counts.slowest)
        {
            counts.slowest = took;
            counts.slowestName = name;
        }
    }
    catch (const orvane::Error& error)
    {
        ++counts.failed;
        Complain(counts, name, error.what());
        return;
    }
    ++counts.solids;
    counts.triangles += static_cast<long>(solid.triangles.size());
    counts.empty += solid.triangles.empty() ? 1 : 0;
    if (solid.triangles.empty())
    {
        return;
    }
    const double volume = VolumeOf(solid);
    const std::string why = WhyNotClosed(solid);
    if (!why.empty() || !(volume > 0))
    {
        ++counts.failed;
        Complain(counts, name, why.empty() ? "volume " + std::to_string(volume) : why);
    }
    const TriangleCrossings crossings = FindCrossings(solid);
    if (crossings.crossings > 0)
    {
        ++counts.crossed;
        Complain(counts, name,
                 std::to_string(crossings.crossings) + " crossings, the first of triangles " +
                     std::to_string(crossings.first) + " and " + std::to_string(crossings.second));
    }
    if (options.writesMeshes)
    {
        WriteMesh(name, solid, volume);
    }
    // Chisels have more ridges than other profiles; all widths have the same.
    const bool isDeepest = profile.reachesMiddle && profile.steps.back().height == -widths.back();
    if (options.slicesEvery > 0 && (counts.solids % options.slicesEvery == 0 || isDeepest))
    {
        Slice(counts, name, region, profile, volume);
    }
}

void JudgeGlyph(Counts& counts, const Options& options, const std::string& name,
                const PlaneRegion& region)
{
    ++counts.glyphs;
    for (const std::string& profile : ProfileNames())
    {
        for (const double size : widths)
        {
            for (const double width : {size, -size})
            {
                // Chisel works inward only.
                if (profile != "chisel" || width > 0)
                {
                    char text[40];
                    std::snprintf(text, sizeof text, " %s %g", profile.c_str(), width);
                    Judge(counts, options, name + text, region, NamedProfile(profile, width));
                }
            }
        }
    }
}

std::set<UINT> GlyphsOf(const std::shared_ptr<const posix::InstalledFace>& face,
                        const Options& options)
{
    std::set<UINT> glyphs;
    if (options.lettersOnly)
    {
        for (int code = 32; code < 256; ++code)
        {
            const auto byte = static_cast<BYTE>(code);
            glyphs.insert(posix::GlyphIndexOf(face, posix::CharacterOf(byte, 1252), byte));
        }
        return glyphs;
    }
    for (UINT index = 0; index < posix::GlyphCountOf(face); index += options.every)
    {
        glyphs.insert(index);
    }
    return glyphs;
}

/// A face's name in a file of results.
std::string KeyOf(const posix::InstalledFace& face)
{
    return face.file.substr(face.file.rfind('/') + 1) + '#' + std::to_string(face.index);
}

bool HasLetters(const std::shared_ptr<const posix::InstalledFace>& face)
{
    for (char letter = 'A'; letter <= 'Z'; ++letter)
    {
        for (const char character : {letter, static_cast<char>(letter - 'A' + 'a')})
        {
            const auto byte = static_cast<BYTE>(character);
            if (posix::GlyphIndexOf(face, byte, byte) == 0)
            {
                return false;
            }
        }
    }
    return true;
}

/// The line about a face, which profiles.mjs completes.
void WriteLine(const posix::InstalledFace& face, const Counts& counts)
{
    char numbers[200];
    std::snprintf(numbers, sizeof numbers, "%ld\t%ld\t%ld\t%ld\t%ld\t%ld\t%.3f\t%.1f",
                  counts.glyphs, counts.solids, counts.failed, counts.crossed, counts.sliced,
                  counts.wrongVolumes, counts.largestDifference * 100, counts.seconds);
    WriteHeader(KeyOf(face) + '\t' + face.full + '\t' + numbers + '\t' + counts.worstName + '\t' +
                    counts.exceptions,
                0, 0, 1, 0);
    std::fflush(stdout);
}

void Add(Counts& all, const Counts& face)
{
    all.faces += face.faces;
    all.glyphs += face.glyphs;
    all.solids += face.solids;
    all.empty += face.empty;
    all.triangles += face.triangles;
    all.failed += face.failed;
    all.crossed += face.crossed;
    all.sliced += face.sliced;
    all.wrongVolumes += face.wrongVolumes;
    all.largestDifference = std::max(all.largestDifference, face.largestDifference);
    all.seconds += face.seconds;
    if (face.slowest > all.slowest)
    {
        all.slowest = face.slowest;
        all.slowestName = face.slowestName;
    }
}

void JudgeFace(Counts& all, const Options& options,
               const std::shared_ptr<const posix::InstalledFace>& face)
{
    const auto design = posix::DesignOf(face);
    if (!design || (options.lettersOnly && !HasLetters(face)))
    {
        return;
    }
    Counts counts;
    counts.faces = 1;
    for (const UINT index : GlyphsOf(face, options))
    {
        posix::InspectGlyph(
            face, index,
            [&](const contours::NativeOutline& own, const contours::ProvidedOutline& provided) {
                std::vector<BYTE> bytes =
                    posix::NativePolygons(provided.outline ? *provided.outline : own);
                TTGlyph native;
                native.FromGlyphOutline(bytes.data(), bytes.size());
                OrvGlyph glyph(bytes.size(), GLYPHMETRICS{});
                glyph.ConstructGlyph(native, static_cast<float>(design->unitsPerEm));
                JudgeGlyph(counts, options, face->full + ", glyph " + std::to_string(index) + ",",
                           RegionOf(glyph));
            });
    }
    if (options.writesMeshes)
    {
        WriteLine(*face, counts);
    }
    Add(all, counts);
}

std::set<std::string> KeysIn(const char* file)
{
    std::set<std::string> keys;
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);)
    {
        keys.insert(line.substr(0, line.find('\t')));
    }
    return keys;
}

void Report(const Counts& counts)
{
    const double solids = static_cast<double>(std::max(counts.solids, 1L));
    std::fprintf(stderr,
                 "%d faces, %ld glyphs, %ld solids, %ld of them empty, %.0f triangles each\n",
                 counts.faces, counts.glyphs, counts.solids, counts.empty,
                 static_cast<double>(counts.triangles) / solids);
    std::fprintf(stderr, "not made, not closed or without volume: %ld\n", counts.failed);
    std::fprintf(stderr,
                 "with triangles that cross: %ld\n"
                 "more than 0.5 %% from the volume of slices: %ld of %ld; at most %.3f %%\n",
                 counts.crossed, counts.wrongVolumes, counts.sliced,
                 counts.largestDifference * 100);
    std::fprintf(stderr, "processor time: %.3f ms each, at most %.1f ms (%s)\n",
                 counts.seconds / solids * 1e3, counts.slowest * 1e3, counts.slowestName.c_str());
}

}  // namespace

int main(int argc, char** argv)
{
    Options options;
    for (int n = 1; n < argc; ++n)
    {
        const bool hasNumber = n + 1 < argc;
        if (std::strcmp(argv[n], "--letters") == 0)
        {
            options.lettersOnly = true;
        }
        else if (std::strcmp(argv[n], "--no-meshes") == 0)
        {
            options.writesMeshes = false;
        }
        else if (std::strcmp(argv[n], "--smallest-first") == 0)
        {
            options.smallestFirst = true;
        }
        else if (std::strcmp(argv[n], "--every") == 0 && hasNumber)
        {
            options.every = static_cast<UINT>(std::max(1, std::atoi(argv[++n])));
        }
        else if (std::strcmp(argv[n], "--slices") == 0 && hasNumber)
        {
            options.slicesEvery = std::max(0, std::atoi(argv[++n]));
        }
        else if (std::strcmp(argv[n], "--part") == 0 && hasNumber)
        {
            char* rest = nullptr;
            options.part = std::strtoul(argv[++n], &rest, 10);
            options.parts = *rest == '/' ? std::strtoul(rest + 1, nullptr, 10) : 1;
            options.parts = std::max<std::size_t>(options.parts, 1);
        }
        else if (std::strcmp(argv[n], "--done") == 0 && hasNumber)
        {
            options.done = KeysIn(argv[++n]);
        }
        else
        {
            options.filter = argv[n];
        }
    }
    auto faces = posix::ListInstalledFaces();
    std::sort(faces.begin(), faces.end(), [](const auto& a, const auto& b) {
        return std::tie(a->full, a->file, a->index) < std::tie(b->full, b->file, b->index);
    });
    if (options.smallestFirst)
    {
        std::stable_sort(faces.begin(), faces.end(), [](const auto& a, const auto& b) {
            return std::filesystem::file_size(a->file) < std::filesystem::file_size(b->file);
        });
    }
    Counts counts;
    std::size_t number = 0;
    for (const auto& face : faces)
    {
        if (face->full.find(options.filter) != std::string::npos &&
            number++ % options.parts == options.part && !options.done.contains(KeyOf(*face)))
        {
            JudgeFace(counts, options, face);
        }
    }
    Report(counts);
    return counts.failed + counts.crossed + counts.wrongVolumes == 0 ? 0 : 1;
}
