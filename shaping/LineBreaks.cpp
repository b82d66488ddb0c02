// SPDX-License-Identifier: MIT
#include "shaping/LineBreaks.h"

extern "C"
{
#include <linebreak.h>
}

namespace orvane
{

std::vector<bool> FindLineBreaks(std::u32string_view paragraph, const std::string& language)
{
    static const bool isReady = [] {
        init_linebreak();
        return true;
    }();
    static_cast<void>(isReady);
    const std::vector<utf32_t> characters(paragraph.begin(), paragraph.end());
    std::vector<char> found(characters.size());
    if (!characters.empty())
    {
        set_linebreaks_utf32(characters.data(), characters.size(), language.c_str(), found.data());
    }
    std::vector<bool> breaks(found.size());
    for (std::size_t n = 0; n + 1 < found.size(); ++n)
    {
        breaks[n] = found[n] == LINEBREAK_MUSTBREAK || found[n] == LINEBREAK_ALLOWBREAK;
    }
    return breaks;
}

}  // namespace orvane
