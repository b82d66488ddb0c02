// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/FontTables.h"

#include "tests/support/FontFile.h"
#include "tests/support/PrivateFonts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include FT_FREETYPE_H

using namespace posix;

namespace
{

/// A face as FreeType opens it.
class Opened
{
public:
    explicit Opened(const InstalledFace& face)
    {
        FT_Init_FreeType(&library_);
        if (FT_New_Face(library_, face.file.c_str(), face.index, &face_) != 0)
        {
            face_ = nullptr;
        }
    }
    ~Opened()
    {
        FT_Done_Face(face_);
        FT_Done_FreeType(library_);
    }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    FT_Face Face() const { return face_; }

    template <typename Table>
    const Table& TableOf(FT_Sfnt_Tag tag) const
    {
        return *static_cast<const Table*>(FT_Get_Sfnt_Table(face_, tag));
    }

private:
    FT_Library library_ = nullptr;
    FT_Face face_ = nullptr;
};

void ExpectWhatFreeTypeSays(const DesignMetrics& read, const Opened& opened)
{
    const FT_Face face = opened.Face();
    EXPECT_EQ(read.unitsPerEm, face->units_per_EM);
    EXPECT_EQ(read.box.left, face->bbox.xMin);
    EXPECT_EQ(read.box.bottom, face->bbox.yMin);
    EXPECT_EQ(read.box.right, face->bbox.xMax);
    EXPECT_EQ(read.box.top, face->bbox.yMax);
    EXPECT_EQ(read.bold, (face->style_flags & FT_STYLE_FLAG_BOLD) != 0);

    const auto& os2 = opened.TableOf<TT_OS2>(FT_SFNT_OS2);
    EXPECT_EQ(read.ascent, os2.usWinAscent);
    EXPECT_EQ(read.descent, os2.usWinDescent);
    EXPECT_EQ(read.averageWidth, os2.xAvgCharWidth);
    EXPECT_TRUE(std::equal(std::begin(os2.panose), std::end(os2.panose), &read.panose.bFamilyType));
    EXPECT_EQ(read.fixedPitch,
              FT_IS_FIXED_WIDTH(face) || (os2.panose[0] == 2 && os2.panose[3] == 9));
    EXPECT_EQ(read.selection, os2.fsSelection);
    EXPECT_EQ(read.embedding, os2.fsType);
    EXPECT_EQ(read.typographicAscent, os2.sTypoAscender);
    EXPECT_EQ(read.typographicDescent, os2.sTypoDescender);
    EXPECT_EQ(read.typographicLineGap, os2.sTypoLineGap);
    EXPECT_EQ(read.capHeight, os2.version >= 2 ? os2.sCapHeight : 0);
    EXPECT_EQ(read.xHeight, os2.version >= 2 ? os2.sxHeight : 0);
    EXPECT_EQ(read.subscriptSize.x, os2.ySubscriptXSize);
    EXPECT_EQ(read.subscriptSize.y, os2.ySubscriptYSize);
    EXPECT_EQ(read.subscriptOffset.x, os2.ySubscriptXOffset);
    EXPECT_EQ(read.subscriptOffset.y, os2.ySubscriptYOffset);
    EXPECT_EQ(read.superscriptSize.x, os2.ySuperscriptXSize);
    EXPECT_EQ(read.superscriptSize.y, os2.ySuperscriptYSize);
    EXPECT_EQ(read.superscriptOffset.x, os2.ySuperscriptXOffset);
    EXPECT_EQ(read.superscriptOffset.y, os2.ySuperscriptYOffset);
    EXPECT_EQ(read.strikeoutSize, os2.yStrikeoutSize);
    EXPECT_EQ(read.strikeoutPosition, os2.yStrikeoutPosition);
    EXPECT_EQ(read.firstCharacter, os2.usFirstCharIndex);
    EXPECT_EQ(read.lastCharacter, os2.usLastCharIndex);

    const auto& header = opened.TableOf<TT_HoriHeader>(FT_SFNT_HHEA);
    EXPECT_EQ(read.lineGap, header.Line_Gap);
    EXPECT_EQ(read.externalLeading,
              std::max(0, header.Line_Gap - (os2.usWinAscent + os2.usWinDescent -
                                             (header.Ascender - header.Descender))));
    EXPECT_EQ(read.slopeRise, header.caret_Slope_Rise);
    EXPECT_EQ(read.slopeRun, header.caret_Slope_Run);
    if (FT_Get_Sfnt_Table(face, FT_SFNT_POST) != nullptr)
    {
        const auto& postScript = opened.TableOf<TT_Postscript>(FT_SFNT_POST);
        EXPECT_EQ(read.underlinePosition, postScript.underlinePosition);
        EXPECT_EQ(read.underlineSize, postScript.underlineThickness);
    }
}

/// A file of a test's own and the face in it.
class FontTables : public testing::Test
{
protected:
    std::optional<DesignMetrics> Read(const FontFile& font, int index = 0)
    {
        font.Write(path_);
        return ReadFace(index);
    }
    std::optional<DesignMetrics> ReadFace(int index = 0, OutlineKind kind = OutlineKind::TrueType)
    {
        InstalledFace face;
        face.file = path_;
        face.index = index;
        face.kind = kind;
        return ReadDesignTables(face);
    }

