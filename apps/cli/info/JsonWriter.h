// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace orvane
{

/// Writes one JSON text in UTF-8, value by value. Inside an object each value follows its key.
///
///     JsonWriter json;
///     json.BeginObject();
///     json.Member("name", "Front");
///     json.Key("size");
///     json.BeginArray(JsonWriter::Layout::OneLine);
///     ...
///
/// Numbers are written with the fewest digits from which the same number is read again. Infinity
/// and not-a-number, which JSON does not have, are written as null. In texts, bytes that are not
/// UTF-8 become U+FFFD, and characters that could change a terminal are escaped; see Printable.
class JsonWriter
{
public:
    enum class Layout
    {
        Lines,   ///< each element on a line of its own, indented
        OneLine  ///< the container and everything inside it on one line
    };

    void BeginObject(Layout layout = Layout::Lines) { Begin('{', layout); }
    void EndObject() { End('}'); }
    void BeginArray(Layout layout = Layout::Lines) { Begin('[', layout); }
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
        BeginArray(Layout::OneLine);
        (Value(numbers), ...);
        EndArray();
    }

    /// The text so far, with a line break at its end.
    std::string Result() const { return text_ + '\n'; }

private:
    /// An object or array whose end has not been written.
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

/// The text in quotation marks, made safe to print as Printable does; quotation marks and
/// backslashes in it get a backslash before them.
std::string Quoted(std::string_view text);

}  // namespace orvane
