// SPDX-License-Identifier: MIT
#include "tests/pictures/WrittenPicture.h"

#include <gtest/gtest.h>
#include <png.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

using orvane::Bytes;
using orvane::PictureFileSettings;
using orvane::PictureFormat;
using orvane::PixelKind;

namespace
{

/// A PNG as libpng reads it, in the channels and bits that are stored.
struct ReadPng
{
    png_uint_32 width = 0;
    png_uint_32 height = 0;
    int bits = 0;
    int color = 0;
    Bytes rows;
    png_uint_32 dotsPerMetre = 0;
    bool isStandard = false;  ///< has a chunk sRGB
    Bytes profile;
};

struct Source
{
    const std::string& bytes;
    std::size_t at;
};

ReadPng Read(const std::string& bytes)
{
    Source source{bytes, 0};
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    ReadPng result;
    // libpng ends the test program when a file is wrong.
    png_set_read_fn(png, &source, [](png_structp from, png_bytep to, png_size_t count) {
        Source& rest = *static_cast<Source*>(png_get_io_ptr(from));
        if (rest.bytes.size() - rest.at < count)
        {
            png_error(from, "the file ends");
        }
        std::memcpy(to, rest.bytes.data() + rest.at, count);
        rest.at += count;
    });
    png_read_info(png, info);
    png_get_IHDR(png, info, &result.width, &result.height, &result.bits, &result.color, nullptr,
                 nullptr, nullptr);
    if (result.bits == 16)
    {
        png_set_swap(png);  // to the byte order of the machine
    }
    png_read_update_info(png, info);
    result.dotsPerMetre = png_get_pixels_per_meter(png, info);
    result.isStandard = png_get_valid(png, info, PNG_INFO_sRGB) != 0;
    png_charp name = nullptr;
    int packing = 0;
    png_bytep profile = nullptr;
    png_uint_32 count = 0;
    if (png_get_iCCP(png, info, &name, &packing, &profile, &count) != 0)
    {
        result.profile.assign(profile, profile + count);
    }
    const std::size_t rowBytes = png_get_rowbytes(png, info);
    result.rows.resize(rowBytes * result.height);
    for (png_uint_32 y = 0; y < result.height; ++y)
    {
        png_read_row(png, result.rows.data() + y * rowBytes, nullptr);
    }
    png_read_end(png, info);
    png_destroy_read_struct(&png, &info, nullptr);
    EXPECT_EQ(source.at, bytes.size());
    return result;
}

}  // namespace

TEST(PngWriter, EveryKindOfPixelIsReadBackByLibpng)
{
    for (const auto& [kind, color] : {std::pair(PixelKind::Grey, PNG_COLOR_TYPE_GRAY),
                                      std::pair(PixelKind::Rgb, PNG_COLOR_TYPE_RGB),
                                      std::pair(PixelKind::Rgba, PNG_COLOR_TYPE_RGB_ALPHA)})
    {
        for (const int bits : {8, 16})
        {
            SCOPED_TRACE(testing::Message() << "colour type " << color << ", bits " << bits);
            const PictureFileSettings settings = Settings(37, 21, kind, bits);
            const Bytes rows = MakeRows(37, 21, settings.rows);
            const ReadPng read = Read(Write(PictureFormat::Png, settings, rows));
            EXPECT_EQ(read.width, 37u);
            EXPECT_EQ(read.height, 21u);
            EXPECT_EQ(read.bits, bits);
            EXPECT_EQ(read.color, color);
            EXPECT_EQ(read.rows, rows);
            EXPECT_TRUE(read.isStandard);
            EXPECT_EQ(read.dotsPerMetre, 0u);
        }
    }
}

TEST(PngWriter, APictureOfManyStripsIsOneStream)
{
    // 1 MiB is a strip, and 1500 * 3 * 1000 bytes are more than four.
    const PictureFileSettings settings = Settings(1500, 1000, PixelKind::Rgb);
    const Bytes rows = MakeRows(1500, 1000, settings.rows);
    const std::string file = Write(PictureFormat::Png, settings, rows, Portions::ByThrees);
    EXPECT_EQ(Read(file).rows, rows);
    EXPECT_EQ(file, Write(PictureFormat::Png, settings, rows));
}

TEST(PngWriter, TheBytesDoNotDependOnTheThreads)
{
    PictureFileSettings settings = Settings(1500, 1000, PixelKind::Rgba);
    const Bytes rows = MakeRows(1500, 1000, settings.rows);
    settings.threads = 1;
    const std::string file = Write(PictureFormat::Png, settings, rows);
    for (const int threads : {2, 7, 0})
    {
        settings.threads = threads;
        EXPECT_TRUE(Write(PictureFormat::Png, settings, rows) == file) << threads;
    }
}

TEST(PngWriter, ARowThatIsLargerThanAStripIsWritten)
{
    // 100,000 pixels of 8 bytes and the number of the filter.
    const PictureFileSettings settings = Settings(100000, 2, PixelKind::Rgba, 16);
    const Bytes rows = MakeRows(100000, 2, settings.rows);
    EXPECT_TRUE(Read(Write(PictureFormat::Png, settings, rows)).rows == rows);
}

TEST(PngWriter, EqualRowsTakeFewBytes)
{
    const PictureFileSettings settings = Settings(1000, 1000, PixelKind::Rgb);
    const std::string file =
        Write(PictureFormat::Png, settings, Bytes(std::size_t{3} * 1000 * 1000, 77));
    EXPECT_LT(file.size(), 30000u);  // a hundredth of the pixels
}

TEST(PngWriter, TheResolutionIsInDotsPerMetre)
{
    PictureFileSettings settings = Settings(1, 1, PixelKind::Rgb);
    settings.dotsPerInch = 300;
    // 300 / 0.0254 is 11811.02.
    EXPECT_EQ(Read(Write(PictureFormat::Png, settings, {1, 2, 3})).dotsPerMetre, 11811u);
}
