// SPDX-License-Identifier: MIT
// usage: judge-shaping shape FILE INDEX LANGUAGE rtl|ltr < texts
//            writes the glyphs of each line of texts as a line of JSON, as hb-shape does: [glyph,
//            first byte of the cluster, x, y] in design units, from left to right
//        judge-shaping order BidiCharacterTest.txt BidiTest.txt
//            compares the order of lines with the Unicode conformance files
//        judge-shaping breaks LineBreakTest.txt
//            compares the ends of lines with the Unicode conformance file

#include "platform/ShapingFace.h"
#include "shaping/Bidi.h"
#include "shaping/LineBreaks.h"
#include "shaping/TextShaper.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using orvane::BidiLevels;
using orvane::TextDirection;

int Shape(const std::string& file, int index, const std::string& language, bool isRightToLeft)
{
    std::string problem;
    orvane::LayoutOptions options;
    options.style.fonts.faces = {orvane::ShapingFace::Open({file, index, {}}, &problem)};
    if (!options.style.fonts.faces.front())
    {
        std::cerr << file << ": " << problem << '\n';
        return 1;
    }
    options.style.fonts.usesInstalledFonts = false;
    options.style.language = language;
    options.direction = isRightToLeft ? TextDirection::RightToLeft : TextDirection::LeftToRight;
    const int unitsPerEm = options.style.fonts.faces.front()->Metrics().unitsPerEm;
    orvane::TextShaper shaper;
    std::string text;
    while (std::getline(std::cin, text))
    {
        const orvane::TextLayout layout = shaper.LayOut(text, options);
        const char* separator = "";
        std::printf("[");
        for (const orvane::PlacedGlyph& glyph : layout.glyphs)
        {
            std::printf("%s[%u,%zu,%.6f,%.6f]", separator, glyph.glyph, glyph.textBegin,
                        glyph.x * unitsPerEm, glyph.y * unitsPerEm);
            separator = ",";
        }
        std::printf("]\n");
    }
    return 0;
}

/// Counts compared lines and shows the first that differ.
struct Count
{
    int compared = 0;
    int different = 0;

    void Add(bool isEqual, const std::string& line)
    {
        constexpr int shown = 10;
        ++compared;
        different += isEqual ? 0 : 1;
        if (!isEqual && different <= shown)
        {
            std::printf("differs: %s\n", line.c_str());
        }
    }
};

std::vector<std::string> Words(const std::string& text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

/// Whether the levels and the order of a line are those that a conformance file states.
/// \param levels a number for each character, or "x" for one that has none
/// \param order the places of the other characters from left to right
bool IsAsStated(const std::u32string& text, TextDirection direction,
                const std::vector<std::string>& levels, const std::vector<std::string>& order)
{
    BidiLevels found = orvane::FindLevels(text, direction);
    const std::size_t space = orvane::LineEndSpace(text, 0, text.size());
    std::vector<std::string> foundOrder;
    for (std::size_t n = 0; n < text.size(); ++n)
    {
        const int level = n < space ? found.ofCharacters[n] : found.paragraph;
        if (levels.at(n) != "x" && levels[n] != std::to_string(level))
        {
            return false;
        }
    }
    for (const std::size_t n : orvane::VisualOrderOfLine(text, found, 0, text.size()))
    {
        if (levels[n] != "x")
        {
            foundOrder.push_back(std::to_string(n));
        }
    }
    return foundOrder == order;
}

Count CompareCharacters(const char* path)
{
    Count count;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);)
    {
        if (line.empty() || line[0] == '#')
        {
            continue;
        }
        std::vector<std::string> fields;
        std::istringstream stream(line);
        for (std::string field; std::getline(stream, field, ';');)
        {
            fields.push_back(field);
        }
        fields.resize(5);
        std::u32string text;
        for (const std::string& number : Words(fields[0]))
        {
            text += static_cast<char32_t>(std::stoul(number, nullptr, 16));
        }
        const TextDirection direction = fields[1] == "0"   ? TextDirection::LeftToRight
                                        : fields[1] == "1" ? TextDirection::RightToLeft
                                                           : TextDirection::Auto;
        const bool isLevel = orvane::FindLevels(text, direction).paragraph == std::stoi(fields[2]);
        count.Add(isLevel && IsAsStated(text, direction, Words(fields[3]), Words(fields[4])), line);
    }
    return count;
}

