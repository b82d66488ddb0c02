// SPDX-License-Identifier: MIT
#pragma once

#include "shapes/GridEdges.h"
#include "shapes/Region.h"

#include <vector>

namespace orvane::shapes
{

/// An edge of an area's border. The area lies on its left.
struct BorderEdge
{
    GridPoint from;
    GridPoint to;
};

/// Joins edges to contours that do not cross and pass each corner once. Contours may touch at
/// corners. Corners within one step of the straight line between their neighbours are left out,
/// unless contours would meet without them.
/// \param border edges that meet only at their ends, and of which as many start at each point as
/// end there
/// \param step the distance of the grid's lines, in the units of the result
Contours ContoursOfBorder(std::vector<BorderEdge> border, double step, WorkLimit& work);

}  // namespace orvane::shapes
