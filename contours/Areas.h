// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Three ways to measure the area of a flattened outline, in square units. All three give the same
/// area when no edges meet and all contours run the right way (see NativeOutline).

#include "contours/FlatOutline.h"

namespace orvane::contours
{

/// The area that the tessellator fills by the odd rule (see TessellateFaces). Negative when the
/// outline has more than 65,535 vertices, and when the tessellator reports an error, as it nearly
/// always does for contours that cross.
double OddArea(const FlatOutline& flat);

/// The sum of the areas that the contours enclose. The area of a contour counts as positive when
/// the contour runs clockwise and as negative otherwise.
double ClockwiseArea(const FlatOutline& flat);

/// The area filled by the non-zero rule: a place is filled unless the windings of all contours
/// around it add up to zero. Contours may cross. Negative when the tessellator reports an error.
double NonZeroArea(const FlatOutline& flat);

}  // namespace orvane::contours
