// SPDX-License-Identifier: MIT
// Pictures of every format that the tool writes, transparent ones among them, and pictures of every
// format as backgrounds and textures.

#include "pictures/PictureReader.h"
#include "tests/pictures/Profiles.h"
#include "tests/pictures/WrittenPicture.h"
#include "tests/support/DecodedPicture.h"
#include "tests/support/PictureFile.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>
#include <png.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

using orvane::PictureFormat;
using orvane::PixelKind;

namespace
{

/// Runs the tool's render, which must succeed, and returns the bytes of the picture.
std::string Render(ToolFolder& folder, std::vector<std::string> arguments,
                   const std::string& output)
{
    arguments.insert(arguments.begin(), "render");
    arguments.insert(arguments.end(), {"-o", output});
    const ToolResult result = folder.Run(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    return folder.Read(output);
}

/// Channels of 16 bits of a PNG with alpha, as libpng reads them: red, green, blue, alpha.
std::vector<std::uint16_t> DecodeDeepPng(const std::string& bytes)
{
    std::vector<std::uint16_t> channels;
    const TemporaryFile file("deep.png", bytes);
    std::FILE* const in = std::fopen(file.Path(), "rb");
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, in);
    png_read_info(png, info);
    png_set_swap(png);
    png_set_add_alpha(png, 0xFFFF, PNG_FILLER_AFTER);
    png_read_update_info(png, info);
    std::vector<std::uint16_t> row(png_get_rowbytes(png, info) / 2);
    for (png_uint_32 y = 0; y < png_get_image_height(png, info); ++y)
    {
        png_read_row(png, reinterpret_cast<png_bytep>(row.data()), nullptr);
        channels.insert(channels.end(), row.begin(), row.end());
    }
    png_destroy_read_struct(&png, &info, nullptr);
    std::fclose(in);
    return channels;
}

/// Red, green, blue and alpha of a PNG of 8 bits, as libpng reads them.
std::vector<std::uint8_t> DecodeRgba(const std::string& bytes)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    png_image_begin_read_from_memory(&image, bytes.data(), bytes.size());
    image.format = PNG_FORMAT_RGBA;
    std::vector<std::uint8_t> pixels(PNG_IMAGE_SIZE(image));
    EXPECT_NE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr), 0);
    return pixels;
}

/// The red of the first pixel of an opaque PNG of 8 bits, as it is stored.
int StoredRed(const std::string& bytes)
{
    const TemporaryFile file("red.png", bytes);
    std::FILE* const in = std::fopen(file.Path(), "rb");
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, in);
    png_read_info(png, info);
    std::vector<png_byte> row(png_get_rowbytes(png, info));
    png_read_row(png, row.data(), nullptr);
    png_destroy_read_struct(&png, &info, nullptr);
    std::fclose(in);
    return row[0];
}

orvane::ReadPicture ReadBytes(const std::string& bytes)
{
    return orvane::ReadPictureBytes(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                    bytes.size(), "picture");
}

/// The largest difference between a transparent picture in front of a background, rounded to whole
/// levels, and a picture that was drawn with the background.
long FarthestFromDirect(const std::string& transparentPng, const DecodedPicture& direct,
                        const std::function<Rgb(int x, int y)>& background)
{
    const orvane::ReadPicture picture = ReadBytes(transparentPng);
    EXPECT_TRUE(picture.hasAlpha);
    long farthest = 0;
    for (int y = 0; y < direct.height; ++y)
    {
        for (int x = 0; x < direct.width; ++x)
        {
            const std::uint8_t* const pixel =
                &picture.rows[4 * (static_cast<std::size_t>(y) * direct.width + x)];
            const double alpha = pixel[3] / 255.0;
            const Rgb behind = background(x, y);
            const Rgb wanted = direct.At(x, y);
            const auto compare = [&](int color, int back, int expected) {
                const long shown = std::lround(color * alpha + back * (1 - alpha));
                farthest = std::max(farthest, std::abs(shown - expected));
            };
            compare(pixel[0], behind.red, wanted.red);
            compare(pixel[1], behind.green, wanted.green);
            compare(pixel[2], behind.blue, wanted.blue);
        }
    }
    return farthest;
}

Rgb PhotoColor(int x, int y)
{
    return {(7 * x + 3 * y) % 256, (11 * x + 5) % 256, (13 * y + x) % 256};
}

}  // namespace

