// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Outlines of cubic curves, as compact fonts have them, made quadratic.

#include "platform/Export.h"
#include "platform/posix/fonts/GlyphOutline.h"

#include <array>
#include <vector>

namespace posix
{

struct CurvePlace
{
    double x = 0;
    double y = 0;
};

/// A quadratic curve that starts where the one before it ends, in whole units.
struct QuadraticPiece
{
    CurvePlace control;
    CurvePlace end;
};

/// Quadratic pieces for the cubic Bezier curve of four points, the first from the curve's start in
/// whole units: as few as keep within half a unit of the curve, or what comes nearest to that. Ends
/// and tangents are the curve's own, up to rounding.
ORVANE_API std::vector<QuadraticPiece> QuadraticsOf(const std::array<CurvePlace, 4>& cubic);

/// The contours of an outline of lines, cubic and quadratic curves in 1/64 units, turned around, so
/// that what they fill lies on their right. Coordinates become whole units, 64 each.
ORVANE_API NativeOutline TraceCubicOutline(const FT_Outline& outline);

}  // namespace posix
