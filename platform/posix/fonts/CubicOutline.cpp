// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/CubicOutline.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include FT_ERRORS_H

namespace posix
{
namespace
{

constexpr double tolerance = 0.5;
constexpr int mostPieces = 12;

CurvePlace operator+(const CurvePlace& a, const CurvePlace& b)
{
    return {a.x + b.x, a.y + b.y};
}
CurvePlace operator-(const CurvePlace& a, const CurvePlace& b)
{
    return {a.x - b.x, a.y - b.y};
}
CurvePlace operator*(const CurvePlace& a, double factor)
{
    return {a.x * factor, a.y * factor};
}

double Dot(const CurvePlace& a, const CurvePlace& b)
{
    return a.x * b.x + a.y * b.y;
}
double Cross(const CurvePlace& a, const CurvePlace& b)
{
    return a.x * b.y - a.y * b.x;
}

CurvePlace Rounded(const CurvePlace& place)
{
    return {std::round(place.x), std::round(place.y)};
}

double RoundingOf(const CurvePlace& place)
{
    const CurvePlace off = place - Rounded(place);
    return std::hypot(off.x, off.y);
}

struct Cubic
{
    std::array<CurvePlace, 4> points;

    CurvePlace At(double t) const
    {
        const double u = 1 - t;
        return points[0] * (u * u * u) + points[1] * (3 * u * u * t) + points[2] * (3 * u * t * t) +
               points[3] * (t * t * t);
    }
    CurvePlace Slope(double t) const
    {
        const double u = 1 - t;
        return (points[1] - points[0]) * (3 * u * u) + (points[2] - points[1]) * (6 * u * t) +
               (points[3] - points[2]) * (3 * t * t);
    }
    /// The direction at an end, also where its control point lies on it.
    CurvePlace Tangent(double t) const
    {
        const CurvePlace slope = Slope(t);
        if (Dot(slope, slope) > 1e-12)
        {
            return slope;
        }
        constexpr double aside = 1e-4;
        return t < 0.5 ? At(t + aside) - At(t) : At(t) - At(t - aside);
    }

