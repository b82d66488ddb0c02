// SPDX-License-Identifier: MIT
#include "shapes/Path.h"

#include "orvane/Error.h"
#include "platform/Limits.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvane::shapes
{

using contours::Cross;
using contours::Dot;
using contours::DoublePoint;
using contours::Length;

namespace
{

/// The direction of the first way that has a length; zero when none has.
DoublePoint FirstDirection(const std::array<DoublePoint, 3>& ways)
{
    for (const DoublePoint& way : ways)
    {
        if (const double length = Length(way); length > 0)
        {
            return way / length;
        }
    }
    return {};
}

}  // namespace

DoublePoint PathPiece::PointAt(double t) const
{
    const double u = 1 - t;
    if (!isCurve)
    {
        return points[0] * u + points[3] * t;
    }
    return points[0] * (u * u * u) + points[1] * (3 * u * u * t) + points[2] * (3 * u * t * t) +
           points[3] * (t * t * t);
}

DoublePoint PathPiece::StartDirection() const
{
    const DoublePoint chord = points[3] - points[0];
    return isCurve ? FirstDirection({points[1] - points[0], points[2] - points[0], chord})
                   : FirstDirection({chord, chord, chord});
}

DoublePoint PathPiece::EndDirection() const
{
    const DoublePoint chord = points[3] - points[0];
    return isCurve ? FirstDirection({points[3] - points[2], points[3] - points[1], chord})
                   : FirstDirection({chord, chord, chord});
}

void Path::MoveTo(const DoublePoint& to)
{
    subpaths_.push_back({to, {}, false});
    current_ = to;
    isOpen_ = true;
}

Subpath& Path::OpenSubpath()
{
    if (!isOpen_)
    {
        MoveTo(current_);
    }
    return subpaths_.back();
}

void Path::LineTo(const DoublePoint& to)
{
    OpenSubpath().pieces.push_back({{current_, current_, to, to}, false});
    current_ = to;
}

void Path::QuadraticTo(const DoublePoint& control, const DoublePoint& to)
{
    CubicTo(current_ + (control - current_) * (2.0 / 3), to + (control - to) * (2.0 / 3), to);
}

void Path::CubicTo(const DoublePoint& first, const DoublePoint& second, const DoublePoint& to)
{
    OpenSubpath().pieces.push_back({{current_, first, second, to}, true});
    current_ = to;
}

void Path::ArcTo(const DoublePoint& radii, double rotation, bool isLarge, bool sweeps,
                 const DoublePoint& to)
{
    // SVG 2, appendix B.2.4: from end points to the centre, in the coordinates of the ellipse.
    const double angle = rotation * std::numbers::pi / 180;
    const Affine turn = {std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle), 0, 0};
    const Affine turnBack = {turn.a, -turn.b, -turn.c, turn.d, 0, 0};
    const double rx = std::abs(radii.x);
    const double ry = std::abs(radii.y);
    const DoublePoint half = turnBack((current_ - to) / 2);
    const DoublePoint onCircle = {half.x / rx, half.y / ry};
    const double distance = Length(onCircle);
    if (rx == 0 || ry == 0 || distance == 0 || !std::isfinite(distance))
    {
        LineTo(to);
        return;
    }
    // On a circle of radius 1, the ends lie at plus and minus onCircle from the middle between
    // them.
    const double enlarged = std::max(1.0, distance);
    const DoublePoint unitHalf = onCircle / enlarged;
    const double height = std::sqrt(std::max(0.0, 1 - Dot(unitHalf, unitHalf)));
    const double side = isLarge == sweeps ? -1 : 1;
    const DoublePoint toCenter =
        DoublePoint{unitHalf.y, -unitHalf.x} * (side * height / Length(unitHalf));
    const DoublePoint from = unitHalf - toCenter;
    const DoublePoint end = unitHalf * -1.0 - toCenter;
    double extent = std::atan2(Cross(from, end), Dot(from, end));
    if (sweeps && extent < 0)
    {
        extent += 2 * std::numbers::pi;
    }
    else if (!sweeps && extent > 0)
    {
        extent -= 2 * std::numbers::pi;
    }
    const DoublePoint middle = (current_ + to) / 2;
    const Affine place = Affine::Translation(middle.x, middle.y) * turn *
                         Affine::Scale(rx * enlarged, ry * enlarged) *
                         Affine::Translation(toCenter.x, toCenter.y);
    const int count = static_cast<int>(std::ceil(std::abs(extent) / (std::numbers::pi / 4) - 1e-9));
    const double step = extent / std::max(count, 1);
    const double reach = 4.0 / 3 * std::tan(step / 4);
    const double start = std::atan2(from.y, from.x);
    for (int i = 0; i < count; ++i)
    {
        const double a = start + i * step;
        const double b = a + step;
        const DoublePoint first = {std::cos(a) - reach * std::sin(a),
                                   std::sin(a) + reach * std::cos(a)};
        const DoublePoint second = {std::cos(b) + reach * std::sin(b),
                                    std::sin(b) - reach * std::cos(b)};
        CubicTo(place(first), place(second),
                i + 1 == count ? to : place({std::cos(b), std::sin(b)}));
    }
}

void Path::Close()
{
    if (!isOpen_)
    {
        return;
    }
    Subpath& subpath = subpaths_.back();
    if (current_ != subpath.start)
    {
        LineTo(subpath.start);
    }
    subpath.isClosed = true;
    current_ = subpath.start;
    isOpen_ = false;
}

void SegmentLimit::Add(double count)
{
    count_ += count;
    if (!(count_ <= limits::maxShapeSegments))
    {
        throw Error(place_,
                    "more than " + std::to_string(limits::maxShapeSegments) +
                        " line segments, curves and strokes cut into lines",
                    "at most that many");
    }
}

int StepsFor(const PathPiece& piece, double tolerance, SegmentLimit& limit)
{
    double steps = 1;
    if (piece.isCurve)
    {
        // G. Wang's bound: the chords of n equal steps deviate by at most 6 / 8 of the longest
        // second difference of the control points, divided by n squared.
        const auto& p = piece.points;
        const double bend =
            std::max(Length(p[0] - p[1] * 2.0 + p[2]), Length(p[1] - p[2] * 2.0 + p[3]));
        steps = std::max(1.0, std::ceil(std::sqrt(0.75 * bend / tolerance)));
    }
    limit.Add(steps);
    return static_cast<int>(steps);
}

Contours Flattened(const Path& path, double tolerance, SegmentLimit& limit)
{
    Contours result;
    for (const Subpath& subpath : path.Subpaths())
    {
        Contour contour = {subpath.start};
        for (const PathPiece& piece : subpath.pieces)
        {
            const int steps = StepsFor(piece, tolerance, limit);
            for (int i = 1; i <= steps; ++i)
            {
                contour.push_back(i == steps ? piece.points[3]
                                             : piece.PointAt(static_cast<double>(i) / steps));
            }
        }
        if (contour.size() > 2)
        {
            result.push_back(std::move(contour));
        }
    }
    return result;
}

}  // namespace orvane::shapes
