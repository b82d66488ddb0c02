// SPDX-License-Identifier: MIT
#include "pictures/ColorProfile.h"
#include "tests/pictures/WrittenPicture.h"

#include <gtest/gtest.h>
#include <webp/decode.h>
#include <webp/mux.h>

#include <cstdlib>
#include <string>

using orvane::Bytes;
using orvane::PictureFileSettings;
using orvane::PictureFormat;
using orvane::PixelKind;

namespace
{

Bytes ReadRgba(const std::string& bytes)
{
    int width = 0;
    int height = 0;
    std::uint8_t* const pixels = WebPDecodeRGBA(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                                bytes.size(), &width, &height);
    Bytes rows(pixels,
               pixels + (pixels != nullptr ? static_cast<std::ptrdiff_t>(4) * width * height : 0));
    WebPFree(pixels);
    return rows;
}

Bytes ChunkIn(const std::string& bytes, const char* name)
{
    const WebPData file = {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()};
    WebPMux* const mux = WebPMuxCreate(&file, 0);
    WebPData chunk{};
    const bool isThere = WebPMuxGetChunk(mux, name, &chunk) == WEBP_MUX_OK;
    Bytes content(chunk.bytes, chunk.bytes + (isThere ? chunk.size : 0));
    WebPMuxDelete(mux);
    return content;
}

}  // namespace

TEST(WebpWriter, ALosslessPictureIsReadBackByLibwebp)
{
    PictureFileSettings settings = Settings(50, 30, PixelKind::Rgba);
    settings.isLossless = true;
    Bytes rows = MakeRows(50, 30, settings.rows);
    for (std::size_t i = 3; i < rows.size(); i += 4)
    {
        // Colours of invisible pixels are not kept, so no pixel is invisible.
        rows[i] = static_cast<std::uint8_t>(rows[i] | 1);
    }
    EXPECT_TRUE(ReadRgba(Write(PictureFormat::WebP, settings, rows, Portions::ByThrees)) == rows);
}

TEST(WebpWriter, APictureWithoutAlphaIsOpaque)
{
    PictureFileSettings settings = Settings(1, 1, PixelKind::Rgb);
    settings.isLossless = true;
    EXPECT_EQ(ReadRgba(Write(PictureFormat::WebP, settings, {10, 20, 30})),
              (Bytes{10, 20, 30, 255}));
}

TEST(WebpWriter, ALowerQualityTakesFewerBytes)
{
    PictureFileSettings settings = Settings(200, 200, PixelKind::Rgb);
    const Bytes rows = MakeRows(200, 200, settings.rows);
    const std::string fine = Write(PictureFormat::WebP, settings, rows);
    settings.quality = 20;
    EXPECT_LT(Write(PictureFormat::WebP, settings, rows).size(), fine.size() / 2);
}

TEST(WebpWriter, TheResolutionAndTheProfileAreStored)
{
    PictureFileSettings settings = Settings(8, 8, PixelKind::Rgb);
    settings.dotsPerInch = 300;
    const std::string file = Write(PictureFormat::WebP, settings, Bytes(8 * 8 * 3, 5));
    EXPECT_EQ(ChunkIn(file, "ICCP"), orvane::StandardProfile());
    // A TIFF without pixels: three entries of 12 bytes, and 300000 / 1000 at byte 50.
    const Bytes exif = ChunkIn(file, "EXIF");
    ASSERT_EQ(exif.size(), 58u);
    EXPECT_EQ(Bytes(exif.begin(), exif.begin() + 10), (Bytes{'I', 'I', 42, 0, 8, 0, 0, 0, 3, 0}));
    // 300000 is 0x493E0, and 1000 is 0x3E8.
    EXPECT_EQ(Bytes(exif.begin() + 50, exif.end()), (Bytes{0xE0, 0x93, 4, 0, 0xE8, 3, 0, 0}));
}
