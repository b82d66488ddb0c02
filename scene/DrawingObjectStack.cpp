// SPDX-License-Identifier: MIT
#include "scene/DrawingObjectStack.h"

#include "scene/DrawingObject.h"

DrawingObjectStack::DrawingObjectStack(int blockSize) : DrawingObjectList(blockSize) {}

DrawingObjectStack::~DrawingObjectStack() = default;

void DrawingObjectStack::Push(DrawingObject* object)
{
    AddHead(object);
}

DrawingObject* DrawingObjectStack::Peek() const
{
    return IsEmpty() ? nullptr : GetHead();
}

DrawingObject* DrawingObjectStack::Pop()
{
    return IsEmpty() ? nullptr : RemoveHead();
}

DrawingObject* DrawingObjectStack::Exchange(DrawingObject* object)
{
    DrawingObject* const top = RemoveHead();
    Push(object);
    return top;
}
