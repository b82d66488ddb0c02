// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Repairs outlines that the library would not fill correctly.

#include "contours/NativeOutline.h"

#include <optional>

namespace orvane::contours
{

/// The outline rebuilt as the border of the area that it fills by the non-zero rule (see
/// RebuildOutline). The result passes TryOutline, and its contours run the right way. If rounding
/// makes the border meet itself, the function tries other ways in turn: more or fewer samples, a
/// second rebuild, moving apart corners that lie at the same place (each by 1.5 or 3 units), and
/// straight lines in place of curves. Returns nothing when every way fails.
/// \param outline at one pixel per design unit
std::optional<NativeOutline> RepairOutline(const NativeOutline& outline, int unitsPerEm);

}  // namespace orvane::contours
