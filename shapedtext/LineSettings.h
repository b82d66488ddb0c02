// SPDX-License-Identifier: MIT
#pragma once

#include "shaping/Bidi.h"

#include <optional>
#include <vector>

namespace orvane
{

/// How the lines of a text of any language are made. Lengths are in ems.
struct LineSettings
{
    TextDirection direction = TextDirection::Auto;
    /// The width at which lines are broken, without the room that bevels and spacing between
    /// characters add, and before the node's scale: 0 to 1000000. 0: lines end at line ends alone.
    double width = 0;
    bool breaksWords = false;  ///< whether words that are wider than a line are broken
    /// Whether lines are made as wide as \c width by wider spaces, except at ends of paragraphs.
    bool isJustified = false;
    /// The distance of baselines, as a factor of that which the fonts ask for: 0 to 100. Without a
    /// value baselines are one em apart, or the size of the largest letter of the lower line.
    std::optional<double> lineHeight;
    /// From the start of a line, each larger than the one before; limits::maxTabStops at most.
    std::vector<double> tabStops;
    double tabInterval = 2;  ///< of the tab stops after those: 0.001 to 1000
};

}  // namespace orvane
