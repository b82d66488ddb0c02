// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Vector.h"
#include "platform/Types.h"

/// A segment with its unit direction, from end 1 to end 2, and its normal, the left-hand
/// perpendicular of the direction in the xy plane. Direction and normal of a segment of length 0
/// are 0.
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
    /// The unit direction from end 2 to end 1.
    Vector GetDirection21() const { return -direction; }
    Vector GetNormal() const { return normal; }
    float Length() const { return end1.DistanceTo(end2); }

    /// Computes where this line crosses the other line in the xy plane. Both lines are taken as
    /// infinite. \p t receives the place of the crossing along this line: 0 at end 1, 1 at end 2,
    /// and other numbers outside the segment. Returns 1. For parallel lines it returns 256, with t
    /// = -1 and the origin as the point.
    int Intersection(const Line& other, Vector* point, float* t) const;

    /// Computes where two segments cross. Returns 0 when they do not cross, 256 when they are
    /// parallel, and otherwise the sum of two numbers: 4 at end 1 of this line, 8 at its end 2 or 2
    /// between them, plus 32 at end 1 of the other line, 64 at its end 2 or 16 between them. A
    /// crossing whose place differs from that of an end by less than 1e-5 counts as a crossing at
    /// that end; \p t is then exactly 0 or 1.
    int DoLinesIntersect(const Line& other, Vector* point, float* t) const;

    /// Whether the point lies on the segment. Returns 132 for a point at end 1, 136 at end 2 and
    /// 130 between them; \p t receives the place along the segment, with the tolerance of
    /// DoLinesIntersect. Returns 0 for any other point, with t = -1. A point exactly at end 1 is
    /// not found either, because there is no direction from end 1 to it. This is required; see the
    /// test APointExactlyAtEndOneIsNotOnTheLine.
    int IsPointOnLine(const Vector& p, float* t) const;

protected:
    Vector direction;
    Vector end1;
    Vector end2;
    LONG unused = 0;  ///< the library only copies this field
    Vector normal;

private:
    void SetDirection();
    void SetNormal();
};
