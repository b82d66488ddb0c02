// SPDX-License-Identifier: MIT
#pragma once

#include "shaping/Bidi.h"

#include <optional>
#include <string>
#include <vector>

namespace orvane
{

/// A box that a text fills: the text gets the largest size at which its lines fit into it. Lines
/// are as wide as the advances of their letters and the room of bevels and spacing, and as high as
/// the fonts say. The box has its size before the node's scale.
struct FitBox
{
    double width = 1;   ///< 0.001 to 1000
    double height = 1;  ///< 0.001 to 1000
    /// Whether lines are broken so that the letters become as large as they can. Otherwise lines
    /// are those that the text has without the box: they end at line ends, and at
    /// LineSettings::width if that is set.
    bool breaksLines = false;
};

/// On which side of a path letters stand.
enum class PathSide
{
    Left,  ///< of somebody who follows the path: outside of a circle, above a line to the right
    Right  ///< on the other side; the text then runs against the path
};

/// A line that takes the part of a straight baseline: a circle around the node's origin, or a path
/// of an SVG file. Letters stay rigid; each is turned to the direction that the path has in the
/// middle of the letter. Letters beyond the ends of an open path stand on the straight lines that
/// continue it.
struct TextPath
{
    /// The radius of a circle, which runs clockwise from its top: 0.001 to 1000. 0 for a path.
    double radius = 0;
    /// The data of an SVG path, such as "M0 0 C1 -1 2 -1 3 0"; y grows downward, and the origin is
    /// that of the node. Empty for a circle.
    std::string data;
    double unit = 1;  ///< ems in a unit of \c data: 0.000001 to 1000
    /// Where the text is aligned, as a share of the path's length from its beginning: 0 to 1. A
    /// text that is aligned at the left begins there, a centred one has its middle there. Without a
    /// value a text is aligned at the top of a circle, at the beginning of another closed path, and
    /// at the beginning, the middle or the end of an open one.
    std::optional<double> start;
    PathSide side = PathSide::Left;
};

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
    std::optional<FitBox> fit;
    /// The text must have one line, and may be neither broken nor fitted into a box.
    std::optional<TextPath> path;
};

}  // namespace orvane
