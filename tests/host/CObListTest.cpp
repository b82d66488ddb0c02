// SPDX-License-Identifier: MIT
#include "host/CObList.h"

#include "host/TypedList.h"
#include "tests/support/RecordBytes.h"
#include "tests/support/SampleObjects.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace
{

/// The numbers of a list's leaves, walked forwards; the walk backwards must give the same.
std::string Numbers(const CObList& list)
{
    std::string forwards;
    std::string backwards;
    for (POSITION position = list.GetHeadPosition(); position != nullptr;)
    {
        forwards += std::to_string(static_cast<SampleLeaf*>(list.GetNext(position))->value);
    }
    for (POSITION position = list.GetTailPosition(); position != nullptr;)
    {
        backwards.insert(0,
                         std::to_string(static_cast<SampleLeaf*>(list.GetPrev(position))->value));
    }
    EXPECT_EQ(forwards, backwards);
    EXPECT_EQ(static_cast<int>(forwards.size()), list.GetCount());
    return forwards;
}

/// A list that takes leaves alone and deletes what it holds.
class LeafList : public TypedList<SampleLeaf>
{
public:
    using TypedList::TypedList;
    ~LeafList() override
    {
        while (!IsEmpty())
        {
            delete RemoveHead();
        }
    }

    POSITION FindNamed(const CString& name) const
    {
        return TypedList::FindNamed(
            name, [](const SampleLeaf* leaf) { return CString(std::to_string(leaf->value)); });
    }

protected:
    const CRuntimeClass* GetElementClass() const override { return RUNTIME_CLASS(SampleLeaf); }
};

class CObListWithLeaves : public testing::Test
{
protected:
    SampleLeaf leaf[10] = {SampleLeaf(0), SampleLeaf(1), SampleLeaf(2), SampleLeaf(3),
                           SampleLeaf(4), SampleLeaf(5), SampleLeaf(6), SampleLeaf(7),
                           SampleLeaf(8), SampleLeaf(9)};
};

using TypedListWithLeaves = CObListWithLeaves;

}  // namespace

TEST_F(CObListWithLeaves, EmptyListHasNoPositions)
{
    CObList list;
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
    EXPECT_EQ(list.GetTailPosition(), nullptr);
    EXPECT_EQ(list.FindIndex(0), nullptr);
    EXPECT_EQ(list.Find(&leaf[0]), nullptr);
}

TEST_F(CObListWithLeaves, AddsAndRemovesAtBothEnds)
{
    CObList list;
    list.AddTail(&leaf[2]);
    list.AddHead(&leaf[1]);
    list.AddTail(&leaf[3]);
    EXPECT_EQ(Numbers(list), "123");
    EXPECT_EQ(list.GetHead(), &leaf[1]);
    EXPECT_EQ(list.GetTail(), &leaf[3]);

    EXPECT_EQ(list.RemoveHead(), &leaf[1]);
    EXPECT_EQ(list.RemoveTail(), &leaf[3]);
    EXPECT_EQ(Numbers(list), "2");
    EXPECT_EQ(list.RemoveTail(), &leaf[2]);
    EXPECT_EQ(Numbers(list), "");
    list.AddHead(&leaf[5]);
    EXPECT_EQ(Numbers(list), "5");
}

TEST_F(CObListWithLeaves, InsertsBesideAPositionOrAtTheEnds)
{
    CObList list;
    const POSITION five = list.InsertBefore(nullptr, &leaf[5]);
    list.InsertBefore(five, &leaf[4]);
    list.InsertAfter(five, &leaf[6]);
    list.InsertBefore(nullptr, &leaf[3]);
    list.InsertAfter(nullptr, &leaf[7]);
    EXPECT_EQ(Numbers(list), "34567");
}

TEST_F(CObListWithLeaves, PositionsStayValidWhileOthersAreRemoved)
{
    CObList list(2);
    std::vector<POSITION> positions;
    for (SampleLeaf& each : leaf)
    {
        positions.push_back(list.AddTail(&each));
    }
    for (const int removed : {0, 9, 5, 4})
    {
        list.RemoveAt(positions[removed]);
    }
    EXPECT_EQ(Numbers(list), "123678");
    EXPECT_EQ(list.GetAt(positions[6]), &leaf[6]);
    list.SetAt(positions[6], &leaf[0]);
    list.GetAt(positions[7]) = &leaf[9];
    EXPECT_EQ(Numbers(list), "123098");
}

