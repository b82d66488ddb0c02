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
/// 1/64 units, with y upward. At one pixel per design unit, which all trials and repairs use, 64
/// are a design unit; otherwise 64 are a pixel.
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

/// The coordinate of a number of units, which is rounded to the nearest whole one. Numbers beyond
/// plus or minus 16,777,216 units, which no font has, give that limit.
std::int32_t CoordinateOf(double units);

/// The closed contours of a glyph. Each has at least two points, and its first and last point are
/// on the curve; a contour that would end with a control point ends with its first point repeated.
/// Between two neighbouring control points lies an implied point, midway, that is not stored.
///
/// A contour runs the right way when the filled area lies on its right: outer borders run
/// clockwise, the borders of holes counter-clockwise.
struct NativeOutline
{
    std::vector<NativePoint> points;  ///< of all contours, one after the other
    std::vector<std::size_t> ends;    ///< for each contour, one past the index of its last point

    bool operator==(const NativeOutline&) const = default;

    /// The index of a contour's first point, or of the first point after the last contour.
    std::size_t FirstOf(std::size_t contour) const { return contour == 0 ? 0 : ends[contour - 1]; }

    /// Makes a contour of the points that were added after the last contour. A single point is
    /// removed again.
    void CloseContour();
};

/// A copy in which the contours marked true run the other way. \p marked may be shorter than the
/// number of contours; contours beyond its end stay as they are.
NativeOutline Reversed(const NativeOutline& outline, const std::vector<bool>& marked);

/// An outline of \p unitsPerEm pixels per em, brought to \p pixelsPerEm: coordinates are rounded to
/// the nearest 1/64, halves away from zero.
NativeOutline Scaled(const NativeOutline& outline, int pixelsPerEm, int unitsPerEm);

}  // namespace orvane::contours
