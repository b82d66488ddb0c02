// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Between UTF-8 and the 8-bit code pages that texts and font names are in.

#include "platform/Export.h"
#include "platform/Types.h"

#include <array>
#include <string>
#include <string_view>

/// The code pages on offer, in the order in which FindCodePage tries them: western, central
/// European, Baltic, Turkish, Cyrillic, Greek.
constexpr std::array<UINT, 6> offeredCodePages = {1252, 1250, 1257, 1254, 1251, 1253};

/// A text taken to a code page, as far as it went.
struct CodePageText
{
    std::string text;    ///< in the code page; what comes before the misfit when there is one
    std::string misfit;  ///< the first character that does not fit, in UTF-8; empty when all fit.
                         ///< Bytes that are not UTF-8 are reported as U+FFFD.

    bool Fits() const { return misfit.empty(); }
};

/// Converts a text. In a code page that is not on offer only ASCII fits.
ORVANE_API CodePageText Utf8ToCodePage(std::string_view utf8, UINT codePage);

/// What FindCodePage found.
struct CodePageChoice
{
    UINT codePage = 0;   ///< 0 when no code page on offer holds the whole text
    std::string misfit;  ///< then: the character at which the last possible code page drops out
};

/// The first code page on offer that holds the whole text.
ORVANE_API CodePageChoice FindCodePage(std::string_view utf8);

/// Converts back. A byte that the code page leaves undefined is the character of the same number.
ORVANE_API std::string CodePageToUtf8(std::string_view text, UINT codePage);
