// SPDX-License-Identifier: MIT
#include "apps/cli/info/JsonWriter.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace orvane
{

namespace
{

constexpr std::string_view replacement = "\uFFFD";
constexpr std::size_t indent = 2;

/// The length in bytes of the character at the beginning of the text, or 0 if the text does not
/// begin with a valid character. Surrogates, characters above U+10FFFF, and characters in more
/// bytes than they need are not valid UTF-8.
std::size_t CharacterLength(std::string_view text)
{
    const auto byte = [text](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u;
    };
    const unsigned lead = byte(0);
    if (lead < 0x80)
    {
        return 1;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4)
    {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i)
    {
        if ((byte(i) & 0xC0) != 0x80)
        {
            return 0;
        }
    }
    const unsigned second = byte(1);
    const bool tooLong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool surrogate = lead == 0xED && second >= 0xA0;
    const bool tooLarge = lead == 0xF4 && second >= 0x90;
    return tooLong || surrogate || tooLarge ? 0 : length;
}

/// The code of a control character, which is below U+0020 or from U+007F to U+009F; -1 for any
/// other character.
int ControlNumber(std::string_view character)
{
    const auto first = static_cast<unsigned char>(character[0]);
    if (first < 0x20 || first == 0x7F)
    {
        return first;
    }
    const bool upper = first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
    return upper ? static_cast<unsigned char>(character[1]) : -1;
}

std::string Escape(std::string_view text)
{
    std::string escaped = "\"";
    while (!text.empty())
    {
        const std::size_t length = CharacterLength(text);
        const std::string_view character = length > 0 ? text.substr(0, length) : replacement;
        text.remove_prefix(length > 0 ? length : 1);
        const int control = ControlNumber(character);
        if (character == "\n")
        {
            escaped += "\\n";
        }
        else if (character == "\r")
        {
            escaped += "\\r";
        }
        else if (control >= 0)
        {
            char code[8];
            std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(control));
            escaped += code;
        }
        else
        {
            escaped += character == "\"" || character == "\\" ? "\\" : "";
            escaped += character;
        }
    }
    return escaped + '"';
}

template <typename Float>
std::string ShortestNumber(Float value)
{
    if (!std::isfinite(value))
    {
        return "null";
    }
    char digits[40];
    return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}

}  // namespace

void JsonWriter::Begin(char bracket, Layout layout)
{
    Separate();
    text_ += bracket;
    const bool inOneLine = !open_.empty() && open_.back().layout == Layout::OneLine;
    open_.push_back({inOneLine ? Layout::OneLine : layout, true});
}

void JsonWriter::End(char bracket)
{
    const Open closed = open_.back();
    open_.pop_back();
    if (closed.layout == Layout::Lines && !closed.isEmpty)
    {
        BreakLine();
    }
    text_ += bracket;
}

void JsonWriter::BreakLine()
{
    text_ += '\n';
    text_.append(indent * open_.size(), ' ');
}

void JsonWriter::Separate()
{
    if (hasKey_ || open_.empty())
    {
        hasKey_ = false;
        return;
    }
    Open& container = open_.back();
    text_ += container.isEmpty ? "" : ",";
    if (container.layout == Layout::Lines)
    {
        BreakLine();
    }
    else if (!container.isEmpty)
    {
        text_ += ' ';
    }
    container.isEmpty = false;
}

void JsonWriter::Key(std::string_view key)
{
    Text(key);
    text_ += ": ";
    hasKey_ = true;
}

void JsonWriter::Text(std::string_view text)
{
    Literal(Escape(text));
}

void JsonWriter::Literal(std::string_view literal)
{
    Separate();
    text_ += literal;
}

void JsonWriter::Number(float value)
{
    Literal(ShortestNumber(value));
}

void JsonWriter::Number(double value)
{
    Literal(ShortestNumber(value));
}

std::string Quoted(std::string_view text)
{
    return Escape(text);
}

}  // namespace orvane
