// SPDX-License-Identifier: MIT
#include "scene/DrawingObjectList.h"

#include "scene/DrawingObject.h"
#include "scene/DrawingObjectStack.h"
#include "tests/support/RecordBytes.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <vector>

namespace
{

std::vector<const DrawingObject*> Elements(const DrawingObjectList& list)
{
    std::vector<const DrawingObject*> elements;
    for (POSITION position = list.GetHeadPosition(); position != nullptr;)
    {
        elements.push_back(list.GetNext(position));
    }
    return elements;
}

using Nodes = std::vector<const DrawingObject*>;

class DrawingObjectLists : public testing::Test
{
protected:
    DrawingObjectLists()
    {
        list.AddTail(&a);
        list.AddTail(&b);
        list.AddTail(&c);
    }

    DrawingObject a;
    DrawingObject b;
    DrawingObject c;
    DrawingObject other;
    DrawingObjectList list;
};

TEST_F(DrawingObjectLists, OfferTheListOperationsForNodes)
{
    const DrawingObjectList& constant = list;
    EXPECT_EQ(list.GetCount(), 3);
    EXPECT_FALSE(list.IsEmpty());
    EXPECT_EQ(list.GetHead(), &a);
    EXPECT_EQ(constant.GetHead(), &a);
    EXPECT_EQ(list.GetTail(), &c);
    EXPECT_EQ(constant.GetTail(), &c);

    POSITION position = list.GetHeadPosition();
    EXPECT_EQ(list.GetNext(position), &a);
    EXPECT_EQ(constant.GetNext(position), &b);
    EXPECT_EQ(constant.GetAt(position), &c);
    EXPECT_EQ(list.GetPrev(position), &c);
    EXPECT_EQ(constant.GetPrev(position), &b);
    EXPECT_EQ(position, list.GetHeadPosition());

    list.SetAt(position, &other);
    list.GetTail() = &other;
    EXPECT_EQ(Elements(list), (Nodes{&other, &b, &other}));
    EXPECT_EQ(list.Find(&other), list.GetHeadPosition());
    EXPECT_EQ(list.Find(&other, list.GetHeadPosition()), list.GetTailPosition());
    EXPECT_EQ(list.Find(&c), nullptr);
    EXPECT_EQ(list.GetAt(list.FindIndex(1)), &b);
    EXPECT_EQ(list.FindIndex(3), nullptr);

    list.InsertBefore(list.FindIndex(1), &a);
    list.InsertAfter(list.FindIndex(2), &c);
    EXPECT_EQ(Elements(list), (Nodes{&other, &a, &b, &c, &other}));
    EXPECT_EQ(list.RemoveHead(), &other);
    EXPECT_EQ(list.RemoveTail(), &other);
    list.RemoveAt(list.FindIndex(1));
    EXPECT_EQ(Elements(list), (Nodes{&a, &c}));
    list.RemoveAll();
    EXPECT_TRUE(list.IsEmpty());
}

TEST_F(DrawingObjectLists, WholeListsAreAddedInTheirOrder)
{
    DrawingObjectList whole;
    whole.AddHead(&other);
    whole.AddTail(&list);
    whole.AddHead(&list);
    EXPECT_EQ(Elements(whole), (Nodes{&a, &b, &c, &other, &a, &b, &c}));
}

TEST_F(DrawingObjectLists, WhichIndexIsTheFirstPlaceOrMinusOne)
{
    list.AddTail(&b);
    DrawingObject* wanted = &b;
    EXPECT_EQ(list.WhichIndex(wanted), 1);
    wanted = &other;
    EXPECT_EQ(list.WhichIndex(wanted), -1);
}

TEST_F(DrawingObjectLists, RemoveAllOccurancesLeavesTheOthers)
{
    list.AddHead(&b);
    list.AddTail(&b);
    list.AddTail(&b);
    EXPECT_EQ(list.RemoveAllOccurances(&b), 1);
    EXPECT_EQ(Elements(list), (Nodes{&a, &c}));
    EXPECT_EQ(list.RemoveAllOccurances(&other), 1);
    EXPECT_EQ(list.GetCount(), 2);
}

TEST(DrawingObjectList, RemoveAllOccurancesOnAnEmptyListReturns1)
{
    DrawingObject node;
    DrawingObjectList list;
    EXPECT_EQ(list.RemoveAllOccurances(&node), 1);
}

TEST_F(DrawingObjectLists, MoveHeadMakesTheElementTheFirst)
{
    const POSITION moved = list.MoveHead(list.FindIndex(2));
    EXPECT_EQ(moved, list.GetHeadPosition());
    EXPECT_EQ(Elements(list), (Nodes{&c, &a, &b}));
}

TEST_F(DrawingObjectLists, MoveTailMakesTheElementTheLast)
{
    const POSITION moved = list.MoveTail(list.FindIndex(0));
    EXPECT_EQ(moved, list.GetTailPosition());
    EXPECT_EQ(Elements(list), (Nodes{&b, &c, &a}));
}

TEST_F(DrawingObjectLists, MoveHeadAndTailLeaveTheOtherNodesTheirElements)
{
    list.AddTail(&other);
    const POSITION first = list.GetHeadPosition();
    const POSITION last = list.GetTailPosition();
    const POSITION second = list.FindIndex(1);
    list.MoveHead(list.FindIndex(2));
    EXPECT_EQ(list.GetAt(first), &a);
    EXPECT_EQ(list.GetAt(second), &b);
    EXPECT_EQ(list.GetAt(last), &other);
    list.MoveTail(second);
    EXPECT_EQ(list.GetAt(first), &a);
    EXPECT_EQ(list.GetAt(last), &other);
    EXPECT_EQ(Elements(list), (Nodes{&c, &a, &other, &b}));
}

TEST_F(DrawingObjectLists, MovesAtAnEndOrOfNullReturnThePositionAndChangeNothing)
{
    const POSITION head = list.GetHeadPosition();
    const POSITION tail = list.GetTailPosition();
    EXPECT_EQ(list.MoveHead(head), head);
    EXPECT_EQ(list.MoveUp(head), head);
    EXPECT_EQ(list.MoveTail(tail), tail);
    EXPECT_EQ(list.MoveDown(tail), tail);
    EXPECT_EQ(list.MoveHead(nullptr), nullptr);
    EXPECT_EQ(list.MoveTail(nullptr), nullptr);
    EXPECT_EQ(list.MoveUp(nullptr), nullptr);
    EXPECT_EQ(list.MoveDown(nullptr), nullptr);
    EXPECT_EQ(Elements(list), (Nodes{&a, &b, &c}));
}

TEST_F(DrawingObjectLists, MoveUpAndDownExchangeElementsAndKeepTheNodes)
{
    const POSITION head = list.GetHeadPosition();
    const POSITION middle = list.FindIndex(1);
    EXPECT_EQ(list.MoveUp(middle), head);
    EXPECT_EQ(list.GetAt(head), &b);
    EXPECT_EQ(list.GetAt(middle), &a);  // still valid, with the neighbour's element
    EXPECT_EQ(list.MoveDown(middle), list.GetTailPosition());
    EXPECT_EQ(list.FindIndex(1), middle);
    EXPECT_EQ(Elements(list), (Nodes{&b, &c, &a}));
}

TEST(DrawingObjectList, DoesNotOwnItsElements)
{
    auto node = std::make_unique<DrawingObject>();
    node->handleSize = 7;
    {
        DrawingObjectList list;
        list.AddTail(node.get());
        list.RemoveAll();
        list.AddTail(node.get());
    }
    EXPECT_EQ(node->handleSize, 7.0);
}

TEST(DrawingObjectList, TheRecordIsACountAndReferences)
{
    DrawingObjectList list;
    EXPECT_EQ(Stored(list), RecordBytes().Word(0).Get());

    DrawingObject node;
    list.AddTail(&node);
    list.AddTail(&node);
    const Bytes bytes = Stored(list);
    const Bytes start = RecordBytes().Word(2).NewClass("DrawingObject", 3).Get();
    ASSERT_GT(bytes.size(), start.size() + 2);
    EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + static_cast<long>(start.size())), start);
    EXPECT_EQ(Bytes(bytes.end() - 2, bytes.end()), RecordBytes().Word(2).Get());  // its index
}

