// SPDX-License-Identifier: MIT
#include "shapedtext/GlyphCache.h"

#include "shapedtext/GlyphSlots.h"

namespace orvane
{

GlyphCache::Key GlyphCache::KeyOf(const LetterShape& shape)
{
    return {shape.face->Id(), shape.glyph, shape.area, shape.angle};
}

OrvGlyph* GlyphCache::Get(const LetterShape& shape,
                          const std::function<std::unique_ptr<OrvGlyph>()>& build,
                          GlyphSlots& slots, int slot)
{
    const Key key = KeyOf(shape);
    const auto known = byKey_.find(key);
    if (known != byKey_.end())
    {
        entries_.splice(entries_.begin(), entries_, known->second);
    }
    else
    {
        std::unique_ptr<OrvGlyph> built = build();
        const std::size_t bytes =
            sizeof(Entry) + built->SizeOf() + built->SizeOfPolygons() + built->SizeOfVerticies();
        entries_.push_front({key, std::move(built), bytes, {}});
        byKey_.emplace(key, entries_.begin());
        bytes_ += bytes;
        while (bytes_ > mostBytes_ && entries_.size() > 1)
        {
            RemoveOldest();
        }
    }
    Entry& entry = entries_.front();
    entry.slots.emplace(&slots, slot);
    return entry.glyph.get();
}

void GlyphCache::RemoveOldest()
{
    const Entry& oldest = entries_.back();
    for (const auto& user : oldest.slots)
    {
        user.first->Forget(user.second);
    }
    bytes_ -= oldest.bytes;
    byKey_.erase(oldest.key);
    entries_.pop_back();
}

void GlyphCache::Release(const LetterShape& shape, GlyphSlots& slots, int slot)
{
    const auto known = byKey_.find(KeyOf(shape));
    if (known != byKey_.end())
    {
        known->second->slots.erase({&slots, slot});
    }
}

}  // namespace orvane
