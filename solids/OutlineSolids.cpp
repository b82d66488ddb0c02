// SPDX-License-Identifier: MIT
#include "solids/OutlineSolids.h"

#include "solids/SolidBudget.h"

#include <utility>

namespace orvane
{

OutlineSolids::OutlineSolids(OutlineSettings settings)
    : settings_(std::move(settings)), solids_(settings_.regions->size())
{}

const BuiltSolid& OutlineSolids::Of(std::size_t area)
{
    std::optional<BuiltSolid>& solid = solids_[area];
    // When there is too little memory for a new solid, none is kept, and the next call tries again.
    if (!solid)
    {
        PlaneRegion region = (*settings_.regions)[area];
        for (std::vector<contours::DoublePoint>& contour : region.contours)
        {
            for (contours::DoublePoint& point : contour)
            {
                point = point + settings_.offset;
            }
        }
        ScaleRegion(region, settings_.solid);
        solid = SolidBudget().Build(
            StepsOfSolid(region), RingsOf(settings_.solid.profile),
            [&region] { return std::move(region); }, settings_.solid);
    }
    return *solid;
}

}  // namespace orvane
