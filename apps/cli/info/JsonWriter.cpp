// SPDX-License-Identifier: MIT
#include "apps/cli/info/JsonWriter.h"

#include "apps/cli/PrintableText.h"

#include <charconv>
#include <cmath>

namespace orvane
{

namespace
{

constexpr std::size_t indent = 2;

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
    Literal(Quoted(text));
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
    return '"' + Printable(text, "\"\\") + '"';
}

}  // namespace orvane
