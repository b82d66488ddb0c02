// SPDX-License-Identifier: MIT
#pragma once

#include "host/GrowableArray.h"

#include <memory>
#include <unordered_map>

class OrvGlyph;

/// A growable array of glyph pointers that owns its glyphs; empty slots are null. Indices are not
/// checked.
///
/// A glyph that is put into a slot belongs to the array, and is deleted when the last slot that
/// holds it is removed (SetSize to less, RemoveAt, RemoveAll, the array's end). One that SetAt or
/// ElementAt replaces lives until the array is emptied, so that slots can be exchanged.
///
/// A copy shares the glyphs: one that several arrays hold is deleted with the last of them. Arrays
/// learn of each other's glyphs by copying and by InsertAt alone; never put one pointer into two of
/// them by hand.
class ORVANE_API OrvGlyphArray : private GrowableArray<OrvGlyph*>
{
    using Slots = GrowableArray<OrvGlyph*>;

public:
    OrvGlyphArray() = default;
    OrvGlyphArray(const OrvGlyphArray& other);
    ~OrvGlyphArray();

    OrvGlyphArray& operator=(const OrvGlyphArray& other);

    using Slots::FreeExtra;
    using Slots::GetAt;
    using Slots::GetSize;
    using Slots::GetUpperBound;

    OrvGlyph* operator[](int index) const { return data[index]; }
    OrvGlyph*& operator[](int index) { return data[index]; }
    OrvGlyph*& ElementAt(int index) { return data[index]; }

    /// New slots are null. \param newGrowBy as for every growable array; -1 keeps the stored one.
    void SetSize(int newSize, int newGrowBy = -1);
    void RemoveAll();
    void RemoveAt(int index, int count = 1);

    void SetAt(int index, OrvGlyph* glyph);
    void SetAtGrow(int index, OrvGlyph* glyph);
    /// Returns the new slot's index.
    int Add(OrvGlyph* glyph);
    void InsertAt(int index, OrvGlyph* glyph, int count = 1);
    /// Shares the other array's glyphs. The array itself may be given.
    void InsertAt(int index, const OrvGlyphArray* other);

private:
    using Owners = std::unordered_map<OrvGlyph*, std::shared_ptr<OrvGlyph>>;

    void Own(OrvGlyph* glyph) const;
    void ShareOwners(const OrvGlyphArray& other);

    // Every glyph taken so far. Mutable: what was written through ElementAt is entered when it is
    // first copied or dropped.
    mutable Owners owners_;
};
