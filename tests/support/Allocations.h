// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

/// While an object of this class lives, `new` fails with std::bad_alloc on its thread, as it does
/// when there is no memory left.
class NoMemory
{
public:
    NoMemory();
    ~NoMemory();
    NoMemory(const NoMemory&) = delete;
    NoMemory& operator=(const NoMemory&) = delete;

    /// How often memory was asked for since the object was made.
    int Requests() const;
};

/// How often destroying an object asks for memory.
template <typename Object>
int RequestsOfEnding(std::unique_ptr<Object> object)
{
    const NoMemory none;
    object.reset();
    return none.Requests();
}

/// Says whether `new` is to fail. Called on every thread, for each call of `new`, and must not
/// allocate memory itself.
/// \param caller the instruction to which `new` returns
using MemoryJudge = bool (*)(const void* caller);

/// \param judge null: memory is given to everybody.
void SetMemoryJudge(MemoryJudge judge);

/// The blocks of memory that `new` has given and that are not deleted yet.
long LiveBlocks();