    /// How far a place is from the curve, looked for around a parameter.
    double DistanceFrom(const CurvePlace& place, double t, double least, double most) const
    {
        constexpr int steps = 4;
        for (int step = 0; step < steps; ++step)
        {
            const CurvePlace slope = Slope(t);
            const double speed = Dot(slope, slope);
            if (speed < 1e-12)
            {
                break;
            }
            t = std::clamp(t + Dot(place - At(t), slope) / speed, least, most);
        }
        const CurvePlace off = place - At(t);
        return std::hypot(off.x, off.y);
    }
};

/// The largest distance from the part of a cubic of a quadratic that is to stand for it.
double Deviation(const Cubic& cubic, double from, double to, const CurvePlace& start,
                 const QuadraticPiece& piece)
{
    double largest = 0;
    constexpr int probes = 8;
    for (int n = 1; n < probes; ++n)
    {
        const double s = static_cast<double>(n) / probes;
        const CurvePlace place =
            start * ((1 - s) * (1 - s)) + piece.control * (2 * s * (1 - s)) + piece.end * (s * s);
        largest = std::max(largest, cubic.DistanceFrom(place, from + (to - from) * s, from, to));
    }
    return largest;
}

/// Where the tangents at the ends of a part meet; without such a place, what is nearest to it.
CurvePlace ControlOf(const Cubic& cubic, double from, double to)
{
    const CurvePlace start = cubic.At(from);
    const CurvePlace end = cubic.At(to);
    const CurvePlace u = cubic.Tangent(from);
    const CurvePlace v = cubic.Tangent(to);
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
    const CurvePlace a = start + cubic.Slope(from) * third;
    const CurvePlace b = end - cubic.Slope(to) * third;
    return ((a + b) * 3 - start - end) * 0.25;
}

/// A piece for the part between two parameters, its control point rounded the best way.
QuadraticPiece PieceFor(const Cubic& cubic, double from, double to, const CurvePlace& start,
                        const CurvePlace& end, double* deviation)
{
    const CurvePlace control = ControlOf(cubic, from, to);
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

/// Near \p t, where the curve passes closest to a place of whole units.
double NearWholeUnits(const Cubic& cubic, double t, double reach)
{
    constexpr int probes = 8;
    double best = t;
    for (int n = -probes; n <= probes; ++n)
    {
        const double candidate = t + reach * n / probes;
        if (RoundingOf(cubic.At(candidate)) < RoundingOf(cubic.At(best)) - 0.01)
        {
            best = candidate;
        }
    }
    return best;
}

}  // namespace

std::vector<QuadraticPiece> QuadraticsOf(const std::array<CurvePlace, 4>& points)
{
    const Cubic cubic = {points};
    std::vector<QuadraticPiece> best;
    double bestDeviation = std::numeric_limits<double>::infinity();
    for (int count = 1; count <= mostPieces && bestDeviation > tolerance; ++count)
    {
        std::vector<QuadraticPiece> pieces;
        double largest = 0;
        double from = 0;
        CurvePlace start = Rounded(points[0]);
        for (int n = 1; n <= count; ++n)
        {
            const double to =
                n == count ? 1.0
                           : NearWholeUnits(cubic, static_cast<double>(n) / count, 0.2 / count);
            const CurvePlace end = Rounded(n == count ? points[3] : cubic.At(to));
            double deviation = 0;
            pieces.push_back(PieceFor(cubic, from, to, start, end, &deviation));
            largest = std::max({largest, deviation, n == count ? 0.0 : RoundingOf(cubic.At(to))});
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

namespace
{

/// Builds contours as FreeType walks through an outline.
class CubicTracer
{
public:
    void MoveTo(const FT_Vector& to)
    {
        Close();
        last_ = PlaceOf_(to);
        Add_(last_, true);
        open_ = true;
    }
    void LineTo(const FT_Vector& to)
    {
        last_ = PlaceOf_(to);
        Add_(last_, true);
    }
    void ConicTo(const FT_Vector& control, const FT_Vector& to)
    {
        Add_(PlaceOf_(control), false);
        LineTo(to);
    }
    void CubicTo(const FT_Vector& first, const FT_Vector& second, const FT_Vector& to)
    {
        for (const QuadraticPiece& piece :
             QuadraticsOf({last_, PlaceOf_(first), PlaceOf_(second), PlaceOf_(to)}))
        {
            const NativePoint control = PointOf_(piece.control, false);
            const NativePoint end = PointOf_(piece.end, true);
            const NativePoint& start = traced_.points.back();
            // A control point on an end bends nothing.
            if (!((control.x == start.x && control.y == start.y) ||
                  (control.x == end.x && control.y == end.y)))
            {
                traced_.points.push_back(control);
            }
            Add_(piece.end, true);
        }
        last_ = PlaceOf_(to);
    }

    void Close()
    {
        if (!open_)
        {
            return;
        }
        open_ = false;
        std::vector<NativePoint>& points = traced_.points;
        const std::size_t first = traced_.FirstOf(traced_.ends.size());
        // An end that repeats the start is the same point, but where a spline needs it to end on.
        if (points.size() > first + 1 && points.back() == points[first])
        {
            points.pop_back();
        }
        traced_.Close();
        if (traced_.FirstOf(traced_.ends.size()) != first)
        {
            std::reverse(points.begin() + static_cast<std::ptrdiff_t>(first), points.end());
        }
    }

    NativeOutline Take()
    {
        Close();
        return std::move(traced_);
    }

private:
    static CurvePlace PlaceOf_(const FT_Vector& point)
    {
        return {static_cast<double>(point.x) / 64, static_cast<double>(point.y) / 64};
    }

    static NativePoint PointOf_(const CurvePlace& place, bool onCurve)
    {
        const CurvePlace rounded = Rounded(place);
        return {static_cast<FT_Pos>(rounded.x) * 64, static_cast<FT_Pos>(rounded.y) * 64, onCurve};
    }

    void Add_(const CurvePlace& place, bool onCurve)
    {
        const NativePoint point = PointOf_(place, onCurve);
        const bool first = traced_.points.size() == traced_.FirstOf(traced_.ends.size());
        if (first || !(traced_.points.back() == point))
        {
            traced_.points.push_back(point);
        }
    }

    NativeOutline traced_;
    CurvePlace last_;
    bool open_ = false;
};

/// FreeType is C: what throws ends its walk.
template <typename Action>
int Guarded(void* tracer, Action action) noexcept
{
    try
    {
        action(*static_cast<CubicTracer*>(tracer));
        return 0;
    }
    catch (...)
    {
        return FT_Err_Out_Of_Memory;
    }
}

}  // namespace

NativeOutline TraceCubicOutline(const FT_Outline& outline)
{
    static const FT_Outline_Funcs functions = {
        [](const FT_Vector* to, void* tracer) {
            return Guarded(tracer, [&](CubicTracer& trace) { trace.MoveTo(*to); });
        },
        [](const FT_Vector* to, void* tracer) {
            return Guarded(tracer, [&](CubicTracer& trace) { trace.LineTo(*to); });
        },
        [](const FT_Vector* control, const FT_Vector* to, void* tracer) {
            return Guarded(tracer, [&](CubicTracer& trace) { trace.ConicTo(*control, *to); });
        },
        [](const FT_Vector* first, const FT_Vector* second, const FT_Vector* to, void* tracer) {
            return Guarded(tracer,
                           [&](CubicTracer& trace) { trace.CubicTo(*first, *second, *to); });
        },
        0,
        0};
    CubicTracer tracer;
    FT_Outline copy = outline;
    if (FT_Outline_Decompose(&copy, &functions, &tracer) != 0)
    {
        return {};
    }
    return tracer.Take();
}

}  // namespace posix
