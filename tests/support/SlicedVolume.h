// SPDX-License-Identifier: MIT
#pragma once

#include "profiles/ProfileSolid.h"

/// The volume of a solid with profiled edges, found without making its surface: the areas of slices
/// are summed up. Each slice is the region moved by the offset that the profile has at its height,
/// by the offset function of the polygon clipping library. In cubic ems.
/// \param slices how many slices each step of the profile is cut into
double SlicedVolume(const orvane::PlaneRegion& region, const orvane::EdgeProfile& profile,
                    const orvane::ProfileSolidOptions& options, int slices);
