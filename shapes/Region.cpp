// SPDX-License-Identifier: MIT
#include "shapes/Region.h"

#include <utility>

namespace orvane::shapes
{

using contours::Cross;
using contours::DoublePoint;

Contour CutToConvex(Contour contour, std::span<const DoublePoint> polygon)
{
    // Sutherland and Hodgman, 1974: one side of the polygon after the other cuts off what lies to
    // the right of it.
    for (std::size_t i = 0; i < polygon.size() && !contour.empty(); ++i)
    {
        const DoublePoint& from = polygon[i];
        const DoublePoint side = polygon[i + 1 == polygon.size() ? 0 : i + 1] - from;
        Contour inside;
        DoublePoint last = contour.back();
        double lastDistance = Cross(side, last - from);
        for (const DoublePoint& corner : contour)
        {
            const double distance = Cross(side, corner - from);
            if ((distance < 0) != (lastDistance < 0))
            {
                const double t = lastDistance / (lastDistance - distance);
                inside.push_back(last + (corner - last) * t);
            }
            if (distance >= 0)
            {
                inside.push_back(corner);
            }
            last = corner;
            lastDistance = distance;
        }
        contour = std::move(inside);
    }
    return contour;
}

}  // namespace orvane::shapes
