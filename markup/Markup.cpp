// SPDX-License-Identifier: MIT
#include "markup/Markup.h"

#include "markup/MarkupAttributes.h"
#include "orvane/Error.h"
#include "platform/Limits.h"

#include <utf8.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <utility>

namespace orvane
{

namespace
{

using markup::MarkupProblem;

struct Entity
{
    std::string_view name;
    char character;
};

constexpr std::array entities = {Entity{"amp", '&'}, Entity{"lt", '<'}, Entity{"gt", '>'},
                                 Entity{"quot", '"'}, Entity{"apos", '\''}};

constexpr std::string_view spaces = " \t\r\n";

bool IsNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || c == ':';
}

/// Line breaks and tabs are characters of texts; other control characters are not.
bool IsTextCharacter(char32_t c)
{
    return c == '\t' || c == '\n' || c == '\r' || (c >= ' ' && c != 0x7F);
}

class MarkupReader
{
public:
    explicit MarkupReader(std::string_view markup) : markup_(markup) {}

    MarkedText Read();

private:
    struct OpenElement
    {
        std::string_view name;
        std::size_t at;
        SpanStyle style;
    };

    [[noreturn]] void Fail(std::size_t at, const std::string& found,
                           const std::string& expected) const;
    /// What stands at the place, for messages: a character, or the end.
    std::string FoundAt(std::size_t at) const;
    bool Starts(std::string_view text) const { return markup_.substr(at_).starts_with(text); }
    void SkipSpaces();
    void Expect(char c, const char* where);
    std::string_view ReadName(const char* what);
    void CheckCharacters() const;
    void ReadStartTag();
    void ReadEndTag();
    void ReadAttributes(SpanStyle& style);
    void AppendCharacter(std::string& text);
    void AppendEntity(std::string& text);
    char32_t NumberOf(std::string_view reference) const;
    void AppendToText();

