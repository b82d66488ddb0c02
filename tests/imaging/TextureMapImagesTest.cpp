// SPDX-License-Identifier: MIT
#include "imaging/TextureMap.h"
#include "tests/support/BmpFile.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{

using Values = std::vector<int>;

std::unique_ptr<_RGBImageRecord> Loaded(const BmpFile& file)
{
    const TemporaryFile temporary("loaded.bmp", file.File());
    return std::unique_ptr<_RGBImageRecord>(TextureMap::DIBImageLoad(temporary.Path()));
}

Values PixelsOf(const _RGBImageRecord& image)
{
    return Values(image.data, image.data + 3 * image.sizeX * image.sizeY);
}

TEST(DIBImageLoad, RowsLoseTheirPaddingAndTurnRedGreenBlue)
{
    BmpFile file;
    file.width = 1;
    file.height = 2;
    file.pixels = {1, 2, 3, 0xEE, 4, 5, 6, 0xEE};
    const auto image = Loaded(file);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->sizeX, 1);
    EXPECT_EQ(image->sizeY, 2);
    EXPECT_EQ(PixelsOf(*image), (Values{3, 2, 1, 6, 5, 4}));
}

TEST(DIBImageLoad, ATopDownFileComesLowestRowFirst)
{
    BmpFile file;
    file.width = 1;
    file.height = -2;
    file.pixels = {1, 2, 3, 0, 4, 5, 6, 0};
    const auto image = Loaded(file);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->sizeY, 2);
    EXPECT_EQ(PixelsOf(*image), (Values{6, 5, 4, 3, 2, 1}));
}

TEST(DIBImageLoad, AnyDepthIsConverted)
{
    BmpFile file;
    file.width = 2;
    file.height = 1;
    file.bitCount = 1;
    file.behindHeader = {1, 2, 3, 0, 4, 5, 6, 0};
    file.pixels = {0x40, 0, 0, 0};
    const auto image = Loaded(file);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(PixelsOf(*image), (Values{3, 2, 1, 6, 5, 4}));
}

TEST(DIBImageLoad, AFileThatCannotBeLoadedGivesNull)
{
    EXPECT_EQ(TextureMap::DIBImageLoad(nullptr), nullptr);
    EXPECT_EQ(TextureMap::DIBImageLoad(""), nullptr);
    EXPECT_EQ(TextureMap::DIBImageLoad("no/such/file.bmp"), nullptr);
    const TemporaryFile words("words_load.bmp", std::string("words in a file"));
    EXPECT_EQ(TextureMap::DIBImageLoad(words.Path()), nullptr);
    BmpFile file;
    file.width = 1;
    file.height = 2;
    file.pixels = {1, 2, 3, 0};
    EXPECT_EQ(Loaded(file), nullptr);
}

TEST(TextureMap, ItsImageIsLoadedOnFirstUse)
{
    BmpFile sample;
    sample.width = sample.height = 1;
    sample.pixels = {1, 2, 3, 0};
    const TemporaryFile file("firstuse.bmp", sample.File());
    TextureMap texture(file.Path());
    EXPECT_EQ(texture.image, nullptr);
    const _RGBImageRecord* const image = texture.GetImage();
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(PixelsOf(*image), (Values{3, 2, 1}));
    EXPECT_EQ(texture.GetImage(), image);
    EXPECT_EQ(texture.ReleaseOwnership(), 0);
}

}  // namespace
