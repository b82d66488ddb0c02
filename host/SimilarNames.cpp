// SPDX-License-Identifier: MIT
#include "host/SimilarNames.h"

#include "host/AsciiCase.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace orvane
{

namespace
{

/// The number of single-character changes that turn one text into the other.
std::size_t Distance(const std::string& a, const std::string& b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i)
    {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j)
        {
            const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({row[j] + 1, row[j + 1] + 1, replaced});
        }
    }
    return row.back();
}

}  // namespace

std::vector<std::string> SimilarNames(const std::string& name,
                                      const std::vector<std::string>& names, std::size_t count)
{
    std::vector<std::pair<std::size_t, std::string>> ranked;
    const std::string wanted = LowerAscii(name);
    for (const std::string& candidate : names)
    {
        const std::string lower = LowerAscii(candidate);
        // A name that contains the wanted text is more similar than a name that is spelled almost
        // like it.
        const std::size_t found = lower.find(wanted);
        ranked.emplace_back(found == std::string::npos ? 100 + Distance(wanted, lower) : found,
                            candidate);
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> similar;
    for (std::size_t i = 0; i < ranked.size() && i < count; ++i)
    {
        similar.push_back(ranked[i].second);
    }
    return similar;
}

}  // namespace orvane
