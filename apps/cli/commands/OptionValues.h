// SPDX-License-Identifier: MIT
#pragma once

#include "document/EnumNames.h"
#include "orvane/Options.h"

#include <CLI/CLI.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace orvane
{

// Reads the values of options. Each function throws Error, whose Problem() names the expected and
// the found value; CLI11 adds the name of the option.

double ParseNumber(const std::string& text);
/// The parts between commas. The middle part of "a,,b" is empty.
std::vector<std::string> SplitAtCommas(const std::string& text);
/// "WxH" in pixels, both at least 1 and at most largestPictureSide.
Size ParseSize(const std::string& text);
/// "X,Y" in pixels, both whole numbers and at least 0.
Size ParsePixel(const std::string& text);
/// "X,Y".
std::vector<double> ParsePair(const std::string& text);
/// "X,Y,Z" in degrees.
Vector3 ParseAngles(const std::string& text);
/// "X,Y,Z" in ems.
Vector3 ParsePlace(const std::string& text);
Color ParseOpaqueColor(const std::string& text);
/// "INDEX,on|off[,COLOR]".
LightChange ParseLight(const std::string& text);

/// Checks that a function such as ParseNumber can read a value.
template <typename Parse>
CLI::Validator ReadableBy(Parse parse)
{
    return CLI::Validator(
        [parse](const std::string& text) {
            try
            {
                parse(text);
                return std::string();
            }
            catch (const Error& error)
            {
                return error.Problem();
            }
        },
        "");
}

/// Checks that a value is a number in a range, limits included.
CLI::Validator NumberBetween(double least, double most);
/// Checks that a value is a whole number in a range, limits included.
CLI::Validator IntegerBetween(std::int64_t least, std::int64_t most);

/// The names of an enumeration's values.
template <typename Enum>
std::vector<std::string> NamesOf()
{
    constexpr auto& names = EnumNames<Enum>::names;
    return {names.begin(), names.end()};
}

/// "a|b|c".
std::string Alternatives(const std::vector<std::string>& names);

/// A number as help texts show it, with as few digits as it needs.
std::string NumberText(double number);

// CLI11 finds these conversions because they are in the namespace of the types. It calls them only
// with values that a validator has checked. Each enumeration has its own conversion instead of one
// template for all, because CLI11 has a template for enumerations itself, which reads numbers.
bool lexical_cast(const std::string& text, Color& color);
bool lexical_cast(const std::string& text, LightChange& change);
bool lexical_cast(const std::string& text, Size& size);
bool lexical_cast(const std::string& text, Vector3& angles);
bool lexical_cast(const std::string& text, EdgeStyle& style);
bool lexical_cast(const std::string& text, BevelSides& sides);
bool lexical_cast(const std::string& text, LetterFusion& fusion);
bool lexical_cast(const std::string& text, Alignment& alignment);
bool lexical_cast(const std::string& text, TextureQuality& quality);
bool lexical_cast(const std::string& text, BackgroundPlacement& placement);
bool lexical_cast(const std::string& text, LightsFollow& follow);
bool lexical_cast(const std::string& text, MeshFormat& format);
bool lexical_cast(const std::string& text, LengthUnit& unit);
bool lexical_cast(const std::string& text, UpAxis& axis);

}  // namespace orvane