    PrivateFonts fonts_{{}};  // for its folder
    const std::string path_ = fonts_.Folder() + "/font.ttf";
};

TEST(FontTablesOfInstalledFaces, GiveTheSameMeasuresAsFreeType)
{
    int looked = 0;
    for (const auto& face : ListInstalledFaces())
    {
        if (face->kind != OutlineKind::TrueType && face->kind != OutlineKind::Cubic)
        {
            continue;
        }
        const std::optional<DesignMetrics> read = ReadDesignTables(*face);
        if (!read)
        {
            continue;  // FreeType is asked
        }
        SCOPED_TRACE(face->file + ' ' + std::to_string(face->index));
        const Opened opened(*face);
        ASSERT_NE(opened.Face(), nullptr);
        ExpectWhatFreeTypeSays(*read, opened);
        ++looked;
    }
    EXPECT_GT(looked, 0);
}

TEST_F(FontTables, GiveTheMeasuresOfTheEdgeCasesFont)
{
    const auto read = Read(FontFile::EdgeTest());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->unitsPerEm, 1000);
}

TEST_F(FontTables, PreferTheUniqueNameForWindows)
{
    FontFile font = FontFile::EdgeTest();
    font.Names("Family", "Style", "Full N\u00E4me \u0416", "PostScript");  // 3 and 4 alike
    EXPECT_EQ(Read(font)->unique, "Full N\u00E4me \u0416");

    const auto record = [](std::uint8_t platform, std::uint8_t language, std::uint8_t id,
                           std::uint8_t offset) {
        return FontFile::Table{0, platform, 0, 0, 0, language, 0, id, 0, 1, 0, offset};
    };
    const auto table = [](const std::vector<FontFile::Table>& records) {
        const auto count = static_cast<std::uint8_t>(records.size());
        FontFile::Table bytes = {0, 0, 0, count, 0, static_cast<std::uint8_t>(6 + 12 * count)};
        for (const FontFile::Table& each : records)
        {
            bytes.insert(bytes.end(), each.begin(), each.end());
        }
        bytes.insert(bytes.end(), {'a', 'b', 'c'});
        return bytes;
    };
    const auto unique = [&](const std::vector<FontFile::Table>& records) {
        return Read(font.Put("name", table(records)))->unique;
    };
    const FontFile::Table otherName = record(1, 0, 4, 2);
    EXPECT_EQ(unique({record(1, 0, 3, 0), record(1, 0, 3, 1), otherName}), "b");
    EXPECT_EQ(unique({record(1, 5, 3, 0), otherName}), "");  // in another language
    EXPECT_EQ(unique({record(1, 0, 3, 9)}), "");             // outside the table
    EXPECT_EQ(unique({}), "");
    EXPECT_EQ(Read(font.Put("name", {0, 0, 0, 9, 0, 6}))->unique, "");
}

TEST_F(FontTables, FindTheFaceInACollection)
{
    FontFile wide = FontFile::EdgeTest();
    constexpr std::size_t averageWidth = 2;
    wide.PutWord("OS/2", averageWidth, 1234);
    FontFile::WriteCollection({FontFile::EdgeTest(), wide}, path_);
    ASSERT_TRUE(ReadFace(0));
    EXPECT_NE(ReadFace(0)->averageWidth, 1234);
    ASSERT_TRUE(ReadFace(1));
    EXPECT_EQ(ReadFace(1)->averageWidth, 1234);
    EXPECT_FALSE(ReadFace(2));
}

TEST_F(FontTables, AreLeftToFreeTypeWithoutARequiredTable)
{
    for (const char* const tag : {"head", "hhea", "maxp", "hmtx", "OS/2", "glyf", "loca"})
    {
        EXPECT_FALSE(Read(FontFile::EdgeTest().Remove(tag))) << tag;
        EXPECT_FALSE(Read(FontFile::EdgeTest().Put(tag, {}))) << tag;
    }
    for (const char* const tag : {"head", "hhea", "OS/2", "post"})
    {
        EXPECT_FALSE(Read(FontFile::EdgeTest().Put(tag, {0, 1, 0, 0}))) << tag;
    }
    ASSERT_TRUE(Read(FontFile::EdgeTest().Remove("post").Remove("name")));
}

TEST_F(FontTables, AreLeftToFreeTypeWithoutTheHeightOfTheCell)
{
    constexpr std::size_t winAscent = 74;
    FontFile font = FontFile::EdgeTest();
    font.PutWord("OS/2", winAscent, 0).PutWord("OS/2", winAscent + 2, 0);
    EXPECT_FALSE(Read(font));
}

TEST_F(FontTables, AreLeftToFreeTypeForOutlinesOfAnotherKind)
{
    constexpr std::uint32_t compact = 0x4F54544F;  // OTTO
    EXPECT_FALSE(Read(FontFile::EdgeTest().Flavour(compact)));
    FontFile::EdgeTest().Write(path_);
    EXPECT_FALSE(ReadFace(0, OutlineKind::Cubic));
}

TEST_F(FontTables, AreLeftToFreeTypeForAnInstanceWhoseMeasuresVary)
{
    constexpr int firstInstance = 1 << 16;
    EXPECT_TRUE(Read(FontFile::EdgeTest(), firstInstance));
    FontFile varied = FontFile::EdgeTest();
    varied.Put("MVAR", {0, 1, 0, 0, 0, 0, 0, 8, 0, 0, 0, 0});
    EXPECT_FALSE(Read(varied, firstInstance));
    EXPECT_TRUE(Read(varied));
}

TEST_F(FontTables, AreLeftToFreeTypeForATruncatedFile)
{
    FontFile::EdgeTest().Write(path_);
    constexpr std::uintmax_t longestPadding = 3;  // behind the last table
    for (auto kept = std::filesystem::file_size(path_) - longestPadding; kept-- > 0;)
    {
        std::filesystem::resize_file(path_, kept);
        EXPECT_FALSE(ReadFace()) << kept;
    }
    std::filesystem::remove(path_);
    EXPECT_FALSE(ReadFace());
    std::filesystem::create_directory(path_);
    EXPECT_FALSE(ReadFace());
}

}  // namespace
