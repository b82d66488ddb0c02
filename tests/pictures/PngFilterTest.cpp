// SPDX-License-Identifier: MIT
#include "pictures/PngFilter.h"

#include "pictures/PictureWriter.h"

#include <gtest/gtest.h>

using orvane::Bytes;

namespace
{

Bytes Filter(const Bytes& row, const Bytes& above, std::size_t pixelBytes)
{
    Bytes out(row.size() + 1);
    orvane::FilterRow(row.data(), above.empty() ? nullptr : above.data(), row.size(), pixelBytes,
                      out.data());
    return out;
}

}  // namespace

TEST(PngFilter, ARowLikeTheOneAboveBecomesZeros)
{
    EXPECT_EQ(Filter({9, 200, 31}, {9, 200, 31}, 3), (Bytes{2, 0, 0, 0}));
}

TEST(PngFilter, AGradientInARowBecomesDifferencesToThePixelOnTheLeft)
{
    // Sums: plain 50 + 52 + 54 + 56, differences 50 + 2 + 2 + 2, and 150 or more to the row above.
    EXPECT_EQ(Filter({50, 52, 54, 56}, {0, 0, 0, 0}, 1), (Bytes{1, 50, 2, 2, 2}));
}

TEST(PngFilter, AGradientDownwardsBecomesDifferencesToTheRowAbove)
{
    EXPECT_EQ(Filter({40, 90, 12, 70}, {41, 88, 12, 71}, 1), (Bytes{2, 255, 2, 0, 255}));
}

TEST(PngFilter, SmallBytesStayWhenDifferencesAreLarger)
{
    EXPECT_EQ(Filter({1, 255, 1, 255}, {90, 90, 90, 90}, 1), (Bytes{0, 1, 255, 1, 255}));
}

TEST(PngFilter, TheFirstRowHasNothingAbove)
{
    EXPECT_EQ(Filter({7, 7, 7, 7, 7, 7}, {}, 3), (Bytes{1, 7, 7, 7, 0, 0, 0}));
}

TEST(PngFilter, LongRowsAreFilteredToTheirEnd)
{
    Bytes row(200);
    Bytes expected = {1};
    for (std::size_t i = 0; i < row.size(); ++i)
    {
        row[i] = static_cast<std::uint8_t>(i);
        expected.push_back(i == 0 ? 0 : 1);
    }
    EXPECT_EQ(Filter(row, {}, 1), expected);
}
