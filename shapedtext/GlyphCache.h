// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/OrvFont.h"
#include "extrude/OrvGlyph.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <tuple>
#include <utility>

namespace orvane
{

class GlyphSlots;
struct LetterShape;

/// Built glyphs by face, number, part and angle, for all texts of a process. The glyphs that were
/// used last are kept, up to a number of bytes. Only one thread at a time may use an object.
class GlyphCache
{
public:
    explicit GlyphCache(std::size_t mostBytes) : mostBytes_(mostBytes) {}
    GlyphCache(const GlyphCache&) = delete;
    GlyphCache& operator=(const GlyphCache&) = delete;

    /// The glyph, built if it was not kept. It stays where it is until the next call at least, and
    /// when it goes, GlyphSlots::Forget is called for the slot.
    /// \param shape its size and its span do not count
    /// \param build makes the glyph
    OrvGlyph* Get(const LetterShape& shape, const std::function<std::unique_ptr<OrvGlyph>()>& build,
                  GlyphSlots& slots, int slot);
    /// Forgets a slot that holds a glyph.
    void Release(const LetterShape& shape, GlyphSlots& slots, int slot);

    std::size_t Bytes() const { return bytes_; }

private:
    // Face, glyph, part and angle.
    using Key = std::tuple<std::uint64_t, std::uint32_t, std::size_t, double>;
    struct Entry
    {
        Key key;
        std::unique_ptr<OrvGlyph> glyph;
        std::size_t bytes;
        std::set<std::pair<GlyphSlots*, int>> slots;  // that hold the glyph
    };

    static Key KeyOf(const LetterShape& shape);
    void RemoveOldest();

    std::size_t mostBytes_;
    std::size_t bytes_ = 0;
    std::list<Entry> entries_;  // the last used first
    std::map<Key, std::list<Entry>::iterator> byKey_;
};

}  // namespace orvane
