// SPDX-License-Identifier: MIT
#include "scene/DrawingObjectList.h"

#include "scene/DrawingObject.h"

DrawingObjectList::DrawingObjectList(int blockSize) : TypedList(blockSize) {}

DrawingObjectList::~DrawingObjectList() = default;

const CRuntimeClass* DrawingObjectList::GetElementClass() const
{
    return RUNTIME_CLASS(DrawingObject);
}
