// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Moves apart the vertices of a flattened outline that lie at the same place, because the
/// tessellator refuses contours that touch.
///
/// The templates take contours of any type with these members: GetVertexCount(),
/// GetVertexElement(i), which points to an object with whole-numbered point.x, point.y,
/// vertexNormal.x and vertexNormal.y, and AdjustDuplicateVertex(i), which moves vertex i along its
/// normal.

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace orvane::contours
{

/// The default for the template parameters OnStep below; it does nothing. The searches call their
/// OnStep object each time they look at a slot of a hash table or at a vertex of a chain. Tests
/// pass an object that counts these calls, to check that the time grows in proportion to the number
/// of vertices.
struct IgnoreSteps
{
    void operator()() const {}
};

/// A vertex's two coordinates in one number, which is the key of the hash tables here.
template <typename Vertex>
std::uint32_t PlaceOf(const Vertex& vertex)
{
    return std::uint32_t{static_cast<std::uint16_t>(vertex.point.x)} << 16 |
           static_cast<std::uint16_t>(vertex.point.y);
}

/// The slot at which the search for a place begins; \p slotCount is a power of two. This is
/// Fibonacci hashing (Knuth, The Art of Computer Programming, volume 3, section 6.4): the vertices
/// of a glyph lie close together, and the multiplication spreads them over the table.
inline std::size_t HashOfPlace(std::uint32_t place, std::size_t slotCount)
{
    constexpr std::uint64_t golden = 0x9E3779B97F4A7C15;  // 2 to the 64th over the golden ratio
    return (place * golden >> 32) & (slotCount - 1);
}

/// The number of slots of a hash table for \p placeCount places: a power of two, and more than
/// twice as many slots as places, so that searches stay short.
inline std::size_t SlotCountFor(std::size_t placeCount)
{
    return std::bit_ceil(2 * placeCount + 2);
}

/// Whether any two vertices of the contours lie at the same place.
template <typename Contour, typename OnStep = IgnoreSteps>
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

    // All slots begin with the place of the first vertex, which marks them as free. The first
    // vertex needs no slot of its own, because any later vertex at that place is a repetition and
    // ends the search.
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

/// Moves vertices that lie at the place of an earlier vertex. The moves and their order are the
/// same as if two nested loops compared every vertex with every later vertex, both at the places
/// where they lie at that moment. Because the places are kept in a hash table, the time grows only
/// with the number of vertices and moves.
///
/// The contours are borrowed. No two of them may share a vertex.
template <typename Contour, typename OnStep = IgnoreSteps>
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
            entries_.push_back({&contour, i, i, endOfChain});
        }
        SeparateEntries();
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
                entries_.push_back({&contour, i, rank, endOfChain});
            }
            ++rank;
        }
        SeparateEntries();
    }

private:
    /// One vertex. The entries stand in the order in which the nested loops would compare them. A
    /// vertex can move only vertices whose rank is higher than its own.
    struct Entry
    {
        Contour* contour;
        int index;  ///< the vertex's index in its contour
        int rank;   ///< SeparateWithin: the same as index; SeparateBetween: the contour's number
        int next;   ///< the next entry in the chain of its place, or endOfChain
    };

    static constexpr int unusedSlot = -2;
    static constexpr int endOfChain = -1;

    /// A slot of the hash table: one place, and the chain of the entries whose vertices lie there
    /// and can still be moved. The entries of a chain are in their order, except that a vertex that
    /// is moved to the place is added at the end. A slot stays in use for its place even when its
    /// chain is empty.
    struct Slot
    {
        std::uint32_t place = 0;
        int first = unusedSlot;
        int last = endOfChain;
    };

    void SeparateEntries()
    {
        slots_.assign(SlotCountFor(entries_.size()), Slot());
        const int count = static_cast<int>(entries_.size());
        for (int i = 0; i < count; ++i)
        {
            AddToChain(i);
        }
        for (int i = 0; i < count; ++i)
        {
            Slot& slot = SlotOf(PlaceOf(*entries_[i].contour->GetVertexElement(entries_[i].index)));
            movable_.clear();
            for (int entry = slot.first; entry >= 0; entry = entries_[entry].next)
            {
                onStep_();
                // An entry whose rank is not higher than that of entry i leaves the chain, because
                // neither entry i nor a later entry can move it.
                if (entries_[entry].rank > entries_[i].rank)
                {
                    movable_.push_back(entry);
                }
            }
            if (slot.first != unusedSlot)
            {
                slot.first = endOfChain;
            }
            // The side to which a vertex moves depends on where the next vertex of its contour
            // lies, and that vertex may be moved too. So the order of the moves matters.
            if (!std::is_sorted(movable_.begin(), movable_.end()))
            {
                std::sort(movable_.begin(), movable_.end());
            }
            for (const int entry : movable_)
            {
                entries_[entry].contour->AdjustDuplicateVertex(entries_[entry].index);
                AddToChain(entry);
            }
        }
    }

    /// Adds an entry to the chain of the place where its vertex lies now. A vertex whose normal is
    /// zero cannot be moved, so it is left out.
    void AddToChain(int entry)
    {
        const auto& vertex = *entries_[entry].contour->GetVertexElement(entries_[entry].index);
        if (vertex.vertexNormal.x == 0 && vertex.vertexNormal.y == 0)
        {
            return;
        }
        Slot& slot = SlotOf(PlaceOf(vertex));
        if (slot.first == unusedSlot)
        {
            slot = {PlaceOf(vertex), endOfChain, endOfChain};
        }
        (slot.first == endOfChain ? slot.first : entries_[slot.last].next) = entry;
        slot.last = entry;
        entries_[entry].next = endOfChain;
    }

    /// The slot of a place, or the unused slot where the place would be added.
    Slot& SlotOf(std::uint32_t place)
    {
        std::size_t slot = HashOfPlace(place, slots_.size());
        onStep_();
        while (slots_[slot].first != unusedSlot && slots_[slot].place != place)
        {
            onStep_();
            slot = (slot + 1) & (slots_.size() - 1);
        }
        return slots_[slot];
    }

    std::vector<Entry> entries_;
    /// Their number is a power of two. Fewer than half are used: the vertex that moves the others
    /// away from a place stays there, so no more places are used than there are entries.
    std::vector<Slot> slots_;
    std::vector<int> movable_;  ///< entries at one place; a member so that its memory is kept
    OnStep onStep_;
};

/// Moves apart all vertices that lie at the same place: first within each contour, then between
/// each contour and all later contours. When no two vertices share a place, this costs one pass
/// over the vertices.
template <typename Contour, typename OnStep = IgnoreSteps>
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

}  // namespace orvane::contours
