// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The edges of flattened outlines, and whether two of them meet.

#include "platform/posix/fonts/OutlineTrial.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace posix
{

/// An edge in the order of the sweep.
struct Edge
{
    std::int16_t left;  // the smallest x
    std::int16_t right;
    std::int16_t low;
    std::int16_t high;
    int from;  // indices of vertices
    int to;
};

/// The edge between the vertices of two indices.
inline Edge EdgeOf(const FlatVertex::Pair& a, const FlatVertex::Pair& b, int from, int to)
{
    return {
        std::min(a.x, b.x), std::max(a.x, b.x), std::min(a.y, b.y), std::max(a.y, b.y), from, to};
}

/// Products of coordinates.
using Whole = std::int64_t;

inline Whole Cross(const FlatVertex::Pair& o, const FlatVertex::Pair& a, const FlatVertex::Pair& b)
{
    return (Whole{a.x} - o.x) * (Whole{b.y} - o.y) - (Whole{a.y} - o.y) * (Whole{b.x} - o.x);
}

inline int SignOf(Whole value)
{
    return value < 0 ? -1 : value > 0 ? 1 : 0;
}

/// Whether two edges whose boxes overlap have more in common than a vertex of the outline.
/// \param cross set when the inside of each crosses that of the other
inline bool EdgesMeet(const std::vector<FlatVertex>& vertices, const Edge& a, const Edge& b,
                      bool* cross = nullptr)
{
    const auto at = [&](int index) -> const FlatVertex::Pair& { return vertices[index].point; };
    if (a.to == b.from || b.to == a.from)
    {
        // Neighbours meet again only where the contour turns back on itself.
        const Edge& first = a.to == b.from ? a : b;
        const Edge& second = a.to == b.from ? b : a;
        if (first.from == second.to)
        {
            return true;  // a contour of two vertices
        }
        const FlatVertex::Pair& corner = at(first.to);
        const FlatVertex::Pair& before = at(first.from);
        const FlatVertex::Pair& after = at(second.to);
        const Whole along = (Whole{before.x} - corner.x) * (Whole{after.x} - corner.x) +
                            (Whole{before.y} - corner.y) * (Whole{after.y} - corner.y);
        return along > 0 && Cross(corner, before, after) == 0;
    }
    const int fromSide = SignOf(Cross(at(a.from), at(a.to), at(b.from)));
    const int toSide = SignOf(Cross(at(a.from), at(a.to), at(b.to)));
    if (fromSide * toSide > 0)
    {
        return false;
    }
    // On one line with overlapping boxes counts as meeting.
    const int sides = SignOf(Cross(at(b.from), at(b.to), at(a.from))) *
                      SignOf(Cross(at(b.from), at(b.to), at(a.to)));
    if (cross != nullptr && fromSide * toSide < 0 && sides < 0)
    {
        *cross = true;
    }
    return sides <= 0;
}

}  // namespace posix