    std::string_view markup_;
    std::size_t at_ = 0;  ///< in bytes
    std::vector<OpenElement> open_;
    MarkedText result_;
};

void MarkupReader::Fail(std::size_t at, const std::string& found, const std::string& expected) const
{
    std::size_t line = 1;
    std::size_t column = 1;
    for (const char c : markup_.substr(0, at))
    {
        // The bytes of a character after its first one have the bits 10 in front.
        if ((static_cast<unsigned char>(c) & 0xC0) != 0x80)
        {
            ++column;
        }
        if (c == '\n')
        {
            ++line;
            column = 1;
        }
    }
    throw Error("markup: line " + std::to_string(line) + ", column " + std::to_string(column),
                found, expected);
}

std::string MarkupReader::FoundAt(std::size_t at) const
{
    if (at >= markup_.size())
    {
        return "the end";
    }
    const char* const first = markup_.data() + at;
    const char* next = first;
    utf8::unchecked::next(next);
    return "\"" + std::string(first, next) + "\"";
}

void MarkupReader::SkipSpaces()
{
    at_ = std::min(markup_.find_first_not_of(spaces, at_), markup_.size());
}

void MarkupReader::Expect(char c, const char* where)
{
    if (at_ >= markup_.size() || markup_[at_] != c)
    {
        Fail(at_, FoundAt(at_), "\"" + std::string(1, c) + "\" " + where);
    }
    ++at_;
}

std::string_view MarkupReader::ReadName(const char* what)
{
    const std::size_t begin = at_;
    while (at_ < markup_.size() && IsNameCharacter(markup_[at_]))
    {
        ++at_;
    }
    if (at_ == begin)
    {
        Fail(at_, FoundAt(at_), what);
    }
    return markup_.substr(begin, at_ - begin);
}

/// Invalid UTF-8 and control characters are found before anything else is read.
void MarkupReader::CheckCharacters() const
{
    const char* const begin = markup_.data();
    const char* const end = begin + markup_.size();
    const char* const invalid = utf8::find_invalid(begin, end);
    for (const char* at = begin; at != invalid;)
    {
        const auto place = static_cast<std::size_t>(at - begin);
        const char32_t character = utf8::unchecked::next(at);
        if (!IsTextCharacter(character))
        {
            Fail(place, "the control character " + std::to_string(character), "text");
        }
    }
    if (invalid != end)
    {
        constexpr std::string_view digits = "0123456789ABCDEF";
        const auto byte = static_cast<unsigned char>(*invalid);
        Fail(static_cast<std::size_t>(invalid - begin),
             std::string("the byte ") + digits[byte >> 4] + digits[byte & 15], "UTF-8");
    }
}

MarkedText MarkupReader::Read()
{
    if (markup_.size() > limits::maxMarkupBytes)
    {
        throw Error("markup", std::to_string(markup_.size()) + " bytes",
                    "at most " + std::to_string(limits::maxMarkupBytes));
    }
    CheckCharacters();
    while (at_ < markup_.size())
    {
        if (Starts("</"))
        {
            ReadEndTag();
        }
        else if (Starts("<"))
        {
            ReadStartTag();
        }
        else
        {
            AppendToText();
        }
    }
    if (!open_.empty())
    {
        const std::string name(open_.back().name);
        Fail(open_.back().at, "<" + name + "> that nothing ends", "</" + name + "> after it");
    }
    return std::move(result_);
}

void MarkupReader::ReadStartTag()
{
    const std::size_t begin = at_;
    ++at_;
    const std::string_view name = ReadName("an element such as <b>, or &lt; for the sign itself");
    if (open_.size() == limits::maxMarkupNesting)
    {
        Fail(begin, "more than " + std::to_string(open_.size()) + " elements inside each other",
             "at most " + std::to_string(limits::maxMarkupNesting));
    }
    SpanStyle style = open_.empty() ? SpanStyle() : open_.back().style;
    try
    {
        markup::ApplyElement(name, style);
    }
    catch (const MarkupProblem& problem)
    {
        Fail(begin, problem.found, problem.expected);
    }
    if (name == "span")
    {
        ReadAttributes(style);
    }
    SkipSpaces();
    if (Starts("/>"))
    {
        at_ += 2;
        return;
    }
    Expect('>', "at the end of the element's start");
    open_.push_back({name, begin, std::move(style)});
}

void MarkupReader::ReadAttributes(SpanStyle& style)
{
    struct Attribute
    {
        std::string_view name;
        std::size_t at;
        std::string value;
    };
    std::vector<Attribute> attributes;
    while (true)
    {
        const std::size_t before = at_;
        SkipSpaces();
        if (at_ >= markup_.size() || markup_[at_] == '>' || markup_[at_] == '/')
        {
            break;
        }
        if (at_ == before)
        {
            Fail(at_, FoundAt(at_), "a space before an attribute");
        }
        Attribute attribute = {{}, at_, {}};
        attribute.name = ReadName("the name of an attribute");
        for (const Attribute& other : attributes)
        {
            if (other.name == attribute.name)
            {
                Fail(attribute.at, "a second attribute " + std::string(attribute.name),
                     "each attribute once");
            }
        }
        SkipSpaces();
        Expect('=', "after the name of an attribute");
        SkipSpaces();
        const char quote = at_ < markup_.size() && markup_[at_] == '\'' ? '\'' : '"';
        Expect(quote, "before the value of an attribute");
        while (at_ < markup_.size() && markup_[at_] != quote && markup_[at_] != '<')
        {
            AppendCharacter(attribute.value);
        }
        Expect(quote, "at the end of the value");
        attributes.push_back(std::move(attribute));
    }
    // A rise is in ems of the size around, so the size changes last.
    for (const bool isSize : {false, true})
    {
        for (const Attribute& attribute : attributes)
        {
            if ((attribute.name == "size") != isSize)
            {
                continue;
            }
            try
            {
                markup::ApplyAttribute(attribute.name, attribute.value, style);
            }
            catch (const MarkupProblem& problem)
            {
                Fail(attribute.at, problem.found, problem.expected);
            }
        }
    }
}

void MarkupReader::ReadEndTag()
{
    const std::size_t begin = at_;
    at_ += 2;
    const std::string name(ReadName("the name of an element"));
    if (open_.empty())
    {
        Fail(begin, "</" + name + ">", "<" + name + "> before it");
    }
    const std::string expected(open_.back().name);
    if (name != expected)
    {
        Fail(begin, "</" + name + ">", "</" + expected + ">, which ends the innermost element");
    }
    SkipSpaces();
    Expect('>', "at the end of the element's end");
    open_.pop_back();
}

/// Appends the next character, or the one that an entity stands for.
void MarkupReader::AppendCharacter(std::string& text)
{
    if (markup_[at_] == '&')
    {
        AppendEntity(text);
        return;
    }
    text += markup_[at_++];
}

void MarkupReader::AppendEntity(std::string& text)
{
    constexpr std::size_t longestEntity = 10;  // "&#x10FFFF;"
    const std::string_view rest = markup_.substr(at_, longestEntity);
    const std::size_t semicolon = rest.find(';');
    const std::string_view name =
        rest.substr(1, semicolon == std::string_view::npos ? 0 : semicolon - 1);
    for (const Entity& entity : entities)
    {
        if (name == entity.name)
        {
            text += entity.character;
            at_ += semicolon + 1;
            return;
        }
    }
    if (!name.starts_with('#'))
    {
        Fail(at_, "\"&\" that begins no entity",
             "&amp; for the sign itself, &lt;, &gt;, &quot;, &apos;, &#233; or &#xE9;");
    }
    utf8::append(NumberOf(name.substr(1)), std::back_inserter(text));
    at_ += semicolon + 1;
}

char32_t MarkupReader::NumberOf(std::string_view reference) const
{
    const bool isHexadecimal = reference.starts_with('x');
    const std::string_view digits = reference.substr(isHexadecimal ? 1 : 0);
    std::uint32_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number, isHexadecimal ? 16 : 10);
    const bool isSurrogate = number >= 0xD800 && number <= 0xDFFF;
    if (error != std::errc() || stop != end || number > 0x10FFFF || isSurrogate ||
        !IsTextCharacter(number))
    {
        Fail(at_, "\"&#" + std::string(reference) + ";\"", "the number of a character");
    }
    return number;
}

