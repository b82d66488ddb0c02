// SPDX-License-Identifier: MIT
// BMP files that netpbm and ImageMagick write from one picture, and files made of theirs by
// changing some bytes of the header.
#include "imaging/MemoryMappedDIB.h"
#include "imaging/TextureMap.h"
#include "tests/support/ExposedDib.h"
#include "tests/support/OtherPrograms.h"
#include "tests/support/RecordBytes.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace
{

// Where fields of a BMP file with a header of 40 bytes lie.
constexpr std::size_t fileSizeAt = 2;
constexpr std::size_t bitsOffsetAt = 10;
constexpr std::size_t headerSizeAt = 14;
constexpr std::size_t heightAt = 22;
constexpr std::size_t compressionAt = 30;
constexpr std::size_t colorsUsedAt = 46;
constexpr std::size_t colorsAt = 54;

void PutDword(std::string& bytes, std::size_t at, DWORD value)
{
    for (int i = 0; i < 4; ++i)
    {
        bytes.at(at + i) = static_cast<char>(value >> (8 * i));
    }
}

DWORD DwordAt(const std::string& bytes, std::size_t at)
{
    DWORD value = 0;
    for (int i = 3; i >= 0; --i)
    {
        value = value << 8 | static_cast<unsigned char>(bytes.at(at + i));
    }
    return value;
}

/// A picture of blocks of \p colorCount colours: 2, 16 or 256.
DecodedPicture Blocks(int width, int height, int colorCount)
{
    DecodedPicture picture;
    picture.width = width;
    picture.height = height;
    for (int y = 0; y < height; ++y)
    {
        for (int x = 0; x < width; ++x)
        {
            const int block = (x / 8 + 16 * (y / 4)) % colorCount;
            const int spread = block * (256 / colorCount);
            picture.pixels.push_back(
                {(spread & 7) * 36, ((spread >> 3) & 7) * 36, (spread >> 6) * 85});
        }
    }
    return picture;
}

/// What a command writes to standard output when it is given the picture as a PPM file.
std::string Converted(const DecodedPicture& picture, const std::string& before,
                      const std::string& behind = "")
{
    std::string ppm =
        "P6\n" + std::to_string(picture.width) + " " + std::to_string(picture.height) + "\n255\n";
    for (const Rgb& pixel : picture.pixels)
    {
        for (const int value : {pixel.red, pixel.green, pixel.blue})
        {
            ppm += static_cast<char>(value);
        }
    }
    const TemporaryFile file("source.ppm", ppm);
    const std::optional<std::string> output =
        OutputOf(before + " '" + file.Path().Text() + "'" + behind);
    EXPECT_TRUE(output) << before << ": the program is not installed or fails";
    return output.value_or("");
}

/// ImageMagick writes headers of 124 bytes for some depths. The same file with a header of 40
/// bytes, with the three masks behind it or without them.
std::string WithHeaderOf40Bytes(const std::string& file, bool hasMasks)
{
    const std::size_t pixels = hasMasks ? colorsAt + 12 : colorsAt;
    std::string changed = file.substr(0, pixels) + file.substr(DwordAt(file, bitsOffsetAt));
    PutDword(changed, bitsOffsetAt, static_cast<DWORD>(pixels));
    PutDword(changed, headerSizeAt, 40);
    PutDword(changed, compressionAt, hasMasks ? 3 : 0);
    PutDword(changed, fileSizeAt, static_cast<DWORD>(changed.size()));
    return changed;
}

/// The rows of a file of 8 bits from the top, as a negative height tells.
std::string TopDown(const std::string& file, int width, int height)
{
    const std::size_t start = DwordAt(file, bitsOffsetAt);
    const std::size_t stride = static_cast<std::size_t>((width + 3) / 4 * 4);
    std::string changed = file.substr(0, start);
    PutDword(changed, heightAt, static_cast<DWORD>(-height));
    for (int row = height - 1; row >= 0; --row)
    {
        changed += file.substr(start + static_cast<std::size_t>(row) * stride, stride);
    }
    return changed;
}

/// The first colours of a file of 8 bits alone, as the header then tells.
std::string WithColors(const std::string& file, DWORD count)
{
    std::string changed = file.substr(0, colorsAt + 4 * count) + file.substr(colorsAt + 4 * 256);
    PutDword(changed, bitsOffsetAt, static_cast<DWORD>(colorsAt + 4 * count));
    PutDword(changed, colorsUsedAt, count);
    PutDword(changed, fileSizeAt, static_cast<DWORD>(changed.size()));
    return changed;
}

struct GoodFile
{
    const char* name;
    DecodedPicture picture;
    std::string bytes;
    int levels;  ///< by which a channel may differ from the picture's
};

std::vector<GoodFile> GoodFiles()
{
    const DecodedPicture two = Blocks(127, 64, 2);
    const DecodedPicture sixteen = Blocks(127, 64, 16);
    const DecodedPicture many = Blocks(127, 64, 256);
    const DecodedPicture narrow = Blocks(125, 62, 256);
    const std::string netpbm = "ppmtobmp -quiet -windows -bpp=";
    const std::string of8Bits = Converted(many, netpbm + "8");
    const std::string of32Bits =
        Converted(many, "convert", " -alpha set -define bmp:subtype=ARGB8888 bmp:-");
    const std::string of555 = Converted(many, "convert", " -define bmp:subtype=RGB555 bmp:-");
    const std::string of565 = Converted(many, "convert", " -define bmp:subtype=RGB565 bmp:-");
    return {
        {"1 bit", two, Converted(two, netpbm + "1"), 0},
        {"4 bits", sixteen, Converted(sixteen, netpbm + "4"), 0},
        {"8 bits", many, of8Bits, 0},
        {"8 bits, the number of colours told", many, WithColors(of8Bits, 256), 0},
        {"8 bits, rows from the top", many, TopDown(of8Bits, 127, 64), 0},
        {"8 bits, rows of 125 pixels", narrow, Converted(narrow, netpbm + "8"), 0},
        {"8 bits of sixteen colours", sixteen, WithColors(Converted(sixteen, netpbm + "8"), 16), 0},
        // Five bits have steps of 8.
        {"16 bits", many, WithHeaderOf40Bytes(of555, false), 8},
        {"16 bits, masks of 5, 6 and 5 bits", many, WithHeaderOf40Bytes(of565, true), 8},
        {"24 bits by netpbm", many, Converted(many, netpbm + "24"), 0},
        {"24 bits by ImageMagick", many, Converted(many, "convert", " bmp3:-"), 0},
        {"32 bits", many, WithHeaderOf40Bytes(of32Bits, false), 0},
    };
}

DecodedPicture Loaded(const CString& path)
{
    const std::unique_ptr<_RGBImageRecord> image(TextureMap::DIBImageLoad(path));
    DecodedPicture picture;
    if (image == nullptr)
    {
        return picture;
    }
    picture.width = image->sizeX;
    picture.height = image->sizeY;
    for (int y = image->sizeY - 1; y >= 0; --y)
    {
        for (int x = 0; x < image->sizeX; ++x)
        {
            const BYTE* const pixel = image->data + (y * image->sizeX + x) * 3;
            picture.pixels.push_back({pixel[0], pixel[1], pixel[2]});
        }
    }
    return picture;
}

TEST(ForeignBmp, FilesOfEveryDepthHaveThePictureTheyWereMadeFrom)
{
    for (const GoodFile& good : GoodFiles())
    {
        SCOPED_TRACE(good.name);
        const TemporaryFile file("good.bmp", good.bytes);
        ExposedDib dib;
        EXPECT_EQ(dib.Open(file.Path()), 1);
        EXPECT_EQ(dib.width, good.picture.width);
        EXPECT_EQ(std::abs(dib.height), good.picture.height);
        EXPECT_EQ(dib.OpenAsTrueColor(file.Path()), 1);
        EXPECT_EQ(dib.width, good.picture.width);
        EXPECT_EQ(dib.height, good.picture.height);
        EXPECT_EQ(CountFarther(Loaded(file.Path()), good.picture, good.levels), 0u);
    }
}

TEST(ForeignBmp, OtherProgramsFindTheSamePixelsInTheFilesAsTextureMapDoes)
{
    for (const PictureReader& reader : pictureReaders)
    {
        ASSERT_TRUE(IsInstalled(reader)) << "package " << reader.package;
        const bool isNetpbm = std::string(reader.name) == "netpbm";
        for (const GoodFile& good : GoodFiles())
        {
            // netpbm reads the six bits of green as five.
            if (isNetpbm && std::string(good.name).starts_with("16 bits, masks"))
            {
                continue;
            }
            SCOPED_TRACE(std::string(reader.name) + ", " + good.name);
            const TemporaryFile file("good.bmp", good.bytes);
            const bool is16Bits = std::string(good.name).starts_with("16 bits");
            EXPECT_EQ(CountFarther(ReadByOther(reader, file.Path().Text()), Loaded(file.Path()),
                                   is16Bits ? 1 : 0),
                      0u);
        }
    }
}

TEST(ForeignBmp, FilesWithABadHeaderOrWithoutTheirEndAreRefused)
{
    const DecodedPicture two = Blocks(127, 64, 2);
    const std::string of1Bit = Converted(two, "ppmtobmp -quiet -windows -bpp=1");
    std::string badHeaderSize = of1Bit;
    PutDword(badHeaderSize, headerSizeAt, 66);
    std::string badColorCount =
        WithColors(Converted(Blocks(127, 64, 256), "ppmtobmp -quiet -windows -bpp=8"), 252);
    PutDword(badColorCount, colorsUsedAt, 0x12340034);
    for (const auto& [name, bytes] : {std::pair("a header of 66 bytes", badHeaderSize),
                                      {"305 million colours", badColorCount},
                                      {"a quarter of its bytes", of1Bit.substr(0, 273)}})
    {
        SCOPED_TRACE(name);
        const TemporaryFile file("bad.bmp", bytes);
        ExposedDib dib;
        EXPECT_EQ(dib.Open(file.Path()), 4);
        EXPECT_EQ(dib.OpenAsTrueColor(file.Path()), 4);
        EXPECT_EQ(TextureMap::DIBImageLoad(file.Path()), nullptr);
    }
}

}  // namespace
