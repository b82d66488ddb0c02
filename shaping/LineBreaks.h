// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvane
{

/// For each character of a paragraph, whether a line may end after it (Unicode Standard
/// Annex #14, found by libunibreak). Words of Thai, Khmer and other scripts without spaces are not
/// found: their lines may end at spaces and at zero width spaces (U+200B) alone.
/// \param language a BCP 47 tag, for the marks of quotation; may be empty
ORVANE_API std::vector<bool> FindLineBreaks(std::u32string_view paragraph,
                                            const std::string& language);

}  // namespace orvane
