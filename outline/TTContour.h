// SPDX-License-Identifier: MIT
#pragma once

#include "outline/TTPoint.h"
#include "platform/Export.h"

#include <cstdint>
#include <memory>

/// One closed contour of a TrueType outline: from the last point it runs back to point 0.
///
/// Copies share the array of points, so a point changed through one shows in all; the last owner
/// frees it. SetPointCount gives this contour an array of its own.
class ORVANE_API TTContour
{
public:
    unsigned short GetPointCount() const { return pointCount; }
    /// Null for a contour without points.
    TTPoint* GetPoints() const { return points.get(); }
    int GetOffCurvePointCount() const;
    /// Bytes of this object and its points.
    unsigned long SizeOf() const;

    /// Replaces all points by default ones.
    void SetPointCount(unsigned short count);

protected:
    std::uint16_t pointCount = 0;
    std::shared_ptr<TTPoint[]> points;
};
