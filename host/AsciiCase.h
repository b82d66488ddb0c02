// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <string>

namespace orvane
{

/// The text with A to Z in lower case. Unlike std::tolower, this does not depend on the locale that
/// the host has set: in Turkish, I is not the upper case of i.
inline std::string LowerAscii(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

}  // namespace orvane
