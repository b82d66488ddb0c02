// SPDX-License-Identifier: MIT
#include "outline/VertexIndexPolygonArray.h"

unsigned long VertexIndexPolygonArray::SizeOf() const
{
    unsigned long bytes = sizeof *this;
    for (int i = 0; i < size; ++i)
    {
        bytes += data[i].SizeOf();
    }
    return bytes;
}
