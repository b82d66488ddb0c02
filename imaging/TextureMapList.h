// SPDX-License-Identifier: MIT
#pragma once

#include "host/TypedList.h"
#include "imaging/TextureMap.h"

/// A list of borrowed texture maps.
class ORVANE_API TextureMapList : public TypedList<TextureMap>
{
public:
    explicit TextureMapList(int blockSize = 10);
    ~TextureMapList() override;

    /// The position of the first texture map with this name; null when no texture map has this
    /// name.
    POSITION FindName(const CString& name) const;

protected:
    const CRuntimeClass* GetElementClass() const override;
};
