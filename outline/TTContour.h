// SPDX-License-Identifier: MIT
#pragma once

#include "outline/TTPoint.h"
#include "platform/Export.h"

#include <cstdint>
#include <memory>

/// One closed contour of a TrueType outline. The contour runs from its last point back to point 0.
///
/// Copies share one array of points, so changing a point of one copy changes it in all copies. The
/// array is freed with the last copy. SetPointCount gives this contour a new array that it does not
/// share.
class ORVANE_API TTContour
{
public:
    unsigned short GetPointCount() const { return pointCount; }
    /// Null for a contour without points.
    TTPoint* GetPoints() const { return points.get(); }
    int GetOffCurvePointCount() const;
    /// The bytes of this object and its points.
    unsigned long SizeOf() const;

    /// Replaces all points by \p count new ones, which are all zero.
    void SetPointCount(unsigned short count);

protected:
    std::uint16_t pointCount = 0;
    std::shared_ptr<TTPoint[]> points;
};
