// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Fonts.h"
#include "platform/ShapingFace.h"
#include "profiles/PlaneRegion.h"

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace orvane
{

/// The part of a coloured glyph that is seen in one colour.
struct ColorArea
{
    ColorLayer color;    ///< its glyph has no meaning
    PlaneRegion region;  ///< in ems; no two areas of a glyph overlap
};

/// The parts of coloured glyphs, for all texts. Only one thread at a time may use an object.
class ColorGlyphs
{
public:
    /// The areas of a glyph, from the colour of its lowest layer to that of its highest. Empty for
    /// a glyph of one colour, and for one whose layers cannot be read or cut.
    /// \param font of the face, at one pixel per design unit
    const std::vector<ColorArea>& AreasOf(const ShapingFace& face, std::uint32_t glyph, HFONT font);

private:
    std::map<std::pair<std::uint64_t, std::uint32_t>, std::vector<ColorArea>> known_;
};

}  // namespace orvane
