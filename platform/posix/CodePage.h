// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The process's code page and the characters of each.

#include "platform/Types.h"

#include <string>
#include <string_view>

namespace posix
{

/// The character that a code names. A code that the code page leaves undefined (129, 141 and so on
/// in 1252) is the character of the same number.
char32_t CharacterOf(BYTE code, UINT codePage);

/// The character set that LOGFONTA has for a code page.
BYTE CharacterSetOf(UINT codePage);

/// A text in the code page, with '?' for every character that it lacks. \p complete tells whether
/// there was none.
std::string ToCodePage(std::string_view utf8, UINT codePage, bool* complete = nullptr);

/// A text in big-endian UTF-16, as fonts have their names. What is no UTF-16 becomes U+FFFD.
std::string Utf8FromUtf16(std::string_view bigEndian);

}  // namespace posix