TEST(ToolTransparency, APictureInFrontOfABackgroundIsThatDrawnWithTheBackground)
{
    constexpr int width = 320;
    constexpr int height = 180;
    const PictureFile photo("photo", width, height, PhotoColor);
    const std::vector<std::string> looks[] = {
        {"&go"},
        {"&go", "--face-color", "#f2b33390", "--style", "round"},
        {"&go", "--outline"},
    };
    for (const std::vector<std::string>& look : looks)
    {
        ToolFolder folder;
        const auto draw = [&](const std::string& background) {
            std::vector<std::string> arguments = look;
            arguments.insert(arguments.end(), {"--size", "320x180", "--background", background});
            return Render(folder, arguments, "x.png");
        };
        const std::string transparent = draw("none");
        // One level, because both pictures are rounded.
        const auto plain = [](int level) {
            return [level](int, int) { return Rgb{level, level, level}; };
        };
        EXPECT_LE(FarthestFromDirect(transparent, DecodePng(draw("white")), plain(255)), 1);
        EXPECT_LE(FarthestFromDirect(transparent, DecodePng(draw("black")), plain(0)), 1);
        EXPECT_LE(FarthestFromDirect(transparent, DecodePng(draw(photo.Path())), PhotoColor), 1);
    }
}

TEST(ToolTransparency, TheBackgroundIsInvisibleAndTheMiddleOfALetterOpaque)
{
    ToolFolder folder;
    const orvane::ReadPicture picture = ReadBytes(Render(
        folder, {"I", "--turn", "0,0,0", "--size", "100x100", "--background", "none"}, "x.png"));
    const auto alpha = [&picture](int x, int y) {
        return picture.rows[4 * (static_cast<std::size_t>(y) * 100 + x) + 3];
    };
    EXPECT_EQ(alpha(0, 0), 0);
    EXPECT_EQ(alpha(99, 50), 0);
    EXPECT_EQ(alpha(50, 50), 255);
}

TEST(ToolTransparency, BandsOfALargePictureAreTransparentAlike)
{
    // More than 64 bands, so that those of plain background are not drawn a second time.
    ToolFolder folder;
    const std::string size = "2400x1600";
    const std::vector<std::uint8_t> pixels = DecodeRgba(
        Render(folder, {"Hi", "--size", size, "--samples", "4", "--background", "none"}, "x.png"));
    const DecodedPicture direct = DecodePng(
        Render(folder, {"Hi", "--size", size, "--samples", "4", "--background", "black"}, "y.png"));
    ASSERT_EQ(pixels.size(), 4 * direct.pixels.size());
    std::size_t wrong = 0;
    for (std::size_t i = 0; i < direct.pixels.size(); ++i)
    {
        const long shown = std::lround(pixels[4 * i] * (pixels[4 * i + 3] / 255.0));
        wrong += std::abs(shown - direct.pixels[i].red) > 1 ? 1 : 0;
    }
    EXPECT_EQ(wrong, 0u);
}

TEST(ToolTransparency, FormatsWithoutAlphaRefuse)
{
    for (const char* const name : {"x.bmp", "x.jpg"})
    {
        ToolFolder folder;
        const ToolResult result = folder.Run({"render", "x", "-o", name, "--background", "none"});
        EXPECT_NE(result.status, 0);
        EXPECT_NE(result.err.find("write a PNG, a WebP or a TIFF"), std::string::npos)
            << result.err;
        EXPECT_FALSE(folder.Has(name));
    }
}

TEST(ToolPictureFormats, SixteenBitsRoundToEight)
{
    ToolFolder folder;
    const std::vector<std::string> arguments = {"&", "--size", "160x90"};
    const DecodedPicture shallow = DecodePng(Render(folder, arguments, "x.png"));
    std::vector<std::string> deepArguments = arguments;
    deepArguments.insert(deepArguments.end(), {"--bits", "16"});
    const std::vector<std::uint16_t> deep = DecodeDeepPng(Render(folder, deepArguments, "y.png"));
    ASSERT_EQ(deep.size(), 4 * shallow.pixels.size());
    bool isFiner = false;
    for (std::size_t i = 0; i < shallow.pixels.size(); ++i)
    {
        // 255 levels of 257 each.
        EXPECT_LE(std::abs(deep[4 * i] - 257 * shallow.pixels[i].red), 129) << i;
        EXPECT_LE(std::abs(deep[4 * i + 2] - 257 * shallow.pixels[i].blue), 129) << i;
        isFiner = isFiner || deep[4 * i] % 257 != 0;
    }
    EXPECT_TRUE(isFiner);
}

