// SPDX-License-Identifier: MIT
#include "scene/CPlexStr.h"

#include <cstddef>
#include <new>

CPlexStr* CPlexStr::Create(CPlexStr*& head, UINT maxElements, UINT elementSize)
{
    void* const block = ::operator new (sizeof(CPlexStr) + std::size_t{maxElements} * elementSize);
    head = new (block) CPlexStr{head, maxElements, 0};
    return head;
}

void CPlexStr::FreeDataChain()
{
    for (CPlexStr* block = this; block != nullptr;)
    {
        CPlexStr* const following = block->next;
        ::operator delete(block);
        block = following;
    }
}
