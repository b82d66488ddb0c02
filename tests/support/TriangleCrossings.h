// SPDX-License-Identifier: MIT
#pragma once

#include "profiles/ProfileSolid.h"

/// Pairs of triangles of a solid that meet elsewhere than in the corners and edges that they share.
struct TriangleCrossings
{
    /// An edge of one goes through the inside of the other, or the two overlap in one plane.
    long crossings = 0;
    /// A corner or an edge of one lies on the other, as where two corners have the same place.
    long touches = 0;
    /// The first two triangles that cross.
    long first = -1;
    long second = -1;
};

/// Looks at all pairs of triangles whose boxes meet. All decisions are exact.
TriangleCrossings FindCrossings(const orvane::ProfileSolid& solid);
