// SPDX-License-Identifier: MIT
#pragma once

#include "host/GrowableArray.h"
#include "platform/Export.h"

/// Indices into a glyph's VertexArray. SetAtGrow and Add grow it in steps of 8.
class ORVANE_API VertexIndexArray : public GrowableArray<unsigned short, 8>
{
public:
    using GrowableArray::operator[];
    unsigned short& operator[](int index) { return data[index]; }
    unsigned short& ElementAt(int index) { return data[index]; }

    /// Bytes of this object and of every allocated slot.
    unsigned long SizeOf() const { return sizeof *this + maxSize * sizeof(unsigned short); }

    /// Turns the order round, in a block of exactly the size in use.
    void ReverseData();
};
