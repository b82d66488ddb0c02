// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Conversion between UTF-8 and the 8-bit code pages that texts and font names are in.

#include "platform/Export.h"
#include "platform/Types.h"

#include <array>
#include <string>
#include <string_view>

/// The code pages on offer, in the order in which FindCodePage tries them: western, central
/// European, Baltic, Turkish, Cyrillic, Greek.
constexpr std::array<UINT, 6> offeredCodePages = {1252, 1250, 1257, 1254, 1251, 1253};

/// A text converted to a code page up to the first character that the code page lacks.
struct CodePageText
{
    std::string text;    ///< in the code page; ends before the misfit if there is one
    std::string misfit;  ///< in UTF-8; the first character that the code page lacks; empty when the
                         ///< whole text fits. U+FFFD stands for bytes that are not UTF-8.

    bool Fits() const { return misfit.empty(); }
};

/// Converts a text. A code page that is not on offer has only the ASCII characters.
ORVANE_API CodePageText Utf8ToCodePage(std::string_view utf8, UINT codePage);

/// The result of FindCodePage.
struct CodePageChoice
{
    UINT codePage = 0;   ///< 0 when no code page on offer holds the whole text
    std::string misfit;  ///< in UTF-8; when codePage is 0, the first character that no code page
                         ///< has together with all characters before it
};

/// The first code page on offer that holds the whole text.
ORVANE_API CodePageChoice FindCodePage(std::string_view utf8);

/// Converts a text of a code page to UTF-8. A byte that the code page leaves undefined becomes the
/// character with the same number.
ORVANE_API std::string CodePageToUtf8(std::string_view text, UINT codePage);
