// SPDX-License-Identifier: MIT
// Fonts made from a real face, EdgeTest.ttf. It has 1000 units per em and the characters 32 to 85.
// The tests use the space (advance 507), B (advance 521; a box 200 units wide and 300 high whose
// top is at 400) and the glyph for missing characters (advance 500).
#include "extrude/Library.h"
#include "extrude/OrvFont.h"
#include "extrude/OrvGlyph.h"
#include "platform/Messages.h"
#include "tests/support/FontFile.h"
#include "tests/support/PrivateFonts.h"

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <stdexcept>
#include <thread>

namespace
{
/// Makes protected functions of the font public.
struct FaceFont : OrvFont
{
    using OrvFont::ConstructOrvGlyph;
    using OrvFont::GetGlyphAdvanceWidth;
    using OrvFont::LookupGlyphIndex;

    int Advance(unsigned char character)
    {
        return GetGlyphAdvanceWidth(static_cast<unsigned short>(LookupGlyphIndex(character)));
    }

    /// The glyph of a character whose advance was asked for in this thread. Other threads may put
    /// the same glyph into the slot meanwhile.
    const OrvGlyph* Glyph(unsigned char character)
    {
        return std::atomic_ref(glyphs.ElementAt(LookupGlyphIndex(character))).load();
    }
};

class OrvFontFace : public testing::Test
{
protected:
    OrvFontFace() : OrvFontFace(std::vector<std::string>{ORVANE_TEST_DATA "/EdgeTest.ttf"}) {}
    explicit OrvFontFace(const std::vector<std::string>& files) : installed(files) {}

    /// Creates the font from the only face installed.
    int Create(FaceFont& font)
    {
        const std::vector<EnumeratedFont> faces = EnumerateAsRegistry();
        if (faces.size() != 1)
        {
            throw std::runtime_error("the face is not installed alone");
        }
        return font.Create(&faces[0].record, &faces[0].metrics);
    }

