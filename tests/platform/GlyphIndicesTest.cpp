// SPDX-License-Identifier: MIT
// Which characters a font has.

#include "platform/Fonts.h"
#include "tests/support/PrivateFonts.h"

#include <gtest/gtest.h>

namespace
{

TEST(GlyphIndices, MissingCharactersHaveIndexZeroOrTheMark)
{
    const PrivateFonts fonts({ORVANE_TEST_DATA "/EdgeTest.ttf"});
    const SelectedFont font("Edge Test", -1000);
    WORD indices[3] = {9, 9, 9};
    // The font has capitals but no letters with accents (0xE9 in 1252).
    EXPECT_EQ(GetGlyphIndicesA(font.Dc(),
                               "A\xE9"
                               "B",
                               3, indices, GGI_MARK_NONEXISTING_GLYPHS),
              3u);
    EXPECT_NE(indices[0], 0);
    EXPECT_NE(indices[0], 0xFFFF);
    EXPECT_EQ(indices[1], 0xFFFF);
    EXPECT_NE(indices[2], indices[0]);
    EXPECT_EQ(GetGlyphIndicesA(font.Dc(), "\xE9", 1, indices, 0), 1u);
    EXPECT_EQ(indices[0], 0);
}

TEST(GlyphIndices, AreRefusedWithoutADeviceContextOrAFont)
{
    WORD index = 9;
    EXPECT_EQ(GetGlyphIndicesA(nullptr, "A", 1, &index, 0), GDI_ERROR);
    const PrivateFonts nothing({});
    const SelectedFont font("Edge Test", -1000);
    EXPECT_EQ(GetGlyphIndicesA(font.Dc(), "A", 1, &index, 0), GDI_ERROR);
    EXPECT_EQ(index, 9);
}

TEST(GlyphIndices, ANullArrayIsRefused)
{
    const PrivateFonts fonts({ORVANE_TEST_DATA "/EdgeTest.ttf"});
    const SelectedFont font("Edge Test", -1000);
    EXPECT_EQ(GetGlyphIndicesA(font.Dc(), "A", 1, nullptr, 0), GDI_ERROR);
}

}  // namespace