TEST(DrawingObjectList, ANullElementIsKeptAndAForeignOneRefused)
{
    DrawingObjectList list;
    EXPECT_EQ(LoadCause(list, RecordBytes().Word(1).Word(0)), CArchiveException::none);
    ASSERT_EQ(list.GetCount(), 1);
    EXPECT_EQ(list.GetHead(), nullptr);
    list.RemoveAll();
    EXPECT_EQ(LoadCause(list, RecordBytes().Word(1).NewClass("Vector", 1).Floats({1, 2, 3})),
              CArchiveException::badClass);
    EXPECT_TRUE(list.IsEmpty());
}

TEST(DrawingObjectStack, TheLastPushedIsTheTop)
{
    DrawingObject a;
    DrawingObject b;
    DrawingObjectStack stack;
    stack.Push(&a);
    stack.Push(&b);
    EXPECT_EQ(stack.Peek(), &b);
    EXPECT_EQ(stack.GetHead(), &b);
    EXPECT_EQ(stack.GetCount(), 2);
    EXPECT_EQ(stack.Pop(), &b);
    EXPECT_EQ(stack.Pop(), &a);
    EXPECT_TRUE(stack.IsEmpty());
}

TEST(DrawingObjectStack, PeekAndPopOfAnEmptyStackAreNull)
{
    DrawingObjectStack stack;
    EXPECT_EQ(stack.Peek(), nullptr);
    EXPECT_EQ(stack.Pop(), nullptr);
}

TEST(DrawingObjectStack, ExchangeReplacesTheTop)
{
    DrawingObject a;
    DrawingObject b;
    DrawingObject c;
    DrawingObjectStack stack;
    stack.Push(&a);
    stack.Push(&b);
    EXPECT_EQ(stack.Exchange(&c), &b);
    EXPECT_EQ(Elements(stack), (Nodes{&c, &a}));
}

}  // namespace
