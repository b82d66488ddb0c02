// SPDX-License-Identifier: MIT
#include "shapes/ContourGrid.h"

#include <algorithm>
#include <cmath>

namespace orvane::shapes
{

double GridStepFor(double extent)
{
    constexpr int lineBits = 27;
    return std::exp2(std::max(-20.0, std::ceil(std::log2(extent)) - lineBits));
}

bool DoContoursMeet(const Contours& contours, WorkLimit& work)
{
    double extent = 0;
    for (const Contour& contour : contours)
    {
        for (const contours::DoublePoint& corner : contour)
        {
            extent = std::max({extent, std::abs(corner.x), std::abs(corner.y)});
        }
    }
    const double step = GridStepFor(extent);
    const auto onGrid = [step](const contours::DoublePoint& corner) {
        return GridPoint{static_cast<std::int32_t>(std::lround(corner.x / step)),
                         static_cast<std::int32_t>(std::lround(corner.y / step))};
    };
    std::vector<GridEdge> edges;
    for (const Contour& contour : contours)
    {
        for (std::size_t i = 0; i < contour.size(); ++i)
        {
            const GridPoint a = onGrid(contour[i]);
            const GridPoint b = onGrid(contour[i + 1 == contour.size() ? 0 : i + 1]);
            if (a != b)
            {
                const auto line = static_cast<std::uint32_t>(edges.size());
                edges.push_back(ComesBefore(a, b) ? GridEdge{a, b, line} : GridEdge{b, a, line});
            }
        }
    }
    return DoAnyMeet(edges, work);
}

}  // namespace orvane::shapes
