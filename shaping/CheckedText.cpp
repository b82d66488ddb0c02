// SPDX-License-Identifier: MIT
#include "shaping/CheckedText.h"

#include "orvane/Error.h"
#include "platform/Limits.h"
#include "platform/ShapingFace.h"

#include <utf8.h>

#include <algorithm>
#include <cstdio>

namespace orvane
{
namespace
{

std::string PlaceOf(std::size_t byte)
{
    return "text, byte " + std::to_string(byte);
}

/// The bytes of a broken character in hexadecimal: the first and those that continue it.
std::string BrokenBytes(std::string_view from)
{
    std::string bytes;
    for (std::size_t n = 0; n < std::min<std::size_t>(from.size(), 4); ++n)
    {
        const auto byte = static_cast<unsigned char>(from[n]);
        if (n > 0 && (byte & 0xC0) != 0x80)
        {
            break;
        }
        char hexadecimal[8];
        std::snprintf(hexadecimal, sizeof hexadecimal, n == 0 ? "%02X" : " %02X", byte);
        bytes += hexadecimal;
    }
    return bytes;
}

bool IsWithin(char32_t c, char32_t first, char32_t last)
{
    return c >= first && c <= last;
}

bool IsFlagLetter(char32_t c)
{
    return IsWithin(c, 0x1F1E6, 0x1F1FF);
}

constexpr char32_t joiner = 0x200D;
constexpr char32_t nonJoiner = 0x200C;

/// Whether a character always belongs to the one before it.
bool ExtendsCluster(char32_t c)
{
    // The last two are shades of skin and tags of flags.
    return c >= firstMark && (IsMark(c) || c == joiner || c == nonJoiner ||
                              IsWithin(c, 0x1F3FB, 0x1F3FF) || IsWithin(c, 0xE0020, 0xE007F));
}

/// Whether two characters that follow each other are of one Hangul syllable.
bool IsOneSyllable(char32_t before, char32_t c)
{
    const bool isLeading = IsWithin(before, 0x1100, 0x115F) || IsWithin(before, 0xA960, 0xA97C);
    const bool isVowel = IsWithin(c, 0x1160, 0x11A7) || IsWithin(c, 0xD7B0, 0xD7C6);
    const bool isTrailing = IsWithin(c, 0x11A8, 0x11FF) || IsWithin(c, 0xD7CB, 0xD7FB);
    const bool afterVowel = IsWithin(before, 0x1160, 0x11FF) || IsWithin(before, 0xD7B0, 0xD7FB) ||
                            IsWithin(before, 0xAC00, 0xD7A3);
    const bool startsAgain = IsWithin(c, 0x1100, 0x115F) || IsWithin(c, 0xA960, 0xA97C);
    return (isLeading && (isVowel || startsAgain || IsWithin(c, 0xAC00, 0xD7A3))) ||
           (afterVowel && (isVowel || isTrailing));
}

}  // namespace

CheckedText ReadUtf8(std::string_view utf8)
{
    if (utf8.size() > limits::maxTextBytes)
    {
        throw Error("text", std::to_string(utf8.size()) + " bytes",
                    "at most " + std::to_string(limits::maxTextBytes) + " bytes");
    }
    const char* const begin = utf8.data();
    const char* const end = begin + utf8.size();
    const char* const broken = utf8::find_invalid(begin, end);
    if (broken != end)
    {
        const auto byte = static_cast<std::size_t>(broken - begin);
        throw Error(PlaceOf(byte), BrokenBytes(utf8.substr(byte)), "UTF-8");
    }
    CheckedText text;
    text.characters.reserve(utf8.size());
    text.offsets.reserve(utf8.size() + 1);
    std::size_t marks = 0;
    for (const char* at = begin; at != end;)
    {
        const auto offset = static_cast<std::uint32_t>(at - begin);
        if (static_cast<unsigned char>(*at) < 0x80)
        {
            marks = 0;
            text.characters.push_back(static_cast<char32_t>(*at++));
            text.offsets.push_back(offset);
            continue;
        }
        const char32_t character = utf8::unchecked::next(at);
        marks = character >= firstMark && IsMark(character) ? marks + 1 : 0;
        if (marks > limits::maxClusterMarks)
        {
            throw Error(PlaceOf(offset), std::to_string(marks) + " combining marks in a row",
                        "at most " + std::to_string(limits::maxClusterMarks));
        }
        text.characters.push_back(character);
        text.offsets.push_back(offset);
    }
    text.offsets.push_back(static_cast<std::uint32_t>(utf8.size()));
    return text;
}

std::size_t ClusterEnd(std::u32string_view text, std::size_t begin)
{
    std::size_t at = begin + 1;
    if (at < text.size() && IsFlagLetter(text[begin]) && IsFlagLetter(text[at]))
    {
        ++at;
    }
    // A joiner joins the picture after it; between letters it only chooses their form.
    constexpr char32_t firstPicture = 0x2190;
    while (at < text.size() && (ExtendsCluster(text[at]) || IsOneSyllable(text[at - 1], text[at]) ||
                                (text[at - 1] == joiner && text[at] >= firstPicture &&
                                 ScriptOf(text[at]) == commonScript)))
    {
        ++at;
    }
    return at;
}

bool HangsAtLineEnd(char32_t c)
{
    return c == ' ' || c == '\t' || c == 0x1680 || (IsWithin(c, 0x2000, 0x200A) && c != 0x2007) ||
           c == 0x205F || c == 0x3000;
}

std::string CodePointName(char32_t character)
{
    char name[16];
    std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(character));
    return name;
}

}  // namespace orvane
