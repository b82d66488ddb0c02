// SPDX-License-Identifier: MIT
#include "document/Colors.h"

#include "host/AsciiCase.h"
#include "orvane/orvane.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <string_view>

namespace orvane
{

namespace
{

struct NamedRgb
{
    std::string_view name;
    unsigned rgb;
};

constexpr std::array namedColors = {
    NamedRgb{"black", 0x000000},   NamedRgb{"white", 0xFFFFFF},  NamedRgb{"gray", 0x808080},
    NamedRgb{"grey", 0x808080},    NamedRgb{"silver", 0xC0C0C0}, NamedRgb{"red", 0xE03030},
    NamedRgb{"maroon", 0x800000},  NamedRgb{"orange", 0xFF8C1A}, NamedRgb{"gold", 0xF2B233},
    NamedRgb{"yellow", 0xFFE135},  NamedRgb{"olive", 0x808000},  NamedRgb{"green", 0x2E9E4F},
    NamedRgb{"lime", 0x9BE564},    NamedRgb{"teal", 0x138086},   NamedRgb{"cyan", 0x35C9DC},
    NamedRgb{"blue", 0x2F6FDE},    NamedRgb{"navy", 0x10204A},   NamedRgb{"purple", 0x7A3FB0},
    NamedRgb{"magenta", 0xD6339A}, NamedRgb{"pink", 0xFF8FB1},   NamedRgb{"brown", 0x7A4A24},
};

}  // namespace

Color ParseColor(const std::string& text)
{
    const std::string lower = LowerAscii(text);
    for (const NamedRgb& named : namedColors)
    {
        if (lower == named.name)
        {
            return Rgb(named.rgb);
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
            Color color = Rgb(static_cast<unsigned>(value >> 8));
            color.alpha = static_cast<float>(value & 0xFF) / 255.0f;
            return color;
        }
    }
    throw OptionError("color",
                      "\"" + text +
                          "\" is no colour; expected a name such as navy or gold, #rgb, #rrggbb or "
                          "#rrggbbaa");
}

ColorVector ToColorVector(const Color& color)
{
    return {color.red, color.green, color.blue, color.alpha};
}

std::string ColorText(const ColorVector& color)
{
    std::string text = "#";
    for (const float part : {color.red, color.green, color.blue, color.alpha})
    {
        // A part that is not a number counts as 0.
        const float step = part > 0 ? std::min(part, 1.0f) * 255 : 0;
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned>(std::lround(step)));
        text += digits;
    }
    return text.ends_with("ff") ? text.substr(0, 7) : text;
}

std::string ColorText(const Color& color)
{
    return ColorText(ToColorVector(color));
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

NamedColor MakeMaterial(const char* name, const ColorVector& color, float highlight,
                        float shininess)
{
    NamedColor material(name);
    material.SetAmbientColor(Shade(color, 0.85f));
    material.SetDiffuseColor(color);
    material.SetSpecularColor({highlight, highlight, highlight, 1});
    material.SetShininess(shininess);
    return material;
}

}  // namespace orvane
