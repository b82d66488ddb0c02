// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Points on the grid that profiled solids are computed on, with exact tests of their order.

#include "contours/PlanePoint.h"

#include <cmath>
#include <cstdint>

namespace orvane::profiles
{

/// The largest coordinate of a point on the grid. Every coordinate is a float without rounding, and
/// the products of Turn fit 64 bits.
inline constexpr std::int32_t maxGridCoordinate = 1 << 24;

/// A point in whole grid units; see Grid for the size of a unit.
using contours::GridPoint;
using contours::Turn;

inline contours::DoublePoint PointOf(const GridPoint& place)
{
    return {double{1} * place.x, double{1} * place.y};
}

inline GridPoint NearestGridPoint(const contours::DoublePoint& place)
{
    return {static_cast<std::int32_t>(std::lround(place.x)),
            static_cast<std::int32_t>(std::lround(place.y))};
}

}  // namespace orvane::profiles
