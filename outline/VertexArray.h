// SPDX-License-Identifier: MIT
#pragma once

#include "host/GrowableArray.h"
#include "outline/Vertex.h"
#include "platform/Export.h"

/// The vertex pool of a glyph: the vertices of all its contours. SetAtGrow and Add make room for 32
/// more at a time.
class ORVANE_API VertexArray : public GrowableArray<Vertex, 32>
{
public:
    using GrowableArray::operator[];
    Vertex& operator[](int index) { return data[index]; }
    Vertex& ElementAt(int index) { return data[index]; }

    /// The bytes of this object and of all vertices that it has room for.
    unsigned long SizeOf() const { return sizeof *this + maxSize * sizeof(Vertex); }
};
