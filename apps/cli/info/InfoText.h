// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

class ColorVector;
class NamedColor;
class OrvFontString;
class Vector;

namespace orvane
{

class JsonWriter;

/// The format in which `orvane info` describes a file.
enum class InfoFormat
{
    Text,  ///< lines for people
    Json   ///< one JSON object
};

// Values as text for people, and as JSON.

/// The number with four significant digits.
std::string ShortNumber(double value);
/// Three numbers with four significant digits, separated by spaces.
std::string Triple(double x, double y, double z);
std::string Triple(const Vector& vector);
/// As "1 face" or "12 faces".
std::string CountText(int count, const std::string& one, const std::string& many);
/// The number with a comma before every three digits, as "12,345".
std::string GroupedNumber(std::uint64_t number);
/// The colours, the shininess and the name, on one line.
std::string MaterialText(const NamedColor& material);

void WriteColor(JsonWriter& json, const char* key, const ColorVector& color);
void WriteVector(JsonWriter& json, const char* key, const Vector& vector);
/// Writes a material as members of the JSON object that is open.
void WriteMaterial(JsonWriter& json, const NamedColor& material);

/// The full name of the font of a text, which has one, in UTF-8.
std::string NameOfFont(const OrvFontString& text);

}  // namespace orvane
