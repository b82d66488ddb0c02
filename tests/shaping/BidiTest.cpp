// SPDX-License-Identifier: MIT
#include "shaping/Bidi.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace
{

using namespace orvane;

using Order = std::vector<std::size_t>;
using Levels = std::vector<std::uint8_t>;

/// A line of the Unicode conformance file BidiCharacterTest.txt (version 15). Characters without a
/// level ("x" in the file) do not occur.
struct StatedLine
{
    std::u32string text;
    TextDirection direction;
    std::uint8_t paragraph;
    Levels levels;
    Order order;
};

TEST(Bidi, LinesOfTheConformanceFileHaveTheStatedLevelsAndOrder)
{
    const StatedLine lines[] = {
        // 0061 0028 0062 0029 0063;0;0;0 0 0 0 0;0 1 2 3 4
        {U"a(b)c", TextDirection::LeftToRight, 0, {0, 0, 0, 0, 0}, {0, 1, 2, 3, 4}},
        // 0061 0028 0062 0029 0063;1;1;2 2 2 2 2;0 1 2 3 4
        {U"a(b)c", TextDirection::RightToLeft, 1, {2, 2, 2, 2, 2}, {0, 1, 2, 3, 4}},
        // 0061 0028 0062 0029 05D0;1;1;2 2 2 2 1;4 0 1 2 3
        {U"a(b)\u05D0", TextDirection::RightToLeft, 1, {2, 2, 2, 2, 1}, {4, 0, 1, 2, 3}},
        // 0061 0028 05D0 0029 2680;1;1;2 1 1 1 1;4 3 2 1 0
        {U"a(\u05D0)\u2680", TextDirection::RightToLeft, 1, {2, 1, 1, 1, 1}, {4, 3, 2, 1, 0}},
        // 05D0 2680 0028 05D1 0029;0;0;1 1 1 1 1;4 3 2 1 0
        {U"\u05D0\u2680(\u05D1)", TextDirection::LeftToRight, 0, {1, 1, 1, 1, 1}, {4, 3, 2, 1, 0}},
    };
    for (const StatedLine& line : lines)
    {
        const BidiLevels found = FindLevels(line.text, line.direction);
        EXPECT_EQ(found.paragraph, line.paragraph);
        EXPECT_EQ(found.ofCharacters, line.levels);
        EXPECT_EQ(VisualOrderOfLine(line.text, found, 0, line.text.size()), line.order);
    }
}

TEST(Bidi, TheFirstLetterDecidesTheDirection)
{
    EXPECT_EQ(FindLevels(U"12 \u05D0 a", TextDirection::Auto).paragraph, 1);
    EXPECT_EQ(FindLevels(U"a \u05D0", TextDirection::Auto).paragraph, 0);
    EXPECT_EQ(FindLevels(U"12", TextDirection::Auto).paragraph, 0);
    EXPECT_EQ(FindLevels(U"", TextDirection::RightToLeft).paragraph, 1);
}

TEST(Bidi, DigitsRunToTheRightInHebrew)
{
    // Alef 1 2 bet: bet stands on the left, then 12, then alef.
    const std::u32string text = U"\u05D012\u05D1";
    const BidiLevels levels = FindLevels(text, TextDirection::Auto);

    EXPECT_EQ(levels.ofCharacters, (Levels{1, 2, 2, 1}));
    EXPECT_EQ(VisualOrderOfLine(text, levels, 0, 4), (Order{3, 1, 2, 0}));
}

TEST(Bidi, SpacesAtTheEndOfALineStandAtTheEndOfTheParagraph)
{
    // Latin letters in a paragraph from right to left: the space after them hangs on the left.
    const std::u32string text = U"ab \u05D0";
    const BidiLevels levels = FindLevels(text, TextDirection::RightToLeft);

    EXPECT_EQ(LineEndSpace(text, 0, 3), 2U);
    EXPECT_EQ(VisualOrderOfLine(text, levels, 0, 3), (Order{2, 0, 1}));
}

TEST(Bidi, RunsOfSeveralLevelsAreTurnedFromTheHighestDown)
{
    // Rule L2 by hand: 1 2 2 1 becomes 1 at the right, its inside turned back.
    EXPECT_EQ(VisualOrder({0, 1, 2, 2, 1, 0}), (Order{0, 4, 2, 3, 1, 5}));
    EXPECT_EQ(VisualOrder({2, 3, 2}), (Order{0, 1, 2}));
    // The inner two are turned at levels 3, 2 and 1.
    EXPECT_EQ(VisualOrder({1, 3, 3, 1}), (Order{3, 2, 1, 0}));
    EXPECT_TRUE(VisualOrder({}).empty());
}

TEST(Bidi, OverridesNestTo125LevelsAndMoreDoNoHarm)
{
    std::u32string text(1'000, U'\u202E');
    text += U"a";
    const BidiLevels levels = FindLevels(text, TextDirection::LeftToRight);

    EXPECT_EQ(levels.ofCharacters.size(), text.size());
    EXPECT_LE(*std::max_element(levels.ofCharacters.begin(), levels.ofCharacters.end()), 126);
}

}  // namespace