Count CompareClasses(const char* path)
{
    const std::map<std::string, char32_t> characterOf = {
        {"L", 'a'},      {"R", 0x5D0},    {"AL", 0x627},   {"EN", '0'},     {"ES", '+'},
        {"ET", '#'},     {"AN", 0x660},   {"CS", ','},     {"NSM", 0x300},  {"BN", 0x200B},
        {"B", 0x2029},   {"S", '\t'},     {"WS", ' '},     {"ON", '!'},     {"LRE", 0x202A},
        {"LRO", 0x202D}, {"RLE", 0x202B}, {"RLO", 0x202E}, {"PDF", 0x202C}, {"LRI", 0x2066},
        {"RLI", 0x2067}, {"FSI", 0x2068}, {"PDI", 0x2069}};
    Count count;
    std::vector<std::string> levels;
    std::vector<std::string> order;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);)
    {
        if (line.starts_with("@Levels:"))
        {
            levels = Words(line.substr(8));
        }
        else if (line.starts_with("@Reorder:"))
        {
            order = Words(line.substr(9));
        }
        else if (!line.empty() && line[0] != '#' && line[0] != '@')
        {
            std::u32string text;
            for (const std::string& name : Words(line.substr(0, line.find(';'))))
            {
                text += characterOf.at(name);
            }
            const int directions = std::stoi(line.substr(line.find(';') + 1));
            const TextDirection tested[] = {TextDirection::Auto, TextDirection::LeftToRight,
                                            TextDirection::RightToLeft};
            for (int n = 0; n < 3; ++n)
            {
                if ((directions >> n & 1) != 0)
                {
                    count.Add(IsAsStated(text, tested[n], levels, order), line);
                }
            }
        }
    }
    return count;
}

Count CompareBreaks(const char* path)
{
    Count count;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);)
    {
        // Signs, which say whether a line may end there, stand between the characters.
        std::u32string text;
        std::vector<bool> stated;
        for (const std::string& word : Words(line.substr(0, line.find('#'))))
        {
            const bool mayEnd = word == "\u00F7";
            if (mayEnd || word == "\u00D7")
            {
                stated.push_back(mayEnd);
            }
            else
            {
                text += static_cast<char32_t>(std::stoul(word, nullptr, 16));
            }
        }
        if (text.empty())
        {
            continue;
        }
        // The first sign stands before the text, the last at its end, where every line ends.
        stated.erase(stated.begin());
        stated.back() = false;
        count.Add(orvane::FindLineBreaks(text, {}) == stated, line);
    }
    return count;
}

}  // namespace

int main(int count, char** arguments)
{
    const std::string task = count > 1 ? arguments[1] : "";
    if (task == "shape" && count == 6)
    {
        return Shape(arguments[2], std::atoi(arguments[3]), arguments[4],
                     std::string(arguments[5]) == "rtl");
    }
    if (task == "order" && count == 4)
    {
        const Count characters = CompareCharacters(arguments[2]);
        const Count classes = CompareClasses(arguments[3]);
        std::printf("order: %d of %d cases of characters and %d of %d cases of classes differ\n",
                    characters.different, characters.compared, classes.different, classes.compared);
        return characters.different + classes.different == 0 && characters.compared > 0 &&
                       classes.compared > 0
                   ? 0
                   : 1;
    }
    if (task == "breaks" && count == 3)
    {
        const Count breaks = CompareBreaks(arguments[2]);
        std::printf("breaks: %d of %d cases differ\n", breaks.different, breaks.compared);
        return breaks.compared > 0 ? 0 : 1;
    }
    std::cerr << "usage: judge-shaping shape FILE INDEX LANGUAGE rtl|ltr < texts\n"
                 "       judge-shaping order BidiCharacterTest.txt BidiTest.txt\n"
                 "       judge-shaping breaks LineBreakTest.txt\n";
    return 2;
}
