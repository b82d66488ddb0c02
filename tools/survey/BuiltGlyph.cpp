// SPDX-License-Identifier: MIT
#include "tools/survey/BuiltGlyph.h"

#include "contours/Areas.h"
#include "extrude/OrvGlyph.h"
#include "outline/TTGlyph.h"
#include "platform/OpenGL.h"
#include "platform/posix/fonts/GlyphPolygons.h"

#include <algorithm>
#include <cmath>

using namespace orvane::contours;

namespace
{

using Contours = std::vector<std::vector<DoublePoint>>;

Contours ContoursOf(const OrvGlyph& glyph)
{
    Contours contours;
    for (int k = 0; k < glyph.GetContourCount(); ++k)
    {
        const TTPolyContour contour = glyph.contours.GetAt(k);
        std::vector<DoublePoint>& places = contours.emplace_back();
        for (int i = 0; i < contour.GetVertexCount(); ++i)
        {
            const Vector point = contour.GetVertexOutlinePoint(i);
            places.push_back({point.x, point.y});
        }
    }
    return contours;
}

double CapArea(const OrvGlyph& glyph)
{
    double twice = 0;
    for (int n = 0; n < glyph.facePolygons.GetSize(); ++n)
    {
        const VertexIndexPolygon& polygon = *glyph.facePolygons.GetElement(n);
        const auto at = [&](int i) { return glyph.vertices.GetAt(polygon.GetAt(i)).GetPoint(); };
        for (int i = 2; i < polygon.GetSize(); i += polygon.GetType() == GL_TRIANGLES ? 3 : 1)
        {
            const Vector2D a = at(polygon.GetType() == GL_TRIANGLE_FAN ? 0 : i - 2);
            const Vector2D b = at(i - 1);
            const Vector2D c = at(i);
            twice += std::fabs((double{b.x} - a.x) * (double{c.y} - a.y) -
                               (double{b.y} - a.y) * (double{c.x} - a.x));
        }
    }
    return twice / 2;
}

/// Whether a place is filled by the odd rule.
bool IsFilled(const Contours& contours, const DoublePoint& place)
{
    bool filled = false;
    for (const std::vector<DoublePoint>& contour : contours)
    {
        for (std::size_t i = 0; i < contour.size(); ++i)
        {
            const DoublePoint& a = contour[i];
            const DoublePoint& b = contour[i + 1 < contour.size() ? i + 1 : 0];
            if ((a.y > place.y) != (b.y > place.y) &&
                place.x < a.x + (place.y - a.y) * (b.x - a.x) / (b.y - a.y))
            {
                filled = !filled;
            }
        }
    }
    return filled;
}

/// The length of a contour's edges that have the filled area on their left only, less the length of
/// those that have it on their right only. The nine longest edges are looked at.
double WrongLength(const Contours& contours, const std::vector<DoublePoint>& contour)
{
    constexpr double aside = 0.02;
    const std::size_t count = contour.size();
    const auto next = [&](std::size_t i) { return i + 1 < count ? i + 1 : 0; };
    std::vector<double> lengths(count);
    std::vector<std::size_t> longest(count);
    for (std::size_t i = 0; i < count; ++i)
    {
        lengths[i] =
            std::hypot(contour[next(i)].x - contour[i].x, contour[next(i)].y - contour[i].y);
        longest[i] = i;
    }
    std::sort(longest.begin(), longest.end(),
              [&](std::size_t a, std::size_t b) { return lengths[a] > lengths[b]; });
    longest.resize(std::min<std::size_t>(longest.size(), 9));
    double wrong = 0;
    for (const std::size_t i : longest)
    {
        const DoublePoint& a = contour[i];
        const DoublePoint& b = contour[next(i)];
        const double size = lengths[i];
        if (size == 0)
        {
            continue;
        }
        const DoublePoint middle = {(a.x + b.x) / 2, (a.y + b.y) / 2};
        const DoublePoint left = {-(b.y - a.y) / size * aside, (b.x - a.x) / size * aside};
        const bool onLeft = IsFilled(contours, {middle.x + left.x, middle.y + left.y});
        const bool onRight = IsFilled(contours, {middle.x - left.x, middle.y - left.y});
        wrong += onLeft == onRight ? 0 : onLeft ? size : -size;
    }
    return wrong;
}

}  // namespace

BuiltGlyph::BuiltGlyph(const NativeOutline& outline, int unitsPerEm)
{
    std::vector<BYTE> bytes = posix::NativePolygons(outline);
    TTGlyph native;
    native.FromGlyphOutline(bytes.data(), bytes.size());
    OrvGlyph glyph(bytes.size(), GLYPHMETRICS{});
    glyph.ConstructGlyph(native, static_cast<float>(unitsPerEm));

    const Contours contours = ContoursOf(glyph);
    capArea = CapArea(glyph);
    const double area = NonZeroArea(FlattenAndSeparate(outline, unitsPerEm));
    hasNoCaps = glyph.facePolygons.GetSize() == 0 && glyph.vertices.GetSize() > 2 && area > 0.5;
    hasFalseHoles = !hasNoCaps && std::fabs(capArea - area) > 0.001 * std::max(area, capArea);
    for (const std::vector<DoublePoint>& contour : contours)
    {
        contourCount += contour.empty() ? 0 : 1;
        wrongContours += WrongLength(contours, contour) > 0 ? 1 : 0;
    }
}
