// SPDX-License-Identifier: MIT
// Reads the input as an SVG file and tests what every drawing promises.
#include "fuzz/Check.h"
#include "orvane/Error.h"
#include "platform/Limits.h"
#include "shapes/SvgFile.h"

#include <cmath>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

namespace
{

void CheckContour(const orvane::shapes::Contour& contour)
{
    Check(contour.size() > 2, "a contour has three corners");
    std::set<std::pair<double, double>> corners;
    for (const orvane::contours::DoublePoint& corner : contour)
    {
        Check(std::isfinite(corner.x) && std::isfinite(corner.y), "corners are finite");
        Check(corners.emplace(corner.x, corner.y).second, "a contour passes a corner once");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    const std::string_view text(reinterpret_cast<const char*>(bytes), count);
    try
    {
        const orvane::SvgDrawing drawing = orvane::ReadSvg(text, "input.svg");
        Check(std::isfinite(drawing.width) && drawing.width > 0, "a drawing has a width");
        Check(drawing.notices.size() <= orvane::limits::maxSvgNotices + 1, "notices are limited");
        std::set<std::tuple<int, int, int, int>> colors;
        for (const orvane::SvgShape& shape : drawing.shapes)
        {
            const orvane::SvgColor& color = shape.color;
            Check(colors.emplace(color.red, color.green, color.blue, color.alpha).second,
                  "each colour has one shape");
            Check(color.alpha > 0, "shapes can be seen");
            double area = 0;
            for (const orvane::shapes::Contour& contour : shape.contours)
            {
                CheckContour(contour);
                area += orvane::shapes::SignedArea(contour);
            }
            Check(area > 0, "a shape has an area");
        }
    }
    catch (const orvane::Error&)
    {}
    return 0;
}
