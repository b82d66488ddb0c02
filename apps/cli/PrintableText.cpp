// SPDX-License-Identifier: MIT
#include "apps/cli/PrintableText.h"

#include "platform/Utf8.h"

#include <utf8.h>

#include <cstdio>
#include <iterator>

namespace orvane
{

namespace
{

/// Whether a character does something to the text around it instead of being seen.
bool ControlsText(char32_t character)
{
    const auto isBetween = [character](char32_t first, char32_t last) {
        return character >= first && character <= last;
    };
    const bool isControl = character < 0x20 || isBetween(0x7F, 0x9F);
    const bool separates = isBetween(0x2028, 0x2029);
    const bool changesDirection = character == 0x061C || isBetween(0x200E, 0x200F) ||
                                  isBetween(0x202A, 0x202E) || isBetween(0x2066, 0x2069);
    return isControl || separates || changesDirection;
}

}  // namespace

std::string Printable(std::string_view text, std::string_view marked)
{
    std::string printable;
    ForEachCharacter(text, [&printable, marked](char32_t character) {
        if (character == '\n' || character == '\r')
        {
            printable += character == '\n' ? "\\n" : "\\r";
        }
        else if (ControlsText(character))
        {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(character));
            printable += escaped;
        }
        else
        {
            const bool isMarked = character < 0x80 && marked.find(static_cast<char>(character)) !=
                                                          std::string_view::npos;
            printable += isMarked ? "\\" : "";
            utf8::unchecked::append(character, std::back_inserter(printable));
        }
    });
    return printable;
}

}  // namespace orvane
