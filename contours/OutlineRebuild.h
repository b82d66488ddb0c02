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
    int samplesPerCurve;  ///< the curves are cut at so many vertices before they are united
    bool keepCurves;      ///< false: the border consists of straight lines between the samples
};

struct RebuiltOutline
{
    NativeOutline outline;
    double area = -1;  ///< inside the border of the samples, square units; negative for no border
};

/// Samples the curves of an outline, finds the border of the area that they fill by the non-zero
/// rule (OutlineUnion), and puts the curves' own pieces in place of the samples: each piece of the
/// border is a part of one of the outline's curves, with ends and control point rounded to whole
/// units. Contours run the right way. Slivers are left out. Because of the rounding, the edges of
/// the result may meet; a trial must tell.
/// \param outline at one pixel per design unit
RebuiltOutline RebuildOutline(const NativeOutline& outline, const RebuildSettings& settings);

}  // namespace orvane::contours
