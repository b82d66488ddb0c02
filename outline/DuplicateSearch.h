// SPDX-License-Identifier: MIT
#pragma once

#include "outline/TTPolyContour.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// Whether any two vertices of the contours lie at the same place.
bool AnyPlaceRepeats(std::span<const TTPolyContour> contours);

/// Moves vertices that lie at the place of an earlier one. Equal, to the bit and in the order of
/// the moves, to comparing every vertex with every later one, but it looks places up in a hash
/// table: the time is that of the vertices and of the moves made.
///
/// The contours are borrowed, and each has vertices of its own.
class DuplicateSearch
{
public:
    /// Compares each vertex with the later ones of its contour.
    void SeparateWithin(TTPolyContour& contour);

    /// Compares each vertex with all vertices of the later contours.
    void SeparateBetween(std::span<TTPolyContour> contours);

private:
    /// One vertex, in the order of comparison. It may move the vertices of higher rank.
    struct Entry
    {
        TTPolyContour* contour;
        int index;  ///< in the contour
        int rank;
        int next;  ///< in the chain of its place
    };

    /// The vertices at one place that can still be moved, mostly in their order. A slot keeps its
    /// place when the last of them has left.
    struct Slot
    {
        std::uint32_t place = 0;
        int first = unused_;
        int last = end_;
    };

    static constexpr int unused_ = -2;
    static constexpr int end_ = -1;

    void Separate_();
    void Chain_(int entry);
    Slot& Find_(std::uint32_t place);
    void Rehash_(std::size_t slotCount);

    std::vector<Entry> entries_;
    std::vector<Slot> slots_;  ///< a power of two, at most half of them used
    std::size_t usedSlots_ = 0;
    std::vector<int> movers_;  ///< of one place, kept for its memory
};
