// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Types.h"

/// Defines, inside a class, three functions for one bit of a flag word: SetName, ClearName and a
/// test. The test returns the bit itself (for example 0x40) when it is set, otherwise 0. This is a
/// macro because it makes function names.
#define ORVANE_FLAG(word, Name, Test, bit)          \
    void Set##Name()                                \
    {                                               \
        word |= DWORD{bit};                         \
    }                                               \
    void Clear##Name()                              \
    {                                               \
        word &= ~DWORD{bit};                        \
    }                                               \
    int Test() const                                \
    {                                               \
        return static_cast<int>(word & DWORD{bit}); \
    }                                               \
    static_assert(true, "allows a semicolon after the macro")
