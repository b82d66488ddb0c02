// SPDX-License-Identifier: MIT
#include "platform/posix/drawing/PackedPixels.h"

#include <gtest/gtest.h>

#include <vector>

using posix::PackedRows;

namespace
{

using Values = std::vector<int>;

Values Row(PackedRows& rows, int y)
{
    const BYTE* const pixels = rows.Row(y);
    return Values(pixels, pixels + 3);
}

TEST(PackedRows, RowsAreHadInAnyOrder)
{
    // Three rows: 1 1 1, 2 3 0, 4 4 0.
    const std::vector<BYTE> code = {3, 1, 0, 0, 1, 2, 1, 3, 0, 0, 2, 4, 0, 1};
    PackedRows rows(3, 3, code.data(), code.size(), false);
    EXPECT_EQ(Row(rows, 1), (Values{2, 3, 0}));
    EXPECT_EQ(Row(rows, 1), (Values{2, 3, 0}));
    EXPECT_EQ(Row(rows, 2), (Values{4, 4, 0}));
    EXPECT_EQ(Row(rows, 0), (Values{1, 1, 1}));
    EXPECT_EQ(Row(rows, 2), (Values{4, 4, 0}));
}

TEST(PackedRows, CodeThatEndsAnywhereGivesThePixelsBeforeItsEnd)
{
    // Two pixels of 4 bits, a move by one pixel, and three single pixels, of which the last lies in
    // the padding of their bytes.
    const std::vector<BYTE> code = {2, 0x12, 0, 2, 1, 0, 0, 3, 0x34, 0x50};
    const Values ends[] = {{0, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 0}, {1, 2, 0, 0, 0, 0, 0},
                           {1, 2, 0, 0, 0, 0, 0}, {1, 2, 0, 0, 0, 0, 0}, {1, 2, 0, 0, 0, 0, 0},
                           {1, 2, 0, 0, 0, 0, 0}, {1, 2, 0, 0, 0, 0, 0}, {1, 2, 0, 0, 0, 0, 0},
                           {1, 2, 0, 3, 4, 0, 0}, {1, 2, 0, 3, 4, 5, 0}};
    for (std::size_t size = 0; size <= code.size(); ++size)
    {
        PackedRows rows(7, 1, code.data(), size, true);
        const BYTE* const pixels = rows.Row(0);
        EXPECT_EQ(Values(pixels, pixels + 7), ends[size]) << size;
    }
}

}  // namespace
