// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Glyph outlines of lines and quadratic curves, as TrueType fonts have them.

#include "contours/PlanePoint.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orvane::contours
{

/// A point on the outline, or the control point of a quadratic Bezier curve. Coordinates are in
/// 1/64 units, with y upward. A unit is one pixel of the size for which the outline was made. All
/// trials and repairs use the size at which one pixel is one design unit.
struct NativePoint
{
    std::int32_t x = 0;
    std::int32_t y = 0;
    bool onCurve = true;

    bool operator==(const NativePoint&) const = default;
};

/// The whole units of a coordinate, rounded down.
inline std::int32_t WholeUnits(std::int32_t coordinate)
{
    return coordinate >> 6;
}

/// Both coordinates in whole units, rounded down.
inline DoublePoint WholePlaceOf(const NativePoint& point)
{
    return {static_cast<double>(WholeUnits(point.x)), static_cast<double>(WholeUnits(point.y))};
}

/// Converts design units to a coordinate in 1/64 units. The number of units is rounded to the
/// nearest whole number and limited to plus or minus 16,777,216, which is more than any font needs.
std::int32_t CoordinateOf(double units);

/// The closed contours of a glyph. Each has at least two points. Its first and its last point are
/// on the curve: where a control point would be the last, a copy of the first point follows it.
/// Midway between two neighbouring control points the curve passes through an implied point, which
/// is not stored.
///
/// A contour runs the right way when the filled area lies on its right: outer borders run
/// clockwise, the borders of holes counter-clockwise.
struct NativeOutline
{
    std::vector<NativePoint> points;  ///< of all contours, one after the other
    std::vector<std::size_t> ends;    ///< for each contour, one past the index of its last point

    bool operator==(const NativeOutline&) const = default;

    /// The index of a contour's first point. With the number of contours as \p contour, the index
    /// at which the next contour will begin.
    std::size_t FirstOf(std::size_t contour) const { return contour == 0 ? 0 : ends[contour - 1]; }

    /// Makes a contour of the points that were added after the last contour. If there is only one
    /// such point, it is removed instead.
    void CloseContour();
};

/// A copy in which the contours marked true run the other way. \p marked may be shorter than the
/// number of contours; contours beyond its end stay as they are.
NativeOutline Reversed(const NativeOutline& outline, const std::vector<bool>& marked);

/// Scales an outline of \p unitsPerEm pixels per em to \p pixelsPerEm pixels per em. Coordinates
/// are rounded to the nearest 1/64, halves away from zero.
NativeOutline Scaled(const NativeOutline& outline, int pixelsPerEm, int unitsPerEm);

}  // namespace orvane::contours
