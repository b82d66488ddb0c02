// SPDX-License-Identifier: MIT
#pragma once

#include "host/TypedList.h"

class DrawingObject;

/// A list of nodes, which it does not own: removing and destroying free list nodes only.
///
/// Its record is a count and then each node as an object reference, which may be null; an object
/// that is no node is refused with badClass.
class ORVANE_API DrawingObjectList : public TypedList<DrawingObject>
{
public:
    explicit DrawingObjectList(int blockSize = 10);
    ~DrawingObjectList() override;

protected:
    const CRuntimeClass* GetElementClass() const override;
};
