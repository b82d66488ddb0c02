// SPDX-License-Identifier: MIT
#include "geometry/Truncate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(Truncate, GoesTowardZero)
{
    EXPECT_EQ(TruncateToShort(7071.9), 7071);
    EXPECT_EQ(TruncateToShort(-7071.9), -7071);
    EXPECT_EQ(TruncateToShort(-0.9), 0);
    EXPECT_EQ(TruncateToLong(299.99999), 299);
}

TEST(Truncate, WrapsWhatDoesNotFit)
{
    EXPECT_EQ(TruncateToShort(32768.0), -32768);
    EXPECT_EQ(TruncateToShort(-32769.0), 32767);
    EXPECT_EQ(TruncateToShort(65537.5), 1);
    EXPECT_EQ(TruncateToLong(2147483648.0), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(TruncateToLong(4294967297.0), 1);
}

TEST(Truncate, ClampsTo64BitsBeforeWrapping)
{
    EXPECT_EQ(TruncateToInt64(9.3e18), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(TruncateToInt64(-9.3e18), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(TruncateToInt64(-9223372036854775808.0), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(TruncateToShort(1e300), -1);
    EXPECT_EQ(TruncateToShort(-1e300), 0);
    EXPECT_EQ(TruncateToLong(INFINITY), -1);
    EXPECT_EQ(TruncateToLong(-INFINITY), 0);
}

TEST(Truncate, MakesNotANumberZero)
{
    EXPECT_EQ(TruncateToShort(NAN), 0);
    EXPECT_EQ(TruncateToLong(NAN), 0);
}
