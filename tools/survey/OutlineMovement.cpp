// SPDX-License-Identifier: MIT
#include "tools/survey/OutlineMovement.h"

#include "contours/OutlineUnion.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

using namespace orvane::contours;

namespace
{

using Contours = std::vector<std::vector<DoublePoint>>;

/// The contours as places on their curves, so close together that the curve between two of them is
/// nearly straight.
Contours Sampled(const NativeOutline& outline)
{
    constexpr int samples = 16;  // of a curved piece
    Contours contours;
    std::size_t first = 0;
    for (const std::size_t end : outline.ends)
    {
        std::vector<DoublePoint>& places = contours.emplace_back();
        const auto at = [&](std::size_t n) {
            return DoublePoint{static_cast<double>(outline.points[n].x >> 6),
                               static_cast<double>(outline.points[n].y >> 6)};
        };
        for (std::size_t n = first; n < end; ++n)
        {
            if (outline.points[n].onCurve)
            {
                places.push_back(at(n));
                continue;
            }
            // A contour starts and ends on the curve, though its first piece may start at its end.
            const DoublePoint start = places.empty() ? at(end - 1) : places.back();
            const DoublePoint control = at(n);
            DoublePoint stop = at(n + 1);
            if (!outline.points[n + 1].onCurve)
            {
                stop = {(control.x + stop.x) / 2, (control.y + stop.y) / 2};
            }
            for (int k = 1; k <= samples; ++k)
            {
                const double t = static_cast<double>(k) / samples;
                const auto mix = [&](double a, double b, double c) {
                    return (1 - t) * (1 - t) * a + 2 * t * (1 - t) * b + t * t * c;
                };
                places.push_back(
                    {mix(start.x, control.x, stop.x), mix(start.y, control.y, stop.y)});
            }
        }
        first = end;
    }
    return contours;
}

struct Segment
{
    DoublePoint a;
    DoublePoint b;
};

/// Finds the largest distance of places from an outline.
class FarthestPlace
{
public:
    explicit FarthestPlace(const Contours& contours)
    {
        for (const std::vector<DoublePoint>& contour : contours)
        {
            for (std::size_t n = 0; n < contour.size(); ++n)
            {
                segments_.push_back({contour[n], contour[n + 1 < contour.size() ? n + 1 : 0]});
            }
        }
    }

    void Add(const DoublePoint& place)
    {
        // Two short cuts: the search starts at the segment nearest to the place before, and it ends
        // as soon as the place turns out to be nearer than the farthest one so far.
        double nearest = std::numeric_limits<double>::infinity();
        for (std::size_t n = 0; n < segments_.size() && nearest > square_; ++n)
        {
            const std::size_t index = (last_ + n) % segments_.size();
            const double square = SquareDistance(segments_[index], place);
            if (square < nearest)
            {
                nearest = square;
                next_ = index;
            }
        }
        last_ = next_;
        square_ = std::max(square_, nearest);
    }

    double Distance() const { return std::sqrt(square_); }

private:
    static double SquareDistance(const Segment& segment, const DoublePoint& place)
    {
        const double x = segment.b.x - segment.a.x;
        const double y = segment.b.y - segment.a.y;
        const double square = x * x + y * y;
        const double along = (place.x - segment.a.x) * x + (place.y - segment.a.y) * y;
        const double t = square > 0 ? std::clamp(along / square, 0.0, 1.0) : 0.0;
        const double dx = segment.a.x + t * x - place.x;
        const double dy = segment.a.y + t * y - place.y;
        return dx * dx + dy * dy;
    }

    std::vector<Segment> segments_;
    double square_ = 0;
    std::size_t last_ = 0;
    std::size_t next_ = 0;
};

}  // namespace

std::optional<double> RepairMovement(const NativeOutline& own, const NativeOutline& repaired)
{
    OutlineUnion border;
    for (const std::vector<DoublePoint>& contour : Sampled(own))
    {
        border.BeginContour();
        for (const DoublePoint& place : contour)
        {
            border.AddVertex(place.x, place.y);
        }
    }
    if (!border.Unite())
    {
        return std::nullopt;
    }
    FarthestPlace farthest(Sampled(repaired));
    for (const auto& loop : border.Loops())
    {
        if (IsSliver(loop))
        {
            continue;
        }
        for (std::size_t n = 0; n < loop.size(); ++n)
        {
            const DoublePoint a = loop[n]->Point();
            const DoublePoint b = loop[n + 1 < loop.size() ? n + 1 : 0]->Point();
            farthest.Add(a);
            farthest.Add((a + b) / 2);
        }
    }
    return farthest.Distance();
}
