// SPDX-License-Identifier: MIT
#include "scene/CPlexStr.h"

#include <gtest/gtest.h>

#include <cstring>

namespace
{

TEST(CPlexStr, ANewBlockIsTheFrontOfTheChain)
{
    CPlexStr* head = nullptr;
    CPlexStr* const first = CPlexStr::Create(head, 10, 8);
    EXPECT_EQ(head, first);
    EXPECT_EQ(first->next, nullptr);
    EXPECT_EQ(first->maxElements, 10U);
    EXPECT_EQ(first->unused, 0U);
    CPlexStr* const second = CPlexStr::Create(head, 3, 1);
    EXPECT_EQ(head, second);
    EXPECT_EQ(second->next, first);
    EXPECT_EQ(second->maxElements, 3U);
    head->FreeDataChain();
}

TEST(CPlexStr, TheStorageFollowsTheHeaderAndHoldsAllElements)
{
    CPlexStr* head = nullptr;
    CPlexStr* const block = CPlexStr::Create(head, 100, 12);
    EXPECT_EQ(static_cast<BYTE*>(block->data()), reinterpret_cast<BYTE*>(block) + sizeof(CPlexStr));
    std::memset(block->data(), 0x5A, 1200);  // a sanitizer watches the end
    EXPECT_EQ(static_cast<BYTE*>(block->data())[1199], 0x5A);
    block->FreeDataChain();
}

TEST(CPlexStr, FreeingABlockLeavesTheNewerOnes)
{
    CPlexStr* head = nullptr;
    CPlexStr* const oldest = CPlexStr::Create(head, 1, 1);
    CPlexStr::Create(head, 1, 1);
    head->next = nullptr;
    oldest->FreeDataChain();
    EXPECT_EQ(head->maxElements, 1U);
    head->FreeDataChain();
}

}  // namespace
