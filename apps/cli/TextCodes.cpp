// SPDX-License-Identifier: MIT
#include "apps/cli/TextCodes.h"

#include "apps/cli/Errors.h"
#include "platform/CodePages.h"
#include "platform/Fonts.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace
{

std::string Join(const std::vector<std::string>& lines, std::size_t count)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
    {
        text += i == 0 ? lines[i] : "\r\n" + lines[i];
    }
    return text;
}

/// The number, from 1, of the line at which the text fits no code page any more.
std::size_t LineOfMisfit(const std::vector<std::string>& lines)
{
    std::size_t fitting = 0;
    std::size_t misfit = lines.size();
    while (misfit - fitting > 1)
    {
        const std::size_t middle = (fitting + misfit) / 2;
        (FindCodePage(Join(lines, middle)).codePage != 0 ? fitting : misfit) = middle;
    }
    return misfit;
}

}  // namespace

std::vector<std::string> SplitLines(const std::string& text)
{
    std::vector<std::string> lines;
    bool open = false;  // whether the last line may get more characters
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (!open)
        {
            lines.emplace_back();
        }
        open = text[i] != '\n' && text[i] != '\r';
        if (open)
        {
            lines.back() += text[i] == '\t' ? "    " : std::string(1, text[i]);
        }
        else if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
        {
            ++i;
        }
    }
    return lines;
}

std::vector<std::string> ReadLines(const std::string& path)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                               std::fclose);
    std::string text;
    char block[4096];
    std::size_t count = 0;
    while (file && (count = std::fread(block, 1, sizeof block, file.get())) > 0)
    {
        text.append(block, count);
    }
    if (!file || std::ferror(file.get()) != 0)
    {
        throw Failure(path + ": " + std::strerror(errno));
    }
    if (text.starts_with("\xEF\xBB\xBF"))
    {
        text.erase(0, 3);
    }
    return SplitLines(text);
}

CString ChooseCodePage(const std::vector<std::string>& lines)
{
    const std::string text = Join(lines, lines.size());
    const CodePageChoice choice = FindCodePage(text);
    if (choice.codePage == 0)
    {
        const std::string where = "text, line " + std::to_string(LineOfMisfit(lines)) + ": ";
        if (choice.misfit == "\uFFFD")
        {
            throw Failure(where + "bytes that are not UTF-8, or U+FFFD");
        }
        const bool foreign = FindCodePage(choice.misfit).codePage == 0;
        throw Failure(where + "no code page holds " + Describe(choice.misfit) +
                      (foreign ? "" : " together with the characters before it") +
                      "; a text is western, central European, Baltic, Turkish, Cyrillic or Greek");
    }
    SetProcessCodePage(choice.codePage);
    const std::string bytes = Utf8ToCodePage(text, choice.codePage).text;
    return CString(bytes.data(), static_cast<int>(bytes.size()));
}

std::string ToUtf8(const char* text)
{
    return CodePageToUtf8(text, GetACP());
}

std::string Describe(const std::string& character)
{
    const auto lead = static_cast<unsigned char>(character[0]);
    unsigned number = character.size() == 1 ? lead : lead & (0x7Fu >> character.size());
    for (std::size_t i = 1; i < character.size(); ++i)
    {
        number = number << 6 | (static_cast<unsigned char>(character[i]) & 0x3Fu);
    }
    char code[16];
    std::snprintf(code, sizeof code, "U+%04X", number);
    const bool visible = number > 0x20 && (number < 0x7F || number > 0xA0);
    return visible ? "\"" + character + "\" (" + code + ")" : code;
}