TEST_F(CObListWithLeaves, AListCanBeFilledAndEmptiedManyTimes)
{
    CObList list(3);
    for (int round = 0; round < 100; ++round)
    {
        for (int i = 0; i < 10; ++i)
        {
            list.AddTail(&leaf[i]);
        }
        EXPECT_EQ(Numbers(list), "0123456789");
        for (int i = 0; i < 10; ++i)
        {
            list.RemoveHead();
        }
    }
    list.AddTail(&leaf[1]);
    list.RemoveAll();
    EXPECT_EQ(Numbers(list), "");
    list.AddTail(&leaf[2]);
    EXPECT_EQ(Numbers(list), "2");
}

TEST_F(CObListWithLeaves, TheBlockSizeDoesNotMatter)
{
    CObList list(-4);
    list.AddTail(&leaf[1]);
    list.AddTail(&leaf[2]);
    EXPECT_EQ(Numbers(list), "12");
}

TEST_F(CObListWithLeaves, FindsBehindAPosition)
{
    CObList list;
    const POSITION first = list.AddTail(&leaf[1]);
    list.AddTail(&leaf[2]);
    const POSITION second = list.AddTail(&leaf[1]);
    EXPECT_EQ(list.Find(&leaf[1]), first);
    EXPECT_EQ(list.Find(&leaf[1], first), second);
    EXPECT_EQ(list.Find(&leaf[1], second), nullptr);
    EXPECT_EQ(list.FindIndex(2), second);
    EXPECT_EQ(list.FindIndex(3), nullptr);
    EXPECT_EQ(list.FindIndex(-1), nullptr);
}

TEST_F(CObListWithLeaves, AddsAnotherListInItsOrderAndItself)
{
    CObList list;
    list.AddTail(&leaf[1]);
    list.AddTail(&leaf[2]);
    CObList other;
    other.AddTail(&leaf[8]);
    other.AddTail(&leaf[9]);

    list.AddHead(&other);
    EXPECT_EQ(Numbers(list), "8912");
    list.AddTail(&other);
    EXPECT_EQ(Numbers(list), "891289");
    other.AddTail(&other);
    EXPECT_EQ(Numbers(other), "8989");
    other.AddHead(&other);
    EXPECT_EQ(Numbers(other), "89898989");
}

TEST_F(CObListWithLeaves, RecordIsTheCountAndTheReferences)
{
    CObList list;
    list.AddTail(&leaf[3]);
    list.AddTail(static_cast<CObject*>(nullptr));
    list.AddTail(&leaf[3]);
    const Bytes expected = RecordBytes().Word(3).NewClass("SampleLeaf", 1).Long(3).Word(0).Word(2);
    EXPECT_EQ(Stored(list), expected);
}

TEST_F(CObListWithLeaves, LoadingAppends)
{
    CObList list;
    list.AddTail(&leaf[7]);
    LoadRecord(list, RecordBytes().Word(2).NewClass("SampleLeaf", 1).Long(4).Word(2));
    const std::unique_ptr<CObject> loaded(list.GetTail());
    EXPECT_EQ(Numbers(list), "744");
    LoadRecord(list, RecordBytes().Word(1).Word(0));
    EXPECT_EQ(list.GetTail(), nullptr);
}

TEST(CObList, CountBeyondTheInputTakesNoRoomAndKeepsWhatWasLoaded)
{
    const int before = SampleLeaf::alive;
    {
        LeafList list(1);
        EXPECT_EQ(LoadCause(list, RecordBytes()
                                      .Word(0xFFFF)
                                      .Dword(0xFFFFFFFF)
                                      .NewClass("SampleLeaf", 1)
                                      .Long(4)
                                      .Word(0x8001)
                                      .Word(5)),
                  CArchiveException::endOfFile);
        EXPECT_EQ(Numbers(list), "4");
    }
    EXPECT_EQ(SampleLeaf::alive, before);
}

TEST(CObList, ListWithAnElementClassRefusesOthers)
{
    LeafList list;
    EXPECT_EQ(LoadCause(list, RecordBytes().Word(1).NewClass("SampleNode", 3).Word(0).Word(0)),
              CArchiveException::badClass);
    EXPECT_EQ(LoadCause(list, RecordBytes().Word(1).NewClass("SampleBud", 1).Long(6)),
              CArchiveException::none);
    EXPECT_EQ(Numbers(list), "6");
}

