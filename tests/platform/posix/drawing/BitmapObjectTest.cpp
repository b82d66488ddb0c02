// SPDX-License-Identifier: MIT
#include "platform/posix/drawing/BitmapObject.h"

#include "platform/Limits.h"

#include <gtest/gtest.h>

namespace
{

TEST(BitmapObject, BitsTakeLessThan4GiB)
{
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = 1;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    // A pixel takes 4 bytes, so 2 to the 30th minus 1 of them take 4 GiB - 4.
    info.bmiHeader.biHeight = 1073741823;
    const std::shared_ptr<posix::Bitmap> largest = posix::DescribeBitmap(info);
    ASSERT_NE(largest, nullptr);
    EXPECT_EQ(largest->Size(), 4294967292U);
    EXPECT_LE(largest->Size(), orvane::limits::maxBitmapBytes);
    info.bmiHeader.biHeight = 1073741824;
    EXPECT_EQ(posix::DescribeBitmap(info), nullptr);
}

}  // namespace
