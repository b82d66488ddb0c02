// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Glyph outlines as GetGlyphOutlineA gives them.

#include "platform/Export.h"
#include "platform/Types.h"

#include <ft2build.h>

#include <cstddef>
#include <vector>
#include FT_OUTLINE_H

namespace posix
{

/// A point on the curve, or the control point of a quadratic spline; in 1/64 pixels, y up.
struct NativePoint
{
    FT_Pos x = 0;
    FT_Pos y = 0;
    bool onCurve = true;

    bool operator==(const NativePoint&) const = default;
};

/// Closed contours, in the points that their polygons have. Each starts on the curve and ends on
/// it: one that would end inside a spline ends with its start once more.
struct NativeOutline
{
    std::vector<NativePoint> points;
    std::vector<std::size_t> ends;  ///< of each contour, one past its last point

    bool operator==(const NativeOutline&) const = default;

    std::size_t FirstOf(std::size_t contour) const { return contour == 0 ? 0 : ends[contour - 1]; }
    /// Ends the contour of the points added since the last one; a contour of one point is dropped.
    ORVANE_API void Close();
};

/// The contours of an outline. Contours of one point are left out, and points implied midway
/// between two off-curve points are not written out. A contour starts at its first point or, if
/// that is off the curve, at the last one or midway between the two.
ORVANE_API NativeOutline TraceOutline(const FT_Outline& outline);

/// The outline as polygons: for each contour a TTPOLYGONHEADER and its TTPOLYCURVEs. Runs of
/// on-curve points are lines; a run of off-curve points and the on-curve point after it is a
/// spline.
ORVANE_API std::vector<BYTE> NativePolygons(const NativeOutline& outline);

/// One glyph at one size.
struct GlyphOutline
{
    std::vector<BYTE> polygons;  ///< what NativePolygons made
    FT_Glyph_Metrics metrics = {};
};

}  // namespace posix
