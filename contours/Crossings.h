// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Tests whether the edges of a flattened outline meet, and counts how often they do. Two edges
/// meet when they cross, touch or overlap; the vertex that two neighbouring edges share does not
/// count.

#include "contours/FlatOutline.h"

namespace orvane::contours
{

/// Whether no two edges meet. The tessellator never fails on such an outline. Also false when the
/// search gives up after limits::maxEdgeComparisons.
bool EdgesKeepApart(const FlatOutline& flat);

/// The number of pairs of edges that meet. Each edge of length 0 and each contour of one or two
/// vertices adds 1 to the number. The result is \p limit + 1 when the number is greater than \p
/// limit, when the search gives up after limits::maxEdgeComparisons, and when the outline has more
/// than limits::maxOutlineVertices vertices.
/// \param cross if not null, set to true when two edges cross at a place inside both
int CountMeetings(const FlatOutline& flat, int limit, bool* cross = nullptr);

}  // namespace orvane::contours
