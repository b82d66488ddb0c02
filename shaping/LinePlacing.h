// SPDX-License-Identifier: MIT
#pragma once

#include "shaping/LineFiller.h"

#include <cstddef>
#include <vector>

namespace orvane
{

/// How high the fonts of a line are, in ems.
struct LineExtents
{
    double size = 0;  ///< of the largest letters
    double ascent = 0;
    double descent = 0;
    double gap = 0;  ///< the distance to other lines
};

/// Adds the glyphs of a line and their faces to a layout. x is counted from the left of the first
/// letter, y from the baseline.
/// \param justifiedWidth the width to which the line's spaces are widened; 0: they stay
/// \return the width of the line without the spaces at its end
double PlaceLine(const ReadyText& ready, const Paragraph& paragraph, const LineRange& line,
                 const LayoutOptions& options, double justifiedWidth, RunCache* cache,
                 TextLayout* layout);

/// The extents of a line's fonts. A line without characters has those of the paragraph's first
/// font.
LineExtents ExtentsOf(const ReadyText& ready, const Paragraph& paragraph, const LineRange& line);

}  // namespace orvane
