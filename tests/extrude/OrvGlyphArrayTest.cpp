// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyphArray.h"

#include "extrude/OrvGlyph.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

// These tests do not count deletions. When they run under the address sanitizer, the sanitizer and
// its leak check find glyphs that are deleted twice, too early or never.

namespace
{
/// Makes a glyph that tests recognise by its advance.
OrvGlyph* Glyph(SHORT advance)
{
    GLYPHMETRICS metrics = {};
    metrics.gmCellIncX = advance;
    return new OrvGlyph(0, metrics);
}

/// The advances of the glyphs in the slots; -1 for an empty slot.
std::vector<int> Advances(const OrvGlyphArray& array)
{
    std::vector<int> advances;
    for (int index = 0; index < array.GetSize(); ++index)
    {
        const OrvGlyph* const glyph = array[index];
        advances.push_back(glyph != nullptr ? glyph->GetAdvanceWidth() : -1);
    }
    return advances;
}
using Values = std::vector<int>;

/// An array of new glyphs with the given advances.
struct Filled : OrvGlyphArray
{
    explicit Filled(std::initializer_list<SHORT> advances)
    {
        for (const SHORT advance : advances)
        {
            Add(Glyph(advance));
        }
    }
};

TEST(OrvGlyphArray, NewSlotsAreNull)
{
    OrvGlyphArray array;
    EXPECT_EQ(array.GetSize(), 0);
    EXPECT_EQ(array.GetUpperBound(), -1);
    array.SetSize(3);
    EXPECT_EQ(Advances(array), (Values{-1, -1, -1}));
}

TEST(OrvGlyphArray, SlotsThatReappearAfterShrinkingAreNull)
{
    Filled array{1, 2, 3};
    array.SetSize(1);
    array.SetSize(3);
    EXPECT_EQ(Advances(array), (Values{1, -1, -1}));
    array.RemoveAt(0);
    array.SetSize(3);
    EXPECT_EQ(Advances(array), (Values{-1, -1, -1}));
}

TEST(OrvGlyphArray, SlotsAreSetGrownAddedInsertedAndRemoved)
{
    OrvGlyphArray array;
    array.SetAtGrow(2, Glyph(2));
    EXPECT_EQ(array.Add(Glyph(3)), 3);
    EXPECT_EQ(Advances(array), (Values{-1, -1, 2, 3}));
    array.SetAt(0, Glyph(10));
    array.SetAtGrow(1, Glyph(11));  // both slots were empty
    array.InsertAt(1, Glyph(20));
    EXPECT_EQ(Advances(array), (Values{10, 20, 11, 2, 3}));
    array.InsertAt(7, Glyph(30));
    EXPECT_EQ(Advances(array), (Values{10, 20, 11, 2, 3, -1, -1, 30}));
    array.RemoveAt(1, 6);
    EXPECT_EQ(Advances(array), (Values{10, 30}));
    array.FreeExtra();
    EXPECT_EQ(Advances(array), (Values{10, 30}));
    EXPECT_EQ(array.GetAt(1)->GetAdvanceWidth(), 30);
    array.RemoveAll();
    EXPECT_EQ(array.GetSize(), 0);
}

TEST(OrvGlyphArray, ElementsCanBeReplacedAndExchangedInPlace)
{
    Filled array{1, 2};
    delete std::exchange(array.ElementAt(0), Glyph(3));
    std::swap(array[0], array[1]);
    EXPECT_EQ(Advances(array), (Values{2, 3}));
    OrvGlyph* const first = array.GetAt(0);
    array.SetAt(0, array.GetAt(1));
    array.SetAt(1, first);
    EXPECT_EQ(Advances(array), (Values{3, 2}));
}

TEST(OrvGlyphArray, AReplacedGlyphBelongsToTheCallerAgain)
{
    Filled array{1, 2};
    OrvGlyph* const first = array.GetAt(0);
    array.SetAt(0, nullptr);
    const OrvGlyphArray copy(array);
    array.RemoveAll();
    EXPECT_EQ(first->GetAdvanceWidth(), 1);
    delete first;
    EXPECT_EQ(Advances(copy), (Values{-1, 2}));
}

TEST(OrvGlyphArray, AGlyphMovedByHandHasOneOwner)
{
    OrvGlyphArray to;
    to.SetSize(1);
    {
        Filled from{1, 2};
        to.SetAt(0, from.GetAt(0));
        from.SetAt(0, nullptr);
    }
    EXPECT_EQ(Advances(to), (Values{1}));
}

TEST(OrvGlyphArray, ASharedGlyphThatOneArrayReplacesBelongsToTheOther)
{
    Filled array{1, 2};
    OrvGlyphArray copy(array);
    copy.SetAt(0, nullptr);
    array.RemoveAt(0);  // deletes the glyph
    EXPECT_EQ(Advances(array), (Values{2}));
    EXPECT_EQ(Advances(copy), (Values{-1, 2}));
}

TEST(OrvGlyphArray, AGlyphInTwoSlotsLivesUntilTheLastIsRemoved)
{
    Filled array{1};
    array.InsertAt(1, array.GetAt(0), 2);
    array.RemoveAt(0);
    array.SetSize(1);
    EXPECT_EQ(Advances(array), (Values{1}));
    array.SetAt(0, array.GetAt(0));
    EXPECT_EQ(Advances(array), (Values{1}));
}

TEST(OrvGlyphArray, ACopySharesTheGlyphsAndOutlivesItsSource)
{
    OrvGlyphArray copy;
    {
        Filled source{1, 2};
        delete std::exchange(source.ElementAt(1), Glyph(3));
        copy = source;
        const OrvGlyphArray another(source);
        EXPECT_EQ(copy.GetAt(0), source.GetAt(0));
        EXPECT_EQ(another.GetAt(1), source.GetAt(1));
        source.RemoveAt(0);
    }
    EXPECT_EQ(Advances(copy), (Values{1, 3}));
    copy = *&copy;
    EXPECT_EQ(Advances(copy), (Values{1, 3}));
}

TEST(OrvGlyphArray, AnInsertedArraySharesItsGlyphs)
{
    Filled array{1, 2};
    {
        const Filled other{3, 4};
        array.InsertAt(1, &other);
    }
    EXPECT_EQ(Advances(array), (Values{1, 3, 4, 2}));
    array.InsertAt(0, &array);
    array.RemoveAt(4, 4);
    EXPECT_EQ(Advances(array), (Values{1, 3, 4, 2}));
}

}  // namespace
