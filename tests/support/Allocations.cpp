// SPDX-License-Identifier: MIT
// The program's own operators new and delete.
#include "tests/support/Allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace
{

thread_local bool isRefusing = false;
thread_local int requests = 0;
std::atomic<MemoryJudge> memoryJudge = nullptr;
std::atomic<long> liveBlocks = 0;

void* Allocate(std::size_t size, const void* caller) noexcept
{
    requests += isRefusing ? 1 : 0;
    const MemoryJudge judge = memoryJudge.load(std::memory_order_relaxed);
    if (isRefusing || (judge != nullptr && judge(caller)))
    {
        return nullptr;
    }
    void* const memory = std::malloc(size == 0 ? 1 : size);
    liveBlocks += memory != nullptr ? 1 : 0;
    return memory;
}

void* AllocateOrThrow(std::size_t size, const void* caller)
{
    void* const memory = Allocate(size, caller);
    if (memory == nullptr)
    {
        throw std::bad_alloc();
    }
    return memory;
}

void Free(void* memory) noexcept
{
    liveBlocks -= memory != nullptr ? 1 : 0;
    std::free(memory);
}

}  // namespace

NoMemory::NoMemory()
{
    requests = 0;
    isRefusing = true;
}

NoMemory::~NoMemory()
{
    isRefusing = false;
}

int NoMemory::Requests() const
{
    return requests;
}

void SetMemoryJudge(MemoryJudge judge)
{
    memoryJudge = judge;
}

long LiveBlocks()
{
    return liveBlocks;
}

// A sanitizer replaces each operator by itself, so every one that belongs to std::free is here.

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size, __builtin_return_address(0));
}

void* operator new(std::size_t size)
{
    return AllocateOrThrow(size, __builtin_return_address(0));
}

void* operator new[](std::size_t size)
{
    return AllocateOrThrow(size, __builtin_return_address(0));
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size, __builtin_return_address(0));
}

void operator delete(void* memory) noexcept
{
    Free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    Free(memory);
}

void operator delete[](void* memory) noexcept
{
    Free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    Free(memory);
}
