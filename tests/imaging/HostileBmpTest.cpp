// SPDX-License-Identifier: MIT
// Small BMP files that name many pixels, and large ones.
#include "imaging/TextureMap.h"
#include "platform/Limits.h"
#include "tests/support/BmpFile.h"
#include "tests/support/ExposedDib.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <memory>

namespace
{

using Values = std::vector<int>;

/// A run-length coded picture of which the code tells nothing but its end.
BmpFile Empty(int width, int height, WORD bitCount)
{
    BmpFile file;
    file.width = width;
    file.height = height;
    file.bitCount = bitCount;
    file.compression = bitCount == 8 ? BI_RLE8 : BI_RLE4;
    file.behindHeader = Bytes(std::size_t{4} << bitCount, 9);
    file.pixels = {0, 1};
    return file;
}

struct Opened
{
    int inPlace;
    int asTrueColor;
    std::unique_ptr<_RGBImageRecord> image;
};

Opened OpenAll(const BmpFile& file)
{
    const TemporaryFile temporary("hostile.bmp", file.File());
    ExposedDib dib;
    const int inPlace = dib.Open(temporary.Path());
    const int asTrueColor = dib.OpenAsTrueColor(temporary.Path());
    return {inPlace, asTrueColor,
            std::unique_ptr<_RGBImageRecord>(TextureMap::DIBImageLoad(temporary.Path()))};
}

TEST(HostileBmp, ARowOfManyRunLengthCodedPixelsIsRefused)
{
    const BmpFile wide = Empty(134000000, 1, 4);
    EXPECT_EQ(wide.File().size(), 120U);
    const TemporaryFile temporary("wide.bmp", wide.File());
    ExposedDib dib;
    EXPECT_EQ(dib.Open(temporary.Path()), 4);
    EXPECT_EQ(dib.GetRefusal(),
              "byte 18: found 134000000 by 1 pixels, expected rows of at most 16777216 pixels, and "
              "no more than 2 compressed bytes can hold");
    EXPECT_EQ(TextureMap::DIBImageLoad(temporary.Path()), nullptr);

    EXPECT_EQ(orvane::limits::maxPackedRowPixels, 16777216);
    EXPECT_EQ(OpenAll(Empty(16777216, 1, 8)).inPlace, 1);
    EXPECT_EQ(OpenAll(Empty(16777217, 1, 8)).inPlace, 4);
}

TEST(HostileBmp, AColumnOfManyRunLengthCodedPixelsIsReducedToATexture)
{
    const Opened tall = OpenAll(Empty(1, 16000000, 4));
    EXPECT_EQ(tall.inPlace, 1);
    ASSERT_NE(tall.image, nullptr);
    EXPECT_EQ(tall.image->sizeX, 1);
    EXPECT_EQ(tall.image->sizeY, 16384);
}

TEST(HostileBmp, UnpackedPixelsAreLimitedByTheCode)
{
    EXPECT_EQ(orvane::limits::MaxUnpackedBytes(2), 67108864U);
    EXPECT_EQ(orvane::limits::MaxUnpackedBytes(1 << 20), 268435456U);
    EXPECT_EQ(OpenAll(Empty(8192, 8192, 8)).inPlace, 1);
    EXPECT_EQ(OpenAll(Empty(8192, 8193, 8)).inPlace, 4);
}

TEST(HostileBmp, AFewBytesBecomeATextureWithinTheMemoryOfTheirFile)
{
    const BmpFile packed = Empty(8000, 8000, 8);
    const Opened opened = OpenAll(packed);
    ASSERT_NE(opened.image, nullptr);
    // (64 MiB + 20 x 1,080 bytes) / 20 bytes a pixel = 3,356,523 pixels, the root is 1,832.08.
    EXPECT_EQ(packed.File().size(), 1080U);
    EXPECT_EQ(opened.image->sizeX, 1832);
    EXPECT_EQ(opened.image->sizeY, 1832);
    // All pixels have the first colour.
    EXPECT_EQ(std::count(opened.image->data, opened.image->data + 3 * 1832 * 1832, 9),
              3 * 1832 * 1832);
}

TEST(HostileBmp, TrueColourTakesNoMoreMemoryThanTheFileAllows)
{
    // A row of 4 pixels takes 12 bytes as true colour. 64 MiB and 20 x 1,080 bytes hold 5,594,205
    // of them.
    EXPECT_EQ(OpenAll(Empty(4, 5594205, 8)).asTrueColor, 1);
    EXPECT_EQ(OpenAll(Empty(4, 5594206, 8)).asTrueColor, 4);
}

TEST(HostileBmp, ALargePictureOfOneBitKeepsItsShapeAsTexture)
{
    // Black on the left, white on the right; 8 MiB of pixels.
    BmpFile file;
    file.width = file.height = 8192;
    file.bitCount = 1;
    file.behindHeader = {0, 0, 0, 0, 255, 255, 255, 0};
    file.pixels = Bytes(1024 * 8192, 0);
    for (std::size_t i = 0; i < file.pixels.size(); ++i)
    {
        file.pixels[i] = i % 1024 < 512 ? 0 : 255;
    }
    const Opened opened = OpenAll(file);
    ASSERT_NE(opened.image, nullptr);
    const int width = opened.image->sizeX;
    EXPECT_EQ(width, opened.image->sizeY);
    // (64 MiB + 20 x 8,388,670 bytes) / 20 = 11,744,113 pixels, the root is 3,426.97.
    EXPECT_EQ(width, 3426);
    for (const int y : {0, 1700, 3425})
    {
        const BYTE* const row = opened.image->data + 3 * y * width;
        EXPECT_EQ(Values(row + 3 * 1712, row + 3 * 1714), (Values{0, 0, 0, 255, 255, 255})) << y;
    }
}

TEST(HostileBmp, AFileThatShrinksAfterItWasOpenedReadsAsZeros)
{
    BmpFile sample;
    sample.width = 64;
    sample.height = 640;
    sample.pixels = Bytes(122880, 5);
    const TemporaryFile file("shrunk.bmp", sample.File());
    ExposedDib dib;
    ASSERT_EQ(dib.Open(file.Path()), 1);
    EXPECT_FALSE(dib.HasLostBytes());
    std::filesystem::resize_file(file.Path().Text(), 0);
    EXPECT_TRUE(dib.HasLostBytes());
    // The first page, of 4,096 bytes or more, was copied; it holds the header.
    const LONG height = dib.GetDIBInfo()->bmiHeader.biHeight;  // a copy: it may not be aligned
    EXPECT_EQ(height, 640);
    EXPECT_EQ(dib.Pixels(0, 1), Values{5});
    EXPECT_EQ(dib.Pixels(122879, 1), Values{0});
    EXPECT_EQ(dib.Pixels(70000, 1), Values{0});
    EXPECT_EQ(dib.Close(), 1);
}

TEST(HostileBmp, ATextureIsNoPipeAndNoDevice)
{
    const TemporaryName pipe("texture-pipe.bmp");
    ASSERT_EQ(mkfifo(pipe.Path(), 0600), 0);
    for (const CString& name : {pipe.Path(), CString("/dev/zero"), CString("/dev/null")})
    {
        TextureMap texture(name);
        EXPECT_EQ(texture.ValidateFile(), 0);
        EXPECT_EQ(texture.textureFlags & TextureMap::Valid, 0U) << name.Text();
        ExposedDib dib;
        EXPECT_EQ(dib.Open(name), 4);
        EXPECT_EQ(dib.GetRefusal(), name.Text() + ": is no regular file");
    }
}

}  // namespace