TEST(ToolPictureFormats, EveryFormatShowsTheSame)
{
    ToolFolder folder;
    const std::vector<std::string> arguments = {"Hello", "--size", "320x180", "--quality", "100"};
    const DecodedPicture png = DecodePng(Render(folder, arguments, "x.png"));
    for (const char* const name : {"x.tif", "x.webp", "x.jpg", "x.JPEG", "x.TIFF"})
    {
        const orvane::ReadPicture picture = ReadBytes(Render(folder, arguments, name));
        ASSERT_EQ(picture.width, 320);
        ASSERT_EQ(picture.height, 180);
        // JPEG alone loses something.
        const int levels = std::string(name).find_first_of("jJ") != std::string::npos ? 12 : 0;
        int farthest = 0;
        for (std::size_t i = 0; i < png.pixels.size(); ++i)
        {
            farthest = std::max(farthest, std::abs(png.pixels[i].red - picture.rows[3 * i]));
            farthest = std::max(farthest, std::abs(png.pixels[i].blue - picture.rows[3 * i + 2]));
        }
        EXPECT_LE(farthest, levels) << name;
    }
}

TEST(ToolPictureFormats, AProfileIsAppliedAndStored)
{
    ToolFolder folder;
    const orvane::Bytes linear = MakeLinearProfile();
    folder.Write("linear.icc", std::string(linear.begin(), linear.end()));
    const std::vector<std::string> arguments = {" ",       "--size", "8x8",       "--background",
                                                "#bcbcbc", "--icc",  "linear.icc"};
    const std::string png = Render(folder, arguments, "x.png");
    // ((188 / 255 + 0.055) / 1.055) ^ 2.4 of 255 are 128.
    EXPECT_NEAR(StoredRed(png), 128, 1);
    EXPECT_NEAR(ReadBytes(png).rows[0], 188, 1);
}

