// SPDX-License-Identifier: MIT
#include "pictures/ColorProfile.h"

#include "orvane/Error.h"
#include "platform/Limits.h"
#include "tests/pictures/Profiles.h"
#include "tests/pictures/WrittenPicture.h"

#include <gtest/gtest.h>

#include <string>

using orvane::Bytes;
using orvane::ColorConversion;
using orvane::PixelKind;
using orvane::RowFormat;

namespace
{

const RowFormat colors = {PixelKind::Rgb, 8};

std::string Refusal(const Bytes& file)
{
    const TemporaryFile profile("a.icc", file);
    try
    {
        orvane::ReadProfile(static_cast<const char*>(profile.Path()));
    }
    catch (const orvane::Error& error)
    {
        return error.Problem();
    }
    return {};
}

}  // namespace

TEST(ColorProfile, TheStandardProfileIsTheSameEveryTimeAndForColours)
{
    EXPECT_EQ(orvane::KindOfProfile(orvane::StandardProfile(), "sRGB"), PixelKind::Rgb);
    const Bytes& profile = orvane::StandardProfile();
    // The time in the header: 2024, 1, 1, 0, 0, 0.
    EXPECT_EQ(Bytes(profile.begin() + 24, profile.begin() + 36),
              (Bytes{0x07, 0xE8, 0, 1, 0, 1, 0, 0, 0, 0, 0, 0}));
}

TEST(ColorProfile, ColoursAreConvertedToAProfile)
{
    const ColorConversion conversion({}, colors, MakeLinearProfile(), colors, "test");
    const Bytes from = {0, 0, 0, 255, 255, 255, 188, 188, 188};
    Bytes to(9);
    conversion.Convert(from.data(), to.data(), 3);
    // ((188 / 255 + 0.055) / 1.055) ^ 2.4 is 0.5029, which is 128.2 of 255.
    const Bytes expected = {0, 0, 0, 255, 255, 255, 128, 128, 128};
    for (std::size_t i = 0; i < to.size(); ++i)
    {
        EXPECT_NEAR(to[i], expected[i], 1) << i;
    }
}

TEST(ColorProfile, AlphaIsCopied)
{
    const RowFormat withAlpha = {PixelKind::Rgba, 8};
    const ColorConversion conversion({}, withAlpha, MakeLinearProfile(), withAlpha, "test");
    const Bytes from = {255, 255, 255, 77};
    Bytes to(4);
    conversion.Convert(from.data(), to.data(), 1);
    EXPECT_EQ(to, (Bytes{255, 255, 255, 77}));
}

TEST(ColorProfile, APictureBecomesInks)
{
    const TemporaryName name("inks.tif");
    const std::string path = static_cast<const char*>(name.Path());
    orvane::PictureFileSettings settings = Settings(2, 1, PixelKind::Cmyk);
    settings.profile = MakeInkProfile();
    settings.packing = orvane::TiffPacking::None;
    EXPECT_EQ(orvane::KindOfProfile(settings.profile, "inks"), PixelKind::Cmyk);
    orvane::OutputFile output(path);
    orvane::ConvertingWriter writer(
        MakePictureWriter(orvane::PictureFormat::Tiff, settings, output, path), settings, colors,
        path);
    const Bytes whiteAndBlack = {255, 255, 255, 0, 0, 0};
    writer.WriteRows(whiteAndBlack.data(), 6, 1);
    writer.Finish();
    output.Commit();
    // The only strip begins behind the header of 8 bytes: no ink, and nothing but black.
    const std::vector<BYTE> file = name.Read();
    ASSERT_GT(file.size(), 16u);
    EXPECT_EQ(Bytes(file.begin() + 8, file.begin() + 16), (Bytes{0, 0, 0, 0, 0, 0, 0, 255}));
}

TEST(ColorProfile, FilesThatAreNoProfilesAreRefused)
{
    EXPECT_EQ(Refusal({}), "byte 0: not a readable ICC colour profile");
    EXPECT_EQ(Refusal(Bytes(1000, 'x')), "byte 0: not a readable ICC colour profile");
    Bytes cut = orvane::StandardProfile();
    cut.resize(200);
    EXPECT_EQ(Refusal(cut), "byte 0: not a readable ICC colour profile");
    EXPECT_EQ(Refusal(BytesOf(cmsCreateLab4Profile(nullptr))),
              "found a colour profile for \"Lab \", expected one for RGB, GRAY or CMYK");
    EXPECT_EQ(Refusal(MakeLinearProfile()), "");
}

TEST(ColorProfile, FoldersAndDevicesAreRefused)
{
    for (const std::string& path : {TemporaryFolder(), std::string("/dev/zero")})
    {
        try
        {
            orvane::ReadProfile(path);
            ADD_FAILURE() << path;
        }
        catch (const orvane::Error& error)
        {
            EXPECT_EQ(error.Found(), "a folder, a device or a pipe");
        }
    }
}

TEST(ColorProfile, AFileHasAtMost16MiB)
{
    // Bytes behind the end that a profile states are of no importance.
    Bytes file = orvane::StandardProfile();
    file.resize(orvane::limits::maxProfileBytes);
    EXPECT_EQ(Refusal(file), "");
    file.push_back(0);
    EXPECT_EQ(Refusal(file),
              "found more than 16777216 bytes, expected a colour profile of at most as many");
}