void MarkupReader::AppendToText()
{
    const std::size_t beginInMarkup = at_;
    const std::size_t begin = result_.text.size();
    while (at_ < markup_.size() && markup_[at_] != '<')
    {
        AppendCharacter(result_.text);
    }
    const SpanStyle style = open_.empty() ? SpanStyle() : open_.back().style;
    std::vector<TextSpan>& spans = result_.spans;
    if (!spans.empty() && markup::AreEqual(spans.back().style, style))
    {
        spans.back().end = result_.text.size();
    }
    else
    {
        if (spans.size() == limits::maxTextSpans)
        {
            Fail(beginInMarkup, "more than " + std::to_string(spans.size()) + " spans",
                 "at most " + std::to_string(limits::maxTextSpans));
        }
        spans.push_back({begin, result_.text.size(), style});
    }
}

}  // namespace

MarkedText ParseMarkup(std::string_view markup)
{
    return MarkupReader(markup).Read();
}

std::string EscapeMarkup(std::string_view text)
{
    std::string markup;
    for (const char c : text)
    {
        const auto entity = std::find_if(entities.begin(), entities.begin() + 3,
                                         [&](const Entity& e) { return e.character == c; });
        if (entity != entities.begin() + 3)
        {
            markup += "&" + std::string(entity->name) + ";";
        }
        else
        {
            markup += c;
        }
    }
    return markup;
}

}  // namespace orvane
