// SPDX-License-Identifier: MIT
#pragma once

#include "scene/DrawingObjectList.h"

/// A stack of nodes, which it does not own; its top is the head of the list.
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

    /// Puts the object in place of the top and returns what was there. The stack must not be empty.
    DrawingObject* Exchange(DrawingObject* object);
};
