// SPDX-License-Identifier: MIT
#pragma once

#include "host/TypedList.h"

class DrawingObject;

/// A list of scene nodes. The list does not own the nodes: removing an element or destroying the
/// list deletes no node.
///
/// Its record is a count and then each scene node as an object reference, which may be null.
/// Loading raises badClass for an object that is not a scene node.
class ORVANE_API DrawingObjectList : public TypedList<DrawingObject>
{
public:
    explicit DrawingObjectList(int blockSize = 10);
    ~DrawingObjectList() override;

protected:
    const CRuntimeClass* GetElementClass() const override;
};
