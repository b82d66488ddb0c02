// SPDX-License-Identifier: MIT
// Texts in fonts that ask for too much.

#include "orvane/Error.h"
#include "platform/Limits.h"
#include "shaping/TextShaper.h"
#include "tests/shaping/ShapedTexts.h"
#include "tests/support/FontFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <initializer_list>

namespace
{

using namespace orvane;

void Append(FontFile::Table& table, std::initializer_list<int> words)
{
    for (const int word : words)
    {
        table.push_back(static_cast<std::uint8_t>(word >> 8));
        table.push_back(static_cast<std::uint8_t>(word));
    }
}

void AppendTag(FontFile::Table& table, const char* tag)
{
    table.insert(table.end(), tag, tag + 4);
}

/// A table of substitutions whose feature ccmp replaces a glyph by \p count of the same.
FontFile::Table Multiplying(int glyph, int count)
{
    FontFile::Table table;
    Append(table, {1, 0, 10, 30, 44});  // where scripts, features and lookups begin
    Append(table, {1});
    AppendTag(table, "DFLT");
    Append(table, {8, 4, 0});          // the script has a language system at 4 alone
    Append(table, {0, 0xFFFF, 1, 0});  // which has feature 0
    Append(table, {1});
    AppendTag(table, "ccmp");
    Append(table, {8, 0, 1, 0});        // the feature has lookup 0
    Append(table, {1, 4, 2, 0, 1, 8});  // the lookup: kind 2, a subtable at 8
    Append(table, {1, 8, 1, 14});       // the subtable: its glyphs at 8, one sequence at 14
    Append(table, {1, 1, glyph});
    Append(table, {count});
    for (int n = 0; n < count; ++n)
    {
        Append(table, {glyph});
    }
    return table;
}

/// EdgeTest.ttf with a letter A that becomes many.
class DamagedFonts : public testing::Test
{
protected:
    DamagedFonts() { std::filesystem::create_directories(folder_); }
    ~DamagedFonts() override { std::filesystem::remove_all(folder_); }

    /// The number of glyphs of a text, or the problem with it.
    std::string SetText(const std::string& text, int glyphsOfA)
    {
        const std::string file = folder_ + "/" + std::to_string(glyphsOfA) + ".ttf";
        const auto sound = ShapingFace::Open({ORVANE_TEST_DATA "/EdgeTest.ttf", 0, {}}, nullptr);
        const int a = static_cast<int>(sound->GlyphOf(U'A'));
        FontFile::EdgeTest().Put("GSUB", Multiplying(a, glyphsOfA)).Write(file);
        LayoutOptions options;
        options.style.fonts.faces = {ShapingFace::Open({file, 0, {}}, nullptr)};
        options.style.fonts.usesInstalledFonts = false;
        try
        {
            return std::to_string(TextShaper().LayOut(text, options).glyphs.size());
        }
        catch (const Error& error)
        {
            EXPECT_EQ(error.Place(), file);
            return error.Problem();
        }
    }

private:
    std::string folder_ = std::filesystem::temp_directory_path() / "orvane-damaged-fonts";
};

TEST_F(DamagedFonts, AFontMakesAtMost16GlyphsOfEachCharacterAnd64More)
{
    // 64 + 16 * 4 = 128 = 4 * 32.
    EXPECT_EQ(SetText("AAAA", 32), "128");
    EXPECT_EQ(SetText("AAAA", 33), "makes more than 128 glyphs of 4 characters");
    // HarfBuzz itself stops at 16,384 glyphs, or at 64 of each character.
    EXPECT_EQ(SetText(std::string(300, 'A'), 1000),
              "makes more than 4864 glyphs of 300 characters");
}

// Each line is shaped by itself.
TEST_F(DamagedFonts, ATextOfManyRunsHasTheSameLimit)
{
    const std::string lines = "A\nA\nA\nA\nA\nA\nA\nA";
    // 64 + 16 * 15 = 304 = 8 * 38.
    EXPECT_EQ(SetText(lines, 38), "304");
    EXPECT_EQ(SetText(lines, 39), "makes more than 304 glyphs of 15 characters");
}

}  // namespace
