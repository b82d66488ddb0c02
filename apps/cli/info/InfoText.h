// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

class ColorVector;
class JsonWriter;
class NamedColor;
class Vector;

// How values are told: for people, and as JSON.

/// A number with as many digits as people read.
std::string Short(double value);
std::string Triple(double x, double y, double z);
std::string Triple(const Vector& vector);
std::string CountText(int count, const std::string& one, const std::string& many);
/// The number with commas between its thousands.
std::string Grouped(std::uint64_t number);
std::string MaterialText(const NamedColor& material);

void WriteColor(JsonWriter& json, const char* key, const ColorVector& color);
void WriteVector(JsonWriter& json, const char* key, const Vector& vector);
/// The members of a material, into an object that is open.
void WriteMaterial(JsonWriter& json, const NamedColor& material);
