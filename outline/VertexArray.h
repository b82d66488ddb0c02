// SPDX-License-Identifier: MIT
#pragma once

#include "host/GrowableArray.h"
#include "outline/Vertex.h"
#include "platform/Export.h"

/// The vertex pool of a glyph: the vertices of all its contours. The first Add or SetAtGrow makes
/// room for just the size needed; when the array is full later, they make room for 32 more
/// vertices.
class ORVANE_API VertexArray : public GrowableArray<Vertex, 32>
{
public:
    using GrowableArray::operator[];
    Vertex& operator[](int index) { return data[index]; }
    Vertex& ElementAt(int index) { return data[index]; }

    /// The bytes of this object and of all vertices that it has room for.
    unsigned long SizeOf() const { return sizeof *this + maxSize * sizeof(Vertex); }
};
