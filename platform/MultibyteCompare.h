// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Types.h"

#include <cstring>

#if !defined(_WIN32)
/// Compares two texts byte by byte as unsigned values, whatever the locale. The result is negative,
/// zero or positive, as with strcmp.
inline int _mbscmp(const unsigned char* left, const unsigned char* right)
{
    return std::strcmp(reinterpret_cast<const char*>(left), reinterpret_cast<const char*>(right));
}
#else
#include <mbstring.h>
#endif

/// _mbscmp for texts of char.
inline int CompareMultibyte(LPCSTR left, LPCSTR right)
{
    return _mbscmp(reinterpret_cast<const unsigned char*>(left),
                   reinterpret_cast<const unsigned char*>(right));
}
