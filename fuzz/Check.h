// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the program with a message on standard error when \p holds is false. The fuzzer then keeps
/// the input as a crash.
inline void Check(bool holds, const char* rule)
{
    if (!holds)
    {
        std::fprintf(stderr, "does not hold: %s\n", rule);
        std::abort();
    }
}
