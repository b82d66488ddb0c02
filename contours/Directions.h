// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Finds the contours of a flattened outline that run the wrong way, even if edges touch or cross.

#include "contours/FlatOutline.h"

#include <vector>

namespace orvane::contours
{

/// For each contour, whether the filled area lies on its left instead of its right. A place is
/// filled by the odd rule: when a line from it to the outside crosses the contours an odd number of
/// times. Where contours touch, an edge may have the filled area on both sides or on neither. So
/// the direction is decided by a vote of the five edges of the contour that extend furthest along
/// y. Each vote is weighted by the height of its edge.
std::vector<bool> ContoursTheWrongWay(const FlatOutline& flat);

}  // namespace orvane::contours
