// SPDX-License-Identifier: MIT
// Compares SVG files, as they are read, with their pictures by another program.
//
// usage: judge-svg < LIST
// Each line of LIST has an SVG file, a file with the pixels of its picture (red, green, blue and
// alpha, a byte each, from the upper left), and the picture's width and height. For each line, the
// program prints: the pixels, those whose silhouettes differ, those whose colours differ, the
// milliseconds that reading took, the number of notices, and the SVG file.
//
// The shapes are sampled at the middles of the pixels. A pixel belongs to the silhouette of a
// picture when its alpha is at least a half. An alpha from 120 to 135 agrees with both: an edge
// passes through the middle of such a pixel, and rounding decides about the sample. Colours differ
// when the pixel belongs to both silhouettes and some channel differs by more than 136: the picture
// mixes colours where an edge crosses a pixel, so up to half of the difference between two colours
// says nothing.
#include "orvane/Error.h"
#include "shapes/SvgFile.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace
{

using Pixels = std::vector<unsigned char>;

/// Paints a shape into a picture by the even-odd rule. An em is \p height pixels.
void PaintShape(const orvane::SvgShape& shape, int width, int height, Pixels& pixels)
{
    std::vector<std::vector<double>> crossings(static_cast<std::size_t>(height));
    for (const orvane::shapes::Contour& contour : shape.contours)
    {
        for (std::size_t i = 0; i < contour.size(); ++i)
        {
            const auto a = contour[i] * static_cast<double>(height);
            const auto b =
                contour[i + 1 == contour.size() ? 0 : i + 1] * static_cast<double>(height);
            const int first = std::max(0, static_cast<int>(std::ceil(std::min(a.y, b.y) - 0.5)));
            for (int row = first; row < height && row + 0.5 < std::max(a.y, b.y); ++row)
            {
                crossings[row].push_back(a.x + (row + 0.5 - a.y) * (b.x - a.x) / (b.y - a.y));
            }
        }
    }
    for (int row = 0; row < height; ++row)
    {
        std::vector<double>& places = crossings[row];
        std::sort(places.begin(), places.end());
        for (std::size_t i = 0; i + 1 < places.size(); i += 2)
        {
            const int first = std::max(0, static_cast<int>(std::ceil(places[i] - 0.5)));
            for (int column = first; column < width && column + 0.5 < places[i + 1]; ++column)
            {
                unsigned char* const pixel =
                    &pixels[4 * (static_cast<std::size_t>(height - 1 - row) * width + column)];
                pixel[0] = shape.color.red;
                pixel[1] = shape.color.green;
                pixel[2] = shape.color.blue;
                pixel[3] = 255;
            }
        }
    }
}

void Compare(const std::string& svg, const std::string& picture, int width, int height)
{
    std::ifstream file(picture, std::ios::binary);
    const Pixels expected((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    Pixels found(4 * static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    if (expected.size() != found.size())
    {
        throw orvane::Error(picture, std::to_string(expected.size()) + " bytes",
                            std::to_string(found.size()));
    }
    const auto start = std::chrono::steady_clock::now();
    const orvane::SvgDrawing drawing = orvane::ReadSvgFile(svg);
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - start;
    for (const orvane::SvgShape& shape : drawing.shapes)
    {
        PaintShape(shape, width, height, found);
    }
    int silhouettes = 0;
    int colors = 0;
    for (std::size_t i = 0; i < found.size(); i += 4)
    {
        const bool isInside = found[i + 3] > 127;
        const bool isCutInHalf = expected[i + 3] >= 120 && expected[i + 3] <= 135;
        if (isInside != (expected[i + 3] > 127))
        {
            silhouettes += isCutInHalf ? 0 : 1;
        }
        else if (isInside)
        {
            bool differs = false;
            for (std::size_t channel = i; channel < i + 3; ++channel)
            {
                differs = differs || std::abs(int{found[channel]} - int{expected[channel]}) > 136;
            }
            colors += differs ? 1 : 0;
        }
    }
    std::printf("%d %d %d %.1f %zu %s\n", width * height, silhouettes, colors, taken.count(),
                drawing.notices.size(), svg.c_str());
}

}  // namespace

int main()
{
    std::string svg;
    std::string picture;
    int width = 0;
    int height = 0;
    int status = 0;
    while (std::cin >> svg >> picture >> width >> height)
    {
        try
        {
            Compare(svg, picture, width, height);
        }
        catch (const orvane::Error& error)
        {
            std::fprintf(stderr, "%s\n", error.what());
            status = 1;
        }
    }
    return status;
}
