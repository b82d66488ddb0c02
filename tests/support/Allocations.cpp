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

// The operators for arrays and those that do not throw call this one.
void* operator new(std::size_t size)
{
    void* const memory = isRefusing ? nullptr : std::malloc(size == 0 ? 1 : size);
    requests += isRefusing ? 1 : 0;
    if (memory == nullptr)
    {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
