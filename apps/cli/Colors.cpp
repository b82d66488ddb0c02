// SPDX-License-Identifier: MIT
#include "apps/cli/Colors.h"

#include "apps/cli/Errors.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <string_view>

namespace
{

struct Named
{
    std::string_view name;
    unsigned rgb;
};

constexpr std::array names = {
    Named{"black", 0x000000},   Named{"white", 0xFFFFFF},  Named{"gray", 0x808080},
    Named{"grey", 0x808080},    Named{"silver", 0xC0C0C0}, Named{"red", 0xE03030},
    Named{"maroon", 0x800000},  Named{"orange", 0xFF8C1A}, Named{"gold", 0xF2B233},
    Named{"yellow", 0xFFE135},  Named{"olive", 0x808000},  Named{"green", 0x2E9E4F},
    Named{"lime", 0x9BE564},    Named{"teal", 0x138086},   Named{"cyan", 0x35C9DC},
    Named{"blue", 0x2F6FDE},    Named{"navy", 0x10204A},   Named{"purple", 0x7A3FB0},
    Named{"magenta", 0xD6339A}, Named{"pink", 0xFF8FB1},   Named{"brown", 0x7A4A24},
};

ColorVector FromRgb(unsigned rgb, unsigned alpha)
{
    const auto part = [](unsigned value) { return static_cast<float>(value & 0xFF) / 255.0f; };
    return {part(rgb >> 16), part(rgb >> 8), part(rgb), part(alpha)};
}

}  // namespace

ColorVector ParseColor(const std::string& option, const std::string& text)
{
    std::string lower = text;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    for (const Named& named : names)
    {
        if (lower == named.name)
        {
            return FromRgb(named.rgb, 0xFF);
        }
    }

    std::string digits = lower.starts_with('#') ? lower.substr(1) : std::string();
    if (std::all_of(digits.begin(), digits.end(), [](unsigned char c) { return std::isxdigit(c); }))
    {
        if (digits.size() == 3)
        {
            digits = {digits[0], digits[0], digits[1], digits[1], digits[2], digits[2]};
        }
        if (digits.size() == 6)
        {
            digits += "ff";
        }
        if (digits.size() == 8)
        {
            const unsigned long value = std::stoul(digits, nullptr, 16);
            return FromRgb(static_cast<unsigned>(value >> 8), static_cast<unsigned>(value));
        }
    }
    throw UsageError(
        option + ": \"" + text +
        "\" is no colour; expected a name such as navy or gold, #rgb, #rrggbb or #rrggbbaa");
}

std::string ColorText(const ColorVector& color)
{
    std::string text = "#";
    for (const float part : {color.red, color.green, color.blue, color.alpha})
    {
        const float step = part > 0 ? std::min(part, 1.0f) * 255 : 0;  // what is no number is 0
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned>(std::lround(step)));
        text += digits;
    }
    return text.ends_with("ff") ? text.substr(0, 7) : text;
}

ColorVector Shade(const ColorVector& color, float factor)
{
    return {std::min(color.red * factor, 1.0f), std::min(color.green * factor, 1.0f),
            std::min(color.blue * factor, 1.0f), color.alpha};
}

ColorVector Mix(const ColorVector& a, const ColorVector& b, float share)
{
    const auto mix = [share](float from, float to) { return from + (to - from) * share; };
    return {mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue), mix(a.alpha, b.alpha)};
}
