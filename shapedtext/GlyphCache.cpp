// SPDX-License-Identifier: MIT
#include "shapedtext/GlyphCache.h"

#include "extrude/FontDC.h"
#include "outline/TTGlyph.h"
#include "platform/Fonts.h"
#include "shapedtext/GlyphSlots.h"

#include <vector>

namespace orvane
{

namespace
{

constexpr MAT2 identity = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};
constexpr UINT outlineFormat = GGO_NATIVE | GGO_GLYPH_INDEX;

/// Builds a glyph as OrvFont builds letters. It is invalid when its outline cannot be read.
std::unique_ptr<OrvGlyph> BuildGlyph(std::uint32_t number, HFONT font, int unitsPerEm)
{
    GLYPHMETRICS metrics = {};
    const FontDC dc(font);
    const DWORD size = font != nullptr ? GetGlyphOutlineA(dc, number, outlineFormat, &metrics, 0,
                                                          nullptr, &identity)
                                       : GDI_ERROR;
    if (size == GDI_ERROR)
    {
        auto glyph = std::make_unique<OrvGlyph>(0, metrics);
        glyph->SetInvalid();
        return glyph;
    }
    auto glyph = std::make_unique<OrvGlyph>(size, metrics);
    std::vector<BYTE> outline(size);
    GetGlyphOutlineA(dc, number, outlineFormat, &metrics, size, outline.data(), &identity);
    TTGlyph ttGlyph;
    ttGlyph.FromGlyphOutline(outline.data(), static_cast<unsigned long>(outline.size()));
    if (!glyph->ConstructGlyph(ttGlyph, static_cast<float>(unitsPerEm)))
    {
        glyph->SetInvalid();
    }
    return glyph;
}

}  // namespace

OrvGlyph* GlyphCache::Get(const ShapingFace& face, std::uint32_t glyph, HFONT font,
                          GlyphSlots& slots, int slot)
{
    const Key key = {face.Id(), glyph};
    const auto known = byKey_.find(key);
    if (known != byKey_.end())
    {
        entries_.splice(entries_.begin(), entries_, known->second);
    }
    else
    {
        std::unique_ptr<OrvGlyph> built = BuildGlyph(glyph, font, face.Metrics().unitsPerEm);
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

void GlyphCache::Release(const ShapingFace& face, std::uint32_t glyph, GlyphSlots& slots, int slot)
{
    const auto known = byKey_.find({face.Id(), glyph});
    if (known != byKey_.end())
    {
        known->second->slots.erase({&slots, slot});
    }
}

}  // namespace orvane
