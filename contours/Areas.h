// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Areas of flattened outlines, in square units, by three rules. They agree for an outline whose
/// edges do not meet and whose contours all run the right way.

#include "contours/FlatOutline.h"

namespace orvane::contours
{

/// The area that the tessellator fills by the odd rule (see TessellateFaces). Negative when the
/// tessellator reports an error, as it does for contours that cross, and for more than 65,535
/// vertices.
double OddArea(const FlatOutline& flat);

/// The sum of the areas that the contours enclose, each positive when the contour runs clockwise
/// and negative otherwise.
double ClockwiseArea(const FlatOutline& flat);

/// The area filled by the non-zero rule: a place is filled when the contours wind around it, taken
/// together, any number of times but zero. Contours may cross. Negative when the tessellator
/// reports an error.
double NonZeroArea(const FlatOutline& flat);

}  // namespace orvane::contours
