// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace orvane
{

/// Rows of cells, printed in columns. A column has as many characters as its widest cell. Cells
/// must be valid UTF-8; Quoted (apps/cli/info/JsonWriter.h) makes any text valid.
class TextTable
{
public:
    void Add(std::vector<std::string> cells) { rows_.push_back({std::move(cells), false}); }

    /// Adds a row of a cell and a text. The text does not widen any column.
    void AddLine(std::string first, std::string text)
    {
        rows_.push_back({{std::move(first), std::move(text)}, true});
    }

    /// Each row on an indented line, without spaces at its end.
    std::string Text() const;

private:
    struct Row
    {
        std::vector<std::string> cells;
        bool spans;  // whether the last cell does not widen its column
    };
    std::vector<Row> rows_;
};

}  // namespace orvane
