// SPDX-License-Identifier: MIT
#include "apps/cli/info/TextTable.h"

#include <utf8.h>

#include <algorithm>

namespace orvane
{

namespace
{

constexpr std::size_t gap = 2;  // spaces before each column

std::size_t Width(const std::string& text)
{
    return static_cast<std::size_t>(utf8::distance(text.begin(), text.end()));
}

}  // namespace

std::string TextTable::Text() const
{
    std::vector<std::size_t> widths;
    for (const Row& row : rows_)
    {
        const std::size_t count = row.cells.size() - (row.spans ? 1 : 0);
        widths.resize(std::max(widths.size(), count));
        for (std::size_t i = 0; i < count; ++i)
        {
            widths[i] = std::max(widths[i], Width(row.cells[i]));
        }
    }
    std::string text;
    for (const Row& row : rows_)
    {
        for (std::size_t i = 0; i < row.cells.size(); ++i)
        {
            const std::string& cell = row.cells[i];
            text.append(gap, ' ');
            text += cell;
            if (i + 1 < row.cells.size())
            {
                text.append(widths[i] - Width(cell), ' ');
            }
        }
        text.erase(text.find_last_not_of(' ') + 1);
        text += '\n';
    }
    return text;
}

}  // namespace orvane
