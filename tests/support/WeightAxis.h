// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/FontFile.h"

inline void AppendWord(FontFile::Table& table, unsigned value)
{
    table.push_back(static_cast<std::uint8_t>(value >> 8));
    table.push_back(static_cast<std::uint8_t>(value));
}

inline void AppendFixed(FontFile::Table& table, int value)
{
    AppendWord(table, static_cast<unsigned>(value));
    AppendWord(table, 0);
}

/// A font variation table of one axis, wght from 100 to 900 with the default 400, and an instance
/// of weight 700 with the name of the font's style.
inline FontFile::Table WeightAxis()
{
    FontFile::Table table;
    for (const unsigned word : {1U, 0U, 16U, 2U, 1U, 20U, 1U, 8U})
    {
        AppendWord(table, word);
    }
    for (const char letter : {'w', 'g', 'h', 't'})
    {
        table.push_back(static_cast<std::uint8_t>(letter));
    }
    for (const int value : {100, 400, 900})
    {
        AppendFixed(table, value);
    }
    AppendWord(table, 0);
    AppendWord(table, 1);  // the axis has the name of the family
    AppendWord(table, 2);
    AppendWord(table, 0);
    AppendFixed(table, 700);
    return table;
}
