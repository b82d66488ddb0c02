// SPDX-License-Identifier: MIT
#include "pictures/PictureReader.h"

#include "orvane/Error.h"
#include "pictures/ColorProfile.h"
#include "pictures/Deflate.h"
#include "platform/Limits.h"
#include "tests/pictures/Profiles.h"
#include "tests/pictures/WrittenPicture.h"

#include <gtest/gtest.h>

#include <string>

using orvane::Bytes;
using orvane::PictureFileSettings;
using orvane::PictureFormat;
using orvane::PixelKind;
using orvane::ReadPicture;

namespace
{

ReadPicture Read(const std::string& bytes)
{
    return orvane::ReadPictureBytes(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                    bytes.size(), "a.file");
}

/// Why a picture is refused; empty when it is not.
std::string Refusal(const std::string& bytes)
{
    try
    {
        Read(bytes);
    }
    catch (const orvane::Error& error)
    {
        return error.what();
    }
    return {};
}

std::string Sample(PictureFormat format, int side = 64)
{
    PictureFileSettings settings = Settings(side, side, PixelKind::Rgb);
    settings.isLossless = true;
    return Write(format, settings, MakeRows(side, side, settings.rows));
}

}  // namespace

TEST(PictureReader, LosslessFormatsAreReadAsTheyWereWritten)
{
    for (const PictureFormat format :
         {PictureFormat::Png, PictureFormat::WebP, PictureFormat::Tiff})
    {
        for (const PixelKind kind : {PixelKind::Rgb, PixelKind::Rgba})
        {
            PictureFileSettings settings = Settings(53, 37, kind);
            settings.isLossless = true;
            Bytes rows = MakeRows(53, 37, settings.rows);
            if (kind == PixelKind::Rgba)
            {
                // Colours of half-transparent pixels are rounded when libtiff multiplies them.
                for (std::size_t i = 3; i < rows.size(); i += 4)
                {
                    rows[i] = 255;
                }
            }
            const ReadPicture picture = Read(Write(format, settings, rows));
            EXPECT_EQ(picture.width, 53);
            EXPECT_EQ(picture.height, 37);
            EXPECT_EQ(picture.hasAlpha, kind == PixelKind::Rgba && format != PictureFormat::WebP);
            if (picture.hasAlpha == (kind == PixelKind::Rgba))
            {
                EXPECT_TRUE(picture.rows == rows);
            }
        }
    }
}

TEST(PictureReader, SixteenBitsAndGreysBecomeEightBitsOfColour)
{
    PictureFileSettings settings = Settings(2, 1, PixelKind::Rgb, 16);
    const std::uint16_t colors[] = {0, 65535, 257 * 77, 257 * 3, 257 * 200, 257};
    Bytes rows(sizeof colors);
    std::memcpy(rows.data(), colors, sizeof colors);
    const Bytes expected = {0, 255, 77, 3, 200, 1};
    EXPECT_EQ(Read(Write(PictureFormat::Png, settings, rows)).rows, expected);
    EXPECT_EQ(Read(Write(PictureFormat::Tiff, settings, rows)).rows, expected);

    settings = Settings(2, 1, PixelKind::Grey);
    for (const PictureFormat format : {PictureFormat::Png, PictureFormat::Tiff})
    {
        EXPECT_EQ(Read(Write(format, settings, {9, 250})).rows, (Bytes{9, 9, 9, 250, 250, 250}));
    }
}

TEST(PictureReader, AJpegIsReadNearlyAsItWasWritten)
{
    PictureFileSettings settings = Settings(40, 30, PixelKind::Rgb);
    settings.quality = 100;
    const ReadPicture picture = Read(Write(PictureFormat::Jpeg, settings, Bytes(40 * 30 * 3, 130)));
    EXPECT_EQ(picture.width, 40);
    EXPECT_FALSE(picture.hasAlpha);
    for (const std::uint8_t channel : picture.rows)
    {
        EXPECT_NEAR(channel, 130, 1);
    }
}

TEST(PictureReader, AGreyJpegBecomesColours)
{
    PictureFileSettings settings = Settings(16, 16, PixelKind::Grey);
    settings.quality = 100;
    const ReadPicture picture = Read(Write(PictureFormat::Jpeg, settings, Bytes(16 * 16, 90)));
    ASSERT_EQ(picture.rows.size(), 16u * 16 * 3);
    for (const std::uint8_t channel : picture.rows)
    {
        EXPECT_NEAR(channel, 90, 1);
    }
}

