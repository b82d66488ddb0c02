// SPDX-License-Identifier: MIT
#pragma once

#include "shapes/SvgFile.h"

#include <optional>
#include <string_view>

namespace orvane::shapes
{

/// Reads a colour as CSS writes it: one of its 148 names, transparent, #rgb, #rgba, #rrggbb,
/// #rrggbbaa, rgb(), rgba(), hsl() or hsla(). Empty for anything else.
std::optional<SvgColor> ParseColor(std::string_view text);

}  // namespace orvane::shapes
