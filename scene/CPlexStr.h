// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

/// The header of a block of memory for elements. The memory of the elements directly follows the
/// header. Blocks form a chain, the newest block first. The library offers this class to programs
/// and does not use it itself.
struct ORVANE_API CPlexStr
{
    CPlexStr* next;
    UINT maxElements;
    UINT unused;  ///< always 0

    /// Allocates a block for \p maxElements elements of \p elementSize bytes, links it to the front
    /// of the chain and returns it. The memory is not initialized.
    static CPlexStr* Create(CPlexStr*& head, UINT maxElements, UINT elementSize);

    void* data() { return this + 1; }

    /// Frees this block and all blocks behind it in the chain.
    void FreeDataChain();
};
