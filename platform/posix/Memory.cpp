// SPDX-License-Identifier: MIT
#include "platform/Memory.h"

#include "platform/Errors.h"
#include "platform/posix/Handles.h"

#include <atomic>
#include <memory>
#include <new>

namespace
{

struct Block final : posix::HandleObject
{
    std::unique_ptr<BYTE[]> bytes;
    std::size_t size = 0;
    std::atomic<int> locks = 0;
};

}  // namespace

HGLOBAL GlobalAlloc(UINT flags, std::size_t count)
{
    const auto block = std::make_shared<Block>();
    const std::size_t atLeastOne = count == 0 ? 1 : count;
    block->bytes.reset((flags & GMEM_ZEROINIT) != 0 ? new (std::nothrow) BYTE[atLeastOne]()
                                                    : new (std::nothrow) BYTE[atLeastOne]);
    block->size = count;
    if (block->bytes == nullptr)
    {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return posix::AddHandle(block);
}

LPVOID GlobalLock(HGLOBAL handle)
{
    const auto block = posix::ResolveOrRefuse<Block>(handle);
    if (block == nullptr)
    {
        return nullptr;
    }
    ++block->locks;
    return block->bytes.get();
}

BOOL GlobalUnlock(HGLOBAL handle)
{
    const auto block = posix::ResolveOrRefuse<Block>(handle);
    if (block == nullptr || block->locks == 0)
    {
        return FALSE;
    }
    return --block->locks > 0;
}

std::size_t GlobalSize(HGLOBAL handle)
{
    const auto block = posix::ResolveOrRefuse<Block>(handle);
    return block == nullptr ? 0 : block->size;
}

HGLOBAL GlobalFree(HGLOBAL handle)
{
    if (posix::ResolveOrRefuse<Block>(handle) == nullptr)
    {
        return handle;
    }
    posix::RemoveHandle(handle);
    return nullptr;
}
