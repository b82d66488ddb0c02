// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Texts of code pages, UTF-8 and UTF-16. The iconv library knows the code pages.

#include "platform/Types.h"

#include <optional>
#include <string>
#include <string_view>

namespace posix
{

/// The characters of a text. Each byte that belongs to no valid character gives U+FFFD.
std::u32string CharactersOf(std::string_view utf8);

void AppendUtf8(std::string& text, char32_t character);

/// Whether a code page is one of offeredCodePages (platform/CodePages.h). Of other code pages,
/// CodeOf and ToCodePage know only the ASCII characters.
bool IsOfferedCodePage(UINT codePage);

/// The code of a character in a code page; no value when the code page lacks the character.
std::optional<char> CodeOf(char32_t character, UINT codePage);

/// The character that a code stands for. A code that the code page leaves undefined (in 1252, for
/// example, 129 and 141), and every code of a code page that is not offered, gives the character of
/// the same number.
char32_t CharacterOf(BYTE code, UINT codePage);

/// The character set (LOGFONTA::lfCharSet) of a code page.
BYTE CharacterSetOf(UINT codePage);

/// A text in the code page, with '?' in place of each character that it lacks.
/// \param complete if not null, receives whether the code page has all characters
std::string ToCodePage(std::string_view utf8, UINT codePage, bool* complete = nullptr);

/// A text in UTF-16, high byte first, as fonts store their names. Each byte that belongs to no
/// valid character gives U+FFFD.
std::string Utf8FromUtf16(std::string_view bigEndian);

}  // namespace posix
