// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyphArray.h"

#include "extrude/OrvGlyph.h"

#include <algorithm>
#include <iterator>
#include <vector>

OrvGlyphArray::OrvGlyphArray(const OrvGlyphArray& other) : Slots(other)
{
    ShareWith(other);
}

OrvGlyphArray::~OrvGlyphArray()
{
    RemoveAll();
}

OrvGlyphArray& OrvGlyphArray::operator=(const OrvGlyphArray& other)
{
    if (this != &other)
    {
        RemoveAll();
        Slots::operator=(other);
        ShareWith(other);
    }
    return *this;
}

void OrvGlyphArray::SetSize(int newSize, int newGrowBy)
{
    if (newSize < size)
    {
        RemoveAt(std::max(newSize, 0), size - std::max(newSize, 0));
    }
    Slots::SetSize(newSize, newGrowBy);
}

void OrvGlyphArray::RemoveAll()
{
    SetSize(0);
    shares_.clear();
}

void OrvGlyphArray::RemoveAt(int index, int count)
{
    std::vector<OrvGlyph*> dropped;
    std::copy_if(data.get() + index, data.get() + index + count, std::back_inserter(dropped),
                 [](const OrvGlyph* glyph) { return glyph != nullptr; });
    Slots::RemoveAt(index, count);
    // The slots behind the new end become null, because the array may grow over them again and new
    // slots must be null.
    std::fill_n(data.get() + size, count, nullptr);

    // Drop each glyph only once, and keep every glyph that a remaining slot still holds. The glyphs
    // are sorted so that removing many slots from a large array stays fast.
    std::sort(dropped.begin(), dropped.end());
    dropped.erase(std::unique(dropped.begin(), dropped.end()), dropped.end());
    for (int kept = 0; kept < size; ++kept)
    {
        const auto [first, last] = std::equal_range(dropped.begin(), dropped.end(), data[kept]);
        dropped.erase(first, last);
    }
    for (OrvGlyph* const glyph : dropped)
    {
        Drop(glyph);
    }
}

void OrvGlyphArray::SetAt(int index, OrvGlyph* glyph)
{
    const OrvGlyph* const replaced = data[index];
    Slots::SetAt(index, glyph);
    if (!shares_.empty() && std::find(data.get(), data.get() + size, replaced) == data.get() + size)
    {
        shares_.erase(replaced);
    }
}

void OrvGlyphArray::SetAtGrow(int index, OrvGlyph* glyph)
{
    if (index < size)
    {
        SetAt(index, glyph);
    }
    else
    {
        Slots::SetAtGrow(index, glyph);
    }
}

int OrvGlyphArray::Add(OrvGlyph* glyph)
{
    return Slots::Add(glyph);
}

void OrvGlyphArray::InsertAt(int index, const OrvGlyphArray* other)
{
    Slots::InsertAt(index, other);
    ShareWith(*other);
}

void OrvGlyphArray::ShareWith(const OrvGlyphArray& other)
{
    if (this == &other)
    {
        return;
    }
    for (int index = 0; index < other.size; ++index)
    {
        const OrvGlyph* const glyph = other.data[index];
        if (glyph != nullptr)
        {
            Share& share = other.shares_[glyph];
            if (share == nullptr)
            {
                share = std::make_shared<const OrvGlyph*>(glyph);
            }
            shares_[glyph] = share;
        }
    }
}

void OrvGlyphArray::Drop(OrvGlyph* glyph)
{
    const auto share = shares_.find(glyph);
    const bool alone = share == shares_.end() || share->second.use_count() == 1;
    if (share != shares_.end())
    {
        shares_.erase(share);
    }
    if (alone)
    {
        delete glyph;
    }
}
