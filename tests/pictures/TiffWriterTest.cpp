// SPDX-License-Identifier: MIT
#include "pictures/TiffWriter.h"

#include "orvane/Error.h"
#include "pictures/ColorProfile.h"
#include "tests/pictures/WrittenPicture.h"

#include <gtest/gtest.h>
#include <tiffio.h>

#include <memory>
#include <string>

using orvane::Bytes;
using orvane::PictureFileSettings;
using orvane::PictureFormat;
using orvane::PixelKind;
using orvane::TiffPacking;

namespace
{

/// A TIFF as libtiff reads it.
class ReadTiff
{
public:
    explicit ReadTiff(const std::string& bytes)
        : file_("read.tif", bytes), tiff_(TIFFOpen(file_.Path(), "r"), TIFFClose)
    {}

    bool IsOpen() const { return tiff_ != nullptr; }
    template <typename Value>
    Value Field(std::uint32_t tag) const
    {
        Value value{};
        TIFFGetFieldDefaulted(tiff_.get(), tag, &value);
        return value;
    }
    Bytes Rows() const
    {
        const auto rowBytes = static_cast<std::size_t>(TIFFScanlineSize(tiff_.get()));
        const auto height = Field<std::uint32_t>(TIFFTAG_IMAGELENGTH);
        Bytes rows(rowBytes * height);
        for (std::uint32_t y = 0; y < height; ++y)
        {
            EXPECT_EQ(TIFFReadScanline(tiff_.get(), rows.data() + y * rowBytes, y), 1);
        }
        return rows;
    }
    Bytes Profile() const
    {
        std::uint32_t count = 0;
        std::uint8_t* bytes = nullptr;
        return TIFFGetField(tiff_.get(), TIFFTAG_ICCPROFILE, &count, &bytes) != 0
                   ? Bytes(bytes, bytes + count)
                   : Bytes();
    }

private:
    TemporaryFile file_;
    std::unique_ptr<TIFF, void (*)(TIFF*)> tiff_;
};

}  // namespace

TEST(TiffWriter, EveryKindOfPixelIsReadBackByLibtiff)
{
    for (const PixelKind kind : {PixelKind::Grey, PixelKind::Rgb, PixelKind::Rgba})
    {
        for (const int bits : {8, 16})
        {
            for (const TiffPacking packing :
                 {TiffPacking::Deflate, TiffPacking::Lzw, TiffPacking::None})
            {
                PictureFileSettings settings = Settings(700, 900, kind, bits);
                settings.packing = packing;
                const Bytes rows = MakeRows(700, 900, settings.rows);
                const ReadTiff tiff(Write(PictureFormat::Tiff, settings, rows, Portions::ByThrees));
                ASSERT_TRUE(tiff.IsOpen());
                EXPECT_EQ(tiff.Field<std::uint32_t>(TIFFTAG_IMAGEWIDTH), 700u);
                EXPECT_EQ(tiff.Field<std::uint16_t>(TIFFTAG_BITSPERSAMPLE), bits);
                EXPECT_TRUE(tiff.Rows() == rows);
            }
        }
    }
}

TEST(TiffWriter, AlphaIsStraight)
{
    const PictureFileSettings settings = Settings(2, 1, PixelKind::Rgba);
    const TemporaryFile file("alpha.tif",
                             Write(PictureFormat::Tiff, settings, {1, 2, 3, 4, 5, 6, 7, 8}));
    const std::unique_ptr<TIFF, void (*)(TIFF*)> tiff(TIFFOpen(file.Path(), "r"), TIFFClose);
    ASSERT_NE(tiff, nullptr);
    std::uint16_t count = 0;
    std::uint16_t* kinds = nullptr;
    ASSERT_EQ(TIFFGetField(tiff.get(), TIFFTAG_EXTRASAMPLES, &count, &kinds), 1);
    ASSERT_EQ(count, 1);
    EXPECT_EQ(kinds[0], EXTRASAMPLE_UNASSALPHA);
}

