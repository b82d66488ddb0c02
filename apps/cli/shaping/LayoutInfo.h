// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What layout and info tell of the fonts and the missing characters of a text.

#include "platform/ShapingFace.h"
#include "shaping/TextLayout.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvane
{

class JsonWriter;

/// The axes with their values, as an object with the key "axes".
void WriteAxes(JsonWriter& json, const std::vector<AxisValue>& axes);
/// The same as a text: ", wght=650" for each axis.
std::string AxesText(const std::vector<AxisValue>& axes);

/// The faces that the glyphs of a layout are from, as an array of objects.
void WriteFaces(JsonWriter& json, std::string_view key, const TextLayout& layout);
/// A face with its file and its axes.
std::string FaceText(const ShapingFace& face);

/// Characters that no font has, as an array of objects with the key "missing".
void WriteMissing(JsonWriter& json, const std::vector<MissingCharacter>& missing);

}  // namespace orvane
