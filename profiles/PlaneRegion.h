// SPDX-License-Identifier: MIT
#pragma once

#include "contours/PlanePoint.h"
#include "platform/Export.h"

#include <vector>

class TTPolyGlyph;

namespace orvane
{

/// An area of the plane of letters, in ems: x grows to the right, y upward. A place belongs to the
/// area unless the windings of all contours around it add up to zero. Contours are closed without
/// repeating their first point, may run either way, and may cross.
struct PlaneRegion
{
    std::vector<std::vector<contours::DoublePoint>> contours;
};

/// The area of a built glyph, with its curves as they were flattened for drawing.
ORVANE_API PlaneRegion RegionOf(const TTPolyGlyph& glyph);

/// A region and how far it is moved, in ems, before it is joined with others.
struct PlacedRegion
{
    const PlaneRegion* region = nullptr;  ///< borrowed
    contours::DoublePoint offset;
};

/// One region of many, such as the letters of a line: the union of their areas. Contours of the
/// result do not cross. Throws Error when a coordinate is not a number, or when the regions
/// together are larger than limits::maxRegionSide.
ORVANE_API PlaneRegion JoinRegions(const std::vector<PlacedRegion>& regions);

}  // namespace orvane
