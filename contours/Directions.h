// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Which contours of a flattened outline run the wrong way, also where edges touch.

#include "contours/FlatOutline.h"

#include <vector>

namespace orvane::contours
{

/// For each contour, whether the filled area lies on its left instead of its right. A place is
/// filled by the odd rule: when a line from it to the outside crosses the contours an odd number of
/// times. Where contours touch, an edge may have the filled area on both sides or on neither, so
/// the five tallest edges of a contour vote, each with its height as weight.
std::vector<bool> ContoursTheWrongWay(const FlatOutline& flat);

}  // namespace orvane::contours
