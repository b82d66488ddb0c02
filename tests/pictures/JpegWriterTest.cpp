// SPDX-License-Identifier: MIT
#include "pictures/ColorProfile.h"
#include "tests/pictures/WrittenPicture.h"

#include <gtest/gtest.h>

// jpeglib.h needs the types of cstdio.
#include <jpeglib.h>

#include <cstdio>
#include <cstdlib>
#include <string>

using orvane::Bytes;
using orvane::PictureFileSettings;
using orvane::PictureFormat;
using orvane::PixelKind;

namespace
{

/// A JPEG as libjpeg reads it. libjpeg ends the test program when a file is wrong.
struct ReadJpeg
{
    explicit ReadJpeg(const std::string& bytes)
    {
        jpeg_decompress_struct jpeg{};
        jpeg_error_mgr errors{};
        jpeg.err = jpeg_std_error(&errors);
        jpeg_create_decompress(&jpeg);
        jpeg_mem_src(&jpeg, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
        jpeg_save_markers(&jpeg, JPEG_APP0 + 2, 0xFFFF);
        jpeg_read_header(&jpeg, TRUE);
        width = static_cast<int>(jpeg.image_width);
        channels = jpeg.num_components;
        unit = jpeg.density_unit;
        density = jpeg.X_density;
        colorSampling = jpeg.comp_info[0].h_samp_factor;
        JOCTET* stored = nullptr;
        unsigned count = 0;
        if (jpeg_read_icc_profile(&jpeg, &stored, &count))
        {
            profile.assign(stored, stored + count);
            std::free(stored);
        }
        jpeg_start_decompress(&jpeg);
        rows.resize(static_cast<std::size_t>(jpeg.output_width) * jpeg.output_height *
                    static_cast<std::size_t>(jpeg.output_components));
        while (jpeg.output_scanline < jpeg.output_height)
        {
            JSAMPROW row = rows.data() + rows.size() / jpeg.output_height * jpeg.output_scanline;
            jpeg_read_scanlines(&jpeg, &row, 1);
        }
        jpeg_finish_decompress(&jpeg);
        EXPECT_EQ(errors.num_warnings, 0);
        jpeg_destroy_decompress(&jpeg);
    }

    int width = 0;
    int channels = 0;
    int unit = 0;
    int density = 0;
    int colorSampling = 0;
    Bytes profile;
    Bytes rows;
};

/// The largest difference between two channels at the same place.
int Farthest(const Bytes& a, const Bytes& b)
{
    int farthest = a.size() == b.size() ? 0 : 256;
    for (std::size_t i = 0; i < a.size() && farthest < 256; ++i)
    {
        farthest = std::max(farthest, std::abs(a[i] - b[i]));
    }
    return farthest;
}

/// Rows that a JPEG keeps nearly as they are: no neighbours differ much.
Bytes MakeSmoothRows(int width, int height, int channels)
{
    Bytes rows;
    for (int y = 0; y < height; ++y)
    {
        for (int x = 0; x < width; ++x)
        {
            for (int i = 0; i < channels; ++i)
            {
                rows.push_back(static_cast<std::uint8_t>(60 + x + y / 2 + 20 * i));
            }
        }
    }
    return rows;
}

}  // namespace

TEST(JpegWriter, ColoursAndGreysAreReadBackByLibjpeg)
{
    for (const PixelKind kind : {PixelKind::Grey, PixelKind::Rgb})
    {
        PictureFileSettings settings = Settings(61, 43, kind);
        settings.quality = 100;
        const Bytes rows = MakeSmoothRows(61, 43, settings.rows.Channels());
        const ReadJpeg read(Write(PictureFormat::Jpeg, settings, rows, Portions::ByThrees));
        EXPECT_EQ(read.width, 61);
        EXPECT_EQ(read.channels, settings.rows.Channels());
        EXPECT_LE(Farthest(read.rows, rows), 3);
    }
}

TEST(JpegWriter, InksAreStoredInvertedAsReadersExpect)
{
    PictureFileSettings settings = Settings(16, 16, PixelKind::Cmyk);
    settings.quality = 100;
    settings.profile = {1};  // any bytes: the writer only stores them
    const ReadJpeg read(Write(PictureFormat::Jpeg, settings, Bytes(16 * 16 * 4, 30)));
    EXPECT_EQ(read.channels, 4);
    EXPECT_LE(Farthest(read.rows, Bytes(16 * 16 * 4, 225)), 1);
}

TEST(JpegWriter, TheResolutionAndTheProfileAreStored)
{
    PictureFileSettings settings = Settings(8, 8, PixelKind::Rgb);
    settings.dotsPerInch = 300;
    const ReadJpeg read(Write(PictureFormat::Jpeg, settings, Bytes(8 * 8 * 3, 5)));
    EXPECT_EQ(read.unit, 1);  // dots per inch
    EXPECT_EQ(read.density, 300);
    EXPECT_EQ(read.profile, orvane::StandardProfile());
}

TEST(JpegWriter, ALowerQualityTakesFewerBytesAndCoarserColours)
{
    PictureFileSettings settings = Settings(200, 200, PixelKind::Rgb);
    const Bytes rows = MakeRows(200, 200, settings.rows);
    const std::string fine = Write(PictureFormat::Jpeg, settings, rows);
    EXPECT_EQ(ReadJpeg(fine).colorSampling, 1);
    settings.quality = 50;
    const std::string coarse = Write(PictureFormat::Jpeg, settings, rows);
    EXPECT_EQ(ReadJpeg(coarse).colorSampling, 2);
    EXPECT_LT(coarse.size(), fine.size() / 2);
}
