// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The quick test that nearly every glyph passes: no two edges meet, and every contour runs the
/// right way.

#include "contours/Edges.h"

#include <cstdint>
#include <limits>
#include <vector>

namespace orvane::contours
{

/// The edges of a flattened outline, cut into monotone chains: runs of edges whose x never turns
/// back. Three facts save most of the comparisons: two edges of one chain meet only if they are
/// neighbours that overlap; two chains whose boxes do not overlap cannot meet; and two chains whose
/// boxes overlap can be compared in one pass from left to right.
///
/// The object keeps its memory from one outline to the next. Only one thread may use it.
class EdgeChains
{
public:
    /// Whether no two edges meet. Also false when the search gives up after
    /// limits::maxEdgeComparisons.
    bool EdgesKeepApart(const FlatOutline& flat);

    /// After EdgesKeepApart(flat) has returned true: marks each contour that does not have the
    /// filled area on its right. Because no edges meet, each contour lies entirely inside or
    /// entirely outside every other contour. The result is empty when all contours run the right
    /// way.
    std::vector<bool> ContoursTheWrongWay(const FlatOutline& flat) const;

private:
    /// The bounding box of some vertices, in units.
    struct Box
    {
        int left = std::numeric_limits<int>::max();
        int right = std::numeric_limits<int>::min();
        int low = std::numeric_limits<int>::max();
        int high = std::numeric_limits<int>::min();

        bool Overlaps(const Box& other) const
        {
            return left <= other.right && other.left <= right && low <= other.high &&
                   other.low <= high;
        }
        bool Contains(const Box& other) const
        {
            return left <= other.left && other.right <= right && low <= other.low &&
                   other.high <= high;
        }
    };

    /// Successive edges of one contour, stored from left to right.
    struct Chain
    {
        std::size_t first;  ///< the index of the leftmost edge in edges_
        std::size_t end;    ///< one past the index of the rightmost edge
        Box box;
    };

    /// A contour whose neighbouring edges do not overlap.
    struct Ring
    {
        int first = 0;  ///< the index of the contour's first vertex
        int end = 0;    ///< one past the index of its last vertex
        Box box;
        std::int64_t twiceArea = 0;  ///< positive when the contour runs clockwise

        /// Whether the contour has no vertices, because flattening left out all of them.
        bool IsEmpty() const { return first == end; }
    };

    bool AddRing(const FlatVertex* vertices, int offset, int size);
    void AddChain(Ring& ring, Edge* first, Edge* end, Box box, bool isRising);
    bool ChainsMeet(const FlatOutline& flat, const Chain& a, const Chain& b,
                    std::int64_t& comparisons) const;
    static bool IsInside(const FlatOutline& flat, const Ring& ring, const ShortPoint& place);

    std::vector<Edge> edges_;
    std::vector<Chain> chains_;
    std::vector<Ring> rings_;
};

/// The calling thread's EdgeChains object. It lives as long as the thread, so that its memory is
/// used again for the next outline.
EdgeChains& EdgeChainsOfThread();

}  // namespace orvane::contours