TEST(ToolPictureFormats, InksGoIntoATiffAndNotIntoAPng)
{
    ToolFolder folder;
    const orvane::Bytes inks = MakeInkProfile();
    folder.Write("inks.icc", std::string(inks.begin(), inks.end()));
    const std::string tiff = Render(
        folder, {" ", "--size", "8x8", "--background", "black", "--icc", "inks.icc"}, "x.tif");
    EXPECT_EQ(ReadBytes(tiff).rows[0], 0);
    const ToolResult refused = folder.Run({"render", "x", "-o", "x.png", "--icc", "inks.icc"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.err.find("a PNG has no inks"), std::string::npos) << refused.err;
}

TEST(ToolPictureFormats, APictureThatItsFormatCannotHoldIsRefusedBeforeTheDrawing)
{
    ToolFolder folder;
    const ToolResult result = folder.Run({"render", "x", "-o", "x.webp", "--size", "20000x20000"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("expected 1 to 16383 pixels a side"), std::string::npos)
        << result.err;
    EXPECT_TRUE(folder.Names().empty());
}

class ToolPictureInput : public testing::Test
{
protected:
    ToolPictureInput()
    {
        orvane::PictureFileSettings settings = Settings(37, 23, PixelKind::Rgb);
        settings.isLossless = true;
        orvane::Bytes rows;
        for (int y = 0; y < 23; ++y)
        {
            for (int x = 0; x < 37; ++x)
            {
                const Rgb color = PhotoColor(x, y);
                for (const int channel : {color.red, color.green, color.blue})
                {
                    rows.push_back(static_cast<std::uint8_t>(channel));
                }
            }
        }
        folder_.Write("wood.png", ::Write(PictureFormat::Png, settings, rows));
        folder_.Write("wood.tif", ::Write(PictureFormat::Tiff, settings, rows));
        folder_.Write("wood", ::Write(PictureFormat::WebP, settings, rows));
    }

    ToolFolder folder_;
    const PictureFile bmp_{"wood", 37, 23, PhotoColor};
};

TEST_F(ToolPictureInput, ATextureOfAnyFormatLooksLikeTheBmp)
{
    const std::vector<std::string> arguments = {"&", "--size", "160x90", "--texture"};
    const auto draw = [&](const std::string& file) {
        std::vector<std::string> all = arguments;
        all.push_back(file);
        return Render(folder_, all, "x.png");
    };
    const std::string expected = draw(bmp_.Path());
    for (const char* const file : {"wood.png", "wood.tif", "wood"})
    {
        EXPECT_TRUE(draw(file) == expected) << file;
    }
}

TEST_F(ToolPictureInput, ABackgroundOfAnyFormatLooksLikeTheBmp)
{
    for (const char* const bits : {"24", "8"})
    {
        const auto draw = [&](const std::string& file) {
            return Render(folder_,
                          {"&", "--size", "160x90", "--bits", bits, "--background-fit", "tile",
                           "--background", file},
                          "x.bmp");
        };
        const std::string expected = draw(bmp_.Path());
        for (const char* const file : {"wood.png", "wood.tif", "wood"})
        {
            EXPECT_TRUE(draw(file) == expected) << file << ", " << bits;
        }
    }
}

TEST_F(ToolPictureInput, ASavedSceneKeepsTheNameOfTheFile)
{
    const std::string drawn = Render(folder_,
                                     {"&", "--size", "160x90", "--texture", "wood.png",
                                      "--background", "wood.tif", "--save", "s.orv"},
                                     "x.png");
    EXPECT_TRUE(Render(folder_, {"--scene", "s.orv"}, "y.png") == drawn);
    EXPECT_NE(folder_.Read("s.orv").find("/wood.png"), std::string::npos);
    EXPECT_NE(folder_.Read("s.orv").find("/wood.tif"), std::string::npos);
}

TEST_F(ToolPictureInput, CoverFillsThePictureAndContainShowsAll)
{
    // Three columns of 4 x 8 pixels: red, green and blue. A picture of 24 x 8 has twice the width.
    const PictureFile columns("columns", 12, 8, [](int x, int) {
        return x < 4 ? Rgb{255, 0, 0} : x < 8 ? Rgb{0, 255, 0} : Rgb{0, 0, 255};
    });
    const auto draw = [&](const std::string& fit) {
        return DecodePng(
            Render(folder_,
                   {" ", "--size", "24x8", "--background", columns.Path(), "--background-fit", fit},
                   "x.png"));
    };
    // Cover: 24 x 16, of which the 8 rows in the middle are seen; the columns are 8 pixels wide.
    const DecodedPicture cover = draw("cover");
    EXPECT_EQ(cover.At(0, 0), (Rgb{255, 0, 0}));
    EXPECT_EQ(cover.At(7, 7), (Rgb{255, 0, 0}));
    EXPECT_EQ(cover.At(8, 0), (Rgb{0, 255, 0}));
    EXPECT_EQ(cover.At(23, 7), (Rgb{0, 0, 255}));
    // Contain: 12 x 8 in the middle, from 6 to 17, with 6 free pixels on both sides.
    const DecodedPicture contain = draw("contain");
    EXPECT_EQ(contain.At(5, 4), (Rgb{0x14, 0x1a, 0x2b}));
    EXPECT_EQ(contain.At(6, 4), (Rgb{255, 0, 0}));
    EXPECT_EQ(contain.At(10, 0), (Rgb{0, 255, 0}));
    EXPECT_EQ(contain.At(17, 7), (Rgb{0, 0, 255}));
    EXPECT_EQ(contain.At(18, 4), (Rgb{0x14, 0x1a, 0x2b}));
}

TEST_F(ToolPictureInput, TransparentPixelsShowWhite)
{
    const orvane::PictureFileSettings settings = Settings(1, 1, PixelKind::Rgba);
    folder_.Write("half.png", ::Write(PictureFormat::Png, settings, {255, 0, 100, 51}));
    const DecodedPicture picture =
        DecodePng(Render(folder_, {" ", "--size", "4x4", "--background", "half.png"}, "x.png"));
    // A fifth of 255, 0 and 100, and four fifths of 255.
    EXPECT_EQ(picture.At(1, 1), (Rgb{255, 204, 224}));
}

TEST_F(ToolPictureInput, AFolderAndATextAreNoPictures)
{
    folder_.Write("text.png", "This is no picture.");
    for (const char* const option : {"--background", "--texture"})
    {
        const auto refuse = [&](const std::string& file) {
            const ToolResult result = folder_.Run({"render", "x", "-o", "x.png", option, file});
            EXPECT_EQ(result.status, 1);
            return result.err;
        };
        EXPECT_EQ(refuse("text.png"),
                  "orvane: " + folder_.Path("text.png") +
                      ": not a readable picture: byte 0: found 54 68 69 73, expected the beginning "
                      "of a BMP, PNG, JPEG, WebP or TIFF picture\n");
        EXPECT_EQ(refuse(folder_.Path("")),
                  "orvane: " + folder_.Path("") + ": found a folder, expected a picture\n");
    }
}

TEST_F(ToolPictureInput, ADamagedPictureIsToldWithItsPlace)
{
    const std::string whole = folder_.Read("wood.png");
    folder_.Write("cut.png", whole.substr(0, whole.size() / 2));
    for (const char* const option : {"--background", "--texture"})
    {
        const ToolResult result = folder_.Run({"render", "x", "-o", "x.png", option, "cut.png"});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err, "orvane: " + folder_.Path("cut.png") +
                                  ": not a readable picture: byte 60: found a PNG chunk of " +
                                  std::to_string(whole.size() - 102) + " bytes, expected at most " +
                                  std::to_string(whole.size() / 2 - 72) +
                                  ", where the file ends\n");
        EXPECT_FALSE(folder_.Has("x.png"));
    }
}
