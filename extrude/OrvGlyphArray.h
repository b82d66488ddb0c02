// SPDX-License-Identifier: MIT
#pragma once

#include "host/GrowableArray.h"

#include <memory>
#include <unordered_map>

class OrvGlyph;

/// A growable array of glyph pointers that owns its glyphs; empty slots are null. Indices are not
/// checked.
///
/// A glyph that is put into a slot belongs to the array, which deletes it when the last slot that
/// holds it is removed (SetSize to less, RemoveAt, RemoveAll, the array's end). One that another
/// takes the place of (SetAt, ElementAt) is the caller's again, and may be put elsewhere.
///
/// A copy shares the glyphs: one that several arrays hold is deleted with the last of them. Arrays
/// learn of each other's glyphs by copying and by InsertAt alone; do not leave one pointer in two
/// of them by hand.
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
    using Slots::InsertAt;
    /// Shares the other array's glyphs. The array itself may be given.
    void InsertAt(int index, const OrvGlyphArray* other);

private:
    using Share = std::shared_ptr<const OrvGlyph*>;

    void ShareWith(const OrvGlyphArray& other);
    /// Deletes a glyph that is in no slot any more, unless another array shares it.
    void Drop(OrvGlyph* glyph);

    // Of the glyphs that copying has shared: as many owners as arrays have a glyph. Mutable: it is
    // first entered when the array is copied.
    mutable std::unordered_map<const OrvGlyph*, Share> shares_;
};
