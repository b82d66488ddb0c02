// SPDX-License-Identifier: MIT
#include "shapes/SvgStyle.h"

#include "platform/Limits.h"
#include "shapes/SvgColors.h"

#include <algorithm>
#include <array>

namespace orvane::shapes
{

namespace
{

[[noreturn]] void Refuse(std::string_view value, const std::string& expected)
{
    SvgScanner(value).Fail(expected);
}

/// "url(...)" at the start of a paint, with what follows it.
struct UrlAndRest
{
    std::string id;
    std::string_view rest;
};

UrlAndRest SplitUrl(std::string_view text)
{
    const std::size_t end = text.find(')');
    if (!text.starts_with("url(") || end == std::string_view::npos)
    {
        return {};
    }
    std::string_view reference = Trimmed(text.substr(4, end - 4));
    for (const char quote : {'"', '\''})
    {
        if (reference.size() > 1 && reference.front() == quote && reference.back() == quote)
        {
            reference = reference.substr(1, reference.size() - 2);
        }
    }
    if (reference.size() > limits::maxNameBytes)
    {
        Refuse(text, "an id of at most " + std::to_string(limits::maxNameBytes) + " bytes");
    }
    return {reference.starts_with('#') ? std::string(reference.substr(1)) : std::string(),
            Trimmed(text.substr(end + 1))};
}

SvgPaint ParsePaint(std::string_view text)
{
    if (text.starts_with("url("))
    {
        const UrlAndRest url = SplitUrl(text);
        if (url.id.empty())
        {
            Refuse(text, "a reference such as url(#id) into this file");
        }
        if (url.rest.starts_with("url("))
        {
            Refuse(url.rest, "a color");
        }
        SvgPaint paint = url.rest.empty() ? SvgPaint() : ParsePaint(url.rest);
        paint.server = url.id;
        return paint;
    }
    if (text == "none")
    {
        return {};
    }
    if (text == "currentColor" || text == "currentcolor")
    {
        return {SvgPaint::Kind::CurrentColor, {}, {}};
    }
    const std::optional<SvgColor> color = ParseColor(text);
    if (!color)
    {
        Refuse(text, "a color");
    }
    return {SvgPaint::Kind::Color, *color, {}};
}

double ParseOpacity(std::string_view text)
{
    SvgScanner scanner(text);
    const std::optional<double> number = scanner.TakeNumber();
    const double scale = scanner.Take('%') ? 100 : 1;
    if (!number || !scanner.IsAtEnd())
    {
        Refuse(text, "a number from 0 to 1");
    }
    return std::clamp(*number / scale, 0.0, 1.0);
}

double ParseNotNegative(std::string_view text, double whole)
{
    const double length = ParseLength(text, whole);
    if (length < 0)
    {
        Refuse(text, "a length that is not negative");
    }
    return length;
}

/// The value that belongs to a word of a list.
template <typename Value, std::size_t count>
Value ParseWord(std::string_view text,
                const std::array<std::pair<std::string_view, Value>, count>& words)
{
    std::string expected;
    for (const auto& [word, value] : words)
    {
        if (word == text)
        {
            return value;
        }
        expected.append(expected.empty() ? "" : " or ").append(word);
    }
    Refuse(text, expected);
}

FillRule ParseRule(std::string_view text)
{
    static constexpr std::array<std::pair<std::string_view, FillRule>, 2> words = {
        {{"nonzero", FillRule::NonZero}, {"evenodd", FillRule::EvenOdd}}};
    return ParseWord(text, words);
}

LineJoin ParseJoin(std::string_view text)
{
    static constexpr std::array<std::pair<std::string_view, LineJoin>, 3> words = {
        {{"miter", LineJoin::Miter}, {"round", LineJoin::Round}, {"bevel", LineJoin::Bevel}}};
    return ParseWord(text, words);
}

LineCap ParseCap(std::string_view text)
{
    static constexpr std::array<std::pair<std::string_view, LineCap>, 3> words = {
        {{"butt", LineCap::Butt}, {"round", LineCap::Round}, {"square", LineCap::Square}}};
    return ParseWord(text, words);
}

double ParseMiterLimit(std::string_view text)
{
    SvgScanner scanner(text);
    const std::optional<double> number = scanner.TakeNumber();
    if (!number || *number < 1)
    {
        Refuse(text, "a number from 1");
    }
    return *number;
}

std::vector<double> ParseDashes(std::string_view text, double whole)
{
    if (text == "none")
    {
        return {};
    }
    std::vector<double> dashes = ParseLengths(text, whole);
    if (dashes.size() > limits::maxSvgDashes)
    {
        Refuse(text, "at most " + std::to_string(limits::maxSvgDashes) + " lengths");
    }
    if (std::any_of(dashes.begin(), dashes.end(), [](double dash) { return dash < 0; }))
    {
        Refuse(text, "lengths that are not negative");
    }
    return dashes;
}

bool ParseVisibility(std::string_view text)
{
    static constexpr std::array<std::pair<std::string_view, bool>, 3> words = {
        {{"visible", true}, {"hidden", false}, {"collapse", false}}};
    return ParseWord(text, words);
}

std::string ParseClip(std::string_view text)
{
    std::string id = IdInUrl(text);
    if (id.empty() && text != "none")
    {
        Refuse(text, "none or a reference such as url(#id) into this file");
    }
    return id;
}

SvgColor ParseOwnColor(std::string_view text)
{
    const std::optional<SvgColor> color = ParseColor(text);
    if (!color)
    {
        Refuse(text, "a color");
    }
    return *color;
}

/// How a property is read and inherited.
struct Property
{
    std::string_view name;
    void (*set)(SvgStyle& style, std::string_view value, const SvgViewport& viewport);
    void (*inherit)(SvgStyle& style, const SvgStyle& parent);
};

/// \param field leads from a style to the property's value
/// \param parse makes such a value of a text
template <typename Field, typename Parse>
constexpr Property MakeProperty(std::string_view name, Field, Parse)
{
    return {name,
            [](SvgStyle& style, std::string_view value, const SvgViewport& viewport) {
                Field()(style) = Parse()(value, viewport);
            },
            [](SvgStyle& style, const SvgStyle& parent) { Field()(style) = Field()(parent); }};
}

using Text = std::string_view;
using Viewport = const SvgViewport&;

constexpr std::array properties = {
    MakeProperty(
        "clip-path", [](auto& style) -> auto& { return style.clip; },
        [](Text value, Viewport) { return ParseClip(value); }),
    MakeProperty(
        "clip-rule", [](auto& style) -> auto& { return style.clipRule; },
        [](Text value, Viewport) { return ParseRule(value); }),
    MakeProperty(
        "color", [](auto& style) -> auto& { return style.color; },
        [](Text value, Viewport) { return ParseOwnColor(value); }),
    MakeProperty(
        "display", [](auto& style) -> auto& { return style.isDisplayed; },
        [](Text value, Viewport) { return value != "none"; }),
    MakeProperty(
        "fill", [](auto& style) -> auto& { return style.fill; },
        [](Text value, Viewport) { return ParsePaint(value); }),
    MakeProperty(
        "fill-opacity", [](auto& style) -> auto& { return style.fillOpacity; },
        [](Text value, Viewport) { return ParseOpacity(value); }),
    MakeProperty(
        "fill-rule", [](auto& style) -> auto& { return style.fillRule; },
        [](Text value, Viewport) { return ParseRule(value); }),
    MakeProperty(
        "opacity", [](auto& style) -> auto& { return style.opacity; },
        [](Text value, Viewport) { return ParseOpacity(value); }),
    MakeProperty(
        "overflow", [](auto& style) -> auto& { return style.isOverflowVisible; },
        [](Text value, Viewport) { return value == "visible" || value == "auto"; }),
    MakeProperty(
        "paint-order", [](auto& style) -> auto& { return style.strokesFirst; },
        [](Text value, Viewport) { return value.starts_with("stroke"); }),
    MakeProperty(
        "stop-color", [](auto& style) -> auto& { return style.stopColor; },
        [](Text value, Viewport) { return ParsePaint(value); }),
    MakeProperty(
        "stop-opacity", [](auto& style) -> auto& { return style.stopOpacity; },
        [](Text value, Viewport) { return ParseOpacity(value); }),
    MakeProperty(
        "stroke", [](auto& style) -> auto& { return style.stroke; },
        [](Text value, Viewport) { return ParsePaint(value); }),
    MakeProperty(
        "stroke-dasharray", [](auto& style) -> auto& { return style.pen.dashes; },
        [](Text value, Viewport viewport) { return ParseDashes(value, viewport.Diagonal()); }),
    MakeProperty(
        "stroke-dashoffset", [](auto& style) -> auto& { return style.pen.dashOffset; },
        [](Text value, Viewport viewport) { return ParseLength(value, viewport.Diagonal()); }),
    MakeProperty(
        "stroke-linecap", [](auto& style) -> auto& { return style.pen.cap; },
        [](Text value, Viewport) { return ParseCap(value); }),
    MakeProperty(
        "stroke-linejoin", [](auto& style) -> auto& { return style.pen.join; },
        [](Text value, Viewport) { return ParseJoin(value); }),
    MakeProperty(
        "stroke-miterlimit", [](auto& style) -> auto& { return style.pen.miterLimit; },
        [](Text value, Viewport) { return ParseMiterLimit(value); }),
    MakeProperty(
        "stroke-opacity", [](auto& style) -> auto& { return style.strokeOpacity; },
        [](Text value, Viewport) { return ParseOpacity(value); }),
    MakeProperty(
        "stroke-width", [](auto& style) -> auto& { return style.pen.width; },
        [](Text value, Viewport viewport) { return ParseNotNegative(value, viewport.Diagonal()); }),
    MakeProperty(
        "visibility", [](auto& style) -> auto& { return style.isVisible; },
        [](Text value, Viewport) { return ParseVisibility(value); }),
};

const Property* FindProperty(std::string_view name)
{
    const auto found = std::find_if(properties.begin(), properties.end(),
                                    [&](const Property& known) { return known.name == name; });
    return found == properties.end() ? nullptr : &*found;
}

}  // namespace

SvgStyle SvgStyle::Inherited() const
{
    const SvgStyle initial;
    SvgStyle style = *this;
    style.opacity = initial.opacity;
    style.isDisplayed = initial.isDisplayed;
    style.isOverflowVisible = initial.isOverflowVisible;
    style.clip = initial.clip;
    style.stopColor = initial.stopColor;
    style.stopOpacity = initial.stopOpacity;
    return style;
}

void SetProperty(SvgStyle& style, const SvgStyle& parent, std::string_view name,
                 std::string_view value, const SvgViewport& viewport)
{
    const Property* const property = FindProperty(name);
    if (property == nullptr)
    {
        return;
    }
    value = Trimmed(value);
    if (value == "inherit")
    {
        property->inherit(style, parent);
    }
    else if (name == "color" && (value == "currentColor" || value == "currentcolor"))
    {
        style.color = parent.color;
    }
    else
    {
        property->set(style, value, viewport);
    }
}

std::string IdInUrl(std::string_view text)
{
    const UrlAndRest url = SplitUrl(text);
    return url.rest.empty() ? url.id : std::string();
}

}  // namespace orvane::shapes
