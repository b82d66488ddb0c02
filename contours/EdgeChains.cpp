// SPDX-License-Identifier: MIT
#include "contours/EdgeChains.h"

#include "platform/Limits.h"

#include <algorithm>

namespace orvane::contours
{

bool EdgeChains::EdgesKeepApart(const FlatOutline& flat)
{
    edges_.clear();
    chains_.clear();
    rings_.clear();
    int first = 0;
    for (const int size : flat.sizes)
    {
        if (!AddRing(flat.vertices.data() + first, first, size))
        {
            return false;
        }
        first += size;
    }
    std::int64_t comparisons = 0;
    for (std::size_t m = 1; m < chains_.size(); ++m)
    {
        for (std::size_t n = 0; n < m; ++n)
        {
            if (chains_[m].box.Overlaps(chains_[n].box) &&
                ChainsMeet(flat, chains_[m], chains_[n], comparisons))
            {
                return false;
            }
        }
        comparisons += static_cast<std::int64_t>(m);
        if (comparisons > limits::maxEdgeComparisons)
        {
            return false;
        }
    }
    return true;
}

std::vector<bool> EdgeChains::ContoursTheWrongWay(const FlatOutline& flat) const
{
    std::vector<bool> wrongWay;
    for (std::size_t n = 0; n < rings_.size(); ++n)
    {
        if (rings_[n].IsEmpty())
        {
            continue;
        }
        bool isHole = false;
        for (std::size_t m = 0; m < rings_.size(); ++m)
        {
            isHole ^= m != n && !rings_[m].IsEmpty() && rings_[m].box.Contains(rings_[n].box) &&
                      IsInside(flat, rings_[m], flat.vertices[rings_[n].first].point);
        }
        if ((rings_[n].twiceArea > 0) == isHole)
        {
            wrongWay.resize(rings_.size());
            wrongWay[n] = true;
        }
    }
    return wrongWay;
}

/// Cuts a contour into chains. Returns false when the contour has one or two vertices, turns back
/// on itself or has two successive vertices at the same place.
/// \param offset the index of the contour's first vertex in the outline
bool EdgeChains::AddRing(const FlatVertex* vertices, int offset, int size)
{
    Ring& ring = rings_.emplace_back();
    if (size == 0)
    {
        return true;
    }
    // Start at the first vertex where x begins to grow.
    int start = 0;
    for (int before = vertices[size - 1].point.x; start < size; ++start)
    {
        const int x = vertices[start].point.x;
        if (before >= x && x < vertices[start + 1 < size ? start + 1 : 0].point.x)
        {
            break;
        }
        before = x;
    }
    if (size < 3 || start == size)
    {
        return false;
    }
    ring.first = offset;
    ring.end = offset + size;
    const std::size_t firstEdge = edges_.size();
    edges_.resize(firstEdge + static_cast<std::size_t>(size));
    Edge* edge = edges_.data() + firstEdge;
    Edge* chain = edge;
    Box box;
    std::int64_t twiceArea = 0;
    bool isRising = true;
    int i = start;
    int next = i + 1 < size ? i + 1 : 0;
    ShortPoint a = vertices[i].point;
    ShortPoint b = vertices[next].point;
    for (int n = 0; n < size; ++n)
    {
        const int after = next + 1 < size ? next + 1 : 0;
        const ShortPoint c = vertices[after].point;
        const std::int64_t x = b.x - a.x;
        const std::int64_t further = c.x - b.x;
        // Two neighbouring edges can overlap only where x turns back or stands still.
        if (x * further <= 0)
        {
            const std::int64_t along =
                x * further + (std::int64_t{b.y} - a.y) * (std::int64_t{c.y} - b.y);
            if ((along < 0 && Turn(b, a, c) == 0) || (x == 0 && a.y == b.y))
            {
                return false;
            }
        }
        if (isRising ? x < 0 : x > 0)
        {
            AddChain(ring, chain, edge, box, isRising);
            isRising = !isRising;
            chain = edge;
            box = {};
        }
        *edge++ = EdgeOf(a, b, offset + i, offset + next);
        box.low = std::min<int>(box.low, b.y);
        box.high = std::max<int>(box.high, b.y);
        twiceArea += std::int64_t{b.x} * a.y - std::int64_t{a.x} * b.y;
        i = next;
        next = after;
        a = b;
        b = c;
    }
    AddChain(ring, chain, edge, box, isRising);
    ring.twiceArea = twiceArea;
    return true;
}

/// Adds the chain of the edges from \p first to the one before \p end.
/// \param box holds the lowest and highest y of all vertices but the first
/// \param isRising whether x grows from edge to edge; if not, the edges are reversed
void EdgeChains::AddChain(Ring& ring, Edge* first, Edge* end, Box box, bool isRising)
{
    box.low = std::min<int>(box.low, first->low);
    box.high = std::max<int>(box.high, first->high);
    if (!isRising)
    {
        std::reverse(first, end);
    }
    box.left = first->left;
    box.right = (end - 1)->right;
    chains_.push_back({static_cast<std::size_t>(first - edges_.data()),
                       static_cast<std::size_t>(end - edges_.data()), box});
    ring.box = {std::min(ring.box.left, box.left), std::max(ring.box.right, box.right),
                std::min(ring.box.low, box.low), std::max(ring.box.high, box.high)};
}

/// Whether an edge of one chain meets an edge of the other.
/// \param comparisons is increased by the number of pairs of edges looked at
bool EdgeChains::ChainsMeet(const FlatOutline& flat, const Chain& a, const Chain& b,
                            std::int64_t& comparisons) const
{
    // Both chains run from left to right. So for each further edge of a, the first edge of b that
    // can meet it is the same as before or lies farther right.
    const Edge* firstCandidate = &edges_[b.first];
    const Edge* const end = edges_.data() + b.end;
    for (std::size_t n = a.first; n < a.end && edges_[n].left <= b.box.right; ++n)
    {
        const Edge& edge = edges_[n];
        if (edge.right < b.box.left || edge.low > b.box.high || edge.high < b.box.low)
        {
            continue;
        }
        while (firstCandidate->right < edge.left)
        {
            // b's last edge ends this loop, because its right end, b.box.right, is at or right of
            // edge.left.
            ++firstCandidate;
        }
        const Edge* other = firstCandidate;
        for (; other < end && other->left <= edge.right; ++other)
        {
            if (edge.low <= other->high && other->low <= edge.high &&
                EdgesMeet(flat.vertices, edge, *other))
            {
                return true;
            }
        }
        comparisons += other - firstCandidate;
    }
    return false;
}

/// Whether a place lies inside a contour. The place must not be on the contour.
bool EdgeChains::IsInside(const FlatOutline& flat, const Ring& ring, const ShortPoint& place)
{
    bool isInside = false;
    ShortPoint a = flat.vertices[ring.end - 1].point;
    for (int i = ring.first; i < ring.end; ++i)
    {
        const ShortPoint b = flat.vertices[i].point;
        if ((a.y <= place.y) != (b.y <= place.y))
        {
            isInside ^= (Turn(a, b, place) > 0) == (b.y > a.y);
        }
        a = b;
    }
    return isInside;
}

EdgeChains& EdgeChainsOfThread()
{
    thread_local EdgeChains chains;
    return chains;
}

}  // namespace orvane::contours
