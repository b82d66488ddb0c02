// SPDX-License-Identifier: MIT
#include "outline/VertexIndexArray.h"

#include <algorithm>

void VertexIndexArray::ReverseData()
{
    FreeExtra();
    std::reverse(data.get(), data.get() + size);
}
