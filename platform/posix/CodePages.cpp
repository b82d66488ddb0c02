// SPDX-License-Identifier: MIT
#include "platform/CodePages.h"

#include "platform/Fonts.h"
#include "platform/posix/TextConversion.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <iterator>
#include <optional>

namespace
{

std::atomic<UINT> processCodePage = 1252;

}  // namespace

CodePageText Utf8ToCodePage(std::string_view utf8, UINT codePage)
{
    CodePageText result;
    for (const char32_t character : posix::CharactersOf(utf8))
    {
        const std::optional<char> code = posix::CodeOf(character, codePage);
        if (!code)
        {
            posix::AppendUtf8(result.misfit, character);
            break;
        }
        result.text += *code;
    }
    return result;
}

CodePageChoice FindCodePage(std::string_view utf8)
{
    std::array<bool, offeredCodePages.size()> possible;
    possible.fill(true);
    for (const char32_t character : posix::CharactersOf(utf8))
    {
        for (std::size_t page = 0; page < possible.size(); ++page)
        {
            possible[page] = possible[page] && posix::CodeOf(character, offeredCodePages[page]);
        }
        if (std::find(possible.begin(), possible.end(), true) == possible.end())
        {
            CodePageChoice none;
            posix::AppendUtf8(none.misfit, character);
            return none;
        }
    }
    const auto first = std::find(possible.begin(), possible.end(), true);
    return {offeredCodePages[std::distance(possible.begin(), first)], {}};
}

std::string CodePageToUtf8(std::string_view text, UINT codePage)
{
    std::string utf8;
    for (const char c : text)
    {
        posix::AppendUtf8(utf8, posix::CharacterOf(static_cast<BYTE>(c), codePage));
    }
    return utf8;
}

BOOL SetProcessCodePage(UINT codePage)
{
    if (!posix::IsOfferedCodePage(codePage))
    {
        return FALSE;
    }
    processCodePage = codePage;
    return TRUE;
}

UINT GetACP()
{
    return processCodePage;
}
