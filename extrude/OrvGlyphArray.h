// SPDX-License-Identifier: MIT
#pragma once

#include "host/GrowableArray.h"

#include <memory>
#include <unordered_map>

class OrvGlyph;

/// A growable array of glyph pointers that owns its glyphs. Empty slots are null. Indices are not
/// checked.
///
/// The array owns a glyph from the moment when the glyph is put into a slot. The array deletes the
/// glyph when the last slot that holds it is removed: by SetSize to a smaller size, RemoveAt,
/// RemoveAll or the destructor. A glyph that is replaced in its slot, by SetAt or through
/// ElementAt, is not deleted; the caller owns it again.
///
/// A copied array shares the glyphs of the original, and a shared glyph is deleted together with
/// the last array that holds it. An array learns that a glyph is shared only when the array is
/// copied or inserted into another one with InsertAt. Do not put the same pointer into two arrays
/// by hand: both would delete the glyph.
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

    /// New slots are null.
    /// \param newGrowBy see GrowableArray::SetSize; -1 keeps the current value.
    void SetSize(int newSize, int newGrowBy = -1);
    void RemoveAll();
    void RemoveAt(int index, int count = 1);

    void SetAt(int index, OrvGlyph* glyph);
    void SetAtGrow(int index, OrvGlyph* glyph);
    /// Returns the new slot's index.
    int Add(OrvGlyph* glyph);
    using Slots::InsertAt;
    /// Inserts the glyphs of another array, or of this array itself, and shares them.
    void InsertAt(int index, const OrvGlyphArray* other);

private:
    using Share = std::shared_ptr<const OrvGlyph*>;

    void ShareWith(const OrvGlyphArray& other);
    /// Deletes a glyph whose last slot in this array was removed, unless another array shares the
    /// glyph.
    void Drop(OrvGlyph* glyph);

    // For each glyph that several arrays hold: a shared pointer whose use count is the number of
    // those arrays. Mutable, because copying an array enters its glyphs here.
    mutable std::unordered_map<const OrvGlyph*, Share> shares_;
};
