// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Vertices of a flattened outline that lie at the same place.
///
/// A contour of any type will do that has GetVertexCount(), GetVertexElement(i), which points to
/// something with whole-numbered point.x, point.y, vertexNormal.x and vertexNormal.y, and
/// AdjustDuplicateVertex(i), which moves a vertex along its normal.

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace outlines
{

/// Called for every look at a slot of a hash table or at a vertex of a chain. Tests pass a counter
/// in its place, to see that the search takes time in proportion to the vertices.
struct CountsNoSteps
{
    void operator()() const {}
};

template <typename Vertex>
std::uint32_t PlaceOf(const Vertex& vertex)
{
    return std::uint32_t{static_cast<std::uint16_t>(vertex.point.x)} << 16 |
           static_cast<std::uint16_t>(vertex.point.y);
}

/// Places of a glyph lie close together: the multiplication spreads them over the high bits.
inline std::size_t HashOfPlace(std::uint32_t place, std::size_t slotCount)
{
    constexpr std::uint64_t golden = 0x9E3779B97F4A7C15;  // 2 to the 64th over the golden ratio
    return (place * golden >> 32) & (slotCount - 1);
}

inline std::size_t SlotCountFor(std::size_t placeCount)
{
    return std::bit_ceil(2 * placeCount + 2);
}

/// Whether any two vertices of the contours lie at the same place.
template <typename Contour, typename OnStep = CountsNoSteps>
bool AnyPlaceRepeats(std::span<Contour> contours, OnStep onStep = {})
{
    std::size_t vertexCount = 0;
    for (const auto& contour : contours)
    {
        vertexCount += static_cast<std::size_t>(std::max(contour.GetVertexCount(), 0));
    }
    if (vertexCount < 2)
    {
        return false;
    }

    // The first vertex' place marks the free slots: any other vertex there is a repetition anyway.
    std::vector<std::uint32_t> places;
    std::uint32_t free = 0;
    for (const auto& contour : contours)
    {
        for (int i = 0; i < contour.GetVertexCount(); ++i)
        {
            const std::uint32_t place = PlaceOf(*contour.GetVertexElement(i));
            if (places.empty())
            {
                places.assign(SlotCountFor(vertexCount), place);
                free = place;
                continue;
            }
            std::size_t slot = HashOfPlace(place, places.size());
            onStep();
            while (places[slot] != place && places[slot] != free)
            {
                onStep();
                slot = (slot + 1) & (places.size() - 1);
            }
            if (places[slot] == place)
            {
                return true;
            }
            places[slot] = place;
        }
    }
    return false;
}

/// Moves vertices that lie at the place of an earlier one. Equal, to the bit and in the order of
/// the moves, to comparing every vertex with every later one, but it looks places up in a hash
/// table: the time is that of the vertices and of the moves made.
///
/// The contours are borrowed, and each has vertices of its own.
template <typename Contour, typename OnStep = CountsNoSteps>
class DuplicateSearch
{
public:
    explicit DuplicateSearch(OnStep onStep = {}) : onStep_(onStep) {}

    /// Compares each vertex with the later ones of its contour.
    void SeparateWithin(Contour& contour)
    {
        entries_.clear();
        for (int i = 0; i < contour.GetVertexCount(); ++i)
        {
            entries_.push_back({&contour, i, i, end_});
        }
        Separate_();
    }

    /// Compares each vertex with all vertices of the later contours.
    void SeparateBetween(std::span<Contour> contours)
    {
        entries_.clear();
        int rank = 0;
        for (Contour& contour : contours)
        {
            for (int i = 0; i < contour.GetVertexCount(); ++i)
            {
                entries_.push_back({&contour, i, rank, end_});
            }
            ++rank;
        }
        Separate_();
    }

private:
    /// One vertex, in the order of comparison. It may move the vertices of higher rank.
    struct Entry
    {
        Contour* contour;
        int index;  ///< in the contour
        int rank;
        int next;  ///< in the chain of its place
    };

    static constexpr int unused_ = -2;
    static constexpr int end_ = -1;

    /// The vertices at one place that can still be moved, mostly in their order. A slot keeps its
    /// place when the last of them has left.
    struct Slot
    {
        std::uint32_t place = 0;
        int first = unused_;
        int last = end_;
    };

    void Separate_()
    {
        slots_.assign(SlotCountFor(entries_.size()), Slot());
        usedSlots_ = 0;
        const int count = static_cast<int>(entries_.size());
        for (int i = 0; i < count; ++i)
        {
            Chain_(i);
        }
        for (int i = 0; i < count; ++i)
        {
            Slot& slot = Find_(PlaceOf(*entries_[i].contour->GetVertexElement(entries_[i].index)));
            movers_.clear();
            for (int entry = slot.first; entry >= 0; entry = entries_[entry].next)
            {
                onStep_();
                // Those of lower or the same rank can be moved by no vertex from here on.
                if (entries_[entry].rank > entries_[i].rank)
                {
                    movers_.push_back(entry);
                }
            }
            if (slot.first != unused_)
            {
                slot.first = end_;
            }
            // A move looks at the next vertex, so the order counts.
            if (!std::is_sorted(movers_.begin(), movers_.end()))
            {
                std::sort(movers_.begin(), movers_.end());
            }
            for (const int entry : movers_)
            {
                entries_[entry].contour->AdjustDuplicateVertex(entries_[entry].index);
                Chain_(entry);
            }
        }
    }

    /// Makes a vertex known at its place. One without a normal stays where it is whatever happens,
    /// and is left out.
    void Chain_(int entry)
    {
        const auto& vertex = *entries_[entry].contour->GetVertexElement(entries_[entry].index);
        if (vertex.vertexNormal.x == 0 && vertex.vertexNormal.y == 0)
        {
            return;
        }
        if (2 * (usedSlots_ + 1) > slots_.size())
        {
            Rehash_(2 * slots_.size());
        }
        Slot& slot = Find_(PlaceOf(vertex));
        if (slot.first == unused_)
        {
            slot = {PlaceOf(vertex), end_, end_};
            ++usedSlots_;
        }
        (slot.first == end_ ? slot.first : entries_[slot.last].next) = entry;
        slot.last = entry;
        entries_[entry].next = end_;
    }

    /// The slot of a place, or the free one where it would be.
    Slot& Find_(std::uint32_t place)
    {
        std::size_t slot = HashOfPlace(place, slots_.size());
        onStep_();
        while (slots_[slot].first != unused_ && slots_[slot].place != place)
        {
            onStep_();
            slot = (slot + 1) & (slots_.size() - 1);
        }
        return slots_[slot];
    }

    void Rehash_(std::size_t slotCount)
    {
        const std::vector<Slot> old = std::exchange(slots_, std::vector<Slot>(slotCount));
        for (const Slot& slot : old)
        {
            onStep_();
            // Places left by all their vertices are forgotten here.
            if (slot.first >= 0)
            {
                Find_(slot.place) = slot;
            }
        }
        usedSlots_ = static_cast<std::size_t>(std::count_if(
            slots_.begin(), slots_.end(), [](const Slot& slot) { return slot.first != unused_; }));
    }

    std::vector<Entry> entries_;
    std::vector<Slot> slots_;  ///< a power of two, at most half of them used
    std::size_t usedSlots_ = 0;
    std::vector<int> movers_;  ///< of one place, kept for its memory
    [[no_unique_address]] OnStep onStep_;
};

/// Moves all vertices apart that lie at the same place: within each contour, then each contour's
/// against those of all later contours. Costs a pass over the places when there are none.
template <typename Contour, typename OnStep = CountsNoSteps>
void SeparateVertices(std::span<Contour> contours, OnStep onStep = {})
{
    if (!AnyPlaceRepeats(contours, onStep))
    {
        return;
    }
    DuplicateSearch<Contour, OnStep> search(onStep);
    for (Contour& contour : contours)
    {
        search.SeparateWithin(contour);
    }
    search.SeparateBetween(contours);
}

}  // namespace outlines
