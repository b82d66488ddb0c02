// SPDX-License-Identifier: MIT
#include "outline/TTContour.h"

#include <algorithm>

int TTContour::GetOffCurvePointCount() const
{
    return static_cast<int>(
        std::count_if(points.get(), points.get() + pointCount,
                      [](const TTPoint& point) { return point.GetType() == TTPoint::OffCurve; }));
}

unsigned long TTContour::SizeOf() const
{
    return sizeof *this + pointCount * sizeof(TTPoint);
}

void TTContour::SetPointCount(unsigned short count)
{
    points = count != 0 ? std::make_shared<TTPoint[]>(count) : nullptr;
    pointCount = count;
}
