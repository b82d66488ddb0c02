// SPDX-License-Identifier: MIT
// Texts in the alphabets of every code page, in DejaVu Sans: every letter is there and has its
// faces, and the text comes back from an archive as it was.

#include "extrude/Library.h"
#include "extrude/OrvFontList.h"
#include "extrude/OrvGlyph.h"
#include "outline/TTGlyph.h"
#include "platform/CodePages.h"
#include "platform/Fonts.h"
#include "scene/OrvFontString.h"
#include "tests/support/Alphabets.h"
#include "tests/support/FontFigures.h"
#include "tests/support/PrivateFonts.h"
#include "tests/support/RecordBytes.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace
{

class OrvFontStringAlphabets : public testing::TestWithParam<Alphabet>
{
protected:
    void SetUp() override
    {
        fonts_.emplace(std::vector<std::string>{FontFilePath("DejaVuSans.ttf")});
        SetProcessCodePage(GetParam().codePage);
        GetFontList()->RemoveAll();
        CreateFontList(0, nullptr);
    }
    void TearDown() override
    {
        GetFontList()->RemoveAll();
        SetProcessCodePage(1252);
    }

    static CString Text()
    {
        const std::string bytes = Utf8ToCodePage(GetParam().text, GetParam().codePage).text;
        return CString(bytes.data(), static_cast<int>(bytes.size()));
    }

private:
    std::optional<PrivateFonts> fonts_;
};

TEST_P(OrvFontStringAlphabets, TheCodePageIsFoundFromTheText)
{
    EXPECT_EQ(FindCodePage(GetParam().text).codePage, GetParam().codePage);
}

TEST_P(OrvFontStringAlphabets, HasEveryLetterWithItsFaces)
{
    ASSERT_FALSE(GetFontList()->IsEmpty());
    OrvFont& font = *GetFontList()->GetHead();
    const CString text = Text();
    const SelectedFont selected("DejaVu Sans", -2048);
    for (int i = 0; i < text.GetLength(); ++i)
    {
        WORD glyph = 0;
        ASSERT_EQ(GetGlyphIndicesA(selected.Dc(), static_cast<LPCSTR>(text) + i, 1, &glyph,
                                   GGI_MARK_NONEXISTING_GLYPHS),
                  1u);
        EXPECT_NE(glyph, 0xFFFF) << i;
        if (text[i] == ' ')
        {
            continue;
        }
        // Built as the font builds it
        GLYPHMETRICS metrics = {};
        DWORD size = 0;
        std::vector<BYTE> bytes = selected.Outline(static_cast<BYTE>(text[i]), &size, &metrics);
        TTGlyph outline;
        outline.FromGlyphOutline(bytes.data(), bytes.size());
        OrvGlyph built(size, metrics);
        built.FromTTGlyph(outline, 2048.0f);
        EXPECT_GT(built.facePolygons.GetSize(), 0) << "letter " << i << " of " << GetParam().text;
    }
    EXPECT_EQ(font.GetFullName(), "DejaVu Sans");
}

TEST_P(OrvFontStringAlphabets, SurvivesSaveAndLoad)
{
    OrvFont* const font = GetFontList()->GetHead();
    OrvFontString stored;
    stored.AttachFont(font);
    stored.SetTextString(Text());
    stored.CalculateBounds();
    EXPECT_EQ(font->GetEnumLogFont()->elfLogFont.lfCharSet, GetParam().characterSet);

    const Bytes record = Stored(stored);
    CMemFile file(const_cast<BYTE*>(record.data()), static_cast<UINT>(record.size()));
    CArchive archive(&file, CArchive::load);
    OrvFontString loaded;
    loaded.Serialize(archive);
    EXPECT_EQ(*loaded.GetTextString(), Text());
    ASSERT_EQ(loaded.GetFont(), font);
    loaded.CalculateBounds();
    EXPECT_EQ(loaded.GetUnscaledDimensions().x, stored.GetUnscaledDimensions().x);
    EXPECT_GT(loaded.GetUnscaledDimensions().x, 2.0);
}

INSTANTIATE_TEST_SUITE_P(CodePages, OrvFontStringAlphabets, AllAlphabets(), NameOf);

}  // namespace
