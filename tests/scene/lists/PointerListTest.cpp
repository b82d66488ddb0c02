// SPDX-License-Identifier: MIT
#include "scene/PointerList.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

namespace
{

using Pointers = std::vector<const void*>;

Pointers Elements(const PointerList& list)
{
    Pointers elements;
    for (POSITION position = list.GetHeadPosition(); position != nullptr;)
    {
        elements.push_back(list.GetNext(position));
    }
    Pointers backwards;
    for (POSITION position = list.GetTailPosition(); position != nullptr;)
    {
        backwards.insert(backwards.begin(), list.GetPrev(position));
    }
    EXPECT_EQ(elements, backwards);
    EXPECT_EQ(static_cast<int>(elements.size()), list.GetCount());
    return elements;
}

class PointerLists : public testing::Test
{
protected:
    PointerLists()
    {
        list.AddTail(&a);
        list.AddTail(&b);
        list.AddTail(&c);
    }

    int a = 0;
    int b = 0;
    int c = 0;
    int other = 0;
    PointerList list;
};

TEST(PointerList, ANewListIsEmptyWhateverTheBlockSize)
{
    const PointerList list(1000);
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
    EXPECT_EQ(list.GetTailPosition(), nullptr);
    EXPECT_EQ(sizeof(PointerList), 2 * sizeof(void*) + sizeof(void*));
    EXPECT_FALSE(std::is_polymorphic_v<PointerList>);
    EXPECT_FALSE(std::is_copy_constructible_v<PointerList>);
}

TEST_F(PointerLists, ReachTheirElementsInThreeForms)
{
    const PointerList& constant = list;
    EXPECT_EQ(constant.GetHead(), &a);
    EXPECT_EQ(constant.GetTail(), &c);
    list.GetHead() = &other;
    EXPECT_EQ(*list.GetHeadElement(), &other);
    *list.GetTailElement() = &a;
    EXPECT_EQ(list.GetTail(), &a);

    POSITION position = list.GetHeadPosition();
    list.GetNext(position) = &c;
    EXPECT_EQ(*list.GetNextElement(position), &b);
    EXPECT_EQ(constant.GetAt(position), &a);
    EXPECT_EQ(*list.GetPrevElement(position), &a);
    list.GetPrev(position) = &other;
    EXPECT_EQ(constant.GetNext(position), &c);
    EXPECT_EQ(constant.GetPrev(position), &other);
    EXPECT_EQ(constant.GetPrev(position), &c);
    EXPECT_EQ(position, nullptr);

    position = list.FindIndex(1);
    list.GetAt(position) = &b;
    EXPECT_EQ(*list.GetElementAt(position), &b);
    list.SetAt(position, &a);
    EXPECT_EQ(Elements(list), (Pointers{&c, &a, &a}));
}

TEST_F(PointerLists, AddAndRemoveAtBothEnds)
{
    const POSITION first = list.AddHead(&other);
    EXPECT_EQ(first, list.GetHeadPosition());
    const POSITION last = list.AddTail(&other);
    EXPECT_EQ(last, list.GetTailPosition());
    EXPECT_EQ(Elements(list), (Pointers{&other, &a, &b, &c, &other}));
    EXPECT_EQ(list.RemoveHead(), &other);
    EXPECT_EQ(list.RemoveHead(), &a);
    EXPECT_EQ(list.RemoveTail(), &other);
    EXPECT_EQ(list.RemoveTail(), &c);
    EXPECT_EQ(list.RemoveTail(), &b);
    EXPECT_EQ(Elements(list), Pointers{});
    EXPECT_EQ(list.GetHeadPosition(), nullptr);
    EXPECT_EQ(list.GetTailPosition(), nullptr);
}

TEST_F(PointerLists, WholeListsAreAddedInTheirOrder)
{
    PointerList whole;
    whole.AddTail(&other);
    whole.AddHead(&list);
    whole.AddTail(&list);
    EXPECT_EQ(Elements(whole), (Pointers{&a, &b, &c, &other, &a, &b, &c}));
}

TEST_F(PointerLists, CanBeAddedToThemselves)
{
    list.AddTail(&list);
    EXPECT_EQ(Elements(list), (Pointers{&a, &b, &c, &a, &b, &c}));
    list.RemoveTail();
    list.RemoveTail();
    list.RemoveTail();
    list.AddHead(&list);
    EXPECT_EQ(Elements(list), (Pointers{&a, &b, &c, &a, &b, &c}));
}

TEST_F(PointerLists, InsertBeforeAndAfterAPosition)
{
    const POSITION middle = list.FindIndex(1);
    EXPECT_EQ(list.GetAt(list.InsertBefore(middle, &other)), &other);
    list.InsertAfter(middle, &other);
    EXPECT_EQ(Elements(list), (Pointers{&a, &other, &b, &other, &c}));
    list.InsertBefore(list.GetHeadPosition(), &c);
    list.InsertAfter(list.GetTailPosition(), &a);
    EXPECT_EQ(Elements(list), (Pointers{&c, &a, &other, &b, &other, &c, &a}));
}

TEST_F(PointerLists, InsertAtNullMeansBeforeTheHeadAndAfterTheTail)
{
    list.InsertBefore(nullptr, &other);
    list.InsertAfter(nullptr, &other);
    EXPECT_EQ(Elements(list), (Pointers{&other, &a, &b, &c, &other}));
}

TEST_F(PointerLists, RemoveAtRepairsTheNeighboursAndTheEnds)
{
    list.RemoveAt(list.FindIndex(1));
    EXPECT_EQ(Elements(list), (Pointers{&a, &c}));
    list.RemoveAt(list.GetTailPosition());
    EXPECT_EQ(Elements(list), (Pointers{&a}));
    list.RemoveAt(list.GetHeadPosition());
    EXPECT_EQ(Elements(list), Pointers{});
}

TEST_F(PointerLists, RemoveAllEmptiesThem)
{
    list.RemoveAll();
    EXPECT_EQ(Elements(list), Pointers{});
    list.AddTail(&b);
    EXPECT_EQ(Elements(list), (Pointers{&b}));
}

TEST_F(PointerLists, MoveAsNodeListsDo)
{
    const POSITION head = list.GetHeadPosition();
    const POSITION middle = list.FindIndex(1);
    const POSITION tail = list.GetTailPosition();
    EXPECT_EQ(list.MoveHead(head), head);
    EXPECT_EQ(list.MoveUp(head), head);
    EXPECT_EQ(list.MoveTail(tail), tail);
    EXPECT_EQ(list.MoveDown(tail), tail);
    EXPECT_EQ(list.MoveHead(nullptr), nullptr);
    EXPECT_EQ(list.MoveTail(nullptr), nullptr);
    EXPECT_EQ(list.MoveUp(nullptr), nullptr);
    EXPECT_EQ(list.MoveDown(nullptr), nullptr);
    EXPECT_EQ(Elements(list), (Pointers{&a, &b, &c}));

    EXPECT_EQ(list.MoveUp(middle), head);
    EXPECT_EQ(list.GetAt(middle), &a);
    EXPECT_EQ(list.MoveDown(middle), tail);
    EXPECT_EQ(Elements(list), (Pointers{&b, &c, &a}));
    const POSITION first = list.MoveHead(tail);
    EXPECT_EQ(first, list.GetHeadPosition());
    const POSITION last = list.MoveTail(list.FindIndex(1));
    EXPECT_EQ(last, list.GetTailPosition());
    EXPECT_EQ(Elements(list), (Pointers{&a, &c, &b}));
}

TEST_F(PointerLists, FindStartsBehindThePosition)
{
    list.AddTail(&a);
    EXPECT_EQ(list.Find(&a), list.GetHeadPosition());
    EXPECT_EQ(list.Find(&a, list.GetHeadPosition()), list.GetTailPosition());
    EXPECT_EQ(list.Find(&a, list.GetTailPosition()), nullptr);
    EXPECT_EQ(list.Find(&other), nullptr);
}

TEST_F(PointerLists, WhichIndexCountsFromTheHead)
{
    EXPECT_EQ(list.WhichIndex(&a), 0);
    EXPECT_EQ(list.WhichIndex(&c), 2);
    EXPECT_EQ(list.WhichIndex(&other), -1);
}

TEST_F(PointerLists, FindIndexOfTheCountIsNull)
{
    EXPECT_EQ(list.FindIndex(0), list.GetHeadPosition());
    EXPECT_EQ(list.FindIndex(2), list.GetTailPosition());
    EXPECT_EQ(list.FindIndex(3), nullptr);
}

TEST(PointerList, FindIndex0OfAnEmptyListIsNull)
{
    const PointerList list;
    EXPECT_EQ(list.FindIndex(0), nullptr);
}

TEST_F(PointerLists, AssignmentSharesTheNodes)
{
    PointerList sharing;
    sharing = list;
    EXPECT_EQ(sharing.GetHeadPosition(), list.GetHeadPosition());
    EXPECT_EQ(sharing.GetTailPosition(), list.GetTailPosition());
    EXPECT_EQ(sharing.GetCount(), 3);
    sharing.SetAt(sharing.GetHeadPosition(), &other);
    EXPECT_EQ(list.GetHead(), &other);
    const PointerList empty;
    sharing = empty;  // lets go: only one of the two frees the nodes
    EXPECT_TRUE(sharing.IsEmpty());
    EXPECT_EQ(list.GetCount(), 3);
}

// The two building blocks are for derived lists.
class OpenPointerList : public PointerList
{
public:
    using Node = PointerList::Node;
    using PointerList::FreeNode;
    using PointerList::NewNode;
};

TEST(PointerList, NewNodeCountsAndStoresTheLinks)
{
    OpenPointerList list;
    OpenPointerList::Node* const first = list.NewNode(nullptr, nullptr);
    OpenPointerList::Node* const last = list.NewNode(first, nullptr);
    first->next = last;
    EXPECT_EQ(list.GetCount(), 2);
    EXPECT_EQ(last->prev, first);
    EXPECT_EQ(last->next, nullptr);
    EXPECT_EQ(last->data, nullptr);
    list.FreeNode(last);
    EXPECT_EQ(list.GetCount(), 1);
    EXPECT_EQ(first->next, nullptr);
    list.FreeNode(first);
    EXPECT_EQ(list.GetCount(), 0);
}

}  // namespace
