// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Types.h"

#include <cstring>

#if !defined(_WIN32)
/// Compares two texts by their bytes as unsigned values, never by locale: negative, zero or
/// positive.
inline int _mbscmp(const unsigned char* left, const unsigned char* right)
{
    return std::strcmp(reinterpret_cast<const char*>(left), reinterpret_cast<const char*>(right));
}
#else
#include <mbstring.h>
#endif

/// The same for plain texts.
inline int CompareMultibyte(LPCSTR left, LPCSTR right)
{
    return _mbscmp(reinterpret_cast<const unsigned char*>(left),
                   reinterpret_cast<const unsigned char*>(right));
}