TEST(PictureReader, ADamagedJpegIsRefusedWithThePlaceOfTheDamage)
{
    std::string bytes = Sample(PictureFormat::Jpeg);
    const std::size_t frame = bytes.find("\xFF\xC0");
    ASSERT_NE(frame, std::string::npos);
    bytes[frame + 4] = 9;  // bits a channel
    const std::string refusal = Refusal(bytes);
    EXPECT_NE(refusal.find("not a readable JPEG"), std::string::npos) << refusal;
    EXPECT_NE(refusal.find("byte "), std::string::npos) << refusal;
}

// A picture of one pixel has the same data when it is interlaced.
TEST(PictureReader, AnInterlacedPngIsRead)
{
    std::string bytes = Write(PictureFormat::Png, Settings(1, 1, PixelKind::Rgb), {200, 100, 50});
    constexpr std::size_t type = 12;  // of the first chunk, after the signature and its length
    constexpr std::size_t headBytes = 4 + 13;
    bytes[type + headBytes - 1] = 1;  // Adam7
    const std::uint32_t sum =
        orvane::Crc32(0, reinterpret_cast<const std::uint8_t*>(bytes.data()) + type, headBytes);
    for (std::size_t i = 0; i < 4; ++i)
    {
        bytes[type + headBytes + i] = static_cast<char>(sum >> (24 - 8 * i));
    }
    EXPECT_EQ(Read(bytes).rows, (Bytes{200, 100, 50}));
}

// Half of the light is 188 of 255 in sRGB.
TEST(PictureReader, AProfileOfGreysIsApplied)
{
    cmsToneCurve* const line = cmsBuildGamma(nullptr, 1);
    PictureFileSettings settings = Settings(1, 1, PixelKind::Grey);
    settings.profile = BytesOf(cmsCreateGrayProfile(cmsD50_xyY(), line));
    cmsFreeToneCurve(line);
    const ReadPicture picture = Read(Write(PictureFormat::Png, settings, {128}));
    ASSERT_EQ(picture.rows.size(), 3u);
    for (const std::uint8_t channel : picture.rows)
    {
        EXPECT_NEAR(channel, 188, 2);
    }
}

TEST(PictureReader, InksOfAJpegAreColours)
{
    PictureFileSettings settings = Settings(8, 8, PixelKind::Cmyk);
    settings.quality = 100;
    settings.profile = {1};  // no readable profile, so the inks are mixed
    Bytes rows;
    for (int i = 0; i < 64; ++i)
    {
        rows.insert(rows.end(), {255, 0, 0, 51});
    }
    const ReadPicture picture = Read(Write(PictureFormat::Jpeg, settings, rows));
    // Without red; four fifths of green and blue are left by the black.
    EXPECT_NEAR(picture.rows[0], 0, 2);
    EXPECT_NEAR(picture.rows[1], 204, 2);
    EXPECT_NEAR(picture.rows[2], 204, 2);
}

TEST(PictureReader, AProfileIsApplied)
{
    for (const PictureFormat format :
         {PictureFormat::Png, PictureFormat::Tiff, PictureFormat::WebP, PictureFormat::Jpeg})
    {
        PictureFileSettings settings = Settings(16, 16, PixelKind::Rgb);
        settings.profile = MakeLinearProfile();
        settings.isLossless = true;
        settings.quality = 100;
        const ReadPicture picture = Read(Write(format, settings, Bytes(16 * 16 * 3, 128)));
        // 1.055 * (128 / 255) ^ (1 / 2.4) - 0.055 is 0.7367, which is 187.9 of 255.
        EXPECT_NEAR(picture.rows[0], 188, 2) << static_cast<int>(format);
    }
}

TEST(PictureReader, LargePicturesAreReducedToATexture)
{
    // A row of 100,000 pixels; a texture has at most 16,384.
    PictureFileSettings settings = Settings(100000, 1, PixelKind::Rgb);
    Bytes rows(300000);
    for (std::size_t i = 0; i < rows.size(); ++i)
    {
        rows[i] = static_cast<std::uint8_t>(i / 3 * 255 / 99999);
    }
    const ReadPicture picture = Read(Write(PictureFormat::Png, settings, rows));
    EXPECT_EQ(picture.width, 16384);
    EXPECT_EQ(picture.height, 1);
    EXPECT_EQ(picture.rows.front(), 0);
    EXPECT_EQ(picture.rows.back(), 254);  // the middle of the last pixel is that of pixel 99,996
}

