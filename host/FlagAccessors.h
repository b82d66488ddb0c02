// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Types.h"

/// Defines, inside a class, what a bit of a flag word has: Set and Clear with the bit's name, and a
/// test, which returns the masked bit and not 1. A macro because the names are its point.
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
    static_assert(true, "takes the semicolon")
