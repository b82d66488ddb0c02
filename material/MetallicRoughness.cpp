// SPDX-License-Identifier: MIT
#include "material/MetallicRoughness.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

namespace orvane
{

namespace
{

constexpr std::string_view metals[] = {
    "aluminium", "aluminum", "brass",    "bronze", "chrome",   "copper", "gold",  "iron",
    "lead",      "metal",    "metallic", "nickel", "platinum", "silver", "steel", "titanium",
};

/// A saturation from which a highlight counts as tinted; below it, it is as good as white.
constexpr double leastTint = 0.25;
/// Degrees: the largest difference between the hues of a metal and its highlight.
constexpr double mostHueDifference = 30;
/// Degrees and saturation of the diffuse colour of gold, from shaded to polished.
constexpr double goldHues[] = {36, 46};
constexpr double leastGoldSaturation = 0.45;

struct Tint
{
    double hue = 0;         ///< degrees, 0 to 360
    double saturation = 0;  ///< 0 for grey, 1 for a pure colour
};

Tint TintOf(const std::array<float, 4>& color)
{
    const double red = color[0];
    const double green = color[1];
    const double blue = color[2];
    const double most = std::max({red, green, blue});
    const double range = most - std::min({red, green, blue});
    if (range <= 0)
    {
        return {};
    }
    const double sixth = most == red     ? (green - blue) / range
                         : most == green ? (blue - red) / range + 2
                                         : (red - green) / range + 4;
    return {sixth < 0 ? sixth * 60 + 360 : sixth * 60, range / most};
}

bool IsLetter(char each)
{
    return (each >= 'a' && each <= 'z') || (each >= 'A' && each <= 'Z');
}

bool NamesAMetal(const char* name)
{
    std::string word;
    for (;; ++name)
    {
        if (IsLetter(*name))
        {
            word += static_cast<char>(*name | 0x20);  // in lower case
            continue;
        }
        if (std::find(std::begin(metals), std::end(metals), word) != std::end(metals))
        {
            return true;
        }
        word.clear();
        if (*name == '\0')
        {
            return false;
        }
    }
}

bool IsMetal(const NamedColor& material)
{
    const Tint body = TintOf(UsualColor(material.GetDiffuseColor()));
    const Tint highlight = TintOf(UsualColor(material.GetSpecularColor()));
    const double apart = std::abs(body.hue - highlight.hue);
    const bool isTintedAlike = body.saturation >= leastTint && highlight.saturation >= leastTint &&
                               std::min(apart, 360 - apart) <= mostHueDifference;
    const bool isGold = body.hue >= goldHues[0] && body.hue <= goldHues[1] &&
                        body.saturation >= leastGoldSaturation;
    return isTintedAlike || isGold || NamesAMetal(material.GetName());
}

}  // namespace

std::array<float, 4> UsualColor(const ColorVector& color)
{
    std::array<float, 4> usual = {color.red, color.green, color.blue, color.alpha};
    for (float& each : usual)
    {
        each = each > 0 ? std::min(each, 1.0f) : 0;  // the comparison is false for not-a-number
    }
    return usual;
}

double LinearFromScreen(double value)
{
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

MetallicRoughness ToMetallicRoughness(const NamedColor& material)
{
    MetallicRoughness result;
    const std::array<float, 4> diffuse = UsualColor(material.GetDiffuseColor());
    const std::array<float, 4> emission = UsualColor(material.GetEmissionColor());
    for (std::size_t i = 0; i < 3; ++i)
    {
        result.baseColor[i] = LinearFromScreen(diffuse[i]);
        result.emission[i] = LinearFromScreen(emission[i]);
    }
    result.baseColor[3] = diffuse[3];
    result.isMetal = IsMetal(material);
    const float shininess = material.GetShininess();
    if (shininess > 0)  // false for not-a-number
    {
        result.roughness = std::pow(2 / (std::min(shininess, 128.0f) + 2.0), 0.25);
    }
    return result;
}

}  // namespace orvane
