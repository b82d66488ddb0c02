// SPDX-License-Identifier: MIT
#include "shaping/LineBreaks.h"

extern "C"
{
#include <linebreak.h>
}

namespace orvane
{
namespace
{

/// The text with others of the same rules in place of the characters on which libunibreak 1.1 ends
/// the process: U+FFFF, and the letters of flags, of which two are one picture.
std::vector<utf32_t> Known(std::u32string_view text)
{
    constexpr utf32_t picture = 0x4E00;
    constexpr utf32_t mark = 0x301;
    constexpr utf32_t replacement = 0xFFFD;
    std::vector<utf32_t> known(text.begin(), text.end());
    bool isInFlag = false;
    for (utf32_t& character : known)
    {
        const bool isFlagLetter = character >= 0x1F1E6 && character <= 0x1F1FF;
        if (isFlagLetter)
        {
            character = isInFlag ? mark : picture;
        }
        else if (character == 0xFFFF)
        {
            character = replacement;
        }
        isInFlag = isFlagLetter && !isInFlag;
    }
    return known;
}

}  // namespace

std::vector<bool> FindLineBreaks(std::u32string_view paragraph, const std::string& language)
{
    static const bool isReady = [] {
        init_linebreak();
        return true;
    }();
    static_cast<void>(isReady);
    const std::vector<utf32_t> characters = Known(paragraph);
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
