// SPDX-License-Identifier: MIT
#pragma once

#include "host/TypedList.h"
#include "scene/NamedView.h"

/// A list of saved cameras, which it does not own.
class ORVANE_API NamedViewList : public TypedList<NamedView>
{
public:
    explicit NamedViewList(int blockSize = 10) : TypedList(blockSize) {}

    /// The position of the first view of this name, case-sensitive; null when there is none.
    POSITION FindName(const CString& name) const;

protected:
    const CRuntimeClass* GetElementClass() const override;
};
