// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Outlines in the form in which GetGlyphOutlineA hands them over.

#include "contours/NativeOutline.h"
#include "platform/Types.h"

#include <vector>

namespace posix
{

/// The outline as polygons: for each contour a TTPOLYGONHEADER and its TTPOLYCURVEs. Successive
/// points on the curve form one TT_PRIM_LINE. Successive control points, with the point on the
/// curve that follows them, form one TT_PRIM_QSPLINE.
std::vector<BYTE> NativePolygons(const orvane::contours::NativeOutline& outline);

}  // namespace posix
