// SPDX-License-Identifier: MIT
#include "contours/Crossings.h"

#include "contours/EdgeChains.h"
#include "contours/Edges.h"
#include "platform/Limits.h"

#include <algorithm>

namespace orvane::contours
{

bool EdgesKeepApart(const FlatOutline& flat)
{
    return EdgeChainsOfThread().EdgesKeepApart(flat);
}

int CountMeetings(const FlatOutline& flat, int limit, bool* cross)
{
    if (flat.vertices.size() > limits::maxOutlineVertices)
    {
        return limit + 1;
    }
    // The sweep runs from left to right, so it takes the edges in the order of their left ends. A
    // key in \c order holds the x of an edge's left end in its upper 16 bits and the index of the
    // edge in its lower 16 bits.
    std::vector<std::uint32_t> order;
    std::vector<Edge> edges;
    order.reserve(flat.vertices.size());
    edges.reserve(flat.vertices.size());
    int meetings = 0;
    ForEachContour(flat, [&](int first, int end) {
        meetings += end - first == 1 || end - first == 2 ? 1 : 0;
        for (int i = first; i < end; ++i)
        {
            const int next = i + 1 < end ? i + 1 : first;
            const ShortPoint& a = flat.vertices[i].point;
            const ShortPoint& b = flat.vertices[next].point;
            meetings += a == b ? 1 : 0;
            edges.push_back(EdgeOf(a, b, i, next));
            order.push_back(static_cast<std::uint32_t>(edges.back().left + 0x8000) << 16 |
                            static_cast<std::uint32_t>(i));
        }
    });
    std::sort(order.begin(), order.end());
    std::vector<const Edge*> open;  // the edges that the sweep has reached but not yet passed
    open.reserve(32);
    std::int64_t comparisons = 0;
    for (const std::uint32_t key : order)
    {
        const Edge& edge = edges[key & 0xFFFF];
        std::size_t kept = 0;
        for (const Edge* const other : open)
        {
            if (other->right < edge.left)
            {
                continue;
            }
            open[kept++] = other;
            if (other->low <= edge.high && edge.low <= other->high &&
                EdgesMeet(flat.vertices, edge, *other, cross))
            {
                ++meetings;
            }
        }
        comparisons += std::ssize(open);
        if (meetings > limit || comparisons > limits::maxEdgeComparisons)
        {
            return limit + 1;
        }
        open.resize(kept);
        open.push_back(&edge);
    }
    return meetings;
}

}  // namespace orvane::contours
