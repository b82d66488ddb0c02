// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Normals of flattened contours, and the rule that moves a vertex away from another vertex at the
/// same place. Built glyphs depend on every rounding here, so the mix of single and double
/// precision must stay as it is.

#include "contours/PlanePoint.h"
#include "platform/Truncate.h"

#include <cmath>
#include <cstdint>

namespace orvane::contours
{

inline double DoubleLength(const FloatPoint& way)
{
    return std::sqrt(double{way.x} * way.x + double{way.y} * way.y);
}

/// Returns static_cast<float>(DoubleLength(way)) > length, but mostly needs no square root.
inline bool IsLongerThan(const FloatPoint& way, float length)
{
    // Rounding to float changes a length by less than this share of it.
    constexpr double share = 1e-6;
    const double square = double{way.x} * way.x + double{way.y} * way.y;
    const double limit = double{length} * length;
    if (length >= 0.0f && (square > limit * (1 + share) || square < limit * (1 - share)))
    {
        return square > limit;
    }
    return static_cast<float>(DoubleLength(way)) > length;
}

/// Returns the same direction with length 1; a zero \p way stays zero. The division is in double
/// precision.
inline FloatPoint Normalized(const FloatPoint& way)
{
    const double length = DoubleLength(way);
    return length == 0.0
               ? way
               : FloatPoint{static_cast<float>(way.x / length), static_cast<float>(way.y / length)};
}

/// The normal of the edge between two vertices, of length 1. It points to the left of the way from
/// the first vertex to the second, and is zero when both lie at the same place.
inline FloatPoint EdgeNormal(const FloatPoint& from, const FloatPoint& to)
{
    const FloatPoint direction = Normalized(to - from);
    return Normalized(FloatPoint{-direction.y, direction.x});
}

/// The direction halfway between two normals, of length 1; zero when they are opposite.
inline FloatPoint AverageNormal(const FloatPoint& arriving, const FloatPoint& leaving)
{
    return Normalized((arriving + leaving) / 2.0f);
}

/// Calls \p visit with each vertex's index and the normals of the edges that arrive at it and leave
/// it. \p pointAt returns the place of a vertex by its index. With fewer than two vertices, \p
/// visit is not called.
template <typename PointAt, typename Visit>
void ForEachCorner(int count, PointAt pointAt, Visit visit)
{
    if (count < 2)
    {
        return;
    }
    FloatPoint arriving = EdgeNormal(pointAt(count - 1), pointAt(0));
    for (int i = 0; i < count; ++i)
    {
        const FloatPoint leaving = EdgeNormal(pointAt(i), pointAt(i + 1 < count ? i + 1 : 0));
        visit(i, arriving, leaving);
        arriving = leaving;
    }
}

/// Vertices store the components of their normals as 16-bit integers, in units of this value.
inline constexpr float storedNormalUnit = 0.0001f;

/// A normal's component in storedNormalUnit, with the fraction cut off.
inline std::int16_t StoredNormal(float component)
{
    return TruncateToShort(component * 10000.0f);
}

/// Returns the place to which a vertex at \p place is moved when another vertex lies there too: two
/// units along its normal if the next vertex lies on the side to which the normal points, otherwise
/// two units against its normal.
inline FloatPoint ShiftedPlace(const FloatPoint& place, const FloatPoint& normal,
                               const FloatPoint& next)
{
    const FloatPoint towardNext = Normalized(next - place);
    const FloatPoint step = normal * 2.0f;
    return Dot(normal, towardNext) <= 0.0f ? place - step : place + step;
}

}  // namespace orvane::contours
