// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The trial of an outline before it is handed over: it tests whether the tessellator will fill the
/// outline correctly after the library has flattened it.

#include "contours/NativeOutline.h"

#include <vector>

namespace orvane::contours
{

struct OutlineVerdict
{
    /// Whether the faces are filled correctly: the tessellator reports no error, and the areas
    /// filled by the odd rule and by the non-zero rule differ by at most a thousandth of the larger
    /// area.
    bool fills = true;
    /// Whether the edges meet so often that a tessellation or a repair would take too long.
    bool isHopeless = false;
    /// Whether \c fills is false only because edges cross; the tessellator has not tried the
    /// outline. See CrossingEdges::Presumed.
    bool isPresumed = false;
    /// For each contour, whether it runs the wrong way. Empty when no contour does.
    std::vector<bool> wrongWay;
};

/// How a trial treats an outline with edges that cross.
enum class CrossingEdges
{
    Presumed,    ///< the outline counts as failed, because the tessellator nearly always refuses it
    Tessellated  ///< the tessellator tries to fill the outline
};

/// Tries an outline of one pixel per design unit. An outline whose edges do not meet, and whose
/// contours run the right way, passes without a tessellation.
OutlineVerdict TryOutline(const NativeOutline& outline, int unitsPerEm,
                          CrossingEdges crossing = CrossingEdges::Presumed);

}  // namespace orvane::contours
