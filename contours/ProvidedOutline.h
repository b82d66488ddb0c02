// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The outline that the platform hands over for a glyph: the font's own outline or, when the
/// library would not fill that outline correctly, a corrected one.

#include "contours/NativeOutline.h"

#include <optional>

namespace orvane::contours
{

/// What was done with one glyph's outline.
struct ProvidedOutline
{
    bool isConverted = false;  ///< the outline was made from cubic curves
    bool isTurned = false;     ///< contours that ran the wrong way were reversed
    bool isRepaired = false;   ///< the outline was rebuilt as the border of its area
    bool isFailed = false;     ///< the outline is not filled correctly, and no repair was found

    /// The outline to hand over, at one pixel per design unit. Empty when the font's own outline is
    /// handed over unchanged.
    std::optional<NativeOutline> outline;
};

/// Tries an outline. If it does not pass, reverses contours that run the wrong way or repairs it.
/// \param outline at one pixel per design unit
/// \param isConverted whether \p outline was made from cubic curves; it then differs from the
/// font's own outline and is handed over even when nothing had to be corrected
ProvidedOutline ProvideOutline(const NativeOutline& outline, bool isConverted, int unitsPerEm);

}  // namespace orvane::contours
