// SPDX-License-Identifier: MIT
#include "contours/NativeOutline.h"

#include "platform/Limits.h"
#include "platform/Truncate.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace orvane::contours
{
namespace
{

/// Returns value * numerator / denominator, rounded to the nearest whole number, halves away from
/// zero.
std::int32_t ScaledCoordinate(std::int32_t value, int numerator, int denominator)
{
    const std::int64_t product = std::int64_t{value} * numerator;
    const std::int64_t size = (std::abs(product) + denominator / 2) / denominator;
    return static_cast<std::int32_t>(product < 0 ? -size : size);
}

}  // namespace

std::int32_t CoordinateOf(double units)
{
    constexpr double limit = limits::maxOutlineCoordinate;
    return TruncateToLong(std::clamp(std::round(units), -limit, limit)) * 64;
}

void NativeOutline::CloseContour()
{
    const std::size_t first = FirstOf(ends.size());
    if (points.size() < first + 2)
    {
        points.resize(first);
        return;
    }
    if (!points.back().onCurve)
    {
        points.push_back(points[first]);
    }
    ends.push_back(points.size());
}

NativeOutline Reversed(const NativeOutline& outline, const std::vector<bool>& marked)
{
    NativeOutline reversed = outline;
    for (std::size_t contour = 0; contour < outline.ends.size(); ++contour)
    {
        if (contour < marked.size() && marked[contour])
        {
            std::reverse(
                reversed.points.begin() + static_cast<std::ptrdiff_t>(outline.FirstOf(contour)),
                reversed.points.begin() + static_cast<std::ptrdiff_t>(outline.ends[contour]));
        }
    }
    return reversed;
}

NativeOutline Scaled(const NativeOutline& outline, int pixelsPerEm, int unitsPerEm)
{
    NativeOutline scaled = outline;
    if (pixelsPerEm != unitsPerEm)
    {
        for (NativePoint& point : scaled.points)
        {
            point.x = ScaledCoordinate(point.x, pixelsPerEm, unitsPerEm);
            point.y = ScaledCoordinate(point.y, pixelsPerEm, unitsPerEm);
        }
    }
    return scaled;
}

}  // namespace orvane::contours