TEST(PictureReader, ASmallFileOfManyPixelsIsRefused)
{
    // 8,000 x 8,000 equal pixels take 192 million bytes, and a file of some 100 KB pays for 64 MiB.
    const PictureFileSettings settings = Settings(8000, 8000, PixelKind::Rgb);
    const Bytes rows(std::size_t{3} * 8000 * 8000, 200);
    for (const PictureFormat format : {PictureFormat::Png, PictureFormat::Tiff})
    {
        const std::string refusal = Refusal(Write(format, settings, rows));
        EXPECT_NE(refusal.find("a.file: found 8000 x 8000 pixels, which take "), std::string::npos)
            << refusal;
    }
}

TEST(PictureReader, FilesThatAreNoPicturesAreRefusedByTheirContent)
{
    EXPECT_EQ(Refusal("Hello, world"),
              "a.file: byte 0: found 48 65 6C 6C, expected the beginning of a BMP, PNG, JPEG, WebP "
              "or TIFF picture");
    EXPECT_EQ(
        Refusal(""),
        "a.file: byte 0: found the end of the file, expected the beginning of a BMP, PNG, JPEG, "
        "WebP or TIFF picture");
    EXPECT_EQ(Refusal("RIFF\x04\0\0\0WAVE"),
              "a.file: byte 0: found 52 49 46 46, expected the beginning of a BMP, PNG, JPEG, WebP "
              "or TIFF picture");
}

TEST(PictureReader, ADirectoryAndAMissingFileAreRefused)
{
    EXPECT_THROW(orvane::ReadPictureFile(TemporaryFolder()), orvane::Error);
    EXPECT_THROW(orvane::ReadPictureFile("no/such/file.png"), orvane::Error);
    const TemporaryFile empty("empty.png", std::string());
    EXPECT_THROW(orvane::ReadPictureFile(static_cast<const char*>(empty.Path())), orvane::Error);
}

TEST(PictureReader, TheNameOfAFileIsOfNoImportance)
{
    const TemporaryFile file("a.txt", Sample(PictureFormat::Tiff));
    EXPECT_EQ(orvane::ReadPictureFile(static_cast<const char*>(file.Path())).width, 64);
}

TEST(PictureReader, ATruncatedPictureIsRefusedWhereverItEnds)
{
    for (const PictureFormat format :
         {PictureFormat::Png, PictureFormat::Jpeg, PictureFormat::WebP, PictureFormat::Tiff})
    {
        const std::string whole = Sample(format);
        ASSERT_EQ(Refusal(whole), "");
        for (const std::size_t part : {1, 10, 30, 50, 70, 90})
        {
            const std::string refusal = Refusal(whole.substr(0, whole.size() * part / 100));
            EXPECT_EQ(refusal.substr(0, 8), "a.file: ")
                << part << " % of format " << static_cast<int>(format);
        }
    }
}

TEST(PictureReader, TheErrorOfATruncatedPictureTellsWhereItEnds)
{
    // In front of the pixels there are 8 bytes and the chunks IHDR, sRGB and IDAT of 25, 13 and 14.
    // Behind them are 18 bytes of another IDAT and 12 of IEND. Each chunk has 12 bytes of its own.
    const std::string png = Sample(PictureFormat::Png);
    EXPECT_EQ(Refusal(png.substr(0, 1000)),
              "a.file: byte 60: found a PNG chunk of " + std::to_string(png.size() - 102) +
                  " bytes, expected at most 928, where the file ends");
    const std::string withoutEnd = "a.file: before byte " + std::to_string(png.size() - 12) + ": ";
    EXPECT_EQ(Refusal(png.substr(0, png.size() - 12)).substr(0, withoutEnd.size()), withoutEnd);
    const std::string jpeg = Sample(PictureFormat::Jpeg);
    EXPECT_EQ(Refusal(jpeg.substr(0, 2000)),
              "a.file: byte 2000: the file ends, expected more of the JPEG picture");
    const std::string webp = Sample(PictureFormat::WebP);
    EXPECT_EQ(Refusal(webp.substr(0, 3000)),
              "a.file: byte 3000: the file ends, expected more of the WebP picture");
}
