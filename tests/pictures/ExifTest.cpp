// SPDX-License-Identifier: MIT
#include "pictures/Exif.h"

#include <gtest/gtest.h>

using orvane::Bytes;
using orvane::OrientationIn;

namespace
{

/// A directory with the entry of an orientation, the lowest byte first.
Bytes Little(std::uint8_t orientation)
{
    return {'I', 'I', 42, 0, 8, 0, 0, 0, 1, 0, 0x12, 0x01, 3, 0, 1, 0, 0, 0, orientation, 0, 0, 0};
}

int Orientation(const Bytes& exif)
{
    return OrientationIn(exif.data(), exif.size());
}

}  // namespace

TEST(Exif, TheOrientationIsReadInBothByteOrders)
{
    EXPECT_EQ(Orientation(Little(6)), 6);
    EXPECT_EQ(
        Orientation({'M', 'M', 0, 42, 0, 0, 0, 8, 0, 1, 0x01, 0x12, 0, 3, 0, 0, 0, 1, 0, 8, 0, 0}),
        8);
}

TEST(Exif, ANumberThatIsNoOrientationIsUpright)
{
    EXPECT_EQ(Orientation(Little(0)), 1);
    EXPECT_EQ(Orientation(Little(9)), 1);
}

TEST(Exif, DataThatEndAnywhereAreUpright)
{
    const Bytes whole = Little(6);
    // The two bytes of the number are the last ones that are read.
    for (std::size_t count = 0; count < 20; ++count)
    {
        EXPECT_EQ(OrientationIn(whole.data(), count), 1) << count;
    }
    EXPECT_EQ(OrientationIn(whole.data(), 20), 6);
}

TEST(Exif, ADirectoryBeyondTheEndIsUpright)
{
    Bytes exif = Little(6);
    exif[7] = 0xFF;
    EXPECT_EQ(Orientation(exif), 1);
}

TEST(Exif, AResolutionIsUpright)
{
    EXPECT_EQ(Orientation(orvane::MakeResolutionExif(72)), 1);
}
