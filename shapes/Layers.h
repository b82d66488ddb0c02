// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Coloured areas that lie on top of each other, cut so that each place has one colour.

#include "shapes/GridEdges.h"
#include "shapes/Region.h"

#include <cstddef>
#include <vector>

namespace orvane::shapes
{

/// Which places inside of contours that cross are filled.
enum class FillRule
{
    NonZero,  ///< all places around which the contours' windings do not add up to zero
    EvenOdd   ///< the places around which the windings add up to an odd number
};

/// An area of one colour. Its contours may cross and touch themselves and each other.
struct Layer
{
    Contours contours;
    FillRule rule = FillRule::NonZero;
    int color = -1;  ///< the caller's number of the colour, from 0; -1 for a layer of a Clip
    int clip = -1;   ///< the index of the Clip that hides parts of the layer; -1 for none
};

/// Hides what lies outside of all of its layers.
struct Clip
{
    int firstLayer = 0;
    int layerCount = 0;  ///< may be 0; all is hidden then
    int outer = -1;      ///< the index of a clip that hides something, too; -1 for none
};

/// For each colour, the area where no later layer covers a layer of that colour. The contours do
/// not cross, neither do those of different colours, and each has the area of its colour on its
/// left: outer contours run counter-clockwise, those of holes clockwise. Contours may touch at
/// single corners.
///
/// Corners are rounded to whole steps, and contours narrower than a step may vanish. The time grows
/// with n log n for n edges, as long as edges cross few others. \param layers from the lowest to
/// the topmost; coordinates lie within maxGridCoordinate steps \param clips each one after its
/// outer clip \param colorCount one more than the largest colour \param step the distance of the
/// grid's lines, in the units of the contours Throws Error when the search takes more than \p work
/// allows.
std::vector<Contours> VisibleAreas(const std::vector<Layer>& layers, const std::vector<Clip>& clips,
                                   std::size_t colorCount, double step, WorkLimit& work);

}  // namespace orvane::shapes
