// SPDX-License-Identifier: MIT
#pragma once

#include "shapes/SvgDocument.h"

namespace orvane::shapes
{

/// Whether an element of this name draws a path by itself: path, rect, circle, ellipse, line,
/// polyline and polygon do.
bool DrawsPath(std::string_view name);

/// The path that such an element draws. Throws Error for attributes that make no sense and for more
/// than limits::maxShapeSegments commands.
Path PathOf(const SvgDocument& document, pugi::xml_node element, const SvgViewport& viewport);

}  // namespace orvane::shapes
