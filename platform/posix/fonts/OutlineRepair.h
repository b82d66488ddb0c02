// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Outlines with overlapping contours, rebuilt as the border of what they fill.

#include "platform/Export.h"
#include "platform/posix/fonts/GlyphOutline.h"

#include <optional>

namespace posix
{

/// The border of what the outline fills by the non-zero rule, with its curves: each piece of the
/// border is a piece of the outline's own curves, its ends and control points rounded to whole
/// units. Contours run with what is filled on their right. Slivers thinner than a unit are dropped,
/// corners at one place that would spoil it drawn apart by up to three units.
///
/// Nothing when no way of sampling the curves gives an outline that passes the trial.
/// \param unitsPerEm 64 of the outline's own units are one of these
ORVANE_API std::optional<NativeOutline> RepairOutline(const NativeOutline& outline, int unitsPerEm);

}  // namespace posix
