// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Texts laid out with the fonts that every machine with the tests has, for tests.

#include "shaping/FontQuery.h"
#include "shaping/TextShaper.h"

#include <cmath>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// An installed face.
inline std::shared_ptr<const orvane::ShapingFace> InstalledFace(const std::string& name)
{
    orvane::FontQuery query;
    query.name = name;
    return orvane::OpenFont(query).face;
}

/// Options that set a text in one face alone.
inline orvane::LayoutOptions InFace(const std::string& name)
{
    orvane::LayoutOptions options;
    options.style.fonts.faces = {InstalledFace(name)};
    options.style.fonts.usesInstalledFonts = false;
    options.style.language = "en";
    return options;
}

/// The glyphs of a layout's only line in the form in which hb-shape writes them:
/// GLYPH=BYTE@X,Y+ADVANCE, in design units.
inline std::string AsHbShape(const orvane::TextLayout& layout)
{
    std::string text = "[";
    double pen = layout.lines.front().left;
    for (const orvane::PlacedGlyph& glyph : layout.glyphs)
    {
        const int units = layout.faces[glyph.face]->Metrics().unitsPerEm;
        const auto inUnits = [units](double ems) {
            return static_cast<int>(std::lround(ems * units));
        };
        text += text == "[" ? "" : "|";
        text += std::to_string(glyph.glyph) + "=" + std::to_string(glyph.textBegin);
        const int x = inUnits(glyph.x - pen);
        const int y = inUnits(glyph.y);
        text += x != 0 || y != 0 ? "@" + std::to_string(x) + "," + std::to_string(y) : "";
        text += "+" + std::to_string(inUnits(glyph.advance));
        pen += glyph.advance;
    }
    return text + "]";
}

/// The texts of a layout's lines.
inline std::vector<std::string> LinesOf(const orvane::TextLayout& layout, std::string_view text)
{
    std::vector<std::string> lines;
    for (const orvane::TextLine& line : layout.lines)
    {
        lines.emplace_back(text.substr(line.textBegin, line.textEnd - line.textBegin));
    }
    return lines;
}