TEST(TiffWriter, TheResolutionAndTheProfileAreStored)
{
    PictureFileSettings settings = Settings(1, 1, PixelKind::Rgb);
    settings.dotsPerInch = 300;
    const ReadTiff tiff(Write(PictureFormat::Tiff, settings, {1, 2, 3}));
    EXPECT_EQ(tiff.Field<float>(TIFFTAG_XRESOLUTION), 300);
    EXPECT_EQ(tiff.Field<float>(TIFFTAG_YRESOLUTION), 300);
    EXPECT_EQ(tiff.Field<std::uint16_t>(TIFFTAG_RESOLUTIONUNIT), RESUNIT_INCH);
    EXPECT_EQ(tiff.Profile(), orvane::StandardProfile());
}

TEST(TiffWriter, TheBytesDoNotDependOnTheThreads)
{
    PictureFileSettings settings = Settings(1500, 1000, PixelKind::Rgb);
    const Bytes rows = MakeRows(1500, 1000, settings.rows);
    settings.threads = 1;
    const std::string file = Write(PictureFormat::Tiff, settings, rows);
    settings.threads = 5;
    EXPECT_TRUE(Write(PictureFormat::Tiff, settings, rows) == file);
}

TEST(TiffWriter, AFileThatMayReachFourGibibytesIsABigTiff)
{
    // 100,000 x 100,000 pixels of 3 bytes are 30 thousand million bytes.
    EXPECT_TRUE(orvane::NeedsBigTiff(Settings(100000, 100000, PixelKind::Rgb)));
    EXPECT_FALSE(orvane::NeedsBigTiff(Settings(20000, 20000, PixelKind::Rgb)));
    // 40,000 x 40,000 x 3 bytes are 4.8 thousand million.
    EXPECT_TRUE(orvane::NeedsBigTiff(Settings(40000, 40000, PixelKind::Rgb)));
}

TEST(TiffWriter, TheLimitCountsPixelsWithHalfAsMuchForPackingAndTheRest)
{
    // 10 x 10 pixels are 300 bytes; with half as many for packing, 64 for the only strip and 64 for
    // the room of another, and 4096 for the tags, 4674.
    const PictureFileSettings settings = Settings(10, 10, PixelKind::Rgb);
    EXPECT_FALSE(orvane::NeedsBigTiff(settings, 4674));
    EXPECT_TRUE(orvane::NeedsBigTiff(settings, 4673));
}

TEST(TiffWriter, ABigTiffIsReadBackByLibtiff)
{
    // 65,000 x 22,100 pixels take 4.3 thousand million bytes and are packed to a few.
    const PictureFileSettings settings = Settings(65000, 22100, PixelKind::Rgb);
    ASSERT_TRUE(orvane::NeedsBigTiff(settings));
    const TemporaryName name("big.tif");
    const std::string path = static_cast<const char*>(name.Path());
    {
        orvane::OutputFile output(path);
        const auto writer = MakePictureWriter(PictureFormat::Tiff, settings, output, path);
        const Bytes rows(std::size_t{65000} * 3 * 100, 17);
        for (int y = 0; y < 200; y += 100)
        {
            writer->WriteRows(rows.data(), std::size_t{65000} * 3, 100);
        }
        // The rest is left out: a file without all its strips is complete enough for its header.
        writer->Finish();
        output.Commit();
    }
    const std::vector<BYTE> bytes = name.Read();
    // "II", and 43 for a BigTIFF.
    EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 4), (Bytes{'I', 'I', 43, 0}));
    const std::unique_ptr<TIFF, void (*)(TIFF*)> tiff(TIFFOpen(path.c_str(), "r"), TIFFClose);
    ASSERT_NE(tiff, nullptr);
    Bytes row(static_cast<std::size_t>(TIFFScanlineSize(tiff.get())));
    EXPECT_EQ(TIFFReadScanline(tiff.get(), row.data(), 150), 1);
    EXPECT_EQ(row, Bytes(std::size_t{65000} * 3, 17));
}

TEST(TiffWriter, StandardOutputIsRefused)
{
    orvane::OutputFile output("-");
    EXPECT_THROW(MakePictureWriter(PictureFormat::Tiff, Settings(1, 1, PixelKind::Rgb), output,
                                   "standard output"),
                 orvane::Error);
}
