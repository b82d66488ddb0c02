// SPDX-License-Identifier: MIT
#include "shapedtext/GlyphSlots.h"

#include "extrude/OrvGlyph.h"
#include "platform/DeviceContexts.h"
#include "shapedtext/SharedShaping.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <iterator>
#include <string>

namespace orvane
{

GlyphSlots::GlyphSlots(std::shared_ptr<SharedShaping> shared) : shared_(std::move(shared))
{
    // Whoever keeps triangles of a font compares its record. Every object has a name of its own
    // there, so that a new object at the address of an old one is told from it.
    static std::atomic<std::uint64_t> last = 0;
    const std::string uniqueName = "shaped text " + std::to_string(++last);
    std::copy(uniqueName.begin(), uniqueName.end(), std::begin(enumLogFont.elfFullName));
}

GlyphSlots::~GlyphSlots()
{
    for (int slot = 0; slot < Count(); ++slot)
    {
        if (glyphs.GetAt(slot) != nullptr)
        {
            shared_->glyphs.Release(*ShapeAt(slot).face, ShapeAt(slot).glyph, *this, slot);
            glyphs.SetAt(slot, nullptr);  // the array would delete the glyph
        }
    }
    for (const auto& font : fonts_)
    {
        DeleteObject(font.second);
    }
}

int GlyphSlots::SlotOf(const LetterShape& shape)
{
    const Key key = {shape.face->Id(), shape.glyph, shape.size, shape.span};
    const auto known = slots_.find(key);
    if (known != slots_.end())
    {
        return known->second;
    }
    if (fonts_.count(shape.face->Id()) == 0)
    {
        fonts_[shape.face->Id()] = shape.face->MakeFont(-shape.face->Metrics().unitsPerEm);
    }
    const int slot = glyphs.GetSize();
    shapes_.push_back(shape);
    glyphs.SetSize(slot + 1);
    glyphCount = slot + 1;
    slots_.emplace(key, slot);
    return slot;
}

const OrvGlyph* GlyphSlots::GlyphAt(int slot)
{
    const LetterShape& shape = ShapeAt(slot);
    OrvGlyph* const glyph =
        shared_->glyphs.Get(*shape.face, shape.glyph, fonts_.at(shape.face->Id()), *this, slot);
    glyphs.SetAt(slot, glyph);
    return glyph->IsInvalid() ? nullptr : glyph;
}

}  // namespace orvane
