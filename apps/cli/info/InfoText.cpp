// SPDX-License-Identifier: MIT
#include "apps/cli/info/InfoText.h"

#include "apps/cli/info/JsonWriter.h"
#include "document/Colors.h"
#include "document/TextEncoding.h"
#include "extrude/OrvFont.h"
#include "geometry/Vector.h"
#include "material/NamedColor.h"
#include "scene/OrvFontString.h"

#include <cmath>
#include <cstdio>

namespace orvane
{

std::string ShortNumber(double value)
{
    constexpr double roundingError = 5e-7;  // numbers below this are shown as 0
    char digits[32];
    std::snprintf(digits, sizeof digits, "%.4g", std::fabs(value) < roundingError ? 0.0 : value);
    return digits;
}

std::string Triple(double x, double y, double z)
{
    return ShortNumber(x) + " " + ShortNumber(y) + " " + ShortNumber(z);
}

std::string Triple(const Vector& vector)
{
    return Triple(vector.x, vector.y, vector.z);
}

std::string CountText(int count, const std::string& one, const std::string& many)
{
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string GroupedNumber(std::uint64_t number)
{
    std::string digits = std::to_string(number);
    for (std::size_t end = digits.size(); end > 3; end -= 3)
    {
        digits.insert(end - 3, ",");
    }
    return digits;
}

std::string MaterialText(const NamedColor& material)
{
    std::string text = ColorText(material.GetDiffuseColor());
    text += "  ambient " + ColorText(material.GetAmbientColor());
    text += "  specular " + ColorText(material.GetSpecularColor());
    const ColorVector glow = material.GetEmissionColor();
    if (glow.red != 0 || glow.green != 0 || glow.blue != 0)
    {
        text += "  emission " + ColorText(glow);
    }
    text += "  shininess " + ShortNumber(material.GetShininess());
    return text + "  " + Quoted(ToUtf8(material.GetName()));
}

void WriteColor(JsonWriter& json, const char* key, const ColorVector& color)
{
    json.Numbers(key, color.red, color.green, color.blue, color.alpha);
}

void WriteVector(JsonWriter& json, const char* key, const Vector& vector)
{
    json.Numbers(key, vector.x, vector.y, vector.z);
}

void WriteMaterial(JsonWriter& json, const NamedColor& material)
{
    json.Member("name", ToUtf8(material.GetName()));
    WriteColor(json, "ambient", material.GetAmbientColor());
    WriteColor(json, "diffuse", material.GetDiffuseColor());
    WriteColor(json, "emission", material.GetEmissionColor());
    WriteColor(json, "specular", material.GetSpecularColor());
    json.Member("shininess", material.GetShininess());
}

std::string NameOfFont(const OrvFontString& text)
{
    const CString name = text.GetFont()->GetFullName();
    return text.IsUtf8() ? name.Text() : ToUtf8(name);
}

}  // namespace orvane
