// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/shaping/FontSearch.h"

#include <string>
#include <vector>

namespace orvane
{

/// The most families on a sheet. A sheet of so many is about 23,000 pixels high.
constexpr std::size_t mostSheetFamilies = 1'000;

/// Draws a picture with each family's name, set in the family, or with some of its letters when it
/// lacks those of its name. A label with the name stands below. Tells on standard error when there
/// are more than mostSheetFamilies, of which only the first are drawn.
/// \param output a PNG or BMP file; - is standard output
void DrawFontSheet(const std::vector<FontFamily>& families, const std::string& output);

}  // namespace orvane
