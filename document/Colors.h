// SPDX-License-Identifier: MIT
#pragma once

#include "material/ColorVector.h"
#include "material/NamedColor.h"
#include "orvane/Options.h"
#include "platform/Export.h"

#include <string>

namespace orvane
{

ORVANE_API ColorVector ToColorVector(const Color& color);

/// The colour as #rrggbb, or as #rrggbbaa when its alpha is below 1. Each part is rounded to the
/// nearest of 256 steps.
ORVANE_API std::string ColorText(const ColorVector& color);

/// The same hue, darker or lighter: red, green and blue times \p factor, at most 1.
ORVANE_API ColorVector Shade(const ColorVector& color, float factor);

/// A colour between two others: \p a where \p share is 0, \p b where it is 1.
ORVANE_API ColorVector Mix(const ColorVector& a, const ColorVector& b, float share);

/// A material of one colour with a white highlight. Where only ambient light falls on it, it is 15
/// % darker.
ORVANE_API NamedColor MakeMaterial(const char* name, const ColorVector& color, float highlight,
                                   float shininess);

}  // namespace orvane
