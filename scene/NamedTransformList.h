// SPDX-License-Identifier: MIT
#pragma once

#include "host/TypedList.h"
#include "scene/NamedTransform.h"

/// A list of named transforms. The list does not own them.
class ORVANE_API NamedTransformList : public TypedList<NamedTransform>
{
public:
    explicit NamedTransformList(int blockSize = 10);
    ~NamedTransformList() override;

    /// The position of the first transform with this name (case-sensitive); null when no transform
    /// has the name.
    POSITION FindName(const CString& name) const;

protected:
    const CRuntimeClass* GetElementClass() const override;
};
