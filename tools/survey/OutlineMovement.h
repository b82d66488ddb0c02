// SPDX-License-Identifier: MIT
#pragma once

#include "contours/NativeOutline.h"

#include <optional>

/// How far a repair has moved an outline: the largest distance, in units, from the border of the
/// area that the font's own outline fills by the non-zero rule to the repaired outline. Loops of
/// the border thinner than a unit on average do not count, because rounding leaves them between
/// edges and a repair drops them. Nothing when the tessellator cannot find the border.
std::optional<double> RepairMovement(const orvane::contours::NativeOutline& own,
                                     const orvane::contours::NativeOutline& repaired);
