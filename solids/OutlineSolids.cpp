// SPDX-License-Identifier: MIT
#include "solids/OutlineSolids.h"

#include "orvane/Error.h"
#include "platform/Limits.h"

#include <algorithm>
#include <string>
#include <utility>

namespace orvane
{

namespace
{

Error TooManySteps(std::int64_t steps)
{
    return Error("area", std::to_string(steps) + " steps, which edges side by side take",
                 "at most " + std::to_string(limits::maxSolidSteps));
}

/// \param region after ScaleRegion
BuiltSolid BuildWithinLimit(const PlaneRegion& region, SolidSettings settings)
{
    const std::int64_t steps = StepsOfSolid(region);
    const auto rings = static_cast<std::int64_t>(settings.profile.steps.size());
    if (steps > limits::maxSolidSteps)
    {
        return {{}, SolidOutcome::Missing, TooManySteps(steps).Problem()};
    }
    if (steps * rings <= limits::maxSolidSteps)
    {
        return BuildSolid(region, settings);
    }
    settings.profile = EdgeProfile{{ProfileStep{}}};
    BuiltSolid built = BuildSolid(region, settings);
    if (built.outcome == SolidOutcome::Profiled)
    {
        built.outcome = SolidOutcome::Square;
        built.problem = TooManySteps(steps * rings).Problem();
    }
    return built;
}

}  // namespace

std::int64_t StepsOfSolid(const PlaneRegion& region)
{
    std::vector<double> heights;  // of the corners
    std::vector<double> lows;     // of the edges
    std::vector<double> highs;
    for (const std::vector<contours::DoublePoint>& contour : region.contours)
    {
        for (std::size_t i = 0; i < contour.size(); ++i)
        {
            const auto [low, high] =
                std::minmax({contour[i].y, contour[i + 1 == contour.size() ? 0 : i + 1].y});
            heights.push_back(contour[i].y);
            lows.push_back(low);
            highs.push_back(high);
        }
    }
    std::sort(heights.begin(), heights.end());
    std::sort(lows.begin(), lows.end());
    std::sort(highs.begin(), highs.end());
    std::int64_t steps = 0;
    std::size_t begun = 0;
    std::size_t ended = 0;
    for (const double height : heights)
    {
        while (begun < lows.size() && lows[begun] <= height)
        {
            ++begun;
        }
        while (ended < highs.size() && highs[ended] < height)
        {
            ++ended;
        }
        steps += static_cast<std::int64_t>(begun - ended);
    }
    return steps;
}

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
        solid = BuildWithinLimit(region, settings_.solid);
    }
    return *solid;
}

}  // namespace orvane
