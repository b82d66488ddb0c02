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
/// back. Two edges of one chain meet only if they are neighbours that overlap, chains whose boxes
/// keep apart do not meet at all, and two chains with overlapping boxes are compared in one pass
/// from left to right. So far fewer edges are compared than there are pairs of them.
///
/// The object keeps its memory from one outline to the next. It is used by one thread.
class EdgeChains
{
public:
    /// Whether no two edges meet. False also when the search is given up after maxComparisons.
    bool EdgesKeepApart(const FlatOutline& flat);

    /// After EdgesKeepApart(flat) has returned true: marks each contour that does not have the
    /// filled area on its right. As edges keep apart, a contour lies as a whole inside or outside
    /// each of the others. Empty when all contours run the right way.
    std::vector<bool> ContoursTheWrongWay(const FlatOutline& flat) const;

private:
    /// The smallest box around vertices.
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
        std::size_t first;  ///< index of its leftmost edge
        std::size_t end;    ///< one past its rightmost edge
        Box box;
    };

    /// A contour whose neighbouring edges do not overlap.
    struct Ring
    {
        int first = 0;  ///< index of its first vertex
        int end = 0;    ///< one past its last vertex
        Box box;
        std::int64_t twiceArea = 0;  ///< positive when it runs clockwise

        /// Whether flattening has left no vertex of the contour.
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

/// The object of this thread, kept for its memory.
EdgeChains& EdgeChainsOfThread();

}  // namespace orvane::contours
