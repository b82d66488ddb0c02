// SPDX-License-Identifier: MIT
#include "apps/cli/info/Groups.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

TEST(Groups, EqualKeysShareAGroupAndGroupsKeepTheOrderInWhichTheyCame)
{
    orvane::Groups<std::string, int> groups;
    for (const char* const key : {"b", "a", "b", "c", "b"})
    {
        ++groups.Of(key);
    }
    const std::vector<std::pair<std::string, int>> expected = {{"b", 3}, {"a", 1}, {"c", 1}};
    EXPECT_EQ(groups.Entries(), expected);
}

/// A key that counts how often keys are compared.
struct CountedKey
{
    int value = 0;
    static inline long comparisons = 0;

    friend bool operator<(const CountedKey& left, const CountedKey& right)
    {
        ++comparisons;
        return left.value < right.value;
    }
};

// A 3D Studio file of 390 KB can hold 65,000 chunks of as many unknown kinds.
TEST(Groups, TakingInAsManyKeysAsThereAreGroupsComparesEachWithFewOthers)
{
    constexpr int count = 65536;  // 2 to the power of 16
    orvane::Groups<CountedKey, int> groups;
    CountedKey::comparisons = 0;
    for (int i = 0; i < count; ++i)
    {
        const long scrambled = i * 40503L % count;  // each number below count once, out of order
        ++groups.Of({static_cast<int>(scrambled)});
    }
    EXPECT_EQ(groups.Entries().size(), std::size_t{count});
    // A balanced tree of 65,536 keys is at most 2 x 16 levels deep.
    EXPECT_LE(CountedKey::comparisons, 2L * 16 * count + count);
}

}  // namespace
