// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

/// Header of a block of elements, whose storage follows directly. Blocks form a chain, newest
/// first. The library offers this to its users and has no use for it itself.
struct ORVANE_API CPlexStr
{
    CPlexStr* next;
    UINT maxElements;
    UINT unused;  ///< 0; it completes the header

    /// Allocates a block for that many elements of that many bytes, makes it the front of the chain
    /// and returns it. Its storage is not initialized.
    static CPlexStr* Create(CPlexStr*& head, UINT maxElements, UINT elementSize);

    void* data() { return this + 1; }

    /// Frees this block and all behind it.
    void FreeDataChain();
};
