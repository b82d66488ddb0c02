// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyphArray.h"

#include "extrude/OrvGlyph.h"

#include <algorithm>
#include <vector>

OrvGlyphArray::OrvGlyphArray(const OrvGlyphArray& other) : Slots(other)
{
    ShareOwners(other);
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
        ShareOwners(other);
    }
    return *this;
}

void OrvGlyphArray::SetSize(int newSize, int newGrowBy)
{
    if (newSize <= 0)
    {
        RemoveAll();
    }
    else if (newSize < size)
    {
        RemoveAt(newSize, size - newSize);
    }
    Slots::SetSize(newSize, newGrowBy);
}

void OrvGlyphArray::RemoveAll()
{
    for (int index = 0; index < size; ++index)
    {
        Own(data[index]);
    }
    Slots::RemoveAll();
    owners_.clear();
}

void OrvGlyphArray::RemoveAt(int index, int count)
{
    std::vector<OrvGlyph*> dropped(data.get() + index, data.get() + index + count);
    Slots::RemoveAt(index, count);
    // The surplus slots must be null when the array grows over them again.
    std::fill_n(data.get() + size, count, nullptr);

    for (OrvGlyph* const glyph : dropped)
    {
        Own(glyph);
    }
    // Looked up in order, so that a removal of many slots does not search all that remain for each.
    std::sort(dropped.begin(), dropped.end());
    for (int kept = 0; kept < size; ++kept)
    {
        const auto [first, last] = std::equal_range(dropped.begin(), dropped.end(), data[kept]);
        dropped.erase(first, last);
    }
    for (OrvGlyph* const glyph : dropped)
    {
        owners_.erase(glyph);
    }
}

void OrvGlyphArray::SetAt(int index, OrvGlyph* glyph)
{
    Own(data[index]);
    Own(glyph);
    data[index] = glyph;
}

void OrvGlyphArray::SetAtGrow(int index, OrvGlyph* glyph)
{
    if (index < size)
    {
        SetAt(index, glyph);
        return;
    }
    Own(glyph);
    Slots::SetAtGrow(index, glyph);
}

int OrvGlyphArray::Add(OrvGlyph* glyph)
{
    const int index = size;
    SetAtGrow(index, glyph);
    return index;
}

void OrvGlyphArray::InsertAt(int index, OrvGlyph* glyph, int count)
{
    Own(glyph);
    Slots::InsertAt(index, glyph, count);
}

void OrvGlyphArray::InsertAt(int index, const OrvGlyphArray* other)
{
    Slots::InsertAt(index, other);
    ShareOwners(*other);
}

void OrvGlyphArray::Own(OrvGlyph* glyph) const
{
    if (glyph != nullptr && !owners_.contains(glyph))
    {
        owners_.emplace(glyph, std::shared_ptr<OrvGlyph>(glyph));
    }
}

void OrvGlyphArray::ShareOwners(const OrvGlyphArray& other)
{
    for (int index = 0; index < other.size; ++index)
    {
        other.Own(other.data[index]);
    }
    if (this != &other)
    {
        for (int index = 0; index < other.size; ++index)
        {
            if (OrvGlyph* const glyph = other.data[index])
            {
                owners_.try_emplace(glyph, other.owners_.at(glyph));
            }
        }
    }
}
