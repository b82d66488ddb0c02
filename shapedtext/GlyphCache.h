// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/OrvFont.h"
#include "extrude/OrvGlyph.h"
#include "platform/ShapingFace.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <utility>

namespace orvane
{

class GlyphSlots;

/// Built glyphs by face and number, for all texts of a process. The glyphs that were used last are
/// kept, up to a number of bytes. Only one thread at a time may use an object.
class GlyphCache
{
public:
    explicit GlyphCache(std::size_t mostBytes) : mostBytes_(mostBytes) {}
    GlyphCache(const GlyphCache&) = delete;
    GlyphCache& operator=(const GlyphCache&) = delete;

    /// The glyph, built if it was not kept. It stays where it is until the next call at least, and
    /// when it goes, GlyphSlots::Forget is called for the slot.
    /// \param font of the face, at one pixel per design unit
    OrvGlyph* Get(const ShapingFace& face, std::uint32_t glyph, HFONT font, GlyphSlots& slots,
                  int slot);
    /// Forgets a slot that holds a glyph.
    void Release(const ShapingFace& face, std::uint32_t glyph, GlyphSlots& slots, int slot);

    std::size_t Bytes() const { return bytes_; }

private:
    using Key = std::pair<std::uint64_t, std::uint32_t>;  // face and glyph
    struct Entry
    {
        Key key;
        std::unique_ptr<OrvGlyph> glyph;
        std::size_t bytes;
        std::set<std::pair<GlyphSlots*, int>> slots;  // that hold the glyph
    };

    void RemoveOldest();

    std::size_t mostBytes_;
    std::size_t bytes_ = 0;
    std::list<Entry> entries_;  // the last used first
    std::map<Key, std::list<Entry>::iterator> byKey_;
};

}  // namespace orvane
