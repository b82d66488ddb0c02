// SPDX-License-Identifier: MIT
#include "platform/Limits.h"
#include "platform/ShapingFace.h"
#include "tests/support/FontFile.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>

namespace
{

using namespace orvane;

/// Numbers of a table, with the highest byte first.
class Bytes
{
public:
    Bytes& Byte(unsigned value)
    {
        table_.push_back(static_cast<std::uint8_t>(value));
        return *this;
    }
    Bytes& Word(unsigned value) { return Byte(value >> 8).Byte(value); }
    Bytes& Long(unsigned value) { return Word(value >> 16).Word(value); }
    const FontFile::Table& Table() const { return table_; }

private:
    FontFile::Table table_;
};

/// A palette of opaque red and of green with an opacity of 51/255.
FontFile::Table RedAndGreen()
{
    Bytes table;
    table.Word(0).Word(2).Word(1).Word(2).Long(14).Word(0);
    table.Byte(0).Byte(0).Byte(255).Byte(255);  // blue, green, red, alpha
    table.Byte(0).Byte(255).Byte(0).Byte(51);
    return table.Table();
}

/// A table "COLR" of version 0 in which glyph 3 has these layers.
FontFile::Table PlainLayers(const std::vector<std::array<unsigned, 2>>& glyphsAndColors)
{
    const auto count = static_cast<unsigned>(glyphsAndColors.size());
    Bytes table;
    table.Word(0).Word(1).Long(14).Long(20).Word(count);
    table.Word(3).Word(0).Word(count);
    for (const auto& [glyph, color] : glyphsAndColors)
    {
        table.Word(glyph).Word(color);
    }
    return table.Table();
}

class ColorLayers : public testing::Test
{
protected:
    ColorLayers() { std::filesystem::create_directories(folder_); }
    ~ColorLayers() override { std::filesystem::remove_all(folder_); }

    /// The layers of a glyph of the test's font with this table "COLR".
    std::vector<ColorLayer> LayersOf(unsigned glyph, const FontFile::Table& colr) const
    {
        const std::string path = folder_ + "/color.ttf";
        FontFile::EdgeTest().Put("COLR", colr).Put("CPAL", RedAndGreen()).Write(path);
        std::string problem;
        const auto face = ShapingFace::Open({path, 0, {}}, &problem);
        EXPECT_NE(face, nullptr) << problem;
        return face == nullptr ? std::vector<ColorLayer>() : face->ColorLayers(glyph);
    }

private:
    std::string folder_ = std::filesystem::temp_directory_path() / "orvane-color-layers";
};

TEST_F(ColorLayers, GlyphsOfOneColourHaveNone)
{
    EXPECT_TRUE(LayersOf(1, PlainLayers({{1, 0}})).empty());
}

TEST_F(ColorLayers, LayersHaveTheColoursOfTheFirstPalette)
{
    const std::vector<ColorLayer> layers = LayersOf(3, PlainLayers({{1, 0}, {2, 1}, {4, 0xFFFF}}));

    ASSERT_EQ(layers.size(), 3U);
    EXPECT_EQ(layers[0].glyph, 1U);
    EXPECT_EQ(layers[0].red, 1);
    EXPECT_EQ(layers[0].green, 0);
    EXPECT_EQ(layers[0].alpha, 1);
    EXPECT_FALSE(layers[0].usesTextColor);
    EXPECT_EQ(layers[1].glyph, 2U);
    EXPECT_EQ(layers[1].green, 1);
    EXPECT_EQ(layers[1].alpha, 0.2);
    EXPECT_EQ(layers[2].glyph, 4U);
    EXPECT_TRUE(layers[2].usesTextColor);
    EXPECT_EQ(layers[2].alpha, 1);
}

TEST_F(ColorLayers, AColourThatThePaletteLacksLeavesTheGlyphPlain)
{
    EXPECT_TRUE(LayersOf(3, PlainLayers({{1, 0}, {2, 2}})).empty());
}

TEST_F(ColorLayers, AGlyphHasAtMost255Layers)
{
    const std::size_t most = limits::maxColorLayers;
    EXPECT_EQ(LayersOf(3, PlainLayers({most, {1, 0}})).size(), most);
    EXPECT_TRUE(LayersOf(3, PlainLayers({most + 1, {1, 0}})).empty());
}

TEST_F(ColorLayers, ATableThatIsCutOffAnywhereDoesNoHarm)
{
    const FontFile::Table whole = PlainLayers({{1, 0}, {2, 1}});
    for (std::size_t length = 0; length < whole.size(); ++length)
    {
        const FontFile::Table cut(whole.begin(),
                                  whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_TRUE(LayersOf(3, cut).empty()) << length;
    }
}

}  // namespace
