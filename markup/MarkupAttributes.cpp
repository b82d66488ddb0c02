// SPDX-License-Identifier: MIT
#include "markup/MarkupAttributes.h"

#include "orvane/Error.h"
#include "orvane/orvane.h"
#include "platform/Limits.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <tuple>

namespace orvane::markup
{

namespace
{

constexpr double bigFactor = 1.2;
constexpr double supRise = 0.35;
constexpr double subRise = -0.15;
constexpr double minSize = 0.01;
constexpr double maxSize = 100;
constexpr double maxRise = 100;

std::string Quoted(std::string_view text)
{
    return "\"" + std::string(text) + "\"";
}

std::optional<double> NumberIn(std::string_view text)
{
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end)
    {
        return {};
    }
    return number;
}

/// Calls a function with each part of a list whose parts are separated by commas.
template <typename Take>
void ForEachPart(std::string_view list, Take take)
{
    for (bool isLast = false; !isLast;)
    {
        const std::size_t comma = std::min(list.find(','), list.size());
        isLast = comma == list.size();
        take(Trimmed(list.substr(0, comma), " "));
        list.remove_prefix(isLast ? comma : comma + 1);
    }
}

bool IsTag(std::string_view text)
{
    return text.size() == 4 &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

Color ColorIn(const std::string& value)
{
    try
    {
        return ParseColor(value);
    }
    catch (const Error&)
    {
        throw MarkupProblem{Quoted(value), "a colour: a name such as navy, #rgb or #rrggbb"};
    }
}

void Scale(SpanStyle& style, double factor, const std::string& found)
{
    style.size *= factor;
    // Not a number fails the comparison.
    if (!(style.size >= minSize && style.size <= maxSize))
    {
        throw MarkupProblem{found, "letters of 0.01 to 100 times the size of the text"};
    }
}

void Raise(SpanStyle& style, double ems, const std::string& found)
{
    style.rise += ems * style.size;
    if (!(std::abs(style.rise) <= maxRise))
    {
        throw MarkupProblem{found, "letters at most 100 ems above or below the text"};
    }
}

void SetSize(const std::string& value, SpanStyle& style)
{
    const bool isPercentage = value.ends_with('%');
    const std::optional<double> number =
        NumberIn(isPercentage ? std::string_view(value).substr(0, value.size() - 1) : value);
    if (!number || !(*number > 0))
    {
        throw MarkupProblem{Quoted(value), "a factor above 0, such as 1.5 or 150%"};
    }
    Scale(style, isPercentage ? *number / 100 : *number, Quoted(value));
}

void SetRise(const std::string& value, SpanStyle& style)
{
    const std::optional<double> number = NumberIn(value);
    if (!number)
    {
        throw MarkupProblem{Quoted(value), "a number of ems, such as 0.2 or -0.1"};
    }
    Raise(style, *number, Quoted(value));
}

void AddFeatures(const std::string& value, SpanStyle& style)
{
    ForEachPart(value, [&](std::string_view feature) {
        if (!ParseFontFeature(feature))
        {
            throw MarkupProblem{Quoted(feature),
                                "a feature of four characters, such as smcp or liga=0"};
        }
        style.features.emplace_back(feature);
    });
    if (style.features.size() > limits::maxSpanSettings)
    {
        throw MarkupProblem{std::to_string(style.features.size()) + " features",
                            "at most " + std::to_string(limits::maxSpanSettings)};
    }
}

void SetAxes(const std::string& value, SpanStyle& style)
{
    ForEachPart(value, [&](std::string_view axis) {
        const std::size_t equals = std::min(axis.find('='), axis.size());
        const std::string_view tag = axis.substr(0, equals);
        const double number =
            equals < axis.size() ? NumberIn(axis.substr(equals + 1)).value_or(NAN) : NAN;
        // An infinite number and not a number fail the comparison.
        if (!IsTag(tag) || !(std::abs(number) <= 1e6))
        {
            throw MarkupProblem{Quoted(axis),
                                "an axis of four characters with a value, such as wght=650"};
        }
        const auto known = std::find_if(style.axes.begin(), style.axes.end(),
                                        [&](const AxisValue& s) { return s.tag == tag; });
        if (known != style.axes.end())
        {
            known->value = number;
        }
        else
        {
            style.axes.push_back({std::string(tag), number});
        }
    });
    if (style.axes.size() > limits::maxSpanSettings)
    {
        throw MarkupProblem{std::to_string(style.axes.size()) + " axes",
                            "at most " + std::to_string(limits::maxSpanSettings)};
    }
}

bool AreEqual(const std::optional<Color>& a, const std::optional<Color>& b)
{
    const auto parts = [](const Color& color) {
        return std::tie(color.red, color.green, color.blue, color.alpha);
    };
    return a && b ? parts(*a) == parts(*b) : a.has_value() == b.has_value();
}

}  // namespace

void ApplyElement(std::string_view element, SpanStyle& style)
{
    const std::string found = "the element <" + std::string(element) + ">";
    if (element == "b")
    {
        style.bold = true;
    }
    else if (element == "i")
    {
        style.italic = true;
    }
    else if (element == "big")
    {
        Scale(style, bigFactor, found);
    }
    else if (element == "small")
    {
        Scale(style, 1 / bigFactor, found);
    }
    else if (element == "sup" || element == "sub")
    {
        Raise(style, element == "sup" ? supRise : subRise, found);
        Scale(style, 1 / bigFactor, found);
    }
    else if (element != "span")
    {
        throw MarkupProblem{found, "<b>, <i>, <big>, <small>, <sup>, <sub> or <span>"};
    }
}

void ApplyAttribute(std::string_view name, const std::string& value, SpanStyle& style)
{
    if (name == "font")
    {
        if (value.empty() || value.size() > limits::maxNameBytes)
        {
            throw MarkupProblem{"a name of " + std::to_string(value.size()) + " bytes",
                                "1 to " + std::to_string(limits::maxNameBytes)};
        }
        style.font = value;
    }
    else if (name == "size")
    {
        SetSize(value, style);
    }
    else if (name == "rise")
    {
        SetRise(value, style);
    }
    else if (name == "color")
    {
        style.face = ColorIn(value);
    }
    else if (name == "edge")
    {
        style.edge = ColorIn(value);
    }
    else if (name == "bevel")
    {
        style.bevel = ColorIn(value);
    }
    else if (name == "features")
    {
        AddFeatures(value, style);
    }
    else if (name == "axes")
    {
        SetAxes(value, style);
    }
    else
    {
        throw MarkupProblem{"the attribute " + std::string(name),
                            "font, size, color, edge, bevel, rise, features or axes"};
    }
}

bool AreEqual(const SpanStyle& a, const SpanStyle& b)
{
    const auto plain = [](const SpanStyle& style) {
        return std::tie(style.font, style.bold, style.italic, style.size, style.rise,
                        style.features);
    };
    const auto haveEqualAxes = [](const AxisValue& x, const AxisValue& y) {
        return x.tag == y.tag && x.value == y.value;
    };
    return plain(a) == plain(b) && AreEqual(a.face, b.face) && AreEqual(a.edge, b.edge) &&
           AreEqual(a.bevel, b.bevel) &&
           std::equal(a.axes.begin(), a.axes.end(), b.axes.begin(), b.axes.end(), haveEqualAxes);
}

}  // namespace orvane::markup
