// SPDX-License-Identifier: MIT
#include "shapes/SvgElements.h"

#include <algorithm>
#include <array>

namespace orvane::shapes
{

using contours::DoublePoint;

namespace
{

Path EllipseAround(const DoublePoint& center, double rx, double ry)
{
    Path path;
    if (rx > 0 && ry > 0)
    {
        path.MoveTo({center.x + rx, center.y});
        path.ArcTo({rx, ry}, 0, false, true, {center.x - rx, center.y});
        path.ArcTo({rx, ry}, 0, false, true, {center.x + rx, center.y});
        path.Close();
    }
    return path;
}

Path CirclePath(const SvgDocument& document, pugi::xml_node element, const SvgViewport& viewport,
                SegmentLimit&)
{
    const double radius = document.SizeOf(element, "r", viewport.Diagonal(), 0);
    return EllipseAround({document.LengthOf(element, "cx", viewport.width, 0),
                          document.LengthOf(element, "cy", viewport.height, 0)},
                         radius, radius);
}

Path EllipsePath(const SvgDocument& document, pugi::xml_node element, const SvgViewport& viewport,
                 SegmentLimit&)
{
    return EllipseAround({document.LengthOf(element, "cx", viewport.width, 0),
                          document.LengthOf(element, "cy", viewport.height, 0)},
                         document.SizeOf(element, "rx", viewport.width, 0),
                         document.SizeOf(element, "ry", viewport.height, 0));
}

/// A corner radius; -1 when there is none or it is "auto".
double RadiusOf(const SvgDocument& document, pugi::xml_node element, const char* attribute,
                double whole)
{
    const bool isGiven =
        element.attribute(attribute) && Trimmed(element.attribute(attribute).value()) != "auto";
    return isGiven ? document.SizeOf(element, attribute, whole, 0) : -1;
}

Path RectanglePath(const SvgDocument& document, pugi::xml_node element, const SvgViewport& viewport,
                   SegmentLimit&)
{
    const double left = document.LengthOf(element, "x", viewport.width, 0);
    const double top = document.LengthOf(element, "y", viewport.height, 0);
    const double width = document.SizeOf(element, "width", viewport.width, 0);
    const double height = document.SizeOf(element, "height", viewport.height, 0);
    const double horizontal = RadiusOf(document, element, "rx", viewport.width);
    const double vertical = RadiusOf(document, element, "ry", viewport.height);
    // A single radius holds for both directions, and without any the corners are square.
    const double rx = std::min(horizontal >= 0 ? horizontal : std::max(vertical, 0.0), width / 2);
    const double ry = std::min(vertical >= 0 ? vertical : std::max(horizontal, 0.0), height / 2);
    Path path;
    if (width == 0 || height == 0)
    {
        return path;
    }
    const double right = left + width;
    const double bottom = top + height;
    path.MoveTo({left + rx, top});
    path.LineTo({right - rx, top});
    path.ArcTo({rx, ry}, 0, false, true, {right, top + ry});
    path.LineTo({right, bottom - ry});
    path.ArcTo({rx, ry}, 0, false, true, {right - rx, bottom});
    path.LineTo({left + rx, bottom});
    path.ArcTo({rx, ry}, 0, false, true, {left, bottom - ry});
    path.LineTo({left, top + ry});
    path.ArcTo({rx, ry}, 0, false, true, {left + rx, top});
    path.Close();
    return path;
}

Path LinePath(const SvgDocument& document, pugi::xml_node element, const SvgViewport& viewport,
              SegmentLimit&)
{
    Path path;
    path.MoveTo({document.LengthOf(element, "x1", viewport.width, 0),
                 document.LengthOf(element, "y1", viewport.height, 0)});
    path.LineTo({document.LengthOf(element, "x2", viewport.width, 0),
                 document.LengthOf(element, "y2", viewport.height, 0)});
    return path;
}

Path PolylinePath(const SvgDocument& document, pugi::xml_node element, const SvgViewport&,
                  SegmentLimit& limit)
{
    const std::vector<double> numbers =
        document.ParseAttribute(element, "points", [](std::string_view text) {
            std::vector<double> points = ParseNumbers(text);
            if (points.size() % 2 != 0)
            {
                throw SvgSyntaxError(text.size(), "an odd number of coordinates",
                                     "an x and a y for each point");
            }
            return points;
        });
    const std::size_t points = numbers.size() / 2;
    limit.Add(static_cast<double>(points));
    Path path;
    for (std::size_t i = 0; i + 1 < numbers.size(); i += 2)
    {
        const DoublePoint point = {numbers[i], numbers[i + 1]};
        if (i == 0)
        {
            path.MoveTo(point);
        }
        else
        {
            path.LineTo(point);
        }
    }
    return path;
}

Path PolygonPath(const SvgDocument& document, pugi::xml_node element, const SvgViewport& viewport,
                 SegmentLimit& limit)
{
    Path path = PolylinePath(document, element, viewport, limit);
    path.Close();
    return path;
}

Path PathElementPath(const SvgDocument& document, pugi::xml_node element, const SvgViewport&,
                     SegmentLimit& limit)
{
    return document.ParseAttribute(
        element, "d", [&limit](std::string_view text) { return ParsePathData(text, limit); });
}

struct PathElement
{
    std::string_view name;
    Path (*path)(const SvgDocument& document, pugi::xml_node element, const SvgViewport& viewport,
                 SegmentLimit& limit);
};

constexpr std::array<PathElement, 7> pathElements = {{{"path", PathElementPath},
                                                      {"rect", RectanglePath},
                                                      {"circle", CirclePath},
                                                      {"ellipse", EllipsePath},
                                                      {"line", LinePath},
                                                      {"polyline", PolylinePath},
                                                      {"polygon", PolygonPath}}};

const PathElement* FindPathElement(std::string_view name)
{
    const auto found = std::find_if(pathElements.begin(), pathElements.end(),
                                    [&](const PathElement& known) { return known.name == name; });
    return found == pathElements.end() ? nullptr : &*found;
}

}  // namespace

bool DrawsPath(std::string_view name)
{
    return FindPathElement(name) != nullptr;
}

Path PathOf(const SvgDocument& document, pugi::xml_node element, const SvgViewport& viewport)
{
    SegmentLimit limit;
    limit.SetPlace(document.PlaceOf(element));
    return FindPathElement(document.NameOf(element))->path(document, element, viewport, limit);
}

}  // namespace orvane::shapes
