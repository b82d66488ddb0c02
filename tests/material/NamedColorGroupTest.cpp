// SPDX-License-Identifier: MIT
#include "material/NamedColorGroup.h"

#include "tests/support/RecordBytes.h"

#include <gtest/gtest.h>

TEST(NamedColorGroup, StartsAsGroupZeroWithoutAName)
{
    const NamedColorGroup group;
    EXPECT_EQ(group.colorGroup, 0u);
    EXPECT_STREQ(group.name, "");
    const NamedColorGroup named("Stones");
    EXPECT_EQ(named.colorGroup, 0u);
    EXPECT_STREQ(named.name, "Stones");
}

TEST(NamedColorGroup, IsEditableUnlessItIsGroupZero)
{
    EXPECT_EQ(NamedColorGroup("Stones").IsEditable(), 0);
    NamedColorGroup group(7, "Stones");
    EXPECT_EQ(group.colorGroup, 7u);
    EXPECT_EQ(group.IsEditable(), 1);
    group.SetColorGroup(0);
    EXPECT_EQ(group.IsEditable(), 0);
    group.SetColorGroup(0x80000000);
    EXPECT_EQ(group.IsEditable(), 1);
}

TEST(NamedColorGroup, AddStampsTheGroupIntoTheArgumentAndTheCopy)
{
    NamedColorGroup group(7, "Stones");
    NamedColor first("Slate");
    NamedColor second("Chalk");
    EXPECT_EQ(group.Add(first), 0);
    EXPECT_EQ(group.Add(second), 1);
    EXPECT_EQ(second.GetColorGroup(), 7ul);
    EXPECT_EQ(group[1].GetColorGroup(), 7ul);
    EXPECT_EQ(group.FindName("Chalk"), 1);
}

TEST(NamedColorGroup, CopiesCarryMaterialsNumberAndName)
{
    NamedColorGroup group(7, "Stones");
    NamedColor color("Slate");
    group.Add(color);
    NamedColorGroup assigned;
    assigned = group;
    group.SetName("Metals");
    EXPECT_EQ(assigned.colorGroup, 7u);
    EXPECT_STREQ(assigned.name, "Stones");
    EXPECT_EQ(assigned.FindName("Slate"), 0);
    const NamedColorGroup copy(group);
    EXPECT_STREQ(copy.name, "Metals");
    EXPECT_EQ(copy.GetSize(), 1);
}

TEST(NamedColorGroup, TheRecordHoldsOnlyTheMaterials)
{
    NamedColorGroup group(7, "Stones");
    NamedColor color("Slate");
    group.Add(color);
    NamedColorArray array;
    array.Add(color);
    const Bytes record = Stored(group);
    EXPECT_EQ(record, Stored(array));

    NamedColorGroup loaded(3, "Kept");
    LoadRecord(loaded, record);
    EXPECT_EQ(loaded.FindName("Slate"), 0);
    EXPECT_EQ(loaded.colorGroup, 3u);
    EXPECT_STREQ(loaded.name, "Kept");

    EXPECT_FALSE(group.IsSerializable());
    const std::unique_ptr<CObject> object(RUNTIME_CLASS(NamedColorGroup)->CreateObject());
    EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(NamedColorArray)));
}
