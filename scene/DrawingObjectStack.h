// SPDX-License-Identifier: MIT
#pragma once

#include "scene/DrawingObjectList.h"

/// A stack of scene nodes. The stack does not own the nodes. Its top is the head of the list.
class ORVANE_API DrawingObjectStack : public DrawingObjectList
{
public:
    explicit DrawingObjectStack(int blockSize = 10);
    ~DrawingObjectStack() override;

    void Push(DrawingObject* object);

    /// The top; null when the stack is empty.
    DrawingObject* Peek() const;

    /// Removes the top and returns it; null when the stack is empty.
    DrawingObject* Pop();

    /// Replaces the top by the object and returns the old top. The stack must not be empty.
    DrawingObject* Exchange(DrawingObject* object);
};
