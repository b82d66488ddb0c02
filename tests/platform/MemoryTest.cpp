// SPDX-License-Identifier: MIT
#include "platform/Memory.h"

#include "platform/Errors.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

TEST(Memory, ABlocksBytesAreReachedThroughALock)
{
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, 5);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(GlobalSize(block), 5U);
    BYTE* const bytes = static_cast<BYTE*>(GlobalLock(block));
    EXPECT_TRUE(std::all_of(bytes, bytes + 5, [](BYTE byte) { return byte == 0; }));
    EXPECT_EQ(GlobalLock(block), bytes);
    EXPECT_TRUE(GlobalUnlock(block));
    EXPECT_FALSE(GlobalUnlock(block));  // no longer locked
    EXPECT_FALSE(GlobalUnlock(block));
    EXPECT_EQ(GlobalFree(block), nullptr);
    EXPECT_EQ(GlobalLock(block), nullptr);
}

TEST(Memory, InvalidBlocksAreRefused)
{
    int other = 0;
    EXPECT_EQ(GlobalLock(nullptr), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_EQ(GlobalLock(&other), nullptr);
    EXPECT_EQ(GlobalSize(nullptr), 0U);
    EXPECT_FALSE(GlobalUnlock(nullptr));
    EXPECT_EQ(GlobalFree(&other), &other);
}

}  // namespace
