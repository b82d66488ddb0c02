// SPDX-License-Identifier: MIT
#pragma once

#include "shaping/Paragraph.h"

#include <vector>

namespace orvane
{

/// A line of a paragraph: its characters, counted in the paragraph.
struct LineRange
{
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// The distance from the start of a line to the tab stop after \p x.
double NextTabStop(const LayoutOptions& options, double x);

/// The next line of a paragraph, from \p begin on: as many words as fit into the width, at least
/// one.
/// \param width 0 for any width
LineRange FillLine(const Paragraph& paragraph, std::size_t begin, double width,
                   const LayoutOptions& options);

/// The last place before \p line.end at which the line may end instead; \p line.begin when there is
/// none.
std::size_t EarlierBreak(const Paragraph& paragraph, const LineRange& line);

/// The width of a line without the spaces at its end.
double WidthOf(const Paragraph& paragraph, const LineRange& line, const LayoutOptions& options);

/// How far widths may differ in ems and still count as equal.
constexpr double widthTolerance = 1e-6;

}  // namespace orvane
