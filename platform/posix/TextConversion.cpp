// SPDX-License-Identifier: MIT
#include "platform/posix/TextConversion.h"

#include "platform/CodePages.h"
#include "platform/Fonts.h"
#include "platform/Utf8.h"

#include <iconv.h>
#include <utf8.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <iterator>
#include <unordered_map>

namespace posix
{
namespace
{

constexpr const char* ucs4 = std::endian::native == std::endian::little ? "UCS-4LE" : "UCS-4BE";

/// An open converter of the iconv library.
class Converter
{
public:
    Converter(const char* to, const char* from) : converter_(iconv_open(to, from)) {}
    ~Converter()
    {
        if (IsOpen())
        {
            iconv_close(converter_);
        }
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    /// Converts the first character of \p size bytes. Returns the number of its bytes, or 0 when
    /// the bytes do not begin with a whole, valid character or iconv does not know the encoding.
    std::size_t Convert(const char* bytes, std::size_t size, char32_t* character)
    {
        if (!IsOpen())
        {
            return 0;
        }
        for (std::size_t length = 1; length <= size; ++length)
        {
            char* in = const_cast<char*>(bytes);
            char* out = reinterpret_cast<char*>(character);
            std::size_t inLeft = length;
            std::size_t outLeft = sizeof *character;
            iconv(converter_, nullptr, nullptr, nullptr, nullptr);
            if (iconv(converter_, &in, &inLeft, &out, &outLeft) != static_cast<std::size_t>(-1) &&
                outLeft == 0)
            {
                return length;
            }
        }
        return 0;
    }

private:
    bool IsOpen() const { return reinterpret_cast<std::intptr_t>(converter_) != -1; }

    iconv_t converter_;
};

bool IsAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// A code page in both directions.
struct CodePageTable
{
    char32_t characters[256];
    std::unordered_map<char32_t, char> codes;
};

CodePageTable MakeTable(UINT codePage)
{
    CodePageTable table;
    Converter converter(ucs4, ("CP" + std::to_string(codePage)).c_str());
    for (unsigned code = 0; code < 256; ++code)
    {
        const char byte = static_cast<char>(code);
        char32_t character = code;
        if (converter.Convert(&byte, 1, &character) == 0)
        {
            character = code;
        }
        table.characters[code] = character;
        table.codes.emplace(character, byte);
    }
    return table;
}

/// Null for a code page that is not one of offeredCodePages.
const CodePageTable* TableOf(UINT codePage)
{
    // Never destroyed, because texts are converted even while the process ends.
    static const auto* const tables = [] {
        auto* made = new std::array<CodePageTable, offeredCodePages.size()>;
        std::transform(offeredCodePages.begin(), offeredCodePages.end(), made->begin(), MakeTable);
        return made;
    }();
    const auto found = std::find(offeredCodePages.begin(), offeredCodePages.end(), codePage);
    return found == offeredCodePages.end()
               ? nullptr
               : &(*tables)[std::distance(offeredCodePages.begin(), found)];
}

std::optional<char> CodeOf(char32_t character, const CodePageTable* table)
{
    if (character < 0x80)
    {
        return static_cast<char>(character);
    }
    if (table == nullptr)
    {
        return std::nullopt;
    }
    const auto found = table->codes.find(character);
    return found == table->codes.end() ? std::nullopt : std::optional<char>(found->second);
}

}  // namespace

std::u32string CharactersOf(std::string_view utf8)
{
    std::u32string characters;
    orvane::ForEachCharacter(utf8, [&](char32_t character) { characters += character; });
    return characters;
}

void AppendUtf8(std::string& text, char32_t character)
{
    utf8::unchecked::append(character, std::back_inserter(text));
}

std::optional<char> CodeOf(char32_t character, UINT codePage)
{
    return CodeOf(character, TableOf(codePage));
}

bool IsOfferedCodePage(UINT codePage)
{
    return TableOf(codePage) != nullptr;
}

char32_t CharacterOf(BYTE code, UINT codePage)
{
    const CodePageTable* const table = TableOf(codePage);
    return table == nullptr ? code : table->characters[code];
}

BYTE CharacterSetOf(UINT codePage)
{
    switch (codePage)
    {
        case 1250:
            return 238;
        case 1251:
            return 204;
        case 1253:
            return 161;
        case 1254:
            return 162;
        case 1257:
            return 186;
        default:
            return ANSI_CHARSET;
    }
}

std::string ToCodePage(std::string_view utf8, UINT codePage, bool* complete)
{
    // A short cut: there are thousands of font names, and nearly all are ASCII.
    if (IsAscii(utf8))
    {
        if (complete != nullptr)
        {
            *complete = true;
        }
        return std::string(utf8);
    }
    const CodePageTable* const table = TableOf(codePage);
    std::string text;
    bool all = true;
    for (const char32_t character : CharactersOf(utf8))
    {
        const std::optional<char> code = CodeOf(character, table);
        all = all && code;
        text += code.value_or('?');
    }
    if (complete != nullptr)
    {
        *complete = all;
    }
    return text;
}

std::string Utf8FromUtf16(std::string_view bigEndian)
{
    std::string utf8;
    // A short cut for texts without surrogates, which nearly all of thousands of font names are.
    bool plain = bigEndian.size() % 2 == 0;
    for (std::size_t n = 0; plain && n < bigEndian.size(); n += 2)
    {
        const auto unit = static_cast<char32_t>(static_cast<unsigned char>(bigEndian[n]) << 8 |
                                                static_cast<unsigned char>(bigEndian[n + 1]));
        constexpr char32_t surrogates = 0xD800;
        constexpr char32_t surrogateBits = 0xF800;
        plain = (unit & surrogateBits) != surrogates;
        AppendUtf8(utf8, unit);
    }
    if (plain)
    {
        return utf8;
    }
    // utf8::utf16to8 would throw at the first invalid surrogate, so iconv takes character by
    // character.
    utf8.clear();
    Converter converter(ucs4, "UTF-16BE");
    while (!bigEndian.empty())
    {
        constexpr std::size_t unitBytes = 2;
        constexpr std::size_t maxBytes = 2 * unitBytes;  // of one character
        char32_t character = 0;
        std::size_t length =
            converter.Convert(bigEndian.data(), std::min(maxBytes, bigEndian.size()), &character);
        if (length == 0)
        {
            character = orvane::replacementCharacter;
            length = std::min(unitBytes, bigEndian.size());
        }
        AppendUtf8(utf8, character);
        bigEndian.remove_prefix(length);
    }
    return utf8;
}

}  // namespace posix
