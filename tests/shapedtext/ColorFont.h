// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/FontFile.h"

#include <initializer_list>

/// A font whose letter H has two coloured layers: a square of 0.5 ems, and on it a triangle, half
/// of a square of 0.3 ems. Letter O is the triangle in one colour. \param top the second layer's
/// colour: 0 is opaque red, 1 green with an opacity of 51/255, and 0xFFFF that of the text
inline FontFile ColorFont(int top = 1)
{
    const auto words = [](std::initializer_list<int> values) {
        FontFile::Table table;
        for (const int value : values)
        {
            table.push_back(static_cast<std::uint8_t>(value >> 8));
            table.push_back(static_cast<std::uint8_t>(value));
        }
        return table;
    };
    // Glyph 9 has the layers 9 and 16.
    const FontFile::Table layers = words({0, 1, 0, 14, 0, 20, 2, 9, 0, 2, 9, 0, 16, top});
    // Blue, green, red and alpha of two colours.
    const FontFile::Table palette = words({0, 2, 1, 2, 0, 14, 0, 0, 0xFFFF, 0x00FF, 0x0033});
    FontFile font = FontFile::EdgeTest();
    return font.Names("Colors", "Regular", "Colors", "Colors")
        .Put("COLR", layers)
        .Put("CPAL", palette);
}
