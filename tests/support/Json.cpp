// SPDX-License-Identifier: MIT
#include "tests/support/Json.h"

#include <cstdlib>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace
{

class Reader
{
public:
    explicit Reader(const std::string& source) : source_(source) {}

    Json ReadAll()
    {
        Json json = Value();
        Space();
        if (at_ != source_.size())
        {
            Fail("the end");
        }
        return json;
    }

private:
    [[noreturn]] void Fail(const std::string& expected) const
    {
        throw std::runtime_error("JSON, byte " + std::to_string(at_) + ": expected " + expected +
                                 " in " + source_);
    }

    char Peek() const { return at_ < source_.size() ? source_[at_] : '\0'; }

    void Space()
    {
        while (Peek() != '\0' && std::string_view(" \t\r\n").find(Peek()) != std::string::npos)
        {
            ++at_;
        }
    }

    bool Take(std::string_view token)
    {
        Space();
        const bool there = source_.compare(at_, token.size(), token) == 0;
        at_ += there ? token.size() : 0;
        return there;
    }

    void Require(std::string_view token)
    {
        if (!Take(token))
        {
            Fail(std::string(token));
        }
    }

    std::string Text()
    {
        Require("\"");
        std::string text;
        while (Peek() != '"')
        {
            if (at_ >= source_.size() || static_cast<unsigned char>(Peek()) < 0x20)
            {
                Fail("a character");
            }
            if (Peek() != '\\')
            {
                text += source_[at_++];
                continue;
            }
            ++at_;
            const char escape = Peek();
            ++at_;
            if (escape == 'u')
            {
                AddCode(text);
                continue;
            }
            constexpr std::string_view escapes = "\"\\/bfnrt";
            constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
            const std::size_t which = escapes.find(escape);
            if (which == std::string::npos)
            {
                Fail("an escape");
            }
            text += meanings[which];
        }
        ++at_;
        return text;
    }

    // Characters up to U+07FF, which are all that is escaped here.
    void AddCode(std::string& text)
    {
        const std::string digits = source_.substr(at_, 4);
        if (digits.size() != 4 || digits.find_first_not_of("0123456789abcdefABCDEF") != digits.npos)
        {
            Fail("four hexadecimal digits");
        }
        at_ += 4;
        const unsigned long code = std::strtoul(digits.c_str(), nullptr, 16);
        if (code > 0x7FF)
        {
            Fail("a code up to 07ff");
        }
        if (code < 0x80)
        {
            text += static_cast<char>(code);
            return;
        }
        text += static_cast<char>(0xC0 | code >> 6);
        text += static_cast<char>(0x80 | (code & 0x3F));
    }

    std::size_t Digits()
    {
        const std::size_t first = at_;
        while (Peek() >= '0' && Peek() <= '9')
        {
            ++at_;
        }
        return at_ - first;
    }

    double Number()
    {
        const std::size_t first = at_;
        at_ += Peek() == '-' ? 1 : 0;
        const bool leadingZero = Peek() == '0';
        const std::size_t whole = Digits();
        bool good = whole == 1 || (whole > 1 && !leadingZero);
        if (Peek() == '.')
        {
            ++at_;
            good = Digits() > 0 && good;
        }
        if (Peek() == 'e' || Peek() == 'E')
        {
            ++at_;
            at_ += Peek() == '+' || Peek() == '-' ? 1 : 0;
            good = Digits() > 0 && good;
        }
        if (!good)
        {
            Fail("a value");
        }
        return std::strtod(source_.substr(first, at_ - first).c_str(), nullptr);
    }

    Json Value()
    {
        Json json;
        Space();
        if (Take("null"))
        {
            return json;
        }
        if (Peek() == 't' || Peek() == 'f')
        {
            json.kind = Json::boolean;
            json.yes = Take("true");
            if (!json.yes)
            {
                Require("false");
            }
            return json;
        }
        if (Peek() == '"')
        {
            json.kind = Json::text;
            json.string = Text();
            return json;
        }
        if (Take("["))
        {
            json.kind = Json::array;
            for (bool first = true; !Take("]"); first = false)
            {
                first ? void() : Require(",");
                json.elements.push_back(Value());
            }
            return json;
        }
        if (Take("{"))
        {
            json.kind = Json::object;
            for (bool first = true; !Take("}"); first = false)
            {
                first ? void() : Require(",");
                Space();
                std::string key = Text();
                Require(":");
                if (json.Has(key.c_str()))
                {
                    Fail("no second \"" + key + "\"");
                }
                json.members.push_back({std::move(key), Value()});
            }
            return json;
        }
        json.kind = Json::number;
        json.value = Number();
        return json;
    }

    const std::string& source_;
    std::size_t at_ = 0;
};

}  // namespace

Json Json::Parse(const std::string& source)
{
    return Reader(source).ReadAll();
}

const Json& Json::operator[](const char* key) const
{
    for (const Member& member : members)
    {
        if (member.key == key)
        {
            return member.value;
        }
    }
    throw std::runtime_error(std::string("JSON: no member ") + key);
}

const Json& Json::operator[](int index) const
{
    return elements.at(static_cast<std::size_t>(index));
}

int Json::Size() const
{
    return static_cast<int>(elements.size() + members.size());
}

bool Json::Has(const char* key) const
{
    for (const Member& member : members)
    {
        if (member.key == key)
        {
            return true;
        }
    }
    return false;
}

std::vector<double> Json::Numbers() const
{
    std::vector<double> numbers;
    for (const Json& element : elements)
    {
        if (element.kind != number)
        {
            throw std::runtime_error("JSON: no number in an array of numbers");
        }
        numbers.push_back(element.value);
    }
    return numbers;
}

std::vector<std::string> Json::Keys() const
{
    std::vector<std::string> keys;
    for (const Member& member : members)
    {
        keys.push_back(member.key);
    }
    return keys;
}
