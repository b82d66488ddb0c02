// SPDX-License-Identifier: MIT
// Compares SVG files, as they are read and as they are drawn as solids, with their pictures by
// another program.
//
// usage: judge-svg < LIST
// Each line of LIST has an SVG file, a scene that the tool has made of it, a file with the pixels
// of its picture (red, green, blue and alpha, a byte each, from the upper left), and the picture's
// width and height. For each line, the program prints: the pixels, those whose silhouettes differ
// as areas, those whose silhouettes differ as solids, those whose colours differ, the milliseconds
// that reading took, the number of notices, and the SVG file.
//
// The areas are sampled at the middles of the pixels. The solids are drawn from the front without
// perspective, one sample a pixel, before two backgrounds: a pixel belongs to them unless each
// picture has the colour of its background there. So partly transparent solids count as well. A
// pixel belongs to the silhouette of the other program's picture when its alpha is at least a half.
// An alpha from 120 to 135 agrees with both: an edge passes through the middle of such a pixel, and
// rounding decides about the sample. Colours differ when the pixel belongs to the silhouettes of
// the areas and of the picture and some channel differs by more than 136: the picture mixes colours
// where an edge crosses a pixel, so up to half of the difference between two colours says nothing.
#include "document/SceneFraming.h"
#include "document/outlines/OutlineImport.h"
#include "orvane/DocumentAccess.h"
#include "orvane/orvane.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "solids/OrvOutlineShape.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
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

/// The pixels of a document's picture before a background: blue, green and red, from the lower
/// left, with rows of a whole number of 4 bytes.
std::string DrawnPixels(orvane::Document& document, unsigned background, const orvane::Size& size)
{
    const std::string path = "/tmp/judge-svg-" + std::to_string(getpid()) + ".bmp";
    orvane::BackgroundOptions colored;
    colored.color = orvane::Rgb(background);
    document.SetBackground(colored);
    orvane::PictureOptions options;
    options.size = size;
    options.samples = 1;
    orvane::WritePicture(document, path, options);
    std::ifstream file(path, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(file), {}};
    std::remove(path.c_str());
    std::uint32_t firstPixel = 0;
    std::memcpy(&firstPixel, bytes.data() + 10, sizeof firstPixel);
    return bytes.substr(firstPixel);
}

/// Which pixels the solids of a scene cover, from the upper left, seen through a camera that shows
/// the viewBox of their file.
std::vector<bool> SilhouetteOf(const std::string& scene, int width, int height)
{
    orvane::Document document = orvane::Document::Open(scene);
    const auto& node = dynamic_cast<orvane::OrvOutlineShape&>(ObjectOf(document.Nodes().at(0)));
    orvane::contours::DoublePoint low = {1e9, 1e9};
    orvane::contours::DoublePoint high = {-1e9, -1e9};
    for (int area = 0; area < node.AreaCount(); ++area)
    {
        for (const orvane::shapes::Contour& contour : node.Region(area).contours)
        {
            for (const orvane::contours::DoublePoint& corner : contour)
            {
                low = {std::min(low.x, corner.x), std::min(low.y, corner.y)};
                high = {std::max(high.x, corner.x), std::max(high.y, corner.y)};
            }
        }
    }
    // The middle of the areas is the origin.
    const double x = 0.5 * width / height - (low.x + high.x) / 2;
    const double y = 0.5 - (low.y + high.y) / 2;
    ViewObject& view = ViewOf(document);
    CoordinateTransform camera;
    camera.Translate(DVector(-x, -y, -5.0));
    view.SetTransform(camera);
    view.SetUnscaledSize(width, height);
    view.SetViewSize(width, height);
    view.SetProjectionOrthographic();
    view.SetProjectionOrthographicWidth(static_cast<double>(width) / height);
    view.SetProjectionOrthographicHeight(1);
    view.SaveReferenceAspect();

    const orvane::Size size = {width, height};
    const std::string first = DrawnPixels(document, 0x00FF00, size);
    const std::string second = DrawnPixels(document, 0xFF00FF, size);
    const std::string green("\x00\xFF\x00", 3);
    const std::string magenta("\xFF\x00\xFF", 3);
    const std::size_t rowBytes = (3 * static_cast<std::size_t>(width) + 3) / 4 * 4;
    std::vector<bool> covered;
    for (int row = height - 1; row >= 0; --row)
    {
        for (int column = 0; column < width; ++column)
        {
            const std::size_t at = static_cast<std::size_t>(row) * rowBytes + 3 * column;
            covered.push_back(first.compare(at, 3, green) != 0 ||
                              second.compare(at, 3, magenta) != 0);
        }
    }
    return covered;
}

void Compare(const std::string& svg, const std::string& scene, const std::string& picture,
             int width, int height)
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
    const std::vector<bool> solid = SilhouetteOf(scene, width, height);
    int silhouettes = 0;
    int solids = 0;
    int colors = 0;
    for (std::size_t i = 0; i < found.size(); i += 4)
    {
        const bool isInside = found[i + 3] > 127;
        const bool isCutInHalf = expected[i + 3] >= 120 && expected[i + 3] <= 135;
        solids += solid[i / 4] != (expected[i + 3] > 127) && !isCutInHalf ? 1 : 0;
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
    std::printf("%d %d %d %d %.1f %zu %s\n", width * height, silhouettes, solids, colors,
                taken.count(), drawing.notices.size(), svg.c_str());
}

}  // namespace

int main()
{
    std::string svg;
    std::string scene;
    std::string picture;
    int width = 0;
    int height = 0;
    int status = 0;
    while (std::cin >> svg >> scene >> picture >> width >> height)
    {
        try
        {
            Compare(svg, scene, picture, width, height);
        }
        catch (const orvane::Error& error)
        {
            std::fprintf(stderr, "%s\n", error.what());
            status = 1;
        }
    }
    return status;
}
