// SPDX-License-Identifier: MIT
#include "shapes/AreaBorders.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>

namespace orvane::shapes
{

namespace
{

using GridContour = std::vector<GridPoint>;

/// Whether \p direction points above the x axis or along it to the right. Orders the two halves of
/// the turn from there, counter-clockwise.
bool IsInFirstHalf(const GridPoint& direction)
{
    return direction.y > 0 || (direction.y == 0 && direction.x > 0);
}

/// Orders directions counter-clockwise, from along the x axis.
bool TurnsLess(const GridPoint& a, const GridPoint& b)
{
    if (IsInFirstHalf(a) != IsInFirstHalf(b))
    {
        return IsInFirstHalf(a);
    }
    return Turn(GridPoint(), a, b) > 0;
}

/// Follows the edges of a border.
class BorderWalk
{
public:
    explicit BorderWalk(std::vector<BorderEdge> border)
        : edges_(std::move(border)), isUsed_(edges_.size(), false)
    {
        std::sort(edges_.begin(), edges_.end(), [](const BorderEdge& a, const BorderEdge& b) {
            return a.from != b.from ? ComesBefore(a.from, b.from)
                                    : TurnsLess(a.to - a.from, b.to - b.from);
        });
    }

    std::vector<GridContour> Contours()
    {
        std::vector<GridContour> contours;
        for (std::size_t i = 0; i < edges_.size(); ++i)
        {
            if (!isUsed_[i])
            {
                Follow(i, contours);
            }
        }
        return contours;
    }

private:
    struct PointOrder
    {
        bool operator()(const GridPoint& a, const GridPoint& b) const { return ComesBefore(a, b); }
    };

    /// Follows a border from an edge until it is back. Each loop is a contour of its own.
    void Follow(std::size_t first, std::vector<GridContour>& contours)
    {
        GridContour corners;
        std::map<GridPoint, std::size_t, PointOrder> passed;
        for (std::size_t edge = first; edge < edges_.size(); edge = Next(edges_[edge]))
        {
            isUsed_[edge] = true;
            passed.emplace(edges_[edge].from, corners.size());
            corners.push_back(edges_[edge].from);
            const auto again = passed.find(edges_[edge].to);
            if (again == passed.end())
            {
                continue;
            }
            const auto start = corners.begin() + static_cast<std::ptrdiff_t>(again->second);
            contours.emplace_back(start, corners.end());
            for (auto corner = start; corner != corners.end(); ++corner)
            {
                passed.erase(*corner);
            }
            corners.erase(start, corners.end());
            if (corners.empty())
            {
                return;
            }
        }
    }

    /// The unused edge that follows an edge: at a point from which several start, the first one
    /// clockwise from the way back, so that contours touch there and do not cross. The number of
    /// edges when there is none.
    std::size_t Next(const BorderEdge& edge) const
    {
        const auto starts = std::equal_range(
            edges_.begin(), edges_.end(), BorderEdge{edge.to, edge.to},
            [](const BorderEdge& a, const BorderEdge& b) { return ComesBefore(a.from, b.from); });
        const auto count = starts.second - starts.first;
        const GridPoint back = edge.from - edge.to;
        auto next = std::lower_bound(starts.first, starts.second, back,
                                     [](const BorderEdge& start, const GridPoint& direction) {
                                         return TurnsLess(start.to - start.from, direction);
                                     });
        for (std::ptrdiff_t i = 0; i < count; ++i)
        {
            next = (next == starts.first ? starts.second : next) - 1;
            if (!isUsed_[next - edges_.begin()])
            {
                return next - edges_.begin();
            }
        }
        return edges_.size();
    }

    std::vector<BorderEdge> edges_;  ///< by their starts; at one point counter-clockwise
    std::vector<bool> isUsed_;
};

/// Whether a corner lies within one step of the line between its neighbours, and between them.
bool IsNearLine(const GridPoint& before, const GridPoint& corner, const GridPoint& after)
{
    const double x = static_cast<double>(after.x) - before.x;
    const double y = static_cast<double>(after.y) - before.y;
    const double along = x * (static_cast<double>(corner.x) - before.x) +
                         y * (static_cast<double>(corner.y) - before.y);
    const double squaredLength = x * x + y * y;
    return along > 0 && along < squaredLength &&
           std::abs(static_cast<double>(Turn(before, after, corner))) <= std::sqrt(squaredLength);
}

/// A contour without the corners that hardly turn. A corner stays when leaving it out, together
/// with those before it, would move the border by more than a step.
GridContour Simplified(const GridContour& contour)
{
    constexpr std::size_t maxRun = 16;  // corners that are left out together; keeps the time linear
    GridContour kept;
    std::vector<GridPoint> run;
    for (std::size_t i = 0; i < contour.size(); ++i)
    {
        const GridPoint& corner = contour[i];
        const GridPoint& after = contour[i + 1 == contour.size() ? 0 : i + 1];
        run.push_back(corner);
        const bool isStraight = !kept.empty() && run.size() <= maxRun &&
                                std::all_of(run.begin(), run.end(), [&](const GridPoint& point) {
                                    return IsNearLine(kept.back(), point, after);
                                });
        if (!isStraight)
        {
            kept.push_back(corner);
            run.clear();
        }
    }
    // The first corner was kept without a look at its neighbours.
    if (kept.size() > 3 && run.empty() && IsNearLine(kept.back(), kept[0], kept[1]))
    {
        kept.erase(kept.begin());
    }
    return kept;
}

/// Whether contours meet anywhere but at corners.
bool DoMeet(const std::vector<GridContour>& contours, WorkLimit& work)
{
    std::vector<GridEdge> edges;
    for (const GridContour& contour : contours)
    {
        for (std::size_t i = 0; i < contour.size(); ++i)
        {
            const GridPoint& from = contour[i];
            const GridPoint& to = contour[i + 1 == contour.size() ? 0 : i + 1];
            edges.push_back(ComesBefore(from, to) ? GridEdge{from, to, 0} : GridEdge{to, from, 0});
        }
    }
    return DoAnyMeet(edges, work);
}

}  // namespace

Contours ContoursOfBorder(std::vector<BorderEdge> border, double step, WorkLimit& work)
{
    std::vector<GridContour> exact = BorderWalk(std::move(border)).Contours();
    std::vector<GridContour> simplified;
    std::transform(exact.begin(), exact.end(), std::back_inserter(simplified), Simplified);
    std::erase_if(simplified, [](const GridContour& contour) { return contour.size() < 3; });
    Contours result;
    for (const GridContour& contour : DoMeet(simplified, work) ? exact : simplified)
    {
        Contour& corners = result.emplace_back();
        for (const GridPoint& corner : contour)
        {
            corners.push_back({corner.x * step, corner.y * step});
        }
    }
    return result;
}

}  // namespace orvane::shapes
