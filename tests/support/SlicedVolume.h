// SPDX-License-Identifier: MIT
#pragma once

#include "profiles/ProfileSolid.h"

#include <polyclipping/clipper.hpp>

/// The areas of a region that is moved by offsets, found by the offset function of the polygon
/// clipping library.
class MovedAreas
{
public:
    MovedAreas(const orvane::PlaneRegion& region, orvane::ProfileCorners corners);

    /// In square ems.
    /// \param offset in ems; negative ones shrink the region
    double At(double offset) const;

    /// The inward offset at which nothing is left of the region, in ems, 64 at most.
    /// \param precision the largest error, as a part of the result
    double Middle(double precision) const;

private:
    ClipperLib::Paths Moved(double offset) const;

    orvane::ProfileCorners corners_;
    ClipperLib::Paths region_;
};

/// The volume of a solid with profiled edges, found without making its surface: the areas of slices
/// are summed up. Each slice is the region moved by the offset that the profile has at its height.
/// In cubic ems.
/// \param slices how many slices each step of the profile is cut into
double SlicedVolume(const orvane::PlaneRegion& region, const orvane::EdgeProfile& profile,
                    const orvane::ProfileSolidOptions& options, int slices);
