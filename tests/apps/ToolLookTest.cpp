// SPDX-License-Identifier: MIT
// What backgrounds, textures, lights and lenses do to the tool's pictures.

#include "tests/support/BmpFile.h"
#include "tests/support/DecodedPicture.h"
#include "tests/support/PictureFile.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace
{

const Rgb around = {0x14, 0x1a, 0x2b};  // the colour when none is asked for

DecodedPicture Draw(std::vector<std::string> arguments, const std::string& size = "320x180")
{
    ToolFolder folder;
    arguments.insert(arguments.begin(), "render");
    arguments.insert(arguments.end(), {"--size", size, "-o", "x.png"});
    const ToolResult result = folder.Run(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    return DecodePng(folder.Read("x.png"));
}

double Brightness(const DecodedPicture& picture)
{
    double sum = 0;
    for (const Rgb& pixel : picture.pixels)
    {
        sum += pixel.red + pixel.green + pixel.blue;
    }
    return sum;
}

// Each pixel has a colour of its own.
Rgb Own(int x, int y)
{
    return {6 * x + 5, 10 * y + 5, 200};
}

class ToolBackground : public testing::Test
{
protected:
    /// Nothing but the background: blanks have nothing to see.
    DecodedPicture DrawBackground(std::vector<std::string> arguments, const std::string& size) const
    {
        arguments.insert(arguments.begin(), {" ", "--background", picture_.Path()});
        return Draw(arguments, size);
    }

    static constexpr int width = 37;
    static constexpr int height = 23;
    const PictureFile picture_{"own", width, height, Own};
};

TEST_F(ToolBackground, StretchedFillsThePicture)
{
    const DecodedPicture picture = DrawBackground({}, "185x115");
    for (int y = 0; y < 115; ++y)
    {
        for (int x = 0; x < 185; ++x)
        {
            ASSERT_EQ(picture.At(x, y), Own(x / 5, y / 5)) << x << "," << y;
        }
    }
}

TEST_F(ToolBackground, StretchedFromAPlaceReachesTheFarCorner)
{
    for (const char* const samples : {"1", "4"})
    {
        const DecodedPicture picture = DrawBackground(
            {"--background-at", "10,15", "--background-placement", "stretch", "--samples", samples},
            "195x130");
        for (int y = 0; y < 130; ++y)
        {
            for (int x = 0; x < 195; ++x)
            {
                const Rgb expected = x < 10 || y < 15 ? around : Own((x - 10) / 5, (y - 15) / 5);
                ASSERT_EQ(picture.At(x, y), expected) << x << "," << y << " " << samples;
            }
        }
    }
}

TEST_F(ToolBackground, TilesRunOnAcrossBandsFromTheirPlace)
{
    // Bands of one sample are 2048 pixels wide and 170 high, no multiples of a tile.
    for (const auto& [samples, size] : {std::pair("1", "2100x190"), {"2", "1100x100"}})
    {
        const DecodedPicture picture = DrawBackground(
            {"--background-placement", "tile", "--background-at", "7,-2", "--samples", samples},
            size);
        for (int y = 0; y < picture.height; ++y)
        {
            for (int x = 0; x < picture.width; ++x)
            {
                const Rgb expected = Own((x + 10 * width - 7) % width, (y + 2) % height);
                ASSERT_EQ(picture.At(x, y), expected) << x << "," << y << " " << samples;
            }
        }
    }
}

TEST_F(ToolBackground, CentredIsOnceInTheMiddle)
{
    for (const auto& [samples, size] : {std::pair("1", "2101x203"), {"4", "75x53"}})
    {
        const DecodedPicture picture =
            DrawBackground({"--background-placement", "center", "--samples", samples}, size);
        const int left = (picture.width - width) / 2;
        const int top = (picture.height - height) / 2;
        for (int y = 0; y < picture.height; ++y)
        {
            for (int x = 0; x < picture.width; ++x)
            {
                const bool inside = x >= left && x < left + width && y >= top && y < top + height;
                ASSERT_EQ(picture.At(x, y), inside ? Own(x - left, y - top) : around)
                    << x << "," << y << " " << samples;
            }
        }
    }
}

TEST_F(ToolBackground, LiesBehindTheText)
{
    const DecodedPicture plain = DrawBackground({}, "320x180");
    const DecodedPicture text = Draw({"H", "--background", picture_.Path()});
    std::size_t covered = 0;
    for (std::size_t i = 0; i < text.pixels.size(); ++i)
    {
        covered += text.pixels[i] == plain.pixels[i] ? 0 : 1;
    }
    EXPECT_GT(covered, 3000u);
    EXPECT_LT(covered, text.pixels.size() / 2);
}

TEST_F(ToolBackground, IsDitheredTo8Bits)
{
    ToolFolder folder;
    const ToolResult result = folder.Run({"render", " ", "--background", picture_.Path(), "--bits",
                                          "8", "--size", "370x230", "-o", "x.bmp"});
    ASSERT_EQ(result.status, 0) << result.err;
    const DecodedPicture picture = DecodeBmp(folder.Read("x.bmp"));
    for (int y = 0; y < height; ++y)
    {
        for (int x = 0; x < width; ++x)
        {
            const Rgb pixel = picture.At(10 * x + 4, 10 * y + 4);
            EXPECT_NEAR(pixel.red, Own(x, y).red, 37) << x << "," << y;
            EXPECT_NEAR(pixel.green, Own(x, y).green, 37) << x << "," << y;
            EXPECT_NEAR(pixel.blue, Own(x, y).blue, 86) << x << "," << y;
        }
    }
}

TEST(ToolPictureFile, IsRefusedWithThePlaceAndTheFoundAndExpectedValues)
{
    ToolFolder folder;
    const auto refused = [&folder](const std::string& content) {
        folder.Write("t.bmp", content);
        const std::string kind = content.empty() || content.starts_with("BM") ? "BMP " : "";
        const std::string file = folder.Path("t.bmp") + ": not a readable " + kind + "picture: ";
        std::string reason;
        for (const char* const option : {"--background", "--texture"})
        {
            const ToolResult result = folder.Run({"render", "x", "-o", "x.png", option, "t.bmp"});
            EXPECT_EQ(result.status, 1);
            EXPECT_TRUE(result.err.starts_with("orvane: " + file)) << result.err;
            EXPECT_FALSE(folder.Has("x.png"));
            reason = result.err.substr(std::min(result.err.size(), 8 + file.size()));
        }
        return reason;
    };
    const auto refusedBmp = [&refused](auto change) {
        BmpFile file;
        file.width = 2;
        file.height = 2;
        file.pixels = Bytes(16);
        change(file);
        return refused(AsText(file.File()));
    };
    EXPECT_EQ(refused(""), "byte 0: the file ends, expected \"BM\"\n");
    EXPECT_EQ(refused("This is no picture."),
              "byte 0: found 54 68 69 73, expected the beginning of a BMP, PNG, JPEG, WebP or TIFF "
              "picture\n");
    EXPECT_EQ(refused("BM"), "byte 2: the file ends, expected headers of 54 bytes\n");
    EXPECT_EQ(refusedBmp([](BmpFile& file) { file.bitsOffset = 70; }),
              "byte 10: found pixels that begin at byte 70, expected a place inside the file's "
              "70 bytes\n");
    EXPECT_EQ(refusedBmp([](BmpFile& file) { file.headerSize = 66; }),
              "byte 14: found a header of 66 bytes, expected 40, 52, 56, 64, 108 or 124\n");
    EXPECT_EQ(
        refusedBmp([](BmpFile& file) { file.width = 0; }),
        "byte 18: found 0 by 2 pixels, expected at least 1 pixel and at most 4 GiB of pixels\n");
    EXPECT_EQ(refusedBmp([](BmpFile& file) { file.planes = 3; }),
              "byte 26: found 3 planes, expected 1 plane\n");
    EXPECT_EQ(refusedBmp([](BmpFile& file) { file.bitCount = 2; }),
              "byte 28: found 2 bits per pixel with compression 0, expected 1, 4, 8, 16, 24 or 32 "
              "bits with compression 0, 8 with 1, 4 with 2, 16 or 32 with 3\n");
    EXPECT_EQ(
        refusedBmp([](BmpFile& file) { file.colorsUsed = 5; }),
        "byte 46: found a header, colours and masks of 60 bytes, expected at most 56 bytes\n");
    EXPECT_EQ(refusedBmp([](BmpFile& file) { file.pixels.pop_back(); }),
              "byte 54: found 15 bytes of pixels, expected 16 bytes\n");

    const ToolResult missing =
        folder.Run({"render", "x", "-o", "x.png", "--texture", "missing.bmp"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "orvane: " + folder.Path("missing.bmp") + ": there is no such file\n");
}

class ToolTexture : public testing::Test
{
protected:
    /// The front of a letter, seen straight on: its pixels from a part that the letter fills.
    std::vector<Rgb> DrawStem(std::vector<std::string> arguments,
                              const std::string& color = "white") const
    {
        arguments.insert(arguments.begin(),
                         {"I", "--texture", checks_.Path(), "--style", "square", "--turn", "0,0,0",
                          "--face-color", color, "--samples", "1"});
        const DecodedPicture picture = Draw(arguments, "300x300");
        const PixelBox box = BoxOfContent(picture);
        std::vector<Rgb> stem;
        const int middle = (box.left + box.right) / 2;
        for (int y = box.top + 20; y < box.bottom - 20; ++y)
        {
            for (int x = middle - 15; x < middle + 15; ++x)
            {
                stem.push_back(picture.At(x, y));
            }
        }
        return stem;
    }
    static std::set<int> Reds(const std::vector<Rgb>& pixels)
    {
        std::set<int> reds;
        for (const Rgb& pixel : pixels)
        {
            reds.insert(pixel.red);
        }
        return reds;
    }

    const PictureFile checks_{"checks", 4, 4, [](int x, int y) {
                                  const int level = (x + y) % 2 == 0 ? 255 : 0;
                                  return Rgb{level, level, level};
                              }};
};

TEST_F(ToolTexture, NearestHasItsPixelsAsTheyAre)
{
    EXPECT_EQ(Reds(DrawStem({"--texture-quality", "nearest"})).size(), 2u);
}

TEST_F(ToolTexture, LinearMixesNeighbours)
{
    EXPECT_GT(Reds(DrawStem({"--texture-quality", "linear"})).size(), 50u);
}

TEST_F(ToolTexture, MipmapsEvenOutPatternsSmallerThanAPixel)
{
    const auto range = [this](const char* quality) {
        const std::set<int> reds =
            Reds(DrawStem({"--texture-quality", quality, "--texture-repeat", "400"}));
        return *reds.rbegin() - *reds.begin();
    };
    EXPECT_GT(range("nearest"), 150);
    EXPECT_LT(range("mipmap"), 40);
}

TEST_F(ToolTexture, RepeatsAsOftenAsAsked)
{
    const auto changes = [this](const char* repeat) {
        const std::vector<Rgb> stem =
            DrawStem({"--texture-quality", "nearest", "--texture-repeat", repeat});
        int count = 0;
        for (std::size_t i = 30; i < stem.size(); i += 30)  // down its left side
        {
            count += stem[i] == stem[i - 30] ? 0 : 1;
        }
        return count;
    };
    const int once = changes("1");
    EXPECT_GE(once, 2);
    EXPECT_NEAR(changes("4"), 4 * once, 6);
}

TEST_F(ToolTexture, IsLitAndColoured)
{
    // White pixels have the face's colour, black ones stay black.
    const std::vector<Rgb> stem = DrawStem({"--texture-quality", "nearest"}, "#ff0000");
    for (const Rgb& pixel : stem)
    {
        EXPECT_LT(pixel.green, 60);
        EXPECT_TRUE(pixel.red > 150 || pixel.red < 40) << pixel.red;
    }
}

TEST(ToolLights, WithoutAnyTheLettersAreBlack)
{
    const DecodedPicture picture = Draw({"HO", "--light", "1,off", "--light", "7,off", "--ambient",
                                         "black", "--background", "#00ff00", "--samples", "1"});
    EXPECT_EQ(picture.Count([](const Rgb& p) {
        return p == Rgb{0, 0, 0};
    }) + picture.Count([](const Rgb& p) {
        return p == Rgb{0, 255, 0};
    }),
              picture.pixels.size());
}

TEST(ToolLights, EachCanBeSwitchedAndColoured)
{
    for (int light = 0; light < 8; ++light)
    {
        const std::string change = std::to_string(light) + ",on,#ff0000";
        const DecodedPicture picture = Draw(
            {"HO", "--light", "1,off", "--light", "7,off", "--ambient", "black", "--face-color",
             "white", "--light", change, "--turn", "25,30,0", "--background", "black"});
        EXPECT_GT(picture.Count([](const Rgb& p) { return p.red > 20; }), 100u) << change;
        EXPECT_EQ(picture.Count([](const Rgb& p) { return p.green + p.blue > 0; }), 0u) << change;
    }
}

TEST(ToolLights, AmbientLightIsEverywhere)
{
    const DecodedPicture picture =
        Draw({"HO", "--light", "1,off", "--light", "7,off", "--ambient", "#0000ff", "--face-color",
              "white", "--background", "black"});
    EXPECT_GT(picture.Count([](const Rgb& p) { return p.blue > 40; }), 5000u);
    EXPECT_EQ(picture.Count([](const Rgb& p) { return p.red + p.green > 0; }), 0u);
}

TEST(ToolLights, TurnWithTheSceneOrStayWithTheCamera)
{
    // Both shine on the front of a letter; turned around it shows its back.
    const auto brightness = [](const char* follow, const char* turn) {
        return Brightness(Draw({"H", "--lights-follow", follow, "--turn", turn, "--background",
                                "black", "--style", "square"}));
    };
    const double front = brightness("camera", "0,0,0");
    EXPECT_NEAR(brightness("scene", "0,0,0"), front, 1);
    EXPECT_NEAR(brightness("camera", "0,180,0"), front, front * 0.01);
    EXPECT_LT(brightness("scene", "0,180,0"), front * 0.6);
}

TEST(ToolCamera, ALensIsItsFieldOfView)
{
    // 2 atan(17.5 / 50) = 38.5798 degrees.
    const DecodedPicture lens = Draw({"Lens", "--lens", "50"});
    const DecodedPicture angle = Draw({"Lens", "--fov", "38.579810363"});
    std::size_t other = 0;
    for (std::size_t i = 0; i < lens.pixels.size(); ++i)
    {
        other += lens.pixels[i] == angle.pixels[i] ? 0 : 1;
    }
    EXPECT_LT(other, 20u);
}

TEST(ToolCamera, AShortLensMakesNearLettersLargerAndNoPerspectiveNone)
{
    const auto ratio = [](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"HHHH", "--turn", "0,50,0", "--depth", "0"});
        const DecodedPicture picture = Draw(arguments);
        const PixelBox box = BoxOfContent(picture);
        const auto height = [&picture](int x) {
            int count = 0;
            for (int y = 0; y < picture.height; ++y)
            {
                count += picture.At(x, y) == picture.pixels.front() ? 0 : 1;
            }
            return count;
        };
        return static_cast<double>(height(box.left + 2)) / height(box.right - 2);
    };
    EXPECT_NEAR(ratio({"--ortho"}), 1, 0.05);
    EXPECT_NEAR(ratio({"--fov", "1"}), 1, 0.05);
    EXPECT_GT(ratio({"--fov", "20"}), 1.1);
    EXPECT_GT(ratio({"--fov", "80"}), 2);
}

TEST(ToolCamera, EveryLensFramesTheTextWhole)
{
    for (const std::vector<std::string>& lens : {std::vector<std::string>{"--fov", "1"},
                                                 {"--fov", "60"},
                                                 {"--fov", "140"},
                                                 {"--ortho"},
                                                 {"--lens", "1000"}})
    {
        for (const char* const turn : {"0,0,0", "30,-40,15"})
        {
            std::vector<std::string> arguments = {"Frame", "--turn", turn};
            arguments.insert(arguments.end(), lens.begin(), lens.end());
            const PixelBox box = BoxOfContent(Draw(arguments));
            const std::string which = lens.front() + " " + lens.back() + " " + turn;
            EXPECT_GE(box.left, 320 * 0.05) << which;
            EXPECT_LE(box.right, 320 * 0.95) << which;
            EXPECT_GE(box.top, 180 * 0.05) << which;
            EXPECT_LE(box.bottom, 180 * 0.95) << which;
            EXPECT_GT(box.Width(), 0) << which;
        }
    }
}

}  // namespace
