// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Whether an outline comes out right when it is flattened and filled, tried out beforehand.

#include "platform/Export.h"
#include "platform/posix/fonts/GlyphOutline.h"

#include <cstdint>
#include <span>
#include <vector>

namespace posix
{

/// One vertex of a flattened outline, in whole units.
struct FlatVertex
{
    struct Pair
    {
        std::int16_t x = 0;
        std::int16_t y = 0;
    };
    Pair point;
    Pair vertexNormal;  ///< in 1/10000; only once normals have been asked for
};

/// An outline flattened as the library does it, in the outline's whole units.
struct FlatOutline
{
    std::vector<FlatVertex> vertices;
    std::vector<int> sizes;  ///< of the contours
};

/// Flattens; of a coordinate only the whole units count.
ORVANE_API FlatOutline Flatten(const NativeOutline& outline, int unitsPerEm);

/// Flattens and moves vertices apart that lie at the same place: what is filled.
ORVANE_API FlatOutline FlattenAndSeparate(const NativeOutline& outline, int unitsPerEm);

/// Whether no two edges of a flattened outline cross or touch elsewhere than neighbours do at their
/// common vertex. The tessellator fills such an outline without fail. What would take too long to
/// tell counts as no.
ORVANE_API bool EdgesKeepApart(const FlatOutline& flat);

/// How many pairs of edges of a flattened outline cross or touch elsewhere than neighbours do at
/// their common vertex, counted up to one more than \p most, which is also the answer to
/// what would take too long to count.
/// \param cross if not null, set when one pair crosses in the inside of both
ORVANE_API int CountMeetings(const FlatOutline& flat, int most, bool* cross = nullptr);

/// The area that the tessellator fills by the odd rule, in square units; below 0 when it reports an
/// error, as it does for contours that cross.
ORVANE_API double OddArea(const FlatOutline& flat);

/// The areas that the contours enclose, summed: positive for clockwise ones. It is the filled area
/// when no edges cross and every contour runs the right way.
ORVANE_API double TurnedArea(const FlatOutline& flat);

/// The area by the non-zero rule, contours that cross included.
ORVANE_API double NonZeroArea(const FlatOutline& flat);

/// Whether each contour runs with what is filled on its left and not on its right, by the odd rule:
/// the wrong way. Its tallest edges decide.
ORVANE_API std::vector<bool> ContoursTheWrongWay(const FlatOutline& flat);

struct OutlineVerdict
{
    /// Whether the faces come out: the tessellator reports no error, and the odd rule and the
    /// non-zero rule fill areas that differ by no more than a thousandth.
    bool fills = true;
    /// Whether its edges meet so often that not even this is tried.
    bool hopeless = false;
    /// Whether it was taken for one that does not fill because edges cross.
    bool presumed = false;
    std::vector<bool> wrongWay;  ///< of each contour; empty when none runs the wrong way
};

/// What a trial makes of edges that cross.
enum class CrossingEdges
{
    Presumed,  ///< the tessellator refuses them, as it nearly always does
    Filled     ///< the tessellator is asked
};

/// Tries an outline, as cheaply as can be: one whose edges keep apart needs no tessellation.
/// \param unitsPerEm 64 of the outline's own units are one of these
ORVANE_API OutlineVerdict TryOutline(const NativeOutline& outline, int unitsPerEm,
                                     CrossingEdges crossing = CrossingEdges::Presumed);

/// The outline with the contours reversed that are marked.
ORVANE_API NativeOutline Reversed(const NativeOutline& outline, const std::vector<bool>& marked);

}  // namespace posix
