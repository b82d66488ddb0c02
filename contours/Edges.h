// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The edges of flattened outlines, and the test whether two of them meet.

#include "contours/FlatOutline.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace orvane::contours
{

/// An edge between two vertices of a contour, with its bounding box.
struct Edge
{
    std::int16_t left;  ///< the smallest x
    std::int16_t right;
    std::int16_t low;  ///< the smallest y
    std::int16_t high;
    int from;  ///< the index of the vertex where the edge starts
    int to;
};

/// The edge from a vertex at \p a to a vertex at \p b, whose indices are \p from and \p to.
inline Edge EdgeOf(const ShortPoint& a, const ShortPoint& b, int from, int to)
{
    return {
        std::min(a.x, b.x), std::max(a.x, b.x), std::min(a.y, b.y), std::max(a.y, b.y), from, to};
}

inline int SignOf(std::int64_t value)
{
    return value < 0 ? -1 : value > 0 ? 1 : 0;
}

/// Whether two edges with overlapping boxes meet: they cross, touch or overlap. The vertex that two
/// neighbouring edges of a contour share does not count.
/// \param cross if not null, set to true when the edges cross at a place inside both; otherwise
/// left as it is
inline bool EdgesMeet(const std::vector<FlatVertex>& vertices, const Edge& a, const Edge& b,
                      bool* cross = nullptr)
{
    const auto at = [&](int index) -> const ShortPoint& { return vertices[index].point; };
    if (a.to == b.from || b.to == a.from)
    {
        // Besides the vertex that they share, two neighbours meet only if the contour turns back on
        // itself there.
        const Edge& first = a.to == b.from ? a : b;
        const Edge& second = a.to == b.from ? b : a;
        if (first.from == second.to)
        {
            return true;  // a contour of two vertices
        }
        const ShortPoint& corner = at(first.to);
        const ShortPoint& before = at(first.from);
        const ShortPoint& after = at(second.to);
        const std::int64_t along =
            (std::int64_t{before.x} - corner.x) * (std::int64_t{after.x} - corner.x) +
            (std::int64_t{before.y} - corner.y) * (std::int64_t{after.y} - corner.y);
        return along > 0 && Turn(corner, before, after) == 0;
    }
    const int fromSide = SignOf(Turn(at(a.from), at(a.to), at(b.from)));
    const int toSide = SignOf(Turn(at(a.from), at(a.to), at(b.to)));
    if (fromSide * toSide > 0)
    {
        return false;
    }
    // For two edges on one line all these signs are 0, so they count as meeting. That is right,
    // because their boxes overlap.
    const int sides = SignOf(Turn(at(b.from), at(b.to), at(a.from))) *
                      SignOf(Turn(at(b.from), at(b.to), at(a.to)));
    if (cross != nullptr && fromSide * toSide < 0 && sides < 0)
    {
        *cross = true;
    }
    return sides <= 0;
}

}  // namespace orvane::contours
