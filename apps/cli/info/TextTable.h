// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace orvane
{

/// Rows of cells (UTF-8) in columns that are as wide as their widest cell, for a terminal.
class TextTable
{
public:
    void Add(std::vector<std::string> cells) { rows_.push_back({std::move(cells), false}); }

    /// A row of a first cell and a text behind it that takes no part in the columns.
    void AddLine(std::string first, std::string text)
    {
        rows_.push_back({{std::move(first), std::move(text)}, true});
    }

    /// Each row on a line, indented; no spaces at the ends.
    std::string Text() const;

private:
    struct Row
    {
        std::vector<std::string> cells;
        bool spans;  // the last cell
    };
    std::vector<Row> rows_;
};

}  // namespace orvane
