// SPDX-License-Identifier: MIT
#pragma once

#include "host/TypedList.h"
#include "scene/NamedTransform.h"

/// A list of named transforms, which it does not own.
class ORVANE_API NamedTransformList : public TypedList<NamedTransform>
{
public:
    explicit NamedTransformList(int blockSize = 10);
    ~NamedTransformList() override;

    /// The position of the first transform of that name, case-sensitive; null when there is none.
    POSITION FindName(const CString& name) const;

protected:
    const CRuntimeClass* GetElementClass() const override;
};
