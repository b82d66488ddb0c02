// SPDX-License-Identifier: MIT
#include "platform/Limits.h"
#include "platform/posix/text/FaceProperties.h"

namespace posix
{

std::vector<orvane::ColorLayer> ColorLayersOf(hb_face_t* face, std::uint32_t glyph)
{
    constexpr unsigned textColor = 0xFFFF;
    const unsigned count = hb_ot_color_glyph_get_layers(face, glyph, 0, nullptr, nullptr);
    if (count > orvane::limits::maxColorLayers)
    {
        return {};
    }
    std::vector<orvane::ColorLayer> layers;
    for (unsigned n = 0; n < count; ++n)
    {
        hb_ot_color_layer_t found = {};
        unsigned one = 1;
        hb_ot_color_glyph_get_layers(face, glyph, n, &one, &found);
        orvane::ColorLayer layer;
        layer.glyph = found.glyph;
        layer.usesTextColor = found.color_index == textColor;
        if (!layer.usesTextColor)
        {
            hb_color_t color = 0;
            one = 1;
            hb_ot_color_palette_get_colors(face, 0, found.color_index, &one, &color);
            if (one == 0)
            {
                return {};
            }
            layer.red = hb_color_get_red(color) / 255.0;
            layer.green = hb_color_get_green(color) / 255.0;
            layer.blue = hb_color_get_blue(color) / 255.0;
            layer.alpha = hb_color_get_alpha(color) / 255.0;
        }
        layers.push_back(layer);
    }
    return layers;
}

}  // namespace posix
