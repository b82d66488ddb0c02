// SPDX-License-Identifier: MIT
#include "tests/support/RegionVolumes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

using namespace orvane;

namespace
{

/// Offsets between which areas are taken from a parabola, on both sides of the outline.
constexpr std::array offsets = {0.00125, 0.0025, 0.005, 0.0075, 0.01,
                                0.015,   0.02,   0.025, 0.03,   0.035,
                                0.04,    0.05,   0.06,  0.07,   RegionVolumes::maxOffset};

}  // namespace

double RegionVolumes::Panel::IntegralTo(double offset) const
{
    const auto [start, middle, end] = areas;
    const double at = (offset - from) / width;
    const double slope = 4 * middle - 3 * start - end;
    const double bend = 2 * (start - 2 * middle + end);
    return before + width * at * (start + at * (slope / 2 + at * (bend / 3)));
}

RegionVolumes::RegionVolumes(const PlaneRegion& region)
    : areas_(region, ProfileCorners::Mitred), outlineArea_(areas_.At(0))
{
    for (const double side : {-1.0, 1.0})
    {
        double last = 0;
        double lastArea = outlineArea_;
        for (const double offset : offsets)
        {
            // Where nothing is left, nothing is left further inward, either.
            const bool isEmpty = side < 0 && lastArea == 0;
            const double middleArea = isEmpty ? 0 : areas_.At(side * (last + offset) / 2);
            const double area = isEmpty ? 0 : areas_.At(side * offset);
            if (side < 0)
            {
                panels_.push_back({-offset, offset - last, {area, middleArea, lastArea}, 0});
            }
            else
            {
                panels_.push_back({last, offset - last, {lastArea, middleArea, area}, 0});
            }
            last = offset;
            lastArea = area;
        }
        if (side < 0)
        {
            std::reverse(panels_.begin(), panels_.end());
        }
    }
    double integral = 0;
    for (Panel& panel : panels_)
    {
        panel.before = integral;
        integral = panel.IntegralTo(panel.from + panel.width);
    }
}

double RegionVolumes::IntegralTo(double offset) const
{
    const auto next =
        std::upper_bound(panels_.begin() + 1, panels_.end(), offset,
                         [](double place, const Panel& panel) { return place < panel.from; });
    return std::prev(next)->IntegralTo(offset);
}

double RegionVolumes::AreaAt(double offset) const
{
    const auto next = std::find_if(panels_.begin(), panels_.end(), [&](const Panel& panel) {
        return std::abs(panel.from - offset) < 1e-12;
    });
    return next != panels_.end() ? next->areas[0] : areas_.At(offset);
}

double RegionVolumes::MeanToMiddle()
{
    if (!meanToMiddle_)
    {
        constexpr int slices = 24;
        const double middle = areas_.Middle(1e-4);
        // Simpson's rule. The area in the middle is 0.
        double sum = outlineArea_;
        for (int slice = 1; slice < slices; ++slice)
        {
            sum += (slice % 2 == 1 ? 4 : 2) * areas_.At(-middle * slice / slices);
        }
        meanToMiddle_ = sum / (3 * slices);
    }
    return *meanToMiddle_;
}

double RegionVolumes::Of(const EdgeProfile& profile, double depth)
{
    if (outlineArea_ == 0)
    {
        return 0;
    }
    const double wall = depth + profile.steps.back().height;
    if (profile.reachesMiddle)
    {
        // From the middle to the outline, with one slope.
        return outlineArea_ * wall + MeanToMiddle() * -profile.steps.back().height;
    }
    double volume = 0;
    for (std::size_t i = 0; i < profile.steps.size(); ++i)
    {
        const double offset = profile.steps[i].offset;
        const bool isLast = i + 1 == profile.steps.size();
        const double height = isLast ? wall : profile.steps[i].height - profile.steps[i + 1].height;
        const double next = isLast ? offset : profile.steps[i + 1].offset;
        if (height > 0)
        {
            volume += height * (next == offset
                                    ? AreaAt(offset)
                                    : (IntegralTo(next) - IntegralTo(offset)) / (next - offset));
        }
    }
    return volume;
}
