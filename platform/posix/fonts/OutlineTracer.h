// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Outlines that FreeType has loaded, as the outlines that contours/ works with. FreeType's
/// coordinates are in 1/64 pixels; a coordinate that does not fit 32 bits loses its upper bits.

#include "contours/NativeOutline.h"

#include <ft2build.h>
#include FT_OUTLINE_H

namespace posix
{

/// The contours of an outline of lines and quadratic curves. Contours of one point are left out. A
/// contour starts at its first point. If that is a control point, it starts at the last point or,
/// if that is a control point too, midway between the two.
orvane::contours::NativeOutline TraceOutline(const FT_Outline& outline);

/// The contours of an outline of lines, quadratic and cubic curves, at one pixel per design unit.
/// Cubic curves become quadratic curves, and coordinates are rounded to whole units. The direction
/// of the contours is reversed, so that the filled area lies on their right. An outline that
/// FreeType calls invalid gives an outline without contours.
orvane::contours::NativeOutline TraceCubicOutline(const FT_Outline& outline);

}  // namespace posix
