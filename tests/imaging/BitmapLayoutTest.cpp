// SPDX-License-Identifier: MIT
#include "imaging/BitmapLayout.h"

#include "platform/Limits.h"

#include <gtest/gtest.h>

namespace
{

constexpr std::uint64_t headerBytes = sizeof(BITMAPINFOHEADER);

BITMAPINFO Describe(LONG width, LONG height, WORD bitCount)
{
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = bitCount;
    return info;
}

/// The place and the text of the fault; empty without a fault. The pixels are taken to have any
/// number of bytes.
std::string FaultOf(const BITMAPINFO& info)
{
    constexpr std::uint64_t manyBytes = std::uint64_t{1} << 40;
    const std::optional<BitmapFault> fault = FindFault(&info, headerBytes, headerBytes, manyBytes);
    return fault ? std::to_string(fault->place) + ": " + fault->text : "";
}

TEST(BitmapLayout, PixelsTakeLessThan4GiB)
{
    EXPECT_EQ(orvane::limits::maxBitmapBytes, 4294967295U);
    // A pixel of 32 bits takes 4 bytes, so 2 to the 30th minus 1 of them take 4 GiB - 4.
    EXPECT_EQ(FaultOf(Describe(1, 1073741823, 32)), "");
    EXPECT_EQ(FaultOf(Describe(1, -1073741823, 32)), "");
    EXPECT_EQ(FaultOf(Describe(1073741823, 1, 32)), "");
    EXPECT_EQ(FaultOf(Describe(1, 1073741824, 32)),
              "4: found 1 by 1073741824 pixels, expected at least 1 pixel and at most 4 GiB of "
              "pixels");
    EXPECT_EQ(FaultOf(Describe(1073741824, 1, 32)),
              "4: found 1073741824 by 1 pixels, expected at least 1 pixel and at most 4 GiB of "
              "pixels");
}

TEST(BitmapLayout, SizesThatNoBitmapHasAreRefused)
{
    for (const BITMAPINFO& info :
         {Describe(0, 1, 24), Describe(-1, 1, 24), Describe(1, 0, 24), Describe(1, INT32_MIN, 24)})
    {
        EXPECT_NE(FaultOf(info), "") << info.bmiHeader.biWidth << " " << info.bmiHeader.biHeight;
    }
}

TEST(BitmapLayout, CodeMayUnpackTo64MiBOrTo256TimesItsBytes)
{
    using orvane::limits::MaxUnpackedBytes;
    // 256 x 262,144 bytes are 64 MiB.
    EXPECT_EQ(MaxUnpackedBytes(0), 67108864U);
    EXPECT_EQ(MaxUnpackedBytes(262144), 67108864U);
    EXPECT_EQ(MaxUnpackedBytes(262145), 67109120U);
    const auto packed = [](LONG height, DWORD codeBytes) {
        BITMAPINFO info = Describe(256, height, 8);
        info.bmiHeader.biCompression = BI_RLE8;
        info.bmiHeader.biClrUsed = 1;
        info.bmiHeader.biSizeImage = codeBytes;
        const std::optional<BitmapFault> fault =
            FindFault(&info, headerBytes + 4, headerBytes + 4, codeBytes);
        return fault ? fault->text : "";
    };
    // A row has 256 bytes, as many as a byte of code may become.
    EXPECT_EQ(packed(300000, 300000), "");
    EXPECT_EQ(packed(300001, 300000),
              "found 256 by 300001 pixels, expected rows of at most 16777216 pixels, and no more "
              "than 300000 compressed bytes can hold");
}

}  // namespace
