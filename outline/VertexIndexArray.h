// SPDX-License-Identifier: MIT
#pragma once

#include "host/GrowableArray.h"
#include "platform/Export.h"

/// An array of indices into a glyph's vertex pool. The first Add or SetAtGrow makes room for just
/// the size needed; when the array is full later, they make room for 8 more indices.
class ORVANE_API VertexIndexArray : public GrowableArray<unsigned short, 8>
{
public:
    using GrowableArray::operator[];
    unsigned short& operator[](int index) { return data[index]; }
    unsigned short& ElementAt(int index) { return data[index]; }

    /// The bytes of this object and of all indices that it has room for.
    unsigned long SizeOf() const { return sizeof *this + maxSize * sizeof(unsigned short); }

    /// Reverses the order of the indices and frees the room behind the last one.
    void ReverseData();
};
