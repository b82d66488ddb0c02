// SPDX-License-Identifier: MIT
// judge-solids [--letters] [--every N] [--slices N] [--no-meshes] [FILTER]
//
// Makes the solid of every glyph of every installed face with every named profile, at five widths
// outward and inward, and writes the meshes to standard output for profiles.mjs. Judges them
// itself, too: edges, volume, and the volume found by slicing.
//
//   --letters    only the characters of the western code page
//   --every N    only every Nth glyph
//   --slices N   compare the volume of every Nth solid with that of slices
//   --no-meshes  write nothing to standard output
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

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace contours = orvane::contours;
using namespace orvane;

namespace
{

struct Options
{
    bool lettersOnly = false;
    bool writesMeshes = true;
    UINT every = 1;
    long slicesEvery = 0;
    std::string filter;
};

struct Counts
{
    int faces = 0;
    long glyphs = 0;
    long solids = 0;
    long empty = 0;
    long triangles = 0;
    long failed = 0;  ///< not made, not closed, or without volume
    long sliced = 0;
    long wrongVolumes = 0;
    double largestDifference = 0;  ///< of volumes that agree, as a part of the sliced one
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
    ++counts.failed;
    std::fprintf(stderr, "%s: %s\n", name.c_str(), why.c_str());
}

/// Writes a mesh as profiles.mjs reads it: the sizes of its three parts, the volume, the parts.
void WriteMesh(const std::string& name, const ProfileSolid& solid, double volume)
{
    const std::uint32_t sizes[4] = {static_cast<std::uint32_t>(name.size()),
                                    static_cast<std::uint32_t>(solid.positions.size()),
                                    static_cast<std::uint32_t>(solid.triangles.size()), 0};
    std::fwrite(sizes, sizeof sizes, 1, stdout);
    std::fwrite(&volume, sizeof volume, 1, stdout);
    std::fwrite(name.data(), 1, name.size(), stdout);
    std::fwrite(solid.positions.data(), sizeof solid.positions[0], solid.positions.size(), stdout);
    for (const SolidTriangle& triangle : solid.triangles)
    {
        std::fwrite(triangle.corners.data(), sizeof triangle.corners, 1, stdout);
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
        Complain(counts, name, why.empty() ? "volume " + std::to_string(volume) : why);
    }
    if (options.writesMeshes)
    {
        WriteMesh(name, solid, volume);
    }
    if (options.slicesEvery > 0 && counts.solids % options.slicesEvery == 0)
    {
        const int slices = 2 + 32 / static_cast<int>(profile.steps.size());
        const double sliced = SlicedVolume(region, profile, {}, slices);
        const double difference = std::abs(volume - sliced) / sliced;
        ++counts.sliced;
        if (difference > 0.005)
        {
            ++counts.wrongVolumes;
            std::fprintf(stderr, "%s: volume %.6g, by slices %.6g, %+.2f %%\n", name.c_str(),
                         volume, sliced, (volume / sliced - 1) * 100);
        }
        else
        {
            counts.largestDifference = std::max(counts.largestDifference, difference);
        }
    }
}

void JudgeGlyph(Counts& counts, const Options& options, const std::string& name,
                const PlaneRegion& region)
{
    ++counts.glyphs;
    for (const std::string& profile : ProfileNames())
    {
        for (const double size : {0.005, 0.01, 0.02, 0.04, 0.08})
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

void JudgeFace(Counts& counts, const Options& options,
               const std::shared_ptr<const posix::InstalledFace>& face)
{
    const auto design = posix::DesignOf(face);
    if (!design)
    {
        return;
    }
    ++counts.faces;
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
                 "more than 0.5 %% from the volume of slices: %ld of %ld; others at most %.3f %%\n",
                 counts.wrongVolumes, counts.sliced, counts.largestDifference * 100);
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
        else if (std::strcmp(argv[n], "--every") == 0 && hasNumber)
        {
            options.every = static_cast<UINT>(std::max(1, std::atoi(argv[++n])));
        }
        else if (std::strcmp(argv[n], "--slices") == 0 && hasNumber)
        {
            options.slicesEvery = std::max(0, std::atoi(argv[++n]));
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
    Counts counts;
    for (const auto& face : faces)
    {
        if (face->full.find(options.filter) != std::string::npos)
        {
            JudgeFace(counts, options, face);
        }
    }
    Report(counts);
    return counts.failed == 0 ? 0 : 1;
}
