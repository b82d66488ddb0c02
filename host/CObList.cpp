// SPDX-License-Identifier: MIT
#include "host/CObList.h"

#include "host/CArchive.h"

IMPLEMENT_SERIAL(CObList, CObject, 0)

struct CObList::Node
{
    // TypedList.h accesses the same memory as a pointer to another class. The attribute may_alias
    // on both sides tells the compiler that these accesses concern the same memory.
    using Element [[gnu::may_alias]] = CObject*;

    Node* previous;
    Node* next;
    Element element;
};

CObList::CObList(int /*blockSize*/) {}

CObList::~CObList()
{
    RemoveAll();
}

CObList::Node* CObList::AsNode(POSITION position)
{
    return reinterpret_cast<Node*>(position);
}

POSITION CObList::AsPosition(Node* node)
{
    return reinterpret_cast<POSITION>(node);
}

CObList::Node* CObList::Tail() const
{
    return head_ != nullptr ? head_->previous : nullptr;
}

CObList::Node* CObList::NextOf(const Node* node) const
{
    return node->next != head_ ? node->next : nullptr;
}

CObList::Node* CObList::PreviousOf(const Node* node) const
{
    return node != head_ ? node->previous : nullptr;
}

CObList::Node* CObList::InsertNode(Node* next, CObject* element)
{
    Node* const node = new Node;
    node->element = element;
    if (next == nullptr)
    {
        node->previous = node->next = head_ = node;
    }
    else
    {
        node->next = next;
        node->previous = next->previous;
        node->previous->next = node;
        next->previous = node;
    }
    ++count_;
    return node;
}

CObject*& CObList::GetHead()
{
    return head_->element;
}

CObject* CObList::GetHead() const
{
    return head_->element;
}

CObject*& CObList::GetTail()
{
    return Tail()->element;
}

CObject* CObList::GetTail() const
{
    return Tail()->element;
}

POSITION CObList::GetHeadPosition() const
{
    return AsPosition(head_);
}

POSITION CObList::GetTailPosition() const
{
    return AsPosition(Tail());
}

CObject*& CObList::GetNext(POSITION& position)
{
    Node* const node = AsNode(position);
    position = AsPosition(NextOf(node));
    return node->element;
}

CObject* CObList::GetNext(POSITION& position) const
{
    return const_cast<CObList*>(this)->GetNext(position);
}

CObject*& CObList::GetPrev(POSITION& position)
{
    Node* const node = AsNode(position);
    position = AsPosition(PreviousOf(node));
    return node->element;
}

CObject* CObList::GetPrev(POSITION& position) const
{
    return const_cast<CObList*>(this)->GetPrev(position);
}

CObject*& CObList::GetAt(POSITION position)
{
    return AsNode(position)->element;
}

CObject* CObList::GetAt(POSITION position) const
{
    return AsNode(position)->element;
}

void CObList::SetAt(POSITION position, CObject* element)
{
    AsNode(position)->element = element;
}

POSITION CObList::AddHead(CObject* element)
{
    head_ = InsertNode(head_, element);
    return AsPosition(head_);
}

POSITION CObList::AddTail(CObject* element)
{
    // The nodes form a ring, so the place before the head is also the place behind the tail.
    return AsPosition(InsertNode(head_, element));
}

void CObList::AddHead(const CObList* list)
{
    // \p list may be this list, which grows at its head during the loop. The loop therefore counts
    // the elements and goes from the tail toward the head.
    int remaining = list->count_;
    for (const Node* node = list->Tail(); remaining > 0; --remaining, node = node->previous)
    {
        AddHead(node->element);
    }
}

void CObList::AddTail(const CObList* list)
{
    // \p list may be this list, which grows at its tail during the loop, so the loop counts the
    // elements.
    int remaining = list->count_;
    for (const Node* node = list->head_; remaining > 0; --remaining, node = node->next)
    {
        AddTail(node->element);
    }
}

CObject* CObList::RemoveHead()
{
    CObject* const element = GetHead();
    RemoveAt(GetHeadPosition());
    return element;
}

CObject* CObList::RemoveTail()
{
    CObject* const element = GetTail();
    RemoveAt(GetTailPosition());
    return element;
}

void CObList::RemoveAt(POSITION position)
{
    Node* const node = AsNode(position);
    if (node == head_)
    {
        head_ = NextOf(node);
    }
    node->previous->next = node->next;
    node->next->previous = node->previous;
    delete node;
    --count_;
}

void CObList::RemoveAll()
{
    while (!IsEmpty())
    {
        RemoveHead();
    }
}

POSITION CObList::InsertBefore(POSITION position, CObject* element)
{
    if (position == nullptr || AsNode(position) == head_)
    {
        return AddHead(element);
    }
    return AsPosition(InsertNode(AsNode(position), element));
}

POSITION CObList::InsertAfter(POSITION position, CObject* element)
{
    if (position == nullptr)
    {
        return AddTail(element);
    }
    return AsPosition(InsertNode(AsNode(position)->next, element));
}

POSITION CObList::Find(const CObject* element, POSITION startAfter) const
{
    Node* node = startAfter == nullptr ? head_ : NextOf(AsNode(startAfter));
    while (node != nullptr && node->element != element)
    {
        node = NextOf(node);
    }
    return AsPosition(node);
}

POSITION CObList::FindIndex(int index) const
{
    if (index < 0 || index >= count_)
    {
        return nullptr;
    }
    Node* node = head_;
    for (; index > 0; --index)
    {
        node = node->next;
    }
    return AsPosition(node);
}

void CObList::Serialize(CArchive& archive)
{
    if (archive.IsStoring())
    {
        archive.WriteCount(static_cast<DWORD>(count_));
        for (const Node* node = head_; node != nullptr; node = NextOf(node))
        {
            archive.WriteObject(node->element);
        }
        return;
    }
    for (DWORD remaining = archive.ReadCount(); remaining > 0; --remaining)
    {
        AddTail(archive.ReadObject(GetElementClass()));
    }
}
