// SPDX-License-Identifier: MIT
#include "shaping/Bidi.h"

#include <fribidi.h>

#include <algorithm>
#include <new>
#include <numeric>

namespace orvane
{
namespace
{

/// Hebrew is the first script from right to left; all characters before it run to the right or
/// follow their neighbours.
constexpr char32_t firstRightToLeft = 0x590;

FriBidiCharType TypeOf(char32_t character)
{
    return fribidi_get_bidi_type(static_cast<FriBidiChar>(character));
}

bool TakesParagraphLevel(FriBidiCharType type)
{
    return type == FRIBIDI_TYPE_SS || type == FRIBIDI_TYPE_BS || type == FRIBIDI_TYPE_WS ||
           FRIBIDI_IS_ISOLATE(type) || FRIBIDI_IS_EXPLICIT_OR_BN(type);
}

}  // namespace

BidiLevels FindLevels(std::u32string_view paragraph, TextDirection direction)
{
    BidiLevels levels;
    const bool isSimple = direction != TextDirection::RightToLeft &&
                          std::all_of(paragraph.begin(), paragraph.end(), [](char32_t character) {
                              return character < firstRightToLeft;
                          });
    if (paragraph.empty() || isSimple)
    {
        levels.paragraph = direction == TextDirection::RightToLeft ? 1 : 0;
        levels.ofCharacters.assign(paragraph.size(), levels.paragraph);
        return levels;
    }
    const auto size = static_cast<FriBidiStrIndex>(paragraph.size());
    const std::vector<FriBidiChar> characters(paragraph.begin(), paragraph.end());
    std::vector<FriBidiCharType> types(paragraph.size());
    std::vector<FriBidiBracketType> brackets(paragraph.size());
    std::vector<FriBidiLevel> found(paragraph.size());
    fribidi_get_bidi_types(characters.data(), size, types.data());
    fribidi_get_bracket_types(characters.data(), size, types.data(), brackets.data());
    FriBidiParType base = direction == TextDirection::RightToLeft   ? FRIBIDI_PAR_RTL
                          : direction == TextDirection::LeftToRight ? FRIBIDI_PAR_LTR
                                                                    : FRIBIDI_PAR_ON;
    if (fribidi_get_par_embedding_levels_ex(types.data(), brackets.data(), size, &base,
                                            found.data()) == 0)
    {
        throw std::bad_alloc();
    }
    levels.paragraph = FRIBIDI_IS_RTL(base) ? 1 : 0;
    levels.ofCharacters.assign(found.begin(), found.end());
    return levels;
}

std::size_t LineEndSpace(std::u32string_view paragraph, std::size_t begin, std::size_t end)
{
    while (end > begin && TakesParagraphLevel(TypeOf(paragraph[end - 1])))
    {
        --end;
    }
    return end;
}

std::vector<std::size_t> VisualOrder(const std::vector<std::uint8_t>& levels)
{
    std::vector<std::size_t> order(levels.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    if (levels.empty())
    {
        return order;
    }
    const int highest = *std::max_element(levels.begin(), levels.end());
    // From the highest level down to the lowest odd one, turn each stretch of that level or higher.
    for (int level = highest; level > 0; --level)
    {
        for (std::size_t first = 0; first < levels.size(); ++first)
        {
            std::size_t last = first;
            while (last < levels.size() && levels[last] >= level)
            {
                ++last;
            }
            if (last > first)
            {
                // Earlier turns moved runs only within this stretch.
                std::reverse(order.begin() + static_cast<std::ptrdiff_t>(first),
                             order.begin() + static_cast<std::ptrdiff_t>(last));
                first = last;
            }
        }
    }
    return order;
}

std::vector<std::size_t> VisualOrderOfLine(std::u32string_view paragraph, const BidiLevels& levels,
                                           std::size_t begin, std::size_t end)
{
    std::vector<std::uint8_t> line(levels.ofCharacters.begin() + static_cast<std::ptrdiff_t>(begin),
                                   levels.ofCharacters.begin() + static_cast<std::ptrdiff_t>(end));
    const std::size_t space = LineEndSpace(paragraph, begin, end) - begin;
    std::fill(line.begin() + static_cast<std::ptrdiff_t>(space), line.end(), levels.paragraph);
    std::vector<std::size_t> order = VisualOrder(line);
    for (std::size_t& character : order)
    {
        character += begin;
    }
    return order;
}

}  // namespace orvane
