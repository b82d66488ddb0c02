// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The one rule by which outlines become polygons: a fixed number of segments for each piece of a
/// spline, and no two vertices closer than a spacing. In float, as the polygons are used.

#include "platform/outlines/Places.h"

#include <cstdint>

namespace outlines
{

/// A point of an outline in whole units.
struct CurvePoint
{
    enum Kind : std::uint8_t
    {
        Undecided,  ///< left out, though a spline may lean on it
        OffCurve,
        OnCurve
    };
    std::int16_t x = 0;
    std::int16_t y = 0;
    Kind kind = Undecided;
    std::uint8_t segments = 0;  ///< of the spline piece that an off-curve point bends
};

/// The smallest distance of two vertices for an outline with that many units per em.
inline float VertexSpacing(float unitsPerEm)
{
    return unitsPerEm * 0.002f;
}

/// The point at \p t of the quadratic Bezier curve from \p p0 to \p p2 with control point \p p1.
inline PlaneVector QuadraticPoint(const PlaneVector& p0, const PlaneVector& p1,
                                  const PlaneVector& p2, float t)
{
    // Weighed in double from the float t, each weight rounded once: with float weights the first
    // fifth of a right-angled curve of 1000 units lands at 359 instead of 360.
    const double u = 1.0 - double{t};
    const float weight0 = static_cast<float>(u * u);
    const float weight1 = static_cast<float>(2.0 * t * u);
    const float weight2 = static_cast<float>(double{t} * t);
    return p0 * weight0 + p1 * weight1 + p2 * weight2;
}

/// Walks a closed contour of \p count points, of which \p pointAt gives each by its index, and
/// calls \p emit with each vertex: its place, with fractions, and whether it was sampled from a
/// spline. A candidate becomes a vertex when it lies more than \p spacing from the last one; the
/// search begins at the contour's last point, so of an end that repeats the start, it is the start
/// that is dropped.
template <typename PointAt, typename Emit>
void FlattenContour(int count, PointAt pointAt, float spacing, Emit emit)
{
    if (count <= 0)
    {
        return;
    }
    const auto placeOf = [](const CurvePoint& point) {
        return PlaneVector{static_cast<float>(point.x), static_cast<float>(point.y)};
    };
    const auto midpoint = [&](const CurvePoint& a, const CurvePoint& b) {
        return (placeOf(a) + placeOf(b)) / 2.0f;
    };
    PlaneVector last = placeOf(pointAt(count - 1));
    const auto offer = [&](const PlaneVector& candidate, bool sampled) {
        if ((candidate - last).IsLongerThan(spacing))
        {
            emit(candidate, sampled);
            last = candidate;
        }
    };
    for (int j = 0; j < count; ++j)
    {
        const CurvePoint point = pointAt(j);
        if (point.kind == CurvePoint::OnCurve)
        {
            offer(placeOf(point), false);
        }
        else if (point.kind == CurvePoint::OffCurve)
        {
            const bool closes = j == count - 1;
            const CurvePoint previous = pointAt(j > 0 ? j - 1 : count - 1);
            const CurvePoint next = pointAt(closes ? 0 : j + 1);
            const bool endsOnPoint = !closes && next.kind == CurvePoint::OnCurve;
            const PlaneVector start = previous.kind == CurvePoint::OnCurve
                                          ? placeOf(previous)
                                          : midpoint(previous, point);
            const PlaneVector end = closes || endsOnPoint ? placeOf(next) : midpoint(point, next);

            const int segments = point.segments;
            const float step = 1.0f / static_cast<float>(segments);
            // The end of the closing piece is point 0, which is a vertex already.
            const int samples = closes ? segments - 1 : segments;
            for (int k = 1; k <= samples; ++k)
            {
                offer(QuadraticPoint(start, placeOf(point), end, static_cast<float>(k) * step),
                      !(endsOnPoint && k == segments));
            }
            if (endsOnPoint)
            {
                ++j;  // the last sample was that point
            }
        }
    }
}

}  // namespace outlines
