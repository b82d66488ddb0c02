// SPDX-License-Identifier: MIT
#pragma once

#include "profiles/ProfileSolid.h"

/// Pairs of triangles of a solid that go through each other. Triangles that only touch, as where a
/// corner of one lies on the other, are not counted.
struct TriangleCrossings
{
    /// An edge of one goes through the inside of the other, or the two overlap in one plane.
    long crossings = 0;
    /// The first two triangles that cross.
    long first = -1;
    long second = -1;
};

/// Looks at all pairs of triangles that could cross. All decisions are exact.
TriangleCrossings FindCrossings(const orvane::ProfileSolid& solid);
