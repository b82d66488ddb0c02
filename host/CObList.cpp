// SPDX-License-Identifier: MIT
#include "host/CObList.h"

#include "host/CArchive.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

IMPLEMENT_SERIAL(CObList, CObject, 0)

struct CObList::Node
{
    // Typed lists hand the slot out as a pointer to their own element class (TypedList.h); so that
    // this is no breach of aliasing, every access here is one that may alias any other.
    using Element [[gnu::may_alias]] = CObject*;

    Node* previous;
    Node* next;
    Element element;
};

CObList::CObList(int blockSize)
{
    if (blockSize != usualBlockSize_)
    {
        body_.Get().blockSize = std::max(blockSize, 1);
    }
}

CObList::~CObList()
{
    RemoveAll();
}

CObList::Node* CObList::AsNode(POSITION position)
{
    return reinterpret_cast<Node*>(position);
}

CObList::Node* CObList::NewNode(Node* previous, Node* next, CObject* element)
{
    Body& body = body_.Get();
    Node* node = body.free;
    if (node != nullptr)
    {
        body.free = node->next;
    }
    else
    {
        Node* const block = new Node[std::size_t{1} + body.blockSize];
        block->next = std::exchange(body.blocks, block);
        node = block + 1;
        for (int i = body.blockSize; i > 1; --i)
        {
            block[i].next = std::exchange(body.free, block + i);
        }
    }
    node->previous = previous;
    node->next = next;
    node->element = element;
    (previous != nullptr ? previous->next : body.head) = node;
    (next != nullptr ? next->previous : body.tail) = node;
    ++body.count;
    return node;
}

// What a list has that is not empty.
const CObList::Body& CObList::Filled() const
{
    return *body_.IfMade();
}

void CObList::Unlink(Node* node)
{
    Body& body = body_.Get();
    (node->previous != nullptr ? node->previous->next : body.head) = node->next;
    (node->next != nullptr ? node->next->previous : body.tail) = node->previous;
    node->next = body.free;
    body.free = node;
    --body.count;
}

CObject*& CObList::GetHead()
{
    return Filled().head->element;
}

CObject* CObList::GetHead() const
{
    return Filled().head->element;
}

CObject*& CObList::GetTail()
{
    return Filled().tail->element;
}

CObject* CObList::GetTail() const
{
    return Filled().tail->element;
}

POSITION CObList::GetHeadPosition() const
{
    return reinterpret_cast<POSITION>(body_.Read().head);
}

POSITION CObList::GetTailPosition() const
{
    return reinterpret_cast<POSITION>(body_.Read().tail);
}

CObject*& CObList::GetNext(POSITION& position)
{
    Node* const node = AsNode(position);
    position = reinterpret_cast<POSITION>(node->next);
    return node->element;
}

CObject* CObList::GetNext(POSITION& position) const
{
    return const_cast<CObList*>(this)->GetNext(position);
}

CObject*& CObList::GetPrev(POSITION& position)
{
    Node* const node = AsNode(position);
    position = reinterpret_cast<POSITION>(node->previous);
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
    return reinterpret_cast<POSITION>(NewNode(nullptr, body_.Read().head, element));
}

POSITION CObList::AddTail(CObject* element)
{
    return reinterpret_cast<POSITION>(NewNode(body_.Read().tail, nullptr, element));
}

void CObList::AddHead(const CObList* list)
{
    // Backwards, and no more than there were: the list may be this one, which grows at its head.
    const Body& body = list->body_.Read();
    int remaining = body.count;
    for (const Node* node = body.tail; remaining > 0; --remaining, node = node->previous)
    {
        AddHead(node->element);
    }
}

void CObList::AddTail(const CObList* list)
{
    const Body& body = list->body_.Read();
    int remaining = body.count;
    for (const Node* node = body.head; remaining > 0; --remaining, node = node->next)
    {
        AddTail(node->element);
    }
}

CObject* CObList::RemoveHead()
{
    CObject* const element = GetHead();
    Unlink(Filled().head);
    return element;
}

CObject* CObList::RemoveTail()
{
    CObject* const element = GetTail();
    Unlink(Filled().tail);
    return element;
}

void CObList::RemoveAt(POSITION position)
{
    Unlink(AsNode(position));
}

void CObList::RemoveAll()
{
    if (body_.IfMade() == nullptr)
    {
        return;
    }
    Body& body = body_.Get();
    while (body.blocks != nullptr)
    {
        delete[] std::exchange(body.blocks, body.blocks->next);
    }
    body.head = body.tail = body.free = nullptr;
    body.count = 0;
}

POSITION CObList::InsertBefore(POSITION position, CObject* element)
{
    Node* const node = AsNode(position);
    return node == nullptr ? AddHead(element)
                           : reinterpret_cast<POSITION>(NewNode(node->previous, node, element));
}

POSITION CObList::InsertAfter(POSITION position, CObject* element)
{
    Node* const node = AsNode(position);
    return node == nullptr ? AddTail(element)
                           : reinterpret_cast<POSITION>(NewNode(node, node->next, element));
}

POSITION CObList::Find(const CObject* element, POSITION startAfter) const
{
    Node* node = startAfter == nullptr ? body_.Read().head : AsNode(startAfter)->next;
    while (node != nullptr && node->element != element)
    {
        node = node->next;
    }
    return reinterpret_cast<POSITION>(node);
}

POSITION CObList::FindIndex(int index) const
{
    const Body& body = body_.Read();
    if (index < 0 || index >= body.count)
    {
        return nullptr;
    }
    Node* node = body.head;
    for (; index > 0; --index)
    {
        node = node->next;
    }
    return reinterpret_cast<POSITION>(node);
}

void CObList::Serialize(CArchive& archive)
{
    if (archive.IsStoring())
    {
        archive.WriteCount(static_cast<DWORD>(GetCount()));
        for (const Node* node = body_.Read().head; node != nullptr; node = node->next)
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
