// SPDX-License-Identifier: MIT
#pragma once

#include "host/TypedList.h"
#include "imaging/TextureMap.h"

/// A list of texture maps, which it does not own.
class ORVANE_API TextureMapList : public TypedList<TextureMap>
{
public:
    explicit TextureMapList(int blockSize = 10);
    ~TextureMapList() override;

    /// The position of the first texture map of that name; null when there is none.
    POSITION FindName(const CString& name) const;

protected:
    const CRuntimeClass* GetElementClass() const override;
};
