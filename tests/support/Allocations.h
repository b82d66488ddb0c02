// SPDX-License-Identifier: MIT
#pragma once

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
