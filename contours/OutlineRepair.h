// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Outlines that would not be filled correctly, rebuilt so that they are.

#include "contours/NativeOutline.h"

#include <optional>

namespace orvane::contours
{

/// The outline rebuilt as the border of the area that it fills by the non-zero rule (see
/// RebuildOutline). The result passes TryOutline, and its contours run the right way. If rounding
/// makes the border meet itself, other ways are tried in turn: more or fewer samples, a second
/// rebuild, corners that touch drawn apart by up to three units, and straight lines in place of
/// curves. Nothing when none of them passes.
/// \param outline at one pixel per design unit
std::optional<NativeOutline> RepairOutline(const NativeOutline& outline, int unitsPerEm);

}  // namespace orvane::contours
