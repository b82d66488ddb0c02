// SPDX-License-Identifier: MIT
#include "contours/Directions.h"

#include <algorithm>
#include <cstdlib>

namespace orvane::contours
{
namespace
{

/// The vote of the edge from vertex \p from to vertex \p to: the height of the edge, positive when
/// the filled area is on the edge's left and negative when it is on the edge's right. To decide
/// this, the function tests whether the place just beside the middle of the edge, toward larger x,
/// is filled.
int VoteForLeft(const FlatOutline& flat, int from, int to)
{
    const ShortPoint& start = flat.vertices[from].point;
    const ShortPoint& end = flat.vertices[to].point;
    // The middle of the edge, with its coordinates doubled so that they are whole numbers.
    const std::int64_t x = std::int64_t{start.x} + end.x;
    const std::int64_t y = std::int64_t{start.y} + end.y;
    bool isRightFilled = false;  // whether the place toward larger x is filled
    ForEachContour(flat, [&](int first, int last) {
        for (int i = first; i < last; ++i)
        {
            const int next = i + 1 < last ? i + 1 : first;
            const ShortPoint& a = flat.vertices[i].point;
            const ShortPoint& b = flat.vertices[next].point;
            if (i == from || (2 * std::int64_t{a.y} <= y) == (2 * std::int64_t{b.y} <= y))
            {
                continue;
            }
            // A line from the middle toward larger x crosses the edge from a to b when that edge,
            // at the height of the middle, has a larger x than the middle.
            const std::int64_t rise = std::int64_t{b.y} - a.y;
            const std::int64_t side = (2 * std::int64_t{a.x} - x) * rise +
                                      (y - 2 * std::int64_t{a.y}) * (std::int64_t{b.x} - a.x);
            isRightFilled ^= (rise > 0 ? side : -side) > 0;
        }
    });
    const int height = std::abs(end.y - start.y);
    const bool isUpward = end.y > start.y;
    return isRightFilled != isUpward ? height : -height;
}

}  // namespace

std::vector<bool> ContoursTheWrongWay(const FlatOutline& flat)
{
    constexpr std::ptrdiff_t maxVotes = 5;
    std::vector<bool> wrongWay;
    wrongWay.reserve(flat.sizes.size());
    std::vector<int> tallest;  // the start vertices of the edges, tallest edge first
    ForEachContour(flat, [&](int first, int last) {
        const auto next = [&](int i) { return i + 1 < last ? i + 1 : first; };
        const auto height = [&](int i) {
            return std::abs(flat.vertices[next(i)].point.y - flat.vertices[i].point.y);
        };
        tallest.clear();
        for (int i = first; i < last; ++i)
        {
            tallest.push_back(i);
        }
        const auto end = tallest.begin() + std::min(maxVotes, std::ssize(tallest));
        std::partial_sort(tallest.begin(), end, tallest.end(),
                          [&](int a, int b) { return height(a) > height(b); });
        int left = 0;
        for (auto i = tallest.begin(); i != end; ++i)
        {
            left += height(*i) > 0 ? VoteForLeft(flat, *i, next(*i)) : 0;
        }
        wrongWay.push_back(left > 0);
    });
    return wrongWay;
}

}  // namespace orvane::contours
