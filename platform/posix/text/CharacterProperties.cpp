// SPDX-License-Identifier: MIT
#include "platform/ShapingFace.h"

#include <hb.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>

static_assert(orvane::commonScript == HB_SCRIPT_COMMON);
static_assert(orvane::inheritedScript == HB_SCRIPT_INHERITED);
static_assert(orvane::unknownScript == HB_SCRIPT_UNKNOWN);

namespace orvane
{

ScriptTag ScriptOf(char32_t character)
{
    return hb_unicode_script(hb_unicode_funcs_get_default(), character);
}

std::optional<ScriptTag> ParseScript(std::string_view letters)
{
    const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
    if (letters.size() != 4 || !std::all_of(letters.begin(), letters.end(), isLetter))
    {
        return std::nullopt;
    }
    return hb_script_from_string(letters.data(), 4);
}

bool IsMark(char32_t character)
{
    const hb_unicode_general_category_t category =
        hb_unicode_general_category(hb_unicode_funcs_get_default(), character);
    return category == HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK ||
           category == HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK ||
           category == HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK;
}

bool IsIgnorable(char32_t c)
{
    // HarfBuzz makes the same characters invisible, except for the fillers, which fonts have to
    // leave empty themselves.
    constexpr struct
    {
        char32_t first;
        char32_t last;
    } ranges[] = {{0xAD, 0xAD},      {0x34F, 0x34F},   {0x61C, 0x61C},   {0x17B4, 0x17B5},
                  {0x180B, 0x180F},  {0x200B, 0x200F}, {0x202A, 0x202E}, {0x2060, 0x206F},
                  {0xFE00, 0xFE0F},  {0xFEFF, 0xFEFF}, {0xFFF0, 0xFFF8}, {0x1D173, 0x1D17A},
                  {0xE0000, 0xE0FFF}};
    return c >= 0xAD && std::any_of(std::begin(ranges), std::end(ranges), [c](const auto& range) {
               return c >= range.first && c <= range.last;
           });
}

std::string UserLanguage()
{
    for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"})
    {
        const char* const value = std::getenv(variable);
        if (value == nullptr || *value == '\0')
        {
            continue;
        }
        std::string language(value);
        language.erase(std::min(language.find_first_of(".@"), language.size()));
        if (language == "C" || language == "POSIX")
        {
            return {};
        }
        for (char& c : language)
        {
            c = c == '_' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
        return language;
    }
    return {};
}

}  // namespace orvane
