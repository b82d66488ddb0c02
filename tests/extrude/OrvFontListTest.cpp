// SPDX-License-Identifier: MIT
#include "extrude/OrvFontList.h"

#include "tests/support/StubFont.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace
{
using Names = std::vector<std::string>;

Names NamesOf(const OrvFontList& list)
{
    Names names;
    for (POSITION position = list.GetHeadPosition(); position != nullptr;)
    {
        names.push_back(list.GetNext(position)->GetFullName().Text());
    }
    return names;
}

/// Inserts a new font of the given name. Deletes the font and returns false when the list refuses
/// it.
bool Insert(OrvFontList& list, const char* name)
{
    auto font = std::make_unique<StubFont>(name);
    OrvFont* const inserted = list.InsertSorted(font.get());
    if (inserted == nullptr)
    {
        return false;
    }
    EXPECT_EQ(inserted, font.release());
    return true;
}

/// Counts how many objects of this type were deleted.
struct WatchedFont : OrvFont
{
    explicit WatchedFont(int* newDeletions) : deletions(newDeletions) {}
    ~WatchedFont() override { ++*deletions; }
    int* deletions;
};

TEST(OrvFontList, FontsAreSortedByTheBytesOfTheirNames)
{
    OrvFontList list;
    for (const char* const name : {"b", "Z", "a", "\xE9", "Ab", "A"})
    {
        EXPECT_TRUE(Insert(list, name));
    }
    EXPECT_EQ(NamesOf(list), (Names{"A", "Ab", "Z", "a", "b", "\xE9"}));
}

TEST(OrvFontList, NamesThatDifferInCaseAreBothListedUpperCaseFirst)
{
    OrvFontList list;
    EXPECT_TRUE(Insert(list, "gothic"));
    EXPECT_TRUE(Insert(list, "Gothic"));
    EXPECT_EQ(NamesOf(list), (Names{"Gothic", "gothic"}));
}

TEST(OrvFontList, ASecondFontOfTheSameNameIsRefused)
{
    OrvFontList list;
    StubFont* const first = new StubFont("Same");
    EXPECT_EQ(list.InsertSorted(first), first);
    EXPECT_FALSE(Insert(list, "Same"));
    EXPECT_EQ(list.GetCount(), 1);
    EXPECT_EQ(list.GetHead(), first);
}

TEST(OrvFontList, FindsANameCaseSensitively)
{
    OrvFontList list;
    Insert(list, "Gothic");
    Insert(list, "gothic");
    const POSITION found = list.FindName("gothic");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(list.GetAt(found)->GetFullName(), "gothic");
    EXPECT_EQ(list.FindName("GOTHIC"), nullptr);
    EXPECT_EQ(list.FindName("Gothi"), nullptr);
}

TEST(OrvFontList, KnowsTheIndexOfAFont)
{
    OrvFontList list;
    Insert(list, "A");
    Insert(list, "B");
    OrvFont* second = list.GetTail();
    EXPECT_EQ(list.WhichIndex(second), 1);
    EXPECT_EQ(list.GetAt(list.FindIndex(1)), second);
    OrvFont* none = nullptr;
    EXPECT_EQ(list.WhichIndex(none), -1);
    EXPECT_EQ(list.Find(second, nullptr), list.GetTailPosition());
    EXPECT_EQ(list.Find(second, list.GetTailPosition()), nullptr);
}

TEST(OrvFontList, MovesElementsUpDownToTheFrontAndToTheEnd)
{
    OrvFontList list;
    for (const char* const name : {"A", "B", "C"})
    {
        Insert(list, name);
    }
    const POSITION head = list.GetHeadPosition();
    EXPECT_EQ(list.MoveUp(head), head);
    EXPECT_EQ(list.MoveDown(list.GetTailPosition()), list.GetTailPosition());
    EXPECT_EQ(list.MoveDown(head), list.FindIndex(1));
    EXPECT_EQ(NamesOf(list), (Names{"B", "A", "C"}));
    EXPECT_EQ(list.MoveUp(list.GetTailPosition()), list.FindIndex(1));
    EXPECT_EQ(NamesOf(list), (Names{"B", "C", "A"}));
    list.MoveHead(list.GetTailPosition());
    EXPECT_EQ(NamesOf(list), (Names{"A", "B", "C"}));
    list.MoveTail(list.GetHeadPosition());
    EXPECT_EQ(NamesOf(list), (Names{"B", "C", "A"}));
}

TEST(OrvFontList, RemoveAllAndTheDestructorDeleteTheFonts)
{
    int deletions = 0;
    {
        OrvFontList list;
        list.AddTail(new WatchedFont(&deletions));
        list.AddHead(new WatchedFont(&deletions));
        list.RemoveAll();
        EXPECT_EQ(deletions, 2);
        EXPECT_TRUE(list.IsEmpty());
        list.AddTail(new WatchedFont(&deletions));
        list.AddTail(new WatchedFont(&deletions));
        // The font of a removed node belongs to the caller.
        const std::unique_ptr<OrvFont> removed(list.RemoveTail());
        EXPECT_EQ(deletions, 2);
    }
    EXPECT_EQ(deletions, 4);
}
}  // namespace
