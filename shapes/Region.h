// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Areas of the plane, bounded by polygons.

#include "contours/PlanePoint.h"

#include <cstddef>
#include <span>
#include <vector>

namespace orvane::shapes
{

/// The corners of a closed polygon in order. The last corner is joined to the first.
using Contour = std::vector<contours::DoublePoint>;

/// Some closed polygons, which together bound an area.
using Contours = std::vector<Contour>;

/// The part of a contour inside of a convex polygon with counter-clockwise corners. The windings
/// around places inside stay the same, and those outside become 0. Empty when nothing is left.
Contour CutToConvex(Contour contour, std::span<const contours::DoublePoint> polygon);

/// The area that a contour encloses, in square units; positive when it runs counter-clockwise.
inline double SignedArea(const Contour& contour)
{
    double twice = 0;
    for (std::size_t i = 0; i < contour.size(); ++i)
    {
        twice += contours::Cross(contour[i], contour[i + 1 == contour.size() ? 0 : i + 1]);
    }
    return twice / 2;
}

}  // namespace orvane::shapes
