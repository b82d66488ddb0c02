// SPDX-License-Identifier: MIT
#include "platform/ShapingFace.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <charconv>

namespace orvane
{
namespace
{

constexpr std::size_t tagSize = 4;

/// The value after the tag: a number, "on" or "off".
std::optional<unsigned> ValueIn(std::string_view text)
{
    if (text == "on" || text == "off")
    {
        return text == "on" ? 1 : 0;
    }
    // Alternatives are numbered in 16 bits.
    unsigned short value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end)
    {
        return std::nullopt;
    }
    return value;
}

bool IsInTag(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

}  // namespace

std::optional<FontFeature> ParseFontFeature(std::string_view text)
{
    constexpr std::string_view blanks = " ";
    text = Trimmed(text, blanks);
    FontFeature feature;
    const bool hasSign = text.starts_with('+') || text.starts_with('-');
    if (hasSign)
    {
        feature.value = text.front() == '+' ? 1 : 0;
        text.remove_prefix(1);
    }
    feature.tag = text.substr(0, tagSize);
    if (feature.tag.size() != tagSize ||
        !std::all_of(feature.tag.begin(), feature.tag.end(), IsInTag))
    {
        return std::nullopt;
    }
    const std::string_view rest = text.substr(tagSize);
    if (rest.empty())
    {
        return feature;
    }
    const bool hasSeparator = rest.front() == '=' || rest.front() == ' ';
    const std::optional<unsigned> value = ValueIn(Trimmed(rest.substr(1), blanks));
    if (hasSign || !hasSeparator || !value)
    {
        return std::nullopt;
    }
    feature.value = *value;
    return feature;
}

}  // namespace orvane
