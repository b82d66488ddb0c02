// SPDX-License-Identifier: MIT
// The program's own operators new and delete.
#include "tests/support/Allocations.h"

#include <cstdlib>
#include <new>

namespace
{

thread_local bool isRefusing = false;
thread_local int requests = 0;

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

// A sanitizer replaces each operator by itself, so every one that belongs to std::free is here.

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    requests += isRefusing ? 1 : 0;
    return isRefusing ? nullptr : std::malloc(size == 0 ? 1 : size);
}

void* operator new(std::size_t size)
{
    void* const memory = operator new(size, std::nothrow);
    if (memory == nullptr)
    {
        throw std::bad_alloc();
    }
    return memory;
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return operator new(size, std::nothrow);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}
