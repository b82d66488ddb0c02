// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The rule by which outlines become polygons: every quadratic curve is cut into a fixed number of
/// straight segments, and a vertex that would lie closer than a minimum distance to the one before
/// it is left out.

#include "contours/PlanePoint.h"
#include "contours/VertexNormals.h"

#include <cstdint>

namespace orvane::contours
{

/// How many straight segments stand for each quadratic curve of a font's outline.
inline constexpr std::uint8_t segmentsPerCurve = 5;

/// A point of an outline in whole units.
struct CurvePoint
{
    enum class Kind : std::uint8_t
    {
        Undecided,  ///< never becomes a vertex; its neighbours treat it as an off-curve point
        OffCurve,   ///< the control point of a quadratic curve
        OnCurve
    };
    ShortPoint place;
    Kind kind = Kind::Undecided;
    std::uint8_t segments = 0;  ///< the curve's number of segments; only for an off-curve point
};

/// The distance that two successive vertices must exceed: 0.002 em, in units.
inline float VertexSpacing(float unitsPerEm)
{
    return unitsPerEm * 0.002f;
}

/// The point at \p t, from 0 to 1, of the quadratic Bezier curve from \p p0 to \p p2 with control
/// point \p p1.
inline FloatPoint QuadraticPoint(const FloatPoint& p0, const FloatPoint& p1, const FloatPoint& p2,
                                 float t)
{
    // Required: each weight is computed in double and then rounded to float. Weights computed in
    // float would differ in their last bits; see SplineWeightsAreRoundedFromDouble.
    const double u = 1.0 - double{t};
    const float weight0 = static_cast<float>(u * u);
    const float weight1 = static_cast<float>(2.0 * t * u);
    const float weight2 = static_cast<float>(double{t} * t);
    return p0 * weight0 + p1 * weight1 + p2 * weight2;
}

/// Walks a closed contour and calls \p emit with each vertex: its place, which can have fractions,
/// and whether it is an approximation, that is, a sample inside a curve.
///
/// A candidate becomes a vertex when it lies farther than \p spacing from the vertex before it. The
/// first candidate is compared with the contour's last point. So when the last point repeats the
/// first point, the first point is left out.
/// \param count the number of the contour's points
/// \param pointAt gives the CurvePoint with an index from 0 to count - 1
template <typename PointAt, typename Emit>
void FlattenContour(int count, PointAt pointAt, float spacing, Emit emit)
{
    if (count <= 0)
    {
        return;
    }
    const auto placeOf = [](const CurvePoint& point) {
        return FloatPoint{static_cast<float>(point.place.x), static_cast<float>(point.place.y)};
    };
    const auto midpoint = [&](const CurvePoint& a, const CurvePoint& b) {
        return (placeOf(a) + placeOf(b)) / 2.0f;
    };
    FloatPoint last = placeOf(pointAt(count - 1));
    const auto offer = [&](const FloatPoint& candidate, bool approximate) {
        if (IsLongerThan(candidate - last, spacing))
        {
            emit(candidate, approximate);
            last = candidate;
        }
    };
    for (int j = 0; j < count; ++j)
    {
        const CurvePoint point = pointAt(j);
        if (point.kind == CurvePoint::Kind::OnCurve)
        {
            offer(placeOf(point), false);
        }
        else if (point.kind == CurvePoint::Kind::OffCurve)
        {
            const bool closes = j == count - 1;
            const CurvePoint previous = pointAt(j > 0 ? j - 1 : count - 1);
            const CurvePoint next = pointAt(closes ? 0 : j + 1);
            const bool endsOnPoint = !closes && next.kind == CurvePoint::Kind::OnCurve;
            const FloatPoint start = previous.kind == CurvePoint::Kind::OnCurve
                                         ? placeOf(previous)
                                         : midpoint(previous, point);
            const FloatPoint end = closes || endsOnPoint ? placeOf(next) : midpoint(point, next);

            const int segments = point.segments;
            const float step = 1.0f / static_cast<float>(segments);
            // The curve that closes the contour ends at point 0, which was offered already.
            const int samples = closes ? segments - 1 : segments;
            for (int k = 1; k <= samples; ++k)
            {
                offer(QuadraticPoint(start, placeOf(point), end, static_cast<float>(k) * step),
                      !(endsOnPoint && k == segments));
            }
            if (endsOnPoint)
            {
                ++j;  // the next point was offered already, as the curve's last sample
            }
        }
    }
}

}  // namespace orvane::contours
