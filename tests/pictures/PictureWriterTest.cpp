// SPDX-License-Identifier: MIT
#include "pictures/PictureWriter.h"

#include "orvane/Error.h"
#include "tests/pictures/WrittenPicture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using orvane::Bytes;
using orvane::PictureFileSettings;
using orvane::PictureFormat;
using orvane::PixelKind;

namespace
{

/// Why a file cannot be made; empty when it can.
std::string Refusal(PictureFormat format, const PictureFileSettings& settings)
{
    try
    {
        orvane::CheckPictureFile(format, settings, "a.file");
    }
    catch (const orvane::Error& error)
    {
        return error.what();
    }
    return {};
}

}  // namespace

TEST(PictureWriter, EachFormatHasALargestSide)
{
    struct Side
    {
        PictureFormat format;
        int most;
    };
    for (const Side& side : {Side{PictureFormat::Png, 100000}, Side{PictureFormat::Tiff, 100000},
                             Side{PictureFormat::Jpeg, 65500}, Side{PictureFormat::WebP, 16383}})
    {
        EXPECT_EQ(Refusal(side.format, Settings(side.most, 1, PixelKind::Rgb)), "");
        EXPECT_EQ(Refusal(side.format, Settings(1, side.most, PixelKind::Rgb)), "");
        EXPECT_NE(Refusal(side.format, Settings(side.most + 1, 1, PixelKind::Rgb)), "");
        EXPECT_NE(Refusal(side.format, Settings(1, side.most + 1, PixelKind::Rgb)), "");
        EXPECT_NE(Refusal(side.format, Settings(0, 1, PixelKind::Rgb)), "");
    }
    EXPECT_EQ(Refusal(PictureFormat::WebP, Settings(16384, 10, PixelKind::Rgb)),
              "a.file: found a WebP of 16384 x 10 pixels, expected 1 to 16383 pixels a side; a PNG "
              "or a TIFF may have 100000");
}

TEST(PictureWriter, WhatAFormatCannotHoldIsRefused)
{
    EXPECT_EQ(Refusal(PictureFormat::Jpeg, Settings(1, 1, PixelKind::Rgba)),
              "a.file: a JPEG cannot be transparent; write a PNG, a WebP or a TIFF");
    EXPECT_EQ(Refusal(PictureFormat::WebP, Settings(1, 1, PixelKind::Rgb, 16)),
              "a.file: a WebP has 8 bits a channel; write a PNG or a TIFF");
    PictureFileSettings inks = Settings(1, 1, PixelKind::Cmyk);
    EXPECT_EQ(Refusal(PictureFormat::Tiff, inks),
              "a.file: inks need a colour profile, which says how they look");
    inks.profile = {1};
    EXPECT_EQ(Refusal(PictureFormat::Tiff, inks), "");
    EXPECT_EQ(Refusal(PictureFormat::Png, inks),
              "a.file: a PNG has no inks; write a TIFF or a JPEG");
}

TEST(PictureWriter, AnUnfinishedPictureLeavesNoFile)
{
    for (const PictureFormat format :
         {PictureFormat::Png, PictureFormat::Jpeg, PictureFormat::WebP, PictureFormat::Tiff})
    {
        const TemporaryName name("unfinished");
        const std::string path = static_cast<const char*>(name.Path());
        {
            const PictureFileSettings settings = Settings(100, 100, PixelKind::Rgb);
            orvane::OutputFile output(path);
            const auto writer = MakePictureWriter(format, settings, output, path);
            writer->WriteRows(Bytes(300).data(), 300, 1);
        }
        EXPECT_FALSE(name.Exists());
    }
}

TEST(PictureWriter, AFullDiskIsAnErrorThatNamesTheFile)
{
    // The device takes no bytes. A TIFF cannot go there at all.
    for (const PictureFormat format :
         {PictureFormat::Png, PictureFormat::Jpeg, PictureFormat::WebP})
    {
        const PictureFileSettings settings = Settings(300, 300, PixelKind::Rgb);
        const Bytes rows = MakeRows(300, 300, settings.rows);
        const auto write = [&] {
            orvane::OutputFile output("/dev/full");
            const auto writer = MakePictureWriter(format, settings, output, "/dev/full");
            writer->WriteRows(rows.data(), 900, 300);
            writer->Finish();
            output.Commit();
        };
        try
        {
            write();
            ADD_FAILURE() << "no error";
        }
        catch (const orvane::Error& error)
        {
            EXPECT_EQ(std::string(error.what()), "/dev/full: No space left on device");
        }
    }
}
