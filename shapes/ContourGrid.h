// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The grid to which the corners of areas are rounded.

#include "shapes/GridEdges.h"
#include "shapes/Region.h"

namespace orvane::shapes
{

/// The distance of the grid's lines, in ems: about a millionth of an em, or more where coordinates
/// are so large that the grid would have too many lines. It is a power of 2.
/// \param extent the largest size of a coordinate, in ems
double GridStepFor(double extent);

/// Whether contours meet anywhere but in single corners, on the grid for their largest coordinate.
/// Contours of VisibleAreas do not. Throws Error when the search takes more than \p work allows.
bool DoContoursMeet(const Contours& contours, WorkLimit& work);

}  // namespace orvane::shapes
