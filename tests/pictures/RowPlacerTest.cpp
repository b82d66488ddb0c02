// SPDX-License-Identifier: MIT
#include "pictures/RowPlacer.h"

#include "orvane/Error.h"
#include "platform/Limits.h"

#include <gtest/gtest.h>

#include <string>

using orvane::Bytes;
using orvane::PixelKind;
using orvane::ReadPicture;
using orvane::RowPlacer;
using orvane::StoredPicture;

namespace
{

const std::string place = "a.file";

/// The greys of an upright picture whose stored rows are 1 2 3 and 4 5 6.
Bytes Turned(int orientation, int width)
{
    StoredPicture stored;
    stored.width = 3;
    stored.height = 2;
    stored.rows.kind = PixelKind::Grey;
    stored.orientation = orientation;
    RowPlacer placer(stored, {nullptr, 100, place});
    const Bytes first = {1, 2, 3};
    const Bytes second = {4, 5, 6};
    placer.Add(first.data());
    placer.Add(second.data());
    const ReadPicture picture = placer.Take();
    EXPECT_EQ(picture.width, width);
    EXPECT_EQ(picture.height, 6 / width);
    Bytes greys;
    for (std::size_t i = 0; i < picture.rows.size(); i += 3)
    {
        greys.push_back(picture.rows[i]);
    }
    return greys;
}

std::string Refusal(std::uint64_t width, std::uint64_t height, std::size_t fileBytes)
{
    StoredPicture stored;
    stored.width = width;
    stored.height = height;
    try
    {
        const RowPlacer placer(stored, {nullptr, fileBytes, place});
    }
    catch (const orvane::Error& error)
    {
        return error.what();
    }
    return {};
}

}  // namespace

TEST(RowPlacer, EveryOrientationBecomesUpright)
{
    EXPECT_EQ(Turned(1, 3), (Bytes{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(Turned(2, 3), (Bytes{3, 2, 1, 6, 5, 4}));  // mirrored left to right
    EXPECT_EQ(Turned(3, 3), (Bytes{6, 5, 4, 3, 2, 1}));  // half a turn
    EXPECT_EQ(Turned(4, 3), (Bytes{4, 5, 6, 1, 2, 3}));  // mirrored upside down
    EXPECT_EQ(Turned(5, 2), (Bytes{1, 4, 2, 5, 3, 6}));  // mirrored at the falling diagonal
    EXPECT_EQ(Turned(6, 2), (Bytes{4, 1, 5, 2, 6, 3}));  // turned clockwise
    EXPECT_EQ(Turned(7, 2), (Bytes{6, 3, 5, 2, 4, 1}));  // mirrored at the rising diagonal
    EXPECT_EQ(Turned(8, 2), (Bytes{3, 6, 2, 5, 1, 4}));  // turned counter-clockwise
}

TEST(RowPlacer, ASideHas1To100000Pixels)
{
    EXPECT_EQ(Refusal(100000, 1, 1000), "");
    EXPECT_EQ(Refusal(100001, 1, 1000),
              "a.file: found 100001 x 1 pixels, expected 1 to 100000 pixels a side");
    EXPECT_EQ(Refusal(1, 100001, 1000),
              "a.file: found 1 x 100001 pixels, expected 1 to 100000 pixels a side");
    EXPECT_EQ(Refusal(0, 1, 1000),
              "a.file: found 0 x 1 pixels, expected 1 to 100000 pixels a side");
}

TEST(RowPlacer, PixelsTake256BytesForEachByteOfTheFileOr64MiB)
{
    // 64 MiB are 67,108,864 bytes: 22,369,621 pixels of three bytes and one byte more.
    EXPECT_EQ(Refusal(22369, 1000, 10), "");
    EXPECT_EQ(Refusal(22370, 1000, 10),
              "a.file: found 22370 x 1000 pixels, which take 67110000 bytes, expected at most "
              "67108864 in a file of 10 bytes");
    // A file of a million bytes may have 256 million.
    EXPECT_EQ(Refusal(85333, 1000, 1000000), "");
    EXPECT_NE(Refusal(85334, 1000, 1000000), "");
}

TEST(RowPlacer, ADecoderHasTheMemoryThatTheFilePaysFor)
{
    StoredPicture stored;
    stored.width = 1000;
    stored.height = 1000;
    // 64 MiB and 20 bytes for each of 1000.
    const orvane::PictureSource source = {nullptr, 1000, place};
    EXPECT_NO_THROW(CheckDecoderMemory(stored, 67, source));
    EXPECT_THROW(CheckDecoderMemory(stored, 68, source), orvane::Error);
}
