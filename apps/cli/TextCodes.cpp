// SPDX-License-Identifier: MIT
#include "apps/cli/TextCodes.h"

#include "apps/cli/Errors.h"
#include "platform/CodePages.h"
#include "platform/Fonts.h"

CString ChooseCodePage(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
    {
        text += text.empty() && &line == &lines.front() ? line : "\r\n" + line;
    }
    const CodePageChoice choice = FindCodePage(text);
    if (choice.codePage == 0)
    {
        throw Failure("text: no code page holds \"" + choice.misfit +
                      "\" together with the characters before it (a text is western, central "
                      "European, Baltic, Turkish, Cyrillic or Greek)");
    }
    SetProcessCodePage(choice.codePage);
    return CString(Utf8ToCodePage(text, choice.codePage).text);
}

std::string ToUtf8(const char* text)
{
    return CodePageToUtf8(text, GetACP());
}
