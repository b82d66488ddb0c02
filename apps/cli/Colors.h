// SPDX-License-Identifier: MIT
#pragma once

#include "material/ColorVector.h"

#include <string>

/// The background that pictures have when none is asked for.
inline constexpr const char* defaultBackground = "#141a2b";

/// A colour as people write it: a name ("navy"), #rgb, #rrggbb or #rrggbbaa.
/// Throws UsageError, naming the option, for anything else.
ColorVector ParseColor(const std::string& option, const std::string& text);

/// As #rrggbb, with alpha where it is not opaque; each part at the nearest of its 256 steps.
std::string ColorText(const ColorVector& color);

/// The same hue, darker or lighter: red, green and blue times \p factor, at most 1.
ColorVector Shade(const ColorVector& color, float factor);

/// Between two colours: \p a at 0, \p b at 1.
ColorVector Mix(const ColorVector& a, const ColorVector& b, float share);