    PrivateFonts installed;
    FaceFont font;
};

TEST_F(OrvFontFace, CreateTakesTheNamesTheRangeAndTheMetrics)
{
    ASSERT_EQ(Create(font), 1);
    EXPECT_EQ(font.GetFullName(), "Edge Test Regular");
    EXPECT_STREQ(font.GetEnumLogFont()->elfLogFont.lfFaceName, "Edge Test");
    EXPECT_EQ(font.textMetric.tmFirstChar, 30);
    EXPECT_EQ(font.glyphCount, 56);  // 30 to 85
    EXPECT_EQ(font.glyphs.GetSize(), 56);
    ASSERT_NE(font.outlineMetrics, nullptr);
    EXPECT_EQ(font.outlineMetrics->otmEMSquare, 1000u);
    EXPECT_GT(font.outlineMetricsSize, sizeof(OUTLINETEXTMETRICA));
    EXPECT_EQ(font.outlineMetrics->otmSize, font.outlineMetricsSize);
}

TEST_F(OrvFontFace, TheOutlineFontIsOneEmHighAndTheWindowsFont20Pixels)
{
    ASSERT_EQ(Create(font), 1);
    // A height of -em makes one unit one pixel, so the cell's height minus the internal leading is
    // one em.
    const TEXTMETRICA& metrics = font.outlineMetrics->otmTextMetrics;
    EXPECT_EQ(metrics.tmHeight - metrics.tmInternalLeading, 1000);

    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ previous = SelectObject(dc, font.GetWindowsFont()->GetSafeHandle());
    ASSERT_NE(previous, nullptr);
    OUTLINETEXTMETRICA small = {};
    EXPECT_NE(GetOutlineTextMetricsA(dc, sizeof small, &small), 0u);
    EXPECT_EQ(small.otmTextMetrics.tmHeight, 20);
    SelectObject(dc, previous);
    DeleteDC(dc);
}

TEST_F(OrvFontFace, ThreadsThatNeedTheSameGlyphsFirstGetTheSame)
{
    constexpr int rounds = 20;
    constexpr int threadCount = 4;
    for (int round = 0; round < rounds; ++round)
    {
        FaceFont shared;
        ASSERT_EQ(Create(shared), 1);
        std::latch start(threadCount);
        std::vector<std::vector<const OrvGlyph*>> seen(threadCount);
        std::vector<std::thread> threads;
        for (std::vector<const OrvGlyph*>& glyphs : seen)
        {
            threads.emplace_back([&] {
                start.arrive_and_wait();
                for (const char character : {'B', 'C', 'D', 'E'})
                {
                    EXPECT_GT(shared.Advance(character), 0);
                    glyphs.push_back(shared.Glyph(character));
                }
            });
        }
        for (std::thread& thread : threads)
        {
            thread.join();
        }
        EXPECT_EQ(seen, std::vector(threadCount, seen[0]));
    }
}

TEST_F(OrvFontFace, AGlyphIsBuiltWhenItsAdvanceIsFirstNeededAndThenKept)
{
    ASSERT_EQ(Create(font), 1);
    const int slot = 'B' - 30;
    EXPECT_EQ(font.LookupGlyphIndex('B'), slot);
    EXPECT_EQ(font.glyphs.GetAt(slot), nullptr);
    EXPECT_EQ(font.Advance('B'), 521);
    const OrvGlyph* const glyph = font.glyphs.GetAt(slot);
    ASSERT_NE(glyph, nullptr);
    EXPECT_EQ(glyph->GetYMax(), 0.4f);
    EXPECT_EQ(glyph->GetYMin(), 0.1f);
    EXPECT_EQ(glyph->GetDataSize(), 28u);  // a header and a line of two points
    EXPECT_EQ(font.Advance('B'), 521);
    EXPECT_EQ(font.glyphs.GetAt(slot), glyph);
}

TEST_F(OrvFontFace, ASpaceIsAValidGlyphWithoutContours)
{
    ASSERT_EQ(Create(font), 1);
    EXPECT_EQ(font.Advance(' '), 507);
    const OrvGlyph* const glyph = font.glyphs.GetAt(' ' - 30);
    ASSERT_NE(glyph, nullptr);
    EXPECT_FALSE(glyph->IsInvalid());
    EXPECT_EQ(glyph->GetContourCount(), 0);
    EXPECT_EQ(glyph->GetDataSize(), 0u);
}

TEST_F(OrvFontFace, ACharacterOutsideTheFaceHasTheDefaultCharactersAdvance)
{
    ASSERT_EQ(Create(font), 1);
    EXPECT_EQ(font.Advance(10), 500);
    EXPECT_EQ(font.Advance(0xE9), 500);
    // The code one past the last gets an index out of range, which has no advance.
    EXPECT_EQ(font.Advance(86), 0);
}

TEST_F(OrvFontFace, CreatingAgainEmptiesTheCache)
{
    ASSERT_EQ(Create(font), 1);
    font.Advance('B');
    ASSERT_EQ(Create(font), 1);
    EXPECT_EQ(font.glyphs.GetSize(), 56);
    EXPECT_EQ(font.glyphs.GetAt('B' - 30), nullptr);
}

TEST_F(OrvFontFace, AFullNameWithoutAFinalZeroIsReadToTheEndOfItsField)
{
    EnumeratedFont face = EnumerateAsRegistry().at(0);
    std::fill(std::begin(face.record.elfFullName), std::end(face.record.elfFullName), 'x');
    ASSERT_EQ(font.Create(&face.record, &face.metrics), 1);
    EXPECT_EQ(font.GetFullName(), std::string(64, 'x').c_str());
}

TEST_F(OrvFontFace, AGlyphThatCouldNotBeBuiltIsTriedAgainOnTheNextUse)
{
    ASSERT_EQ(Create(font), 1);
    // Without the library's mutex no glyph can be built.
    DetachLibrary();
    EXPECT_EQ(font.Advance('B'), 0);
    EXPECT_EQ(font.glyphs.GetAt('B' - 30), nullptr);
    AttachLibrary();
    EXPECT_EQ(font.Advance('B'), 521);
}

TEST(OrvFontWithoutFaces, HasNoOutlineMetricsAndIsNotCreated)
{
    const PrivateFonts none({});
    const ENUMLOGFONTA record = {};
    NEWTEXTMETRICA metrics = {};
    metrics.ntmSizeEM = 1000;
    OrvFont font;
    EXPECT_EQ(font.Create(&record, &metrics), 0);
    EXPECT_EQ(font.outlineMetrics, nullptr);
}

// The next tests use a face whose glyph for missing characters is broken.

struct ShownMessage
{
    HWND owner;
    std::string text;
    std::string caption;
    UINT type;
};
std::vector<ShownMessage> shown;

int Show(HWND owner, LPCSTR text, LPCSTR caption, UINT type)
{
    shown.push_back({owner, text, caption, type});
    return IDOK;
}

class OrvFontBrokenFace : public OrvFontFace
{
protected:
    OrvFontBrokenFace() : OrvFontFace(std::vector<std::string>())
    {
        // The first glyph of the face claims more contours than it has.
        const std::string path = installed.Folder() + "/broken.ttf";
        FontFile::EdgeTest().PutWord("glyf", 0, 0x7FFF).Write(path);
        installed.Install(path);
        shown.clear();
        previous = SetMessageBoxHandler(Show);
    }
    ~OrvFontBrokenFace() override { SetMessageBoxHandler(previous); }

    MessageBoxHandler previous;
};

TEST_F(OrvFontBrokenFace, ACharacterWithoutAReadableOutlineIsReportedOnceAndHasNoAdvance)
{
    ASSERT_EQ(Create(font), 1);

    EXPECT_EQ(font.Advance('!'), 0);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].owner, nullptr);
    EXPECT_EQ(shown[0].caption, "Orvane");
    EXPECT_EQ(shown[0].type & 0xF0, MB_ICONEXCLAMATION);
    EXPECT_EQ(shown[0].text,
              "Glyph Construction Error:  \n\nGlyph Number: 3  \nCharacter Number: 33  \n"
              "Font Name: Edge Test Regular  ");
    const OrvGlyph* const glyph = font.glyphs.GetAt('!' - 30);
    ASSERT_NE(glyph, nullptr);
    EXPECT_TRUE(glyph->IsInvalid());
    EXPECT_EQ(glyph->GetDataSize(), 0u);

    EXPECT_EQ(font.Advance('!'), 0);
    EXPECT_EQ(font.ConstructOrvGlyph('!' - 30), 0);
    EXPECT_EQ(shown.size(), 1u);
    // The other glyphs are not broken.
    EXPECT_EQ(font.Advance('B'), 521);
    EXPECT_EQ(shown.size(), 1u);
}
}  // namespace
