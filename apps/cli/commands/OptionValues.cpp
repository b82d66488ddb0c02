// SPDX-License-Identifier: MIT
#include "apps/cli/commands/OptionValues.h"

#include "orvane/orvane.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace orvane
{

namespace
{

Error Unexpected(const std::string& expected, const std::string& found)
{
    return OptionError("", "expected " + expected, "\"" + found + "\"");
}

double ParseNumberBetween(const std::string& text, double least, double most)
{
    const double value = ParseNumber(text);
    if (value < least || value > most)
    {
        throw OptionError(
            "", "expected a number from " + NumberText(least) + " to " + NumberText(most), text);
    }
    return value;
}

std::int64_t ParseIntegerBetween(const std::string& text, std::int64_t least, std::int64_t most)
{
    const double value = ParseNumber(text);
    if (value < static_cast<double>(least) || value > static_cast<double>(most) ||
        value != std::floor(value))
    {
        throw OptionError(
            "",
            "expected a whole number from " + std::to_string(least) + " to " + std::to_string(most),
            text);
    }
    return static_cast<std::int64_t>(value);
}

/// Two whole numbers of at most nine digits, separated by a sign such as "x".
Size ParseTwo(const std::string& text, char sign, const std::string& form)
{
    const auto isNumber = [](const std::string& digits) {
        constexpr std::size_t maxDigits = 9;
        return !digits.empty() && digits.size() <= maxDigits &&
               digits.find_first_not_of("0123456789") == std::string::npos;
    };
    const std::size_t middle = std::min(text.find(sign), text.size());
    const std::string first = text.substr(0, middle);
    const std::string second = text.substr(std::min(middle + 1, text.size()));
    if (!isNumber(first) || !isNumber(second))
    {
        throw Unexpected(form, text);
    }
    return {std::stoi(first), std::stoi(second)};
}

std::vector<double> ParseNumbers(const std::string& text, std::size_t count,
                                 const std::string& form)
{
    const std::vector<std::string> parts = SplitAtCommas(text);
    if (parts.size() != count)
    {
        throw Unexpected(form, text);
    }
    std::vector<double> numbers;
    numbers.reserve(parts.size());
    for (const std::string& part : parts)
    {
        numbers.push_back(ParseNumber(part));
    }
    return numbers;
}

Vector3 ParseTriple(const std::string& text, const std::string& form)
{
    const std::vector<double> numbers = ParseNumbers(text, 3, form);
    return {numbers[0], numbers[1], numbers[2]};
}

}  // namespace

double ParseNumber(const std::string& text)
{
    std::size_t used = 0;
    double value = 0;
    try
    {
        value = std::stod(text, &used);
    }
    catch (const std::exception&)
    {
        used = std::string::npos;
    }
    if (used != text.size() || !std::isfinite(value))
    {
        throw Error("", "\"" + text + "\" is not a number");
    }
    return value;
}

std::vector<std::string> SplitAtCommas(const std::string& text)
{
    std::vector<std::string> parts(1);
    for (const char c : text)
    {
        if (c == ',')
        {
            parts.emplace_back();
        }
        else
        {
            parts.back() += c;
        }
    }
    return parts;
}

Size ParseSize(const std::string& text)
{
    const std::string form = "WIDTHxHEIGHT in pixels, both at least 1";
    const Size size = ParseTwo(text, 'x', form);
    if (size.width < 1 || size.height < 1)
    {
        throw Unexpected(form, text);
    }
    if (size.width > largestPictureSide || size.height > largestPictureSide)
    {
        throw OptionError(
            "",
            "expected at most " + std::to_string(largestPictureSide) + " pixels in each direction",
            text);
    }
    return size;
}

Size ParsePixel(const std::string& text)
{
    return ParseTwo(text, ',', "X,Y, both at least 0");
}

std::vector<double> ParsePair(const std::string& text)
{
    return ParseNumbers(text, 2, "a place in pixels as X,Y");
}

Vector3 ParseAngles(const std::string& text)
{
    return ParseTriple(text, "three angles in degrees as X,Y,Z");
}

Vector3 ParsePlace(const std::string& text)
{
    return ParseTriple(text, "a place in ems as X,Y,Z");
}

Color ParseOpaqueColor(const std::string& text)
{
    const Color color = ParseColor(text);
    if (color.alpha < 1)
    {
        throw OptionError("", "expected an opaque colour", "\"" + text + "\"");
    }
    return color;
}

LightChange ParseLight(const std::string& text)
{
    constexpr int lastLight = 7;
    const std::vector<std::string> parts = SplitAtCommas(text);
    if (parts.size() < 2 || parts.size() > 3 || (parts[1] != "on" && parts[1] != "off"))
    {
        throw Unexpected("INDEX,on|off[,COLOR]", text);
    }
    LightChange change;
    change.index = static_cast<int>(ParseIntegerBetween(parts[0], 0, lastLight));
    change.on = parts[1] == "on";
    if (parts.size() == 3)
    {
        change.color = ParseOpaqueColor(parts[2]);
    }
    return change;
}

CLI::Validator NumberBetween(double least, double most)
{
    return ReadableBy([=](const std::string& text) { ParseNumberBetween(text, least, most); });
}

CLI::Validator IntegerBetween(std::int64_t least, std::int64_t most)
{
    return ReadableBy([=](const std::string& text) { ParseIntegerBetween(text, least, most); });
}

std::string Alternatives(const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : names)
    {
        text += (text.empty() ? "" : "|") + name;
    }
    return text;
}

std::string NumberText(double number)
{
    std::ostringstream text;
    text << number;
    return text.str();
}

namespace
{

template <typename Enum>
bool TakeNamed(const std::string& text, Enum& value)
{
    const std::vector<std::string> names = NamesOf<Enum>();
    value = static_cast<Enum>(std::find(names.begin(), names.end(), text) - names.begin());
    return true;
}

}  // namespace

bool lexical_cast(const std::string& text, Color& color)
{
    color = ParseColor(text);
    return true;
}

bool lexical_cast(const std::string& text, LightChange& change)
{
    change = ParseLight(text);
    return true;
}

bool lexical_cast(const std::string& text, Size& size)
{
    size = ParseSize(text);
    return true;
}

bool lexical_cast(const std::string& text, Vector3& angles)
{
    angles = ParseAngles(text);
    return true;
}

bool lexical_cast(const std::string& text, EdgeStyle& style)
{
    return TakeNamed(text, style);
}

bool lexical_cast(const std::string& text, BevelSides& sides)
{
    return TakeNamed(text, sides);
}

bool lexical_cast(const std::string& text, LetterFusion& fusion)
{
    return TakeNamed(text, fusion);
}

bool lexical_cast(const std::string& text, Alignment& alignment)
{
    return TakeNamed(text, alignment);
}

bool lexical_cast(const std::string& text, TextureQuality& quality)
{
    return TakeNamed(text, quality);
}

bool lexical_cast(const std::string& text, BackgroundPlacement& placement)
{
    return TakeNamed(text, placement);
}

bool lexical_cast(const std::string& text, LightsFollow& follow)
{
    return TakeNamed(text, follow);
}

bool lexical_cast(const std::string& text, MeshFormat& format)
{
    return TakeNamed(text, format);
}

bool lexical_cast(const std::string& text, LengthUnit& unit)
{
    return TakeNamed(text, unit);
}

bool lexical_cast(const std::string& text, UpAxis& axis)
{
    return TakeNamed(text, axis);
}

}  // namespace orvane
