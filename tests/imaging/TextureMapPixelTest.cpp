// SPDX-License-Identifier: MIT
#include "imaging/TextureMap.h"

#include "imaging/GLMemoryDIB.h"
#include "tests/support/BmpFile.h"
#include "tests/support/HeadlessContext.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace
{

// Every pixel of that colour.
void GiveImage(TextureMap& texture, int width, int height, BYTE red, BYTE green, BYTE blue)
{
    const std::size_t pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    BYTE* const data = new BYTE[3 * pixels];
    for (std::size_t i = 0; i < pixels; ++i)
    {
        data[3 * i] = red;
        data[3 * i + 1] = green;
        data[3 * i + 2] = blue;
    }
    texture.image = new _RGBImageRecord(width, height, data);
}

const BYTE* BitsOf(GLMemoryDIB& dib)
{
    return static_cast<const BYTE*>(dib.GetDIBBits());
}

TEST(TextureMap, ADitheredImageHasOpenGLsPalette)
{
    const HeadlessContext current(4, 4);
    REQUIRE_CONTEXT(current);
    TextureMap texture;
    GiveImage(texture, 3, 2, 255, 0, 0);
    BYTE* const last = texture.image->data + 15;  // the upper right
    last[0] = 0;
    last[1] = last[2] = 255;
    GLMemoryDIB* const dithered = texture.GetDitheredImage();
    ASSERT_NE(dithered, nullptr);
    EXPECT_EQ(dithered->GetDIBInfo()->bmiHeader.biBitCount, 8);
    EXPECT_EQ(dithered->GetDIBInfo()->bmiHeader.biWidth, 3);
    EXPECT_EQ(dithered->GetDIBInfo()->bmiHeader.biHeight, 2);
    const BYTE* const bits = BitsOf(*dithered);
    const std::vector<int> rows(bits, bits + 8);
    EXPECT_EQ(rows, (std::vector<int>{7, 7, 7, rows[3], 7, 7, 248, rows[7]}));
    EXPECT_EQ(dithered->LookupBackgroundColor(), 0x0000FFUL);
    EXPECT_EQ(texture.GetDitheredImage(), dithered);  // made once
    texture.FreeDitheredImage();
    EXPECT_EQ(texture.ditheredImage, nullptr);
}

TEST(TextureMap, AColourThatThePaletteLacksIsDithered)
{
    TextureMap texture;
    GiveImage(texture, 64, 64, 0, 0, 170 + 43);  // half way between two of four blues
    const int made = texture.GenerateDitheredImage();
    if (!made)
    {
        FAIL() << "no OpenGL context";
    }
    int lower = 0;
    int upper = 0;
    for (int i = 0; i < 64 * 64; ++i)
    {
        const int index = BitsOf(*texture.ditheredImage)[i];
        lower += index == 2 << 6;
        upper += index == 3 << 6;
    }
    EXPECT_EQ(lower + upper, 64 * 64);
    EXPECT_NEAR(upper, 64 * 32, 64 * 4);
}

// The colour of OpenGL's palette for 8 bits with that index.
std::array<BYTE, 3> PaletteColor(int index)
{
    return {static_cast<BYTE>((index & 7) * 255 / 7), static_cast<BYTE>((index >> 3 & 7) * 255 / 7),
            static_cast<BYTE>((index >> 6) * 255 / 3)};
}

// The palette index of a pixel of a picture in which neighbours, and bands, differ.
int IndexAt(int x, int y)
{
    return (x + x / 256 + 3 * y + y / 256) & 255;
}

TEST(TextureMap, AnImageOfSeveralBandsIsDitheredWhole)
{
    const HeadlessContext current(4, 4);
    REQUIRE_CONTEXT(current);
    const HDC dc = wglGetCurrentDC();
    // Bands have at most 2048 pixels in each direction and 1 MiB. The first picture fits into one
    // band; the others have bands above one another, beside one another, and both.
    for (const auto& [width, height] :
         {std::pair(1024, 1024), std::pair(1024, 1025), std::pair(1501, 1407), std::pair(2050, 300),
          std::pair(2050, 1030)})
    {
        TextureMap texture;
        GiveImage(texture, width, height, 0, 0, 0);
        for (int y = 0; y < height; ++y)
        {
            for (int x = 0; x < width; ++x)
            {
                const std::array<BYTE, 3> color = PaletteColor(IndexAt(x, y));
                std::copy(color.begin(), color.end(), texture.image->data + 3 * (y * width + x));
            }
        }
        GLMemoryDIB* const dithered = texture.GetDitheredImage();
        ASSERT_NE(dithered, nullptr);
        EXPECT_EQ(wglGetCurrentDC(), dc);
        const BITMAPINFOHEADER& header = dithered->GetDIBInfo()->bmiHeader;
        EXPECT_EQ(header.biWidth, width);
        ASSERT_EQ(header.biHeight, height);
        EXPECT_EQ(dithered->GetDIBWidth(), width);
        EXPECT_EQ(dithered->GetDIBHeight(), height);
        EXPECT_EQ(dithered->GetBandingRows(), 1);
        EXPECT_EQ(dithered->GetBandingColumns(), 1);
        const int rowBytes = (width + 3) / 4 * 4;
        int wrong = 0;
        for (int y = 0; y < height; ++y)
        {
            for (int x = 0; x < width; ++x)
            {
                wrong += BitsOf(*dithered)[y * rowBytes + x] != IndexAt(x, y);
            }
        }
        EXPECT_EQ(wrong, 0) << width << " by " << height;
    }
}

TEST(TextureMap, TheDitheringPatternGoesOnFromBandToBand)
{
    const HeadlessContext current(4, 4);
    REQUIRE_CONTEXT(current);
    TextureMap texture;
    GiveImage(texture, 2060, 1030, 0, 0, 170 + 43);  // half way between two of four blues
    GLMemoryDIB* const dithered = texture.GetDitheredImage();
    ASSERT_NE(dithered, nullptr);
    ASSERT_EQ(dithered->GetDIBInfo()->bmiHeader.biHeight, 1030);
    const BYTE* const bits = BitsOf(*dithered);
    int wrong = 0;
    for (int y = 0; y < 1030; ++y)
    {
        for (int x = 0; x < 2060; ++x)
        {
            wrong += bits[y * 2060 + x] != bits[(y & 3) * 2060 + (x & 3)];
        }
    }
    EXPECT_EQ(wrong, 0);
}

TEST(TextureMap, TheContextIsCurrentAgainAfterDithering)
{
    const HeadlessContext current(4, 4);
    REQUIRE_CONTEXT(current);
    const HDC dc = wglGetCurrentDC();
    const HGLRC context = wglGetCurrentContext();
    TextureMap texture;
    GiveImage(texture, 3, 2, 1, 2, 3);
    EXPECT_EQ(texture.GenerateDitheredImage(), 1);
    EXPECT_EQ(wglGetCurrentDC(), dc);
    EXPECT_EQ(wglGetCurrentContext(), context);
    EXPECT_EQ(texture.ReleaseOwnership(), 0);  // given back

    texture.FreeDitheredImage();
    EXPECT_EQ(wglGetCurrentContext(), context);
    {
        TextureMap shortLived;
        GiveImage(shortLived, 3, 2, 1, 2, 3);
        EXPECT_EQ(shortLived.GenerateDitheredImage(), 1);
    }
    EXPECT_EQ(wglGetCurrentContext(), context);

    TextureMap none;
    EXPECT_EQ(none.GenerateDitheredImage(), 0);
    EXPECT_EQ(none.GetDitheredImage(), nullptr);
    EXPECT_EQ(wglGetCurrentDC(), dc);
    EXPECT_EQ(none.ReleaseOwnership(), 0);

    texture.FreeImage();
    GiveImage(texture, 0, 2, 1, 2, 3);  // of which no bitmap can be made
    EXPECT_EQ(texture.GenerateDitheredImage(), 0);
    EXPECT_EQ(texture.ditheredImage, nullptr);
    EXPECT_EQ(wglGetCurrentDC(), dc);
    EXPECT_EQ(texture.ReleaseOwnership(), 0);
}

// Fills the window with the texture, so many times across.
void DrawAcross(TextureMap& texture, int repeats)
{
    ASSERT_EQ(texture.PrepareTextureMap(), 1);
    ASSERT_EQ(texture.EnableTextureMap(), 1);
    glClear(GL_COLOR_BUFFER_BIT);
    glBegin(GL_QUADS);
    for (const auto& [x, y] : {std::pair(0, 0), std::pair(1, 0), std::pair(1, 1), std::pair(0, 1)})
    {
        glTexCoord2i(repeats * x, y);
        glVertex2i(2 * x - 1, 2 * y - 1);
    }
    glEnd();
    EXPECT_EQ(texture.DisableTextureMap(), 1);
}

// Black and white columns, each a pixel wide, in a texture of that quality.
struct Columns : TextureMap
{
    explicit Columns(DWORD drawnQuality)
    {
        GiveImage(*this, 16, 16, 0, 0, 0);
        for (int i = 0; i < 16 * 16; i += 2)
        {
            std::fill_n(image->data + 3 * i, 3, BYTE{255});
        }
        textureFlags = Valid | Textured;
        modulate = 0;
        quality = drawnQuality;
    }
};

TEST(TextureMap, EnlargedItIsMixedUnlessItsQualityIs0)
{
    const HeadlessContext current(64, 64);
    REQUIRE_CONTEXT(current);
    for (const DWORD quality : {0U, 1U, 2U})
    {
        Columns texture(quality);
        ASSERT_EQ(texture.GenerateTextureMaps(), 1);
        DrawAcross(texture, 1);  // four pixels for one
        int greys = 0;
        for (int x = 0; x < 64; ++x)
        {
            const int level = current.Pixel(x, 32).green;
            greys += level > 20 && level < 235;
        }
        // Mixed in straight lines from one column's middle to the next.
        EXPECT_EQ(greys, quality == 0 ? 0 : 64) << quality;
        EXPECT_GT(current.Pixel(1, 32).green, 127);
        EXPECT_LT(current.Pixel(5, 32).green, 127);
    }
}

TEST(TextureMap, MadeSmallItIsEvenlyGreyWithMipmapsAlone)
{
    const HeadlessContext current(16, 16);
    REQUIRE_CONTEXT(current);
    for (const DWORD quality : {0U, 1U, 2U})
    {
        Columns texture(quality);
        ASSERT_EQ(texture.GenerateTextureMaps(), 1);
        DrawAcross(texture, 5);  // five pixels for one
        int greys = 0;
        for (int x = 0; x < 16; ++x)
        {
            greys += std::abs(current.Pixel(x, 8).green - 127) <= 3;
        }
        EXPECT_EQ(greys == 16, quality == 2) << quality << ": " << greys;
    }
}

TEST(TextureMap, ATextureIsDrawnInItsFilesColours)
{
    const HeadlessContext current(16, 16);
    REQUIRE_CONTEXT(current);
    BmpFile sample;
    sample.width = 2;
    sample.height = 1;
    sample.pixels = {0, 0, 255, 255, 0, 0, 0, 0};  // red, then blue
    const TemporaryFile file("drawn.bmp", sample.File());
    TextureMap texture(file.Path());
    texture.textureFlags |= TextureMap::Textured;
    texture.modulate = 0;
    ASSERT_EQ(texture.GenerateTextureMaps(), 1);
    DrawAcross(texture, 2);
    EXPECT_EQ(current.Pixel(1, 8), (Rgb{255, 0, 0}));
    EXPECT_EQ(current.Pixel(6, 8), (Rgb{0, 0, 255}));
    EXPECT_EQ(current.Pixel(9, 8), (Rgb{255, 0, 0}));
    EXPECT_EQ(current.Pixel(14, 8), (Rgb{0, 0, 255}));
}

TEST(TextureMap, APictureAtOrBeyondTheLimitsIsDrawnInEveryQuality)
{
    const HeadlessContext current(16, 16);
    REQUIRE_CONTEXT(current);
    for (const auto& [width, height] :
         {std::pair(16384, 1), std::pair(1, 16384), std::pair(16385, 3), std::pair(3, 16385),
          std::pair(4000000, 1), std::pair(1, 4000000), std::pair(16384, 64)})
    {
        for (const DWORD quality : {0U, 1U, 2U})
        {
            TextureMap texture;
            GiveImage(texture, width, height, 255, 0, 0);
            texture.textureFlags = TextureMap::Valid | TextureMap::Textured;
            texture.modulate = 0;
            texture.SetQuality(quality);
            ASSERT_EQ(texture.GenerateTextureMaps(), 1);
            DrawAcross(texture, 1);
            EXPECT_EQ(current.Pixel(8, 8), (Rgb{255, 0, 0}))
                << width << " by " << height << ", " << quality;
        }
    }
}

TEST(TextureMap, ANarrowTextureIsRightUnderEveryPackAlignment)
{
    const HeadlessContext current(16, 16);
    REQUIRE_CONTEXT(current);
    for (const GLint alignment : {1, 2, 4, 8})
    {
        glPixelStorei(GL_PACK_ALIGNMENT, alignment);
        TextureMap texture;
        GiveImage(texture, 2, 4, 255, 0, 0);
        for (int row = 0; row < 4; ++row)
        {
            BYTE* const right = texture.image->data + 6 * row + 3;
            right[0] = 0;
            right[2] = 255;
        }
        texture.textureFlags = TextureMap::Valid | TextureMap::Textured;
        texture.modulate = 0;
        ASSERT_EQ(texture.GenerateTextureMaps(), 1);
        glPixelStorei(GL_PACK_ALIGNMENT, 4);
        DrawAcross(texture, 2);
        for (const int y : {1, 6, 9, 14})
        {
            EXPECT_EQ(current.Pixel(1, y), (Rgb{255, 0, 0})) << alignment << ": " << y;
            EXPECT_EQ(current.Pixel(6, y), (Rgb{0, 0, 255})) << alignment << ": " << y;
        }
    }
}

}  // namespace