TEST(CObList, IsItselfAnObjectInAnArchive)
{
    CObList list;
    CMemFile file;
    CArchive store(&file, CArchive::store);
    store << &list;
    store.Close();
    EXPECT_EQ(file.Bytes(), RecordBytes().NewClass("CObList", 0).Word(0).Get());

    file.SeekToBegin();
    CArchive load(&file, CArchive::load);
    CObList* loaded = nullptr;
    load >> loaded;
    EXPECT_TRUE(loaded->IsEmpty());
    delete loaded;
}

TEST_F(TypedListWithLeaves, WritesThroughItsSlotsAreSeenByTheList)
{
    TypedList<SampleLeaf> list;
    const POSITION position = list.AddTail(&leaf[1]);
    list.AddTail(&leaf[2]);
    list.GetHead() = &leaf[3];
    EXPECT_EQ(static_cast<CObList&>(list).GetHead(), &leaf[3]);
    list.GetAt(position) = &leaf[4];
    EXPECT_EQ(list.GetHead()->value, 4);
    POSITION walk = position;
    list.GetNext(walk) = &leaf[5];
    list.GetTail() = &leaf[6];
    EXPECT_EQ(Numbers(list), "56");
    const TypedList<SampleLeaf>& constant = list;
    EXPECT_EQ(constant.GetHead(), &leaf[5]);
    EXPECT_EQ(constant.GetTail(), &leaf[6]);
}

TEST_F(TypedListWithLeaves, WhichIndexIsThatOfTheFirstNode)
{
    TypedList<SampleLeaf> list;
    list.AddTail(&leaf[1]);
    list.AddTail(&leaf[2]);
    list.AddTail(&leaf[2]);
    EXPECT_EQ(list.WhichIndex(&leaf[1]), 0);
    EXPECT_EQ(list.WhichIndex(&leaf[2]), 1);
    EXPECT_EQ(list.WhichIndex(&leaf[3]), -1);
}

TEST_F(TypedListWithLeaves, MovesToTheEnds)
{
    TypedList<SampleLeaf> list;
    for (int i = 1; i <= 4; ++i)
    {
        list.AddTail(&leaf[i]);
    }
    const POSITION head = list.MoveHead(list.FindIndex(2));
    EXPECT_EQ(head, list.GetHeadPosition());
    EXPECT_EQ(Numbers(list), "3124");
    const POSITION tail = list.MoveTail(list.FindIndex(1));
    EXPECT_EQ(tail, list.GetTailPosition());
    EXPECT_EQ(Numbers(list), "3241");
    EXPECT_EQ(list.MoveHead(list.GetHeadPosition()), list.GetHeadPosition());
    EXPECT_EQ(list.MoveTail(list.GetTailPosition()), list.GetTailPosition());
    EXPECT_EQ(list.MoveHead(nullptr), nullptr);
    EXPECT_EQ(list.MoveTail(nullptr), nullptr);
    EXPECT_EQ(Numbers(list), "3241");
}

TEST_F(TypedListWithLeaves, MovesByExchangingWithTheNeighbour)
{
    TypedList<SampleLeaf> list;
    const POSITION first = list.AddTail(&leaf[1]);
    const POSITION second = list.AddTail(&leaf[2]);
    const POSITION third = list.AddTail(&leaf[3]);
    EXPECT_EQ(list.MoveUp(third), second);
    EXPECT_EQ(Numbers(list), "132");
    EXPECT_EQ(list.MoveDown(first), second);
    EXPECT_EQ(Numbers(list), "312");
    EXPECT_EQ(list.MoveUp(first), first);
    EXPECT_EQ(list.MoveDown(third), third);
    EXPECT_EQ(list.MoveUp(nullptr), nullptr);
    EXPECT_EQ(list.MoveDown(nullptr), nullptr);
    EXPECT_EQ(Numbers(list), "312");
}

TEST(TypedList, FindsTheFirstElementOfAName)
{
    LeafList list;
    list.AddTail(new SampleLeaf(12));
    const POSITION first = list.AddTail(new SampleLeaf(5));
    list.AddTail(new SampleLeaf(5));
    EXPECT_EQ(list.FindNamed("5"), first);
    EXPECT_EQ(list.FindNamed("1"), nullptr);
}
