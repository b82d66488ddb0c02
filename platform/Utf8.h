// SPDX-License-Identifier: MIT
#pragma once

#include <utf8.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

namespace orvane
{

/// U+FFFD, which stands for each byte that belongs to no character.
constexpr char32_t replacementCharacter = 0xFFFD;

/// Calls a function with each character of a text. Each byte that is not part of a whole, valid
/// character gives U+FFFD.
template <typename Take>
void ForEachCharacter(std::string_view utf8, Take take)
{
    const char* at = utf8.data();
    const char* const end = at + utf8.size();
    while (at != end)
    {
        const char* const firstInvalid = utf8::find_invalid(at, end);
        while (at != firstInvalid)
        {
            take(static_cast<char32_t>(utf8::unchecked::next(at)));
        }
        if (at != end)
        {
            take(replacementCharacter);
            ++at;
        }
    }
}

/// A character, which must be valid, in UTF-8.
inline std::string Utf8Of(char32_t character)
{
    std::string text;
    utf8::unchecked::append(character, std::back_inserter(text));
    return text;
}

/// The text without any of the blanks at its ends.
inline std::string_view Trimmed(std::string_view text, std::string_view blanks)
{
    const std::size_t first = std::min(text.find_first_not_of(blanks), text.size());
    text.remove_prefix(first);
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

/// The text up to a number of bytes, which ends before the first character that does not fit whole.
inline std::string FirstBytes(const std::string& text, std::size_t count)
{
    std::size_t end = std::min(count, text.size());
    while (end > 0 && end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
    {
        --end;
    }
    return text.substr(0, end);
}

/// The text with U+FFFD in place of each sequence of bytes that is no character.
inline std::string ValidUtf8(std::string_view text)
{
    std::string valid;
    utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(valid),
                          replacementCharacter);
    return valid;
}

}  // namespace orvane
