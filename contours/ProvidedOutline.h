// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The outline that the platform hands over for a glyph: the font's own or, where that would not be
/// filled correctly, a corrected one.

#include "contours/NativeOutline.h"

#include <optional>

namespace orvane::contours
{

/// What was done with one glyph's outline.
struct ProvidedOutline
{
    bool isConverted = false;  ///< made from cubic curves
    bool isTurned = false;     ///< contours that ran the wrong way were reversed
    bool isRepaired = false;   ///< rebuilt as the border of the area that it fills
    bool isFailed = false;     ///< it is not filled correctly, and no repair was found

    /// The outline to hand over, at one pixel per design unit. Nothing when it is the font's own
    /// outline without a change.
    std::optional<NativeOutline> outline;
};

/// Tries an outline and, if it does not pass, reverses contours or repairs it.
/// \param outline at one pixel per design unit
/// \param isConverted whether it was made from cubic curves, so that it differs from the font's own
ProvidedOutline ProvideOutline(const NativeOutline& outline, bool isConverted, int unitsPerEm);

}  // namespace orvane::contours
