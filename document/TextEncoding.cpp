// SPDX-License-Identifier: MIT
#include "document/TextEncoding.h"

#include "orvane/Error.h"
#include "platform/CodePages.h"
#include "platform/Fonts.h"
#include "platform/Limits.h"
#include "platform/Utf8.h"
#include "scene/OrvFontString.h"

#include <utf8.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace orvane
{

namespace
{

std::string JoinLines(const std::vector<std::string>& lines, std::size_t count)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
    {
        text += i == 0 ? lines[i] : "\r\n" + lines[i];
    }
    return text;
}

/// The number of the first line, counted from 1, that does not fit into one code page together with
/// everything before it.
std::size_t LineOfMisfit(const std::vector<std::string>& lines, const std::string& others)
{
    std::size_t fitting = 0;
    std::size_t misfit = lines.size();
    while (misfit - fitting > 1)
    {
        const std::size_t middle = (fitting + misfit) / 2;
        const bool fits = FindCodePage(others + JoinLines(lines, middle)).codePage != 0;
        (fits ? fitting : misfit) = middle;
    }
    return misfit;
}

Error TextTooLong(const std::string& place, const std::string& foundBytes, std::size_t mostBytes)
{
    return Error(place, foundBytes + " bytes of text",
                 "at most " + std::to_string(mostBytes) + " bytes");
}

}  // namespace

std::vector<std::string> SplitLines(const std::string& text)
{
    std::vector<std::string> lines;
    bool isOpen = false;  // whether the next character belongs to the last line
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (!isOpen)
        {
            lines.emplace_back();
        }
        isOpen = text[i] != '\n' && text[i] != '\r';
        if (isOpen)
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

std::string ReadText(const std::string& path, std::size_t mostBytes)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                               std::fclose);
    const std::size_t most = mostBytes + sizeof utf8::bom;
    std::string text(most + 1, '\0');
    text.resize(file ? std::fread(text.data(), 1, text.size(), file.get()) : 0);
    if (!file || std::ferror(file.get()) != 0)
    {
        throw Error(path, std::strerror(errno));
    }
    if (text.size() > most)
    {
        throw TextTooLong(path, "more than " + std::to_string(mostBytes), mostBytes);
    }
    if (utf8::starts_with_bom(text.begin(), text.end()))
    {
        text.erase(0, sizeof utf8::bom);
    }
    return text;
}

std::vector<std::string> ReadLines(const std::string& path)
{
    return SplitLines(ReadText(path, limits::maxTextBytes));
}

void CheckTextLength(const std::vector<std::string>& lines)
{
    constexpr std::size_t lineEndBytes = 2;  // CR LF
    std::size_t bytes = lines.empty() ? 0 : (lines.size() - 1) * lineEndBytes;
    for (const std::string& line : lines)
    {
        bytes += line.size();
    }
    if (bytes > limits::maxTextBytes)
    {
        throw TextTooLong("text", std::to_string(bytes), limits::maxTextBytes);
    }
}

EncodedText EncodeLines(const std::vector<std::string>& lines, const std::string& others)
{
    CheckTextLength(lines);
    const std::string text = others + JoinLines(lines, lines.size());
    const CodePageChoice choice = FindCodePage(text);
    if (choice.codePage == 0)
    {
        const std::string place = "text, line " + std::to_string(LineOfMisfit(lines, others));
        if (choice.misfit == "\uFFFD")
        {
            throw Error(place, "found bytes that are not UTF-8, or the character U+FFFD");
        }
        const bool fitsAlone = FindCodePage(choice.misfit).codePage != 0;
        throw Error(
            place,
            "no code page holds " + Describe(choice.misfit) +
                (fitsAlone ? " together with the characters before it" : "") +
                "; a text must be western, central European, Baltic, Turkish, Cyrillic or Greek");
    }
    return {choice.codePage, EncodeLinesIn(lines, choice.codePage)};
}

CString EncodeLinesIn(const std::vector<std::string>& lines, UINT codePage)
{
    const std::string bytes = Utf8ToCodePage(JoinLines(lines, lines.size()), codePage).text;
    return CString(bytes.data(), static_cast<int>(bytes.size()));
}

std::string ToUtf8(const char* text)
{
    return CodePageToUtf8(text, GetACP());
}

std::string ToUtf8(const OrvFontString& text, const std::string& part)
{
    return text.IsUtf8() ? ValidUtf8(part) : CodePageToUtf8(part, GetACP());
}

std::string Describe(const std::string& character)
{
    const std::uint32_t number =
        character.empty() ? 0 : utf8::unchecked::peek_next(character.begin());
    char code[16];
    std::snprintf(code, sizeof code, "U+%04X", number);
    const bool isVisible = number > 0x20 && (number < 0x7F || number > 0xA0);
    return isVisible ? "\"" + character + "\" (" + code + ")" : code;
}

CodePageScope::CodePageScope(UINT codePage) : previous_(GetACP())
{
    SetProcessCodePage(codePage);
}

CodePageScope::~CodePageScope()
{
    SetProcessCodePage(previous_);
}

}  // namespace orvane
