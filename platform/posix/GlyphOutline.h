// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Glyph outlines as GetGlyphOutlineA gives them.

#include "platform/Types.h"

#include <ft2build.h>
#include <vector>
#include FT_OUTLINE_H

namespace posix
{

/// One glyph at one size.
struct GlyphOutline
{
    std::vector<BYTE> polygons;  ///< what NativePolygons made
    FT_Glyph_Metrics metrics = {};
};

/// The contours of an outline as polygons: for each a TTPOLYGONHEADER and its TTPOLYCURVEs. Runs of
/// on-curve points are lines; a run of off-curve points and the on-curve point after it is a
/// spline, in which the points implied midway between two off-curve points are not written out.
/// Contours of one point are left out. A polygon starts on the curve: at its contour's first point
/// or, if that is off the curve, at the last one or midway between the two.
std::vector<BYTE> NativePolygons(const FT_Outline& outline);

}  // namespace posix
