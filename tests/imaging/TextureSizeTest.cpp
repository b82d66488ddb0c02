// SPDX-License-Identifier: MIT
#include "imaging/TextureSize.h"

#include "platform/Limits.h"

#include <gtest/gtest.h>

namespace
{

using orvane::FitTexture;
using orvane::PixelSize;

constexpr std::uint64_t mebi = 1 << 20;

TEST(FitTexture, ASizeWithinTheLimitsStays)
{
    for (const PixelSize size : {PixelSize{1, 1}, {16384, 1}, {1, 16384}, {4096, 4096}, {300, 7}})
    {
        EXPECT_EQ(FitTexture(size, 16 * mebi), size);
    }
}

TEST(FitTexture, ASideBeyondTheLimitIsCut)
{
    EXPECT_EQ(FitTexture({16385, 1}, 16 * mebi), (PixelSize{16384, 1}));
    EXPECT_EQ(FitTexture({1, 16385}, 16 * mebi), (PixelSize{1, 16384}));
    EXPECT_EQ(FitTexture({134000000, 1}, 16 * mebi), (PixelSize{16384, 1}));
    EXPECT_EQ(FitTexture({0x7FFFFFFF, 0x7FFFFFFF}, 16 * mebi), (PixelSize{4096, 4096}));
}

TEST(FitTexture, TooManyPixelsAreReducedInProportion)
{
    EXPECT_EQ(FitTexture({8192, 2048}, 4 * mebi), (PixelSize{4096, 1024}));
    EXPECT_EQ(FitTexture({16384, 2}, 100), (PixelSize{100, 1}));
    EXPECT_EQ(FitTexture({2, 16384}, 100), (PixelSize{1, 100}));
    const PixelSize oneTooMany = FitTexture({4097, 4096}, 16 * mebi);
    EXPECT_LE(oneTooMany.width * oneTooMany.height, 16 << 20);
    EXPECT_GE(oneTooMany.width * oneTooMany.height, 16 * mebi * 999 / 1000);
}

TEST(Limits, APictureHasAsManyPixelsAsTextureAsItsFilePaysFor)
{
    using orvane::limits::MaxTexturePixels;
    using orvane::limits::MemoryForFile;
    // 20 bytes a pixel, out of 64 MiB and 20 bytes for each byte of the file.
    EXPECT_EQ(MemoryForFile(864), 67126144U);
    EXPECT_EQ(MaxTexturePixels(864), 3356307U);
    EXPECT_EQ(MaxTexturePixels(1 * mebi), 3355443U + 1048576U);
    // 8 bits per pixel pay for all.
    EXPECT_EQ(MaxTexturePixels(16 * mebi), 16 * mebi);
    EXPECT_EQ(MaxTexturePixels(4096 * mebi), 16 * mebi);
}

}  // namespace
