// SPDX-License-Identifier: MIT
#pragma once

#include "shapes/GridEdges.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace orvane::shapes
{

/// A part of the plane, its border included, in steps of the grid.
struct GridBox
{
    std::int32_t left = maxGridCoordinate;
    std::int32_t low = maxGridCoordinate;
    std::int32_t right = -maxGridCoordinate;
    std::int32_t high = -maxGridCoordinate;

    bool Overlaps(const GridBox& other) const
    {
        return left <= other.right && other.left <= right && low <= other.high && other.low <= high;
    }
    /// Whether a point lies in the box or at most \p margin steps beside it.
    bool Contains(const GridPoint& point, std::int32_t margin = 0) const
    {
        return point.x >= left - margin && point.x <= right + margin && point.y >= low - margin &&
               point.y <= high + margin;
    }
};

inline GridBox BoxOf(const GridEdge& edge)
{
    return {edge.from.x, std::min(edge.from.y, edge.to.y), edge.to.x,
            std::max(edge.from.y, edge.to.y)};
}

/// Whether an edge has a point in a box.
inline bool Touches(const GridEdge& edge, const GridBox& box)
{
    if (!BoxOf(edge).Overlaps(box))
    {
        return false;
    }
    const auto [least, most] = std::minmax({Turn(edge.from, edge.to, {box.left, box.low}),
                                            Turn(edge.from, edge.to, {box.right, box.low}),
                                            Turn(edge.from, edge.to, {box.left, box.high}),
                                            Turn(edge.from, edge.to, {box.right, box.high})});
    return least <= 0 && most >= 0;
}

/// Finds edges and points that lie near each other. The plane is halved again and again until few
/// edges or, if points are searched for, few points are left in each part.
class PlaneHalving
{
public:
    using Indices = std::vector<std::uint32_t>;

    /// \param edges and \param points are borrowed; their coordinates lie within maxGridCoordinate
    PlaneHalving(const std::vector<GridEdge>& edges, const std::vector<GridPoint>& points,
                 WorkLimit& work)
        : edges_(edges), points_(points), work_(work)
    {}

    /// Calls \p use with the indices of the edges and of the points of each part. Two edges that
    /// meet are together in some part, and so are an edge and a point that is at most a step away
    /// from it in x and in y. They may be together in several parts.
    template <typename Use>
    void ForEachPart(Use use)
    {
        Part all;
        for (std::uint32_t i = 0; i < edges_.size(); ++i)
        {
            const GridBox edge = BoxOf(edges_[i]);
            all.edges.push_back(i);
            all.box = {std::min(all.box.left, edge.left), std::min(all.box.low, edge.low),
                       std::max(all.box.right, edge.right), std::max(all.box.high, edge.high)};
        }
        for (std::uint32_t i = 0; i < points_.size(); ++i)
        {
            all.points.push_back(i);
        }
        Halve(all, 0, 0, use);
    }

private:
    struct Part
    {
        GridBox box;
        Indices edges;
        Indices points;
    };
    using Halves = std::array<Part, 2>;

    /// \param fruitless how many halvings in a row, up to this part, have separated no edges
    template <typename Use>
    void Halve(const Part& part, int depth, int fruitless, Use& use)
    {
        constexpr std::size_t fewEdges = 12;
        constexpr std::size_t fewPoints = 4;
        constexpr int maxDepth = 44;
        constexpr int maxFruitless = 3;
        const GridBox& box = part.box;
        const std::int32_t width = box.right - box.left;
        const std::int32_t height = box.high - box.low;
        if (part.edges.size() <= fewEdges || depth == maxDepth || fruitless == maxFruitless ||
            std::max(width, height) < 2 || (!points_.empty() && part.points.size() <= fewPoints))
        {
            use(part.edges, part.points);
            return;
        }
        Halves halves = HalvesOf(part, width > height);
        if (SharedBy(halves, part) > part.edges.size() * 9 / 10)
        {
            // Most edges run along the longer side.
            Halves others = HalvesOf(part, width <= height);
            if (SharedBy(others, part) < SharedBy(halves, part))
            {
                halves = std::move(others);
            }
        }
        const int next = SharedBy(halves, part) >= part.edges.size() ? fruitless + 1 : 0;
        for (Part& half : halves)
        {
            Halve(half, depth + 1, next, use);
            half = {};
        }
    }

    Halves HalvesOf(const Part& part, bool byWidth)
    {
        // The test of an edge takes a few times as long as a comparison of two.
        work_.Add(static_cast<std::int64_t>(4 * part.edges.size() + part.points.size()));
        Halves halves;
        halves[0].box = halves[1].box = part.box;
        if (byWidth)
        {
            const std::int32_t middle = part.box.left + (part.box.right - part.box.left) / 2;
            halves[0].box.right = halves[1].box.left = middle;
        }
        else
        {
            const std::int32_t middle = part.box.low + (part.box.high - part.box.low) / 2;
            halves[0].box.high = halves[1].box.low = middle;
        }
        for (Part& half : halves)
        {
            std::copy_if(part.edges.begin(), part.edges.end(), std::back_inserter(half.edges),
                         [&](auto i) { return Touches(edges_[i], half.box); });
            std::copy_if(part.points.begin(), part.points.end(), std::back_inserter(half.points),
                         [&](auto i) { return half.box.Contains(points_[i], 1); });
        }
        return halves;
    }

    /// How many edges of a part touch both halves. Each touches one of them.
    static std::size_t SharedBy(const Halves& halves, const Part& part)
    {
        return halves[0].edges.size() + halves[1].edges.size() - part.edges.size();
    }

    const std::vector<GridEdge>& edges_;
    const std::vector<GridPoint>& points_;
    WorkLimit& work_;
};

}  // namespace orvane::shapes
