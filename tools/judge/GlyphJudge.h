// SPDX-License-Identifier: MIT
#pragma once

#include "profiles/ProfileSolid.h"
#include "tests/support/RegionVolumes.h"

#include <string>

/// Of the solids of some glyphs. Empty solids, of glyphs without an outline, are counted, too.
struct SolidCounts
{
    long glyphs = 0;
    long repeated = 0;  ///< glyphs with an outline that was judged before
    long unread = 0;    ///< glyphs that the font library could not read
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

    void Add(const SolidCounts& others);
    long Wrong() const { return failed + crossed + wrongVolumes; }
};

/// A fault that is planted into every solid, to see whether it is found.
enum class Fault
{
    None,
    Hole,      ///< a triangle is missing
    Crossing,  ///< a corner of the front face lies on the other side of the letter
    Volume     ///< 0.7 % deeper
};

struct GlyphOptions
{
    bool writesMeshes = true;
    Fault fault = Fault::None;
};

/// How many solids JudgeGlyph makes of a glyph.
constexpr long solidsPerGlyph = 55;

/// Makes and judges the solids of a glyph with every named profile, at five widths outward and
/// inward (chisel only inward), and writes their meshes to standard output.
/// \param name of the glyph, for messages
void JudgeGlyph(SolidCounts& counts, const GlyphOptions& options, const std::string& name,
                const orvane::PlaneRegion& region);
