// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// Writes one JSON text (UTF-8), value by value. Inside an object each value follows its key.
///
///     JsonWriter json;
///     json.BeginObject();
///     json.Member("name", "Front");
///     json.Key("size");
///     json.BeginArray(JsonWriter::onOneLine);
///     ...
///
/// Numbers are written with the fewest digits that give the same number again; those that JSON
/// does not have (infinite, not a number) become null. In texts, bytes that are not UTF-8 become
/// U+FFFD, and characters that could steer a terminal are escaped.
class JsonWriter
{
public:
    enum Layout
    {
        onLines,   ///< each element on a line of its own, indented
        onOneLine  ///< with all that is inside
    };

    void BeginObject(Layout layout = onLines) { Begin('{', layout); }
    void EndObject() { End('}'); }
    void BeginArray(Layout layout = onLines) { Begin('[', layout); }
    void EndArray() { End(']'); }
    void Key(std::string_view key);

    void Text(std::string_view text);
    void Null() { Literal("null"); }
    void Value(std::same_as<bool> auto value) { Literal(value ? "true" : "false"); }
    void Value(std::integral auto value) requires(!std::same_as<decltype(value), bool>)
    {
        Literal(std::to_string(value));
    }
    void Value(std::floating_point auto value) { Number(value); }
    void Value(std::string_view text) { Text(text); }
    void Value(const std::string& text) { Text(text); }
    void Value(const char* text) { Text(text); }

    template <typename Type>
    void Member(std::string_view key, const Type& value)
    {
        Key(key);
        Value(value);
    }

    /// An array of numbers, on one line.
    template <std::floating_point... Number>
    void Numbers(std::string_view key, Number... numbers)
    {
        Key(key);
        BeginArray(onOneLine);
        (Value(numbers), ...);
        EndArray();
    }

    /// The text so far, with a line break at its end.
    std::string Result() const { return text_ + '\n'; }

private:
    struct Open
    {
        Layout layout;
        bool isEmpty;
    };

    void Begin(char bracket, Layout layout);
    void End(char bracket);
    void Separate();
    void BreakLine();
    void Literal(std::string_view literal);
    void Number(float value);
    void Number(double value);

    std::string text_;
    std::vector<Open> open_;
    bool hasKey_ = false;
};

/// A text for people, with marks around it and its control characters escaped, so that it takes one
/// line and steers no terminal.
std::string Quoted(std::string_view text);
