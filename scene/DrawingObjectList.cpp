// SPDX-License-Identifier: MIT
#include "scene/DrawingObjectList.h"

#include "scene/DrawingObject.h"

DrawingObjectList::DrawingObjectList(int blockSize) : TypedList(blockSize) {}

DrawingObjectList::~DrawingObjectList() = default;

BOOL DrawingObjectList::RemoveAllOccurances(DrawingObject* object)
{
    for (POSITION position = Find(object); position != nullptr;)
    {
        const POSITION found = position;
        position = Find(object, found);
        RemoveAt(found);
    }
    return TRUE;
}

const CRuntimeClass* DrawingObjectList::GetElementClass() const
{
    return RUNTIME_CLASS(DrawingObject);
}
