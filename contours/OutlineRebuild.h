// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// An outline replaced by the border of the area that it fills.

#include "contours/NativeOutline.h"

namespace orvane::contours
{

/// How an outline is rebuilt.
struct RebuildSettings
{
    int samplesPerCurve;  ///< the number of straight edges that stand for each curve
    bool keepCurves;      ///< false: the result consists of straight lines between the samples
};

struct RebuiltOutline
{
    NativeOutline outline;
    double area = -1;  ///< inside the border, in square units; negative if no border was found
};

/// Samples the curves of an outline, finds the border of the area that the samples enclose by the
/// non-zero rule (see OutlineUnion), and then replaces the samples by parts of the original curves,
/// with ends and control points rounded to whole units. The contours of the result run the right
/// way. Slivers are left out. Because of the rounding, edges of the result may still meet, so the
/// caller must test the result with TryOutline.
/// \param outline at one pixel per design unit
RebuiltOutline RebuildOutline(const NativeOutline& outline, const RebuildSettings& settings);

}  // namespace orvane::contours
