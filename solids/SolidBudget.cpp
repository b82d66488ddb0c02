// SPDX-License-Identifier: MIT
#include "solids/SolidBudget.h"

#include "orvane/Error.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace orvane
{

namespace
{

std::string TooManySteps(std::int64_t steps)
{
    return Error("area", std::to_string(steps) + " steps, which edges side by side take",
                 "at most " + std::to_string(limits::maxSolidSteps))
        .Problem();
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

std::int64_t RingsOf(const EdgeProfile& profile)
{
    constexpr std::int64_t ringsOfSearch = 20;
    return static_cast<std::int64_t>(profile.steps.size()) +
           (profile.reachesMiddle ? ringsOfSearch : 0);
}

BuiltSolid SolidBudget::Build(std::int64_t steps, std::int64_t rings,
                              const std::function<PlaneRegion()>& region, SolidSettings settings)
{
    const std::int64_t all = steps * rings;
    const bool isProfiled = all <= left_;
    if (!isProfiled && steps > leftForSquare_)
    {
        return {{}, SolidOutcome::Missing, TooManySteps(steps)};
    }
    if (isProfiled)
    {
        left_ -= all;
    }
    else
    {
        leftForSquare_ -= steps;
        settings.profile = EdgeProfile{{ProfileStep{}}};
    }
    try
    {
        BuiltSolid built = BuildSolid(region(), settings);
        if (!isProfiled && built.outcome == SolidOutcome::Profiled)
        {
            built.outcome = SolidOutcome::Square;
            built.problem = TooManySteps(all);
        }
        return built;
    }
    catch (const Error& error)
    {
        return {{}, SolidOutcome::Missing, error.what()};
    }
}

}  // namespace orvane
