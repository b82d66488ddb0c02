// SPDX-License-Identifier: MIT
#include "scene/PointerList.h"

#include "host/ListOrder.h"

PointerList::PointerList(int) {}

// Assigning a list to itself changes nothing.
// NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
PointerList& PointerList::operator=(const PointerList& other)
{
    head = other.head;
    tail = other.tail;
    count = other.count;
    return *this;
}

PointerList::~PointerList()
{
    RemoveAll();
}

PointerList::Node* PointerList::StepForward(POSITION& position)
{
    Node* const node = AsNode(position);
    position = AsPosition(node->next);
    return node;
}

PointerList::Node* PointerList::StepBack(POSITION& position)
{
    Node* const node = AsNode(position);
    position = AsPosition(node->prev);
    return node;
}

PointerList::Node* PointerList::NewNode(Node* prev, Node* next)
{
    Node* const node = new Node{next, prev, nullptr};
    ++count;
    return node;
}

void PointerList::FreeNode(Node* node)
{
    if (node->next != nullptr)
    {
        node->next->prev = node->prev;
    }
    if (node->prev != nullptr)
    {
        node->prev->next = node->next;
    }
    delete node;
    --count;
}

POSITION PointerList::LinkNode(Node* prev, Node* next, void* element)
{
    Node* const node = NewNode(prev, next);
    node->data = element;
    (prev != nullptr ? prev->next : head) = node;
    (next != nullptr ? next->prev : tail) = node;
    return AsPosition(node);
}

POSITION PointerList::AddHead(void* element)
{
    return LinkNode(nullptr, head, element);
}

POSITION PointerList::AddTail(void* element)
{
    return LinkNode(tail, nullptr, element);
}

void PointerList::AddHead(const PointerList* list)
{
    POSITION position = list->GetTailPosition();
    for (int remaining = list->count; remaining > 0; --remaining)
    {
        AddHead(list->GetPrev(position));
    }
}

void PointerList::AddTail(const PointerList* list)
{
    POSITION position = list->GetHeadPosition();
    for (int remaining = list->count; remaining > 0; --remaining)
    {
        AddTail(list->GetNext(position));
    }
}

void* PointerList::RemoveHead()
{
    void* const element = head->data;
    RemoveAt(GetHeadPosition());
    return element;
}

void* PointerList::RemoveTail()
{
    void* const element = tail->data;
    RemoveAt(GetTailPosition());
    return element;
}

void PointerList::RemoveAt(POSITION position)
{
    Node* const node = AsNode(position);
    if (node == head)
    {
        head = node->next;
    }
    if (node == tail)
    {
        tail = node->prev;
    }
    FreeNode(node);
}

void PointerList::RemoveAll()
{
    while (head != nullptr)
    {
        Node* const next = head->next;
        delete head;
        head = next;
    }
    tail = nullptr;
    count = 0;
}

POSITION PointerList::InsertBefore(POSITION position, void* element)
{
    Node* const node = AsNode(position);
    return node == nullptr ? AddHead(element) : LinkNode(node->prev, node, element);
}

POSITION PointerList::InsertAfter(POSITION position, void* element)
{
    Node* const node = AsNode(position);
    return node == nullptr ? AddTail(element) : LinkNode(node, node->next, element);
}

POSITION PointerList::MoveHead(POSITION position)
{
    return MoveToHead(*this, position);
}

POSITION PointerList::MoveTail(POSITION position)
{
    return MoveToTail(*this, position);
}

POSITION PointerList::MoveUp(POSITION position)
{
    return MoveTowardsHead(*this, position);
}

POSITION PointerList::MoveDown(POSITION position)
{
    return MoveTowardsTail(*this, position);
}

POSITION PointerList::Find(const void* element, POSITION startAfter) const
{
    Node* node = startAfter == nullptr ? head : AsNode(startAfter)->next;
    while (node != nullptr && node->data != element)
    {
        node = node->next;
    }
    return AsPosition(node);
}

POSITION PointerList::FindIndex(int index) const
{
    if (index >= count)
    {
        return nullptr;
    }
    Node* node = head;
    for (; index > 0; --index)
    {
        node = node->next;
    }
    return AsPosition(node);
}

int PointerList::WhichIndex(const void* element) const
{
    return IndexInList(*this, element);
}
