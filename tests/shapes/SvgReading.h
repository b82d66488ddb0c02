// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Error.h"
#include "shapes/SvgFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

/// Reads elements inside of a picture of 10 by 10 units, so that an em has 10 of them.
inline orvane::SvgDrawing ReadElements(const std::string& elements,
                                       const orvane::SvgOptions& options = {})
{
    return orvane::ReadSvg("<svg viewBox=\"0 0 10 10\">" + elements + "</svg>", "test.svg",
                           options);
}

/// The area of a shape, in squares of the 100 that fill the picture of ReadElements.
inline double AreaOf(const orvane::SvgShape& shape)
{
    double area = 0;
    for (const orvane::shapes::Contour& contour : shape.contours)
    {
        area += orvane::shapes::SignedArea(contour);
    }
    return 100 * area;
}

/// The area of the shape of a colour; 0 when there is none.
inline double AreaOf(const orvane::SvgDrawing& drawing, const orvane::SvgColor& color)
{
    for (const orvane::SvgShape& shape : drawing.shapes)
    {
        if (shape.color == color)
        {
            return AreaOf(shape);
        }
    }
    return 0;
}

/// The area of black that elements draw.
inline double BlackArea(const std::string& elements)
{
    return AreaOf(ReadElements(elements), orvane::SvgColor());
}

/// The corners of a contour in units of ReadElements' picture with y downward, rounded to a
/// thousandth and sorted, as in "1,2 3,2".
inline std::string CornersOf(const orvane::shapes::Contour& contour)
{
    std::vector<std::pair<double, double>> corners;
    for (const orvane::contours::DoublePoint& corner : contour)
    {
        corners.emplace_back(std::round(corner.x * 1e4) / 1e3,
                             std::round((1 - corner.y) * 1e4) / 1e3);
    }
    std::sort(corners.begin(), corners.end());
    std::string text;
    for (const auto& [x, y] : corners)
    {
        char place[64];
        std::snprintf(place, sizeof place, "%s%g,%g", text.empty() ? "" : " ", x + 0.0, y + 0.0);
        text += place;
    }
    return text;
}

/// The text of the Error that reading bytes throws; empty when it throws none.
inline std::string ErrorOf(const std::string& bytes)
{
    try
    {
        orvane::ReadSvg(bytes, "test.svg");
    }
    catch (const orvane::Error& error)
    {
        return error.what();
    }
    return "";
}

constexpr orvane::SvgColor red = {255, 0, 0, 255};
constexpr orvane::SvgColor lime = {0, 255, 0, 255};
constexpr orvane::SvgColor blue = {0, 0, 255, 255};
constexpr orvane::SvgColor black = {0, 0, 0, 255};
