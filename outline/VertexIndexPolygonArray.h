// SPDX-License-Identifier: MIT
#pragma once

#include "host/GrowableArray.h"
#include "outline/VertexIndexPolygon.h"
#include "platform/Export.h"

/// The primitives of a glyph's face. Unless growBy is set, each Add allocates new memory for all
/// elements.
class ORVANE_API VertexIndexPolygonArray : public GrowableArray<VertexIndexPolygon>
{
public:
    using GrowableArray::operator[];
    VertexIndexPolygon& operator[](int index) { return data[index]; }
    VertexIndexPolygon& ElementAt(int index) { return data[index]; }

    /// The bytes of this object and of its polygons.
    unsigned long SizeOf() const;
};
