// SPDX-License-Identifier: MIT
#pragma once

#include "host/GrowableArray.h"
#include "outline/VertexIndexPolygon.h"
#include "platform/Export.h"

/// The primitives of a glyph's face. It keeps the grow-by that it has: 0 unless set, so each Add
/// reallocates.
class ORVANE_API VertexIndexPolygonArray : public GrowableArray<VertexIndexPolygon>
{
public:
    using GrowableArray::operator[];
    VertexIndexPolygon& operator[](int index) { return data[index]; }
    VertexIndexPolygon& ElementAt(int index) { return data[index]; }

    /// Bytes of this object and of the polygons in use.
    unsigned long SizeOf() const;
};
