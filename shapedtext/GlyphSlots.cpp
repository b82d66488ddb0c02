// SPDX-License-Identifier: MIT
#include "shapedtext/GlyphSlots.h"

#include "extrude/OrvGlyph.h"
#include "platform/DeviceContexts.h"
#include "shapedtext/GlyphBuilding.h"
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
            shared_->glyphs.Release(ShapeAt(slot), *this, slot);
            glyphs.SetAt(slot, nullptr);  // the array would delete the glyph
        }
    }
    for (const auto& font : fonts_)
    {
        DeleteObject(font.second);
    }
}

HFONT GlyphSlots::FontOf(const ShapingFace& face)
{
    const auto [font, isNew] = fonts_.try_emplace(face.Id());
    if (isNew)
    {
        font->second = face.MakeFont(-face.Metrics().unitsPerEm);
    }
    return font->second;
}

const std::vector<ColorArea>& GlyphSlots::ColorAreasOf(
    const std::shared_ptr<const ShapingFace>& face, std::uint32_t glyph)
{
    return shared_->colors.AreasOf(*face, glyph, FontOf(*face));
}

int GlyphSlots::SlotOf(const LetterShape& shape)
{
    const Key key = {shape.face->Id(), shape.glyph, shape.size,
                     shape.span,       shape.area,  shape.angle};
    const auto known = slots_.find(key);
    if (known != slots_.end())
    {
        return known->second;
    }
    const int slot = glyphs.GetSize();
    std::optional<ColorLayer> color;
    if (shape.area != wholeGlyph)
    {
        color = ColorAreasOf(shape.face, shape.glyph).at(shape.area).color;
    }
    shapes_.push_back(shape);
    colors_.push_back(color);
    glyphs.SetSize(slot + 1);
    glyphCount = slot + 1;
    slots_.emplace(key, slot);
    return slot;
}

const OrvGlyph* GlyphSlots::GlyphAt(int slot)
{
    const LetterShape& shape = ShapeAt(slot);
    OrvGlyph* const glyph = shared_->glyphs.Get(
        shape, [&] { return BuildLetter(shape, FontOf(*shape.face), shared_->colors); }, *this,
        slot);
    glyphs.SetAt(slot, glyph);
    return glyph->IsInvalid() ? nullptr : glyph;
}

}  // namespace orvane
