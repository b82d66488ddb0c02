// SPDX-License-Identifier: MIT
#pragma once

#include "shapes/Path.h"

#include <vector>

namespace orvane::shapes
{

enum class LineJoin
{
    Miter,
    Round,
    Bevel
};

enum class LineCap
{
    Butt,
    Round,
    Square
};

/// How a pen draws a path. Lengths are in the units of the path.
struct StrokeStyle
{
    double width = 1;
    LineJoin join = LineJoin::Miter;
    LineCap cap = LineCap::Butt;
    /// A corner gets a bevel when its miter would be longer than this many widths.
    double miterLimit = 4;
    /// Lengths of dashes and gaps in turn, none negative. When they are empty or all 0, the line
    /// is solid. An odd number of them is gone through twice.
    std::vector<double> dashes;
    double dashOffset = 0;  ///< where in the dashes each subpath starts
};

/// The area that the pen covers, as contours for the non-zero rule. They cross each other and
/// themselves.
/// \param tolerance how far the contours may deviate from the true border, in the units of the path
Contours StrokeOutline(const Path& path, const StrokeStyle& style, double tolerance,
                       SegmentLimit& limit);

}  // namespace orvane::shapes
