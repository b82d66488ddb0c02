// SPDX-License-Identifier: MIT
#pragma once

#include "solids/OrvOutlineShape.h"

/// The corners of a square, counter-clockwise from its lower left one, or clockwise as a hole's.
inline std::vector<orvane::contours::DoublePoint> SquareContour(double left, double low,
                                                                double side, bool isHole = false)
{
    std::vector<orvane::contours::DoublePoint> corners = {
        {left, low}, {left + side, low}, {left + side, low + side}, {left, low + side}};
    if (isHole)
    {
        std::swap(corners[1], corners[3]);
    }
    return corners;
}

/// A square of side 1 with a square hole of side 0.5 in its middle.
inline orvane::OutlineArea FrameArea(const char* material = "frame")
{
    return {{{SquareContour(0, 0, 1), SquareContour(0.25, 0.25, 0.5, true)}}, NamedColor(material)};
}

/// The square that fills the hole of FrameArea.
inline orvane::OutlineArea FillingArea(const char* material = "filling")
{
    return {{{SquareContour(0.25, 0.25, 0.5)}}, NamedColor(material)};
}
