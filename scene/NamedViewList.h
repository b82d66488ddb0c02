// SPDX-License-Identifier: MIT
#pragma once

#include "host/TypedList.h"
#include "scene/NamedView.h"

/// A list of saved cameras. The list does not own them.
class ORVANE_API NamedViewList : public TypedList<NamedView>
{
public:
    explicit NamedViewList(int blockSize = 10) : TypedList(blockSize) {}

    /// The position of the first view with this name (case-sensitive); null when no view has the
    /// name.
    POSITION FindName(const CString& name) const;

protected:
    const CRuntimeClass* GetElementClass() const override;
};
