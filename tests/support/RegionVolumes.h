// SPDX-License-Identifier: MIT
#pragma once

#include "profiles/EdgeProfile.h"
#include "tests/support/SlicedVolume.h"

#include <array>
#include <optional>
#include <vector>

/// The volumes of all solids of one region, from slices that these share. In ems.
///
/// A slice at some height is the region moved by the offset that the profile has there, so its area
/// depends on that offset only, not on the profile. Between two steps of a profile the offset
/// changes evenly with the height: the volume between them is the height times the mean area over
/// that range of offsets. Thus the areas at some offsets give the volumes of all profiles with
/// mitred corners up to the largest offset.
///
/// Between the offsets, areas are taken from parabolas through three of them. The area is made of
/// parabolas (each edge moves evenly, and its length changes evenly), with a bend of the slope
/// where a stroke or a gap vanishes. When both edges of a stroke, of the length E, vanish between
/// offsets that are W apart, the error of the integral is at most E W^2 / 12. That is less than 0.1
/// % of the volume of that stroke, when it is thicker than 0.0006 em and the solid as deep as by
/// default.
class RegionVolumes
{
public:
    /// The largest offset of a profile, inward and outward.
    static constexpr double maxOffset = 0.08;

    explicit RegionVolumes(const orvane::PlaneRegion& region);

    /// The volume of the solid with a profile of mitred corners on its front face.
    double Of(const orvane::EdgeProfile& profile, double depth);

private:
    /// Three neighbouring offsets with their areas.
    struct Panel
    {
        double from;
        double width;
        std::array<double, 3> areas;  ///< at the start, the middle and the end
        double before;                ///< of all panels before this one: the areas' integral

        double IntegralTo(double offset) const;
    };

    double AreaAt(double offset) const;
    /// The integral of the areas from the first panel to an offset.
    double IntegralTo(double offset) const;
    /// The mean area of the offsets from the outline inward to the middle of the widest stroke.
    double MeanToMiddle();

    MovedAreas areas_;
    std::vector<Panel> panels_;  ///< from the most negative offset to the largest
    double outlineArea_;
    std::optional<double> meanToMiddle_;
};
