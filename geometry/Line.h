// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Vector.h"
#include "platform/Types.h"

/// A segment with its unit direction, from end 1 to end 2, and the left-hand perpendicular of that
/// in the xy plane. A segment without length has a zero direction and normal.
class ORVANE_API Line
{
public:
    Line() = default;
    Line(const Vector& newEnd1, const Vector& newEnd2) { SetEnds(newEnd1, newEnd2); }

    void SetEnd1(const Vector& newEnd1) { SetEnds(newEnd1, end2); }
    void SetEnd2(const Vector& newEnd2) { SetEnds(end1, newEnd2); }
    void SetEnds(const Vector& newEnd1, const Vector& newEnd2);

    Vector GetEnd1() const { return end1; }
    Vector GetEnd2() const { return end2; }
    Vector GetDirection() const { return direction; }
    /// From end 2 to end 1.
    Vector GetDirection21() const { return -direction; }
    Vector GetNormal() const { return normal; }
    float Length() const { return end1.DistanceTo(end2); }

    /// Meets the other line, taken as infinite in the xy plane. \p t receives the place along this
    /// line, 0 at end 1 and 1 at end 2, which may lie outside. Returns 1; for parallel lines 256,
    /// with t -1 and the point at the origin.
    int Intersection(const Line& other, Vector* point, float* t) const;

    /// Meets the other segment. Returns 0 when they don't meet, 256 when they are parallel, else
    /// where: on this line at end 1 (4), at end 2 (8) or between (2), with, on the other, at end 1
    /// (32), at end 2 (64) or between (16). An end is hit when t comes within 1e-5 of it, and \p t
    /// is then exactly 0 or 1.
    int DoLinesIntersect(const Line& other, Vector* point, float* t) const;

    /// Whether the point lies on the segment: 132 at end 1, 136 at end 2, 130 between, with \p t as
    /// above; else 0 with t -1. Exactly at end 1 it counts as outside, for want of a direction:
    /// meant so, see APointExactlyAtEndOneIsNotOnTheLine.
    int IsPointOnLine(const Vector& p, float* t) const;

protected:
    Vector direction;
    Vector end1;
    Vector end2;
    LONG unused = 0;  ///< part of the layout only; copied with the line
    Vector normal;

private:
    void SetDirection();
    void SetNormal();
};
