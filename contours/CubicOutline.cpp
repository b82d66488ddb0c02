// SPDX-License-Identifier: MIT
#include "contours/CubicOutline.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvane::contours
{
namespace
{

/// The largest deviation from the cubic that is accepted, in units.
constexpr double tolerance = 0.5;
constexpr int maxPieces = 12;

/// How far a place moves when its coordinates are rounded, in units.
double RoundingOf(const DoublePoint& place)
{
    return Length(place - Rounded(place));
}

/// A cubic Bezier curve. Parameters run from 0 at the start to 1 at the end.
struct Cubic
{
    std::array<DoublePoint, 4> points;

    DoublePoint PointAt(double t) const
    {
        const double u = 1 - t;
        return points[0] * (u * u * u) + points[1] * (3 * u * u * t) + points[2] * (3 * u * t * t) +
               points[3] * (t * t * t);
    }

    /// The derivative of the curve with respect to the parameter, in units.
    DoublePoint Derivative(double t) const
    {
        const double u = 1 - t;
        return (points[1] - points[0]) * (3 * u * u) + (points[2] - points[1]) * (6 * u * t) +
               (points[3] - points[2]) * (3 * t * t);
    }

    /// A vector of any length in the direction of the curve. At an end that has its control point
    /// at the same place, the derivative is zero; a short chord of the curve replaces it there.
    DoublePoint Tangent(double t) const
    {
        const DoublePoint derivative = Derivative(t);
        if (Dot(derivative, derivative) > 1e-12)
        {
            return derivative;
        }
        constexpr double aside = 1e-4;
        return t < 0.5 ? PointAt(t + aside) - PointAt(t) : PointAt(t) - PointAt(t - aside);
    }

    /// The distance, in units, from a place to the nearest point of the curve between the
    /// parameters \p least and \p most. Gauss-Newton steps find the point, starting from the
    /// parameter \p t.
    double DistanceFrom(const DoublePoint& place, double t, double least, double most) const
    {
        constexpr int steps = 4;
        for (int step = 0; step < steps; ++step)
        {
            const DoublePoint derivative = Derivative(t);
            const double speed = Dot(derivative, derivative);
            if (speed < 1e-12)
            {
                break;
            }
            t = std::clamp(t + Dot(place - PointAt(t), derivative) / speed, least, most);
        }
        return Length(place - PointAt(t));
    }
};

/// The largest distance of a quadratic piece from the part of the cubic between the parameters \p
/// from and \p to, in units, measured at seven places of the piece.
double Deviation(const Cubic& cubic, double from, double to, const DoublePoint& start,
                 const QuadraticPiece& piece)
{
    double largest = 0;
    constexpr int probes = 8;
    for (int n = 1; n < probes; ++n)
    {
        const double s = static_cast<double>(n) / probes;
        const DoublePoint place =
            start * ((1 - s) * (1 - s)) + piece.control * (2 * s * (1 - s)) + piece.end * (s * s);
        largest = std::max(largest, cubic.DistanceFrom(place, from + (to - from) * s, from, to));
    }
    return largest;
}

/// The control point of the quadratic piece that replaces the cubic between the parameters \p from
/// and \p to. It is the place where the cubic's tangents at these two parameters meet. If the
/// tangents are nearly parallel or meet on the wrong side, the function returns the control point
/// with which the piece passes through the cubic's point at the parameter halfway between the two.
DoublePoint ControlOf(const Cubic& cubic, double from, double to)
{
    const DoublePoint start = cubic.PointAt(from);
    const DoublePoint end = cubic.PointAt(to);
    const DoublePoint u = cubic.Tangent(from);
    const DoublePoint v = cubic.Tangent(to);
    const double turn = Cross(u, v);
    const double size = std::sqrt(Dot(u, u) * Dot(v, v));
    if (std::fabs(turn) > 1e-3 * size)
    {
        const double s = Cross(end - start, v) / turn;
        const double t = Cross(end - start, u) / turn;
        if (s >= 0 && t <= 0)
        {
            return start + u * s;
        }
    }
    const double third = (to - from) / 3;
    const DoublePoint a = start + cubic.Derivative(from) * third;
    const DoublePoint b = end - cubic.Derivative(to) * third;
    return ((a + b) * 3 - start - end) * 0.25;
}

/// The quadratic piece that replaces the cubic between the parameters \p from and \p to. The four
/// places with whole coordinates around ControlOf's result are tried as its control point, and the
/// place with the smallest deviation is taken.
/// \param deviation receives the deviation, in units
QuadraticPiece PieceFor(const Cubic& cubic, double from, double to, const DoublePoint& start,
                        const DoublePoint& end, double* deviation)
{
    const DoublePoint control = ControlOf(cubic, from, to);
    QuadraticPiece best;
    *deviation = std::numeric_limits<double>::infinity();
    for (const double x : {std::floor(control.x), std::floor(control.x) + 1})
    {
        for (const double y : {std::floor(control.y), std::floor(control.y) + 1})
        {
            const QuadraticPiece piece = {{x, y}, end};
            const double candidate = Deviation(cubic, from, to, start, piece);
            if (candidate < *deviation)
            {
                *deviation = candidate;
                best = piece;
            }
        }
    }
    return best;
}

/// A parameter between \p t - \p reach and \p t + \p reach at which the curve passes close to a
/// place with whole coordinates, so that a cut there moves little when it is rounded. The function
/// tries 16 parameters besides \p t. A later parameter is taken only if its
/// cut moves at least 0.01 units less than the cut of the best parameter so far.
double NearWholeUnits(const Cubic& cubic, double t, double reach)
{
    constexpr int probes = 8;
    double best = t;
    for (int n = -probes; n <= probes; ++n)
    {
        const double candidate = t + reach * n / probes;
        if (RoundingOf(cubic.PointAt(candidate)) < RoundingOf(cubic.PointAt(best)) - 0.01)
        {
            best = candidate;
        }
    }
    return best;
}

NativePoint PointOf(const DoublePoint& place, bool onCurve)
{
    return {CoordinateOf(place.x), CoordinateOf(place.y), onCurve};
}

}  // namespace

std::vector<QuadraticPiece> QuadraticsOf(const std::array<DoublePoint, 4>& points)
{
    const Cubic cubic = {points};
    std::vector<QuadraticPiece> best;
    double bestDeviation = std::numeric_limits<double>::infinity();
    for (int count = 1; count <= maxPieces && bestDeviation > tolerance; ++count)
    {
        std::vector<QuadraticPiece> pieces;
        double largest = 0;
        double from = 0;
        DoublePoint start = Rounded(points[0]);
        for (int n = 1; n <= count; ++n)
        {
            const double to =
                n == count ? 1.0
                           : NearWholeUnits(cubic, static_cast<double>(n) / count, 0.2 / count);
            const DoublePoint end = Rounded(n == count ? points[3] : cubic.PointAt(to));
            double deviation = 0;
            pieces.push_back(PieceFor(cubic, from, to, start, end, &deviation));
            largest =
                std::max({largest, deviation, n == count ? 0.0 : RoundingOf(cubic.PointAt(to))});
            from = to;
            start = end;
        }
        if (largest < bestDeviation)
        {
            bestDeviation = largest;
            best = std::move(pieces);
        }
    }
    return best;
}

void CubicOutlineBuilder::MoveTo(const DoublePoint& to)
{
    EndContour();
    last_ = to;
    AddPoint(to, true);
    isOpen_ = true;
}

void CubicOutlineBuilder::LineTo(const DoublePoint& to)
{
    last_ = to;
    AddPoint(to, true);
}

void CubicOutlineBuilder::QuadraticTo(const DoublePoint& control, const DoublePoint& to)
{
    AddPoint(control, false);
    LineTo(to);
}

void CubicOutlineBuilder::CubicTo(const DoublePoint& first, const DoublePoint& second,
                                  const DoublePoint& to)
{
    for (const QuadraticPiece& piece : QuadraticsOf({last_, first, second, to}))
    {
        const NativePoint control = PointOf(piece.control, false);
        const NativePoint end = PointOf(piece.end, true);
        const NativePoint& start = outline_.points.back();
        // With a control point at one of its ends, a curve is a straight line, so the control point
        // is left out.
        if (!((control.x == start.x && control.y == start.y) ||
              (control.x == end.x && control.y == end.y)))
        {
            outline_.points.push_back(control);
        }
        AddPoint(piece.end, true);
    }
    last_ = to;
}

NativeOutline CubicOutlineBuilder::Take()
{
    EndContour();
    return std::move(outline_);
}

void CubicOutlineBuilder::EndContour()
{
    if (!isOpen_)
    {
        return;
    }
    isOpen_ = false;
    std::vector<NativePoint>& points = outline_.points;
    const std::size_t first = outline_.FirstOf(outline_.ends.size());
    // A last point that repeats the first is dropped. CloseContour adds it again if the contour
    // would otherwise end with a control point.
    if (points.size() > first + 1 && points.back() == points[first])
    {
        points.pop_back();
    }
    outline_.CloseContour();
    const bool isKept = outline_.FirstOf(outline_.ends.size()) != first;
    if (isKept)
    {
        std::reverse(points.begin() + static_cast<std::ptrdiff_t>(first), points.end());
    }
}

/// Adds a point, unless it is the same as the contour's last point.
void CubicOutlineBuilder::AddPoint(const DoublePoint& place, bool onCurve)
{
    const NativePoint point = PointOf(place, onCurve);
    const bool isFirst = outline_.points.size() == outline_.FirstOf(outline_.ends.size());
    if (isFirst || !(outline_.points.back() == point))
    {
        outline_.points.push_back(point);
    }
}

}  // namespace orvane::contours
