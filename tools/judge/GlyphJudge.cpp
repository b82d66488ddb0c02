// SPDX-License-Identifier: MIT
#include "tools/judge/GlyphJudge.h"

#include "orvane/Error.h"
#include "tests/support/ClosedSurface.h"
#include "tests/support/TriangleCrossings.h"
#include "tools/judge/MeshStream.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>

using namespace orvane;

namespace
{

/// Of the profiles, outward and inward; ems.
constexpr std::array widths = {0.005, 0.01, 0.02, 0.04, RegionVolumes::maxOffset};

double ProcessorSeconds()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

void Complain(SolidCounts& counts, const std::string& name, const std::string& why)
{
    counts.exceptions += (counts.exceptions.empty() ? "" : "; ") + name + ": " + why;
    std::fprintf(stderr, "%s: %s\n", name.c_str(), why.c_str());
}

void Plant(Fault fault, ProfileSolid& solid)
{
    if (solid.triangles.empty())
    {
        return;
    }
    if (fault == Fault::Hole)
    {
        solid.triangles.pop_back();
    }
    else if (fault == Fault::Crossing)
    {
        auto low = solid.positions[0];
        auto high = low;
        for (const auto& position : solid.positions)
        {
            for (std::size_t axis = 0; axis < 2; ++axis)
            {
                low[axis] = std::min(low[axis], position[axis]);
                high[axis] = std::max(high[axis], position[axis]);
            }
        }
        auto& corner = solid.positions[solid.triangles[0].corners[0]];
        for (std::size_t axis = 0; axis < 2; ++axis)
        {
            const float toHigh = high[axis] - corner[axis];
            const float toLow = low[axis] - corner[axis];
            corner[axis] += 1.1F * (toHigh > -toLow ? toHigh : toLow);
        }
    }
    else if (fault == Fault::Volume)
    {
        for (auto& position : solid.positions)
        {
            position[2] *= 1.007F;
        }
    }
}

/// Compares a volume with that of slices.
void Slice(SolidCounts& counts, const std::string& name, const PlaneRegion& region,
           const EdgeProfile& profile, double volume, RegionVolumes& volumes)
{
    constexpr double allowed = 0.005;
    // What the shared slices may be wrong by before slices of the solid alone decide.
    constexpr double doubtful = 0.001;
    double sliced = volumes.Of(profile, ProfileSolidOptions{}.depth);
    const auto difference = [&] { return std::abs(volume - sliced) / sliced; };
    ++counts.sliced;
    if (sliced == 0 && volume == 0)
    {
        return;
    }
    if (!(difference() <= allowed - doubtful))
    {
        const int slices = 2 + 64 / static_cast<int>(profile.steps.size());
        sliced = SlicedVolume(region, profile, {}, slices);
    }
    if (difference() > counts.largestDifference)
    {
        counts.largestDifference = difference();
        counts.worstName = name;
    }
    if (!(difference() <= allowed))
    {
        ++counts.wrongVolumes;
        char text[100];
        std::snprintf(text, sizeof text, "volume %.6g, by slices %.6g, %+.2f %%", volume, sliced,
                      (volume / sliced - 1) * 100);
        Complain(counts, name, text);
    }
}

void JudgeSolid(SolidCounts& counts, const GlyphOptions& options, const std::string& name,
                const PlaneRegion& region, const EdgeProfile& profile, RegionVolumes& volumes)
{
    ProfileSolid solid;
    ++counts.solids;
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
    catch (const Error& error)
    {
        ++counts.failed;
        Complain(counts, name, error.what());
        return;
    }
    Plant(options.fault, solid);
    const double volume = VolumeOf(solid);
    counts.triangles += static_cast<long>(solid.triangles.size());
    if (solid.triangles.empty())
    {
        // Right when the outline has no area.
        ++counts.empty;
        Slice(counts, name, region, profile, volume, volumes);
        return;
    }
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
    Slice(counts, name, region, profile, volume, volumes);
}

}  // namespace

void SolidCounts::Add(const SolidCounts& others)
{
    glyphs += others.glyphs;
    repeated += others.repeated;
    unread += others.unread;
    solids += others.solids;
    empty += others.empty;
    triangles += others.triangles;
    failed += others.failed;
    crossed += others.crossed;
    sliced += others.sliced;
    wrongVolumes += others.wrongVolumes;
    if (others.largestDifference > largestDifference)
    {
        largestDifference = others.largestDifference;
        worstName = others.worstName;
    }
    seconds += others.seconds;
    if (others.slowest > slowest)
    {
        slowest = others.slowest;
        slowestName = others.slowestName;
    }
}

void JudgeGlyph(SolidCounts& counts, const GlyphOptions& options, const std::string& name,
                const PlaneRegion& region)
{
    RegionVolumes volumes(region);
    for (const std::string& profile : ProfileNames())
    {
        for (const double size : widths)
        {
            for (const double width : {size, -size})
            {
                if (profile != "chisel" || width > 0)
                {
                    char text[40];
                    std::snprintf(text, sizeof text, " %s %g", profile.c_str(), width);
                    JudgeSolid(counts, options, name + text, region, NamedProfile(profile, width),
                               volumes);
                }
            }
        }
    }
}
