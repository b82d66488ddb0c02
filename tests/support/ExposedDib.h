// SPDX-License-Identifier: MIT
#pragma once

#include "imaging/MemoryMappedDIB.h"

#include <vector>

/// A bitmap with the fields that have no accessors.
class ExposedDib : public MemoryMappedDIB
{
public:
    using MemoryMappedDIB::fileBits;
    using MemoryMappedDIB::fileHandle;
    using MemoryMappedDIB::fileHeader;
    using MemoryMappedDIB::globalHandle;
    using MemoryMappedDIB::mappedView;
    using MemoryMappedDIB::mappingHandle;
    using MemoryMappedDIB::previousBitmap;

    BYTE* Bits() const { return static_cast<BYTE*>(GetDIBBits()); }
    std::vector<int> Pixels(int first, int count) const
    {
        return std::vector<int>(Bits() + first, Bits() + first + count);
    }
    bool HoldsNoFile() const
    {
        return fileHandle == nullptr && mappingHandle == nullptr && mappedView == nullptr &&
               fileBits == nullptr && fileHeader == nullptr;
    }
};
