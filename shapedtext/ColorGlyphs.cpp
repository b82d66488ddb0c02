// SPDX-License-Identifier: MIT
#include "shapedtext/ColorGlyphs.h"

#include "extrude/OrvGlyph.h"
#include "orvane/Error.h"
#include "platform/Limits.h"
#include "shapedtext/GlyphBuilding.h"
#include "shapes/Layers.h"

#include <algorithm>
#include <memory>

namespace orvane
{

namespace
{

/// Glyphs whose areas are kept. A picture character takes some kilobytes.
constexpr std::size_t mostGlyphs = 1'000;
/// Ems: the grid to which the corners of areas are rounded.
constexpr double gridStep = 1.0 / 8192;

bool HaveSameColor(const ColorLayer& a, const ColorLayer& b)
{
    return a.usesTextColor == b.usesTextColor && a.red == b.red && a.green == b.green &&
           a.blue == b.blue && a.alpha == b.alpha;
}

std::vector<ColorArea> CutIntoAreas(const ShapingFace& face, std::uint32_t glyph, HFONT font)
{
    std::vector<ColorArea> areas;
    std::vector<shapes::Layer> layers;
    for (const ColorLayer& layer : face.ColorLayers(glyph))
    {
        if (layer.alpha == 0)
        {
            continue;
        }
        const std::unique_ptr<OrvGlyph> built =
            BuildGlyph(layer.glyph, font, face.Metrics().unitsPerEm);
        if (built->IsInvalid())
        {
            return {};
        }
        const auto known = std::find_if(
            areas.begin(), areas.end(),
            [&layer](const ColorArea& area) { return HaveSameColor(area.color, layer); });
        shapes::Layer& added = layers.emplace_back();
        added.contours = RegionOf(*built).contours;
        added.color = static_cast<int>(known - areas.begin());
        if (known == areas.end())
        {
            areas.push_back({layer, {}});
        }
    }
    shapes::WorkLimit work("a coloured glyph", limits::maxEdgeComparisons);
    std::vector<shapes::Contours> visible =
        shapes::VisibleAreas(layers, {}, areas.size(), gridStep, work);
    for (std::size_t i = 0; i < areas.size(); ++i)
    {
        areas[i].region.contours = std::move(visible[i]);
    }
    std::erase_if(areas, [](const ColorArea& area) { return area.region.contours.empty(); });
    return areas;
}

}  // namespace

const std::vector<ColorArea>& ColorGlyphs::AreasOf(const ShapingFace& face, std::uint32_t glyph,
                                                   HFONT font)
{
    const auto found = known_.find({face.Id(), glyph});
    if (found != known_.end())
    {
        return found->second;
    }
    if (known_.size() == mostGlyphs)
    {
        known_.clear();
    }
    std::vector<ColorArea>& areas = known_[{face.Id(), glyph}];
    try
    {
        areas = CutIntoAreas(face, glyph, font);
    }
    catch (const Error&)
    {
        areas.clear();  // too much work: the glyph has one colour
    }
    return areas;
}

}  // namespace orvane
