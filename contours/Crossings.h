// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Whether, and how often, the edges of a flattened outline meet. Two edges meet when they cross,
/// touch or overlap; the vertex that two neighbouring edges share does not count.

#include "contours/FlatOutline.h"

namespace orvane::contours
{

/// Whether no two edges meet. The tessellator fills such an outline without fail. False also when
/// the search is given up after maxComparisons.
bool EdgesKeepApart(const FlatOutline& flat);

/// The number of pairs of edges that meet. The count stops at \p limit + 1, which is also the
/// answer when the search is given up after maxComparisons.
/// \param cross if not null, set to true when two edges cross at a place inside both
int CountMeetings(const FlatOutline& flat, int limit, bool* cross = nullptr);

}  // namespace orvane::contours
