// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// A trial, made before an outline is handed over: will the library fill its faces correctly when
/// it has flattened it?

#include "contours/NativeOutline.h"

#include <vector>

namespace orvane::contours
{

struct OutlineVerdict
{
    /// Whether the faces come out: the tessellator reports no error, and the areas that the odd
    /// rule and the non-zero rule fill differ by at most a thousandth.
    bool fills = true;
    /// Whether the edges meet so often that neither a tessellation nor a repair is worth trying.
    bool isHopeless = false;
    /// Whether \c fills is false only by presumption, see CrossingEdges::Presumed.
    bool isPresumed = false;
    /// For each contour, whether it runs the wrong way. Empty when no contour does.
    std::vector<bool> wrongWay;
};

/// How a trial treats an outline with edges that cross.
enum class CrossingEdges
{
    Presumed,    ///< it is presumed not to fill: the tessellator nearly always refuses it
    Tessellated  ///< the tessellator is asked
};

/// Tries an outline of one pixel per design unit. An outline whose edges do not meet, and whose
/// contours run the right way, passes without a tessellation.
OutlineVerdict TryOutline(const NativeOutline& outline, int unitsPerEm,
                          CrossingEdges crossing = CrossingEdges::Presumed);

}  // namespace orvane::contours
