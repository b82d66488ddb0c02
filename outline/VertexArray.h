// SPDX-License-Identifier: MIT
#pragma once

#include "host/GrowableArray.h"
#include "outline/Vertex.h"
#include "platform/Export.h"

/// The vertices of all contours of a glyph. SetAtGrow and Add grow it in steps of 32.
class ORVANE_API VertexArray : public GrowableArray<Vertex, 32>
{
public:
    using GrowableArray::operator[];
    Vertex& operator[](int index) { return data[index]; }
    Vertex& ElementAt(int index) { return data[index]; }

    /// Bytes of this object and of every allocated slot.
    unsigned long SizeOf() const { return sizeof *this + maxSize * sizeof(Vertex); }
};
