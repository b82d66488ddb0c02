// SPDX-License-Identifier: MIT
#include "host/CObList.h"

#include "host/CArchive.h"

#include <algorithm>
#include <memory>
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

struct CObList::Block
{
    Block* next;
    std::unique_ptr<Node[]> nodes;
};

CObList::CObList(int blockSize) : blockSize_(std::max(blockSize, 1)) {}

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
    if (free_ == nullptr)
    {
        blocks_ = new Block{blocks_, nullptr};
        blocks_->nodes = std::make_unique<Node[]>(blockSize_);
        for (int i = blockSize_ - 1; i >= 0; --i)
        {
            blocks_->nodes[i].next = free_;
            free_ = &blocks_->nodes[i];
        }
    }
    Node* const node = free_;
    free_ = node->next;
    node->previous = previous;
    node->next = next;
    node->element = element;
    (previous != nullptr ? previous->next : head_) = node;
    (next != nullptr ? next->previous : tail_) = node;
    ++count_;
    return node;
}

void CObList::Unlink(Node* node)
{
    (node->previous != nullptr ? node->previous->next : head_) = node->next;
    (node->next != nullptr ? node->next->previous : tail_) = node->previous;
    node->next = free_;
    free_ = node;
    --count_;
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
    return tail_->element;
}

CObject* CObList::GetTail() const
{
    return tail_->element;
}

POSITION CObList::GetHeadPosition() const
{
    return reinterpret_cast<POSITION>(head_);
}

POSITION CObList::GetTailPosition() const
{
    return reinterpret_cast<POSITION>(tail_);
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
    return reinterpret_cast<POSITION>(NewNode(nullptr, head_, element));
}

POSITION CObList::AddTail(CObject* element)
{
    return reinterpret_cast<POSITION>(NewNode(tail_, nullptr, element));
}

void CObList::AddHead(const CObList* list)
{
    // Backwards, and no more than there were: the list may be this one, which grows at its head.
    int remaining = list->count_;
    for (const Node* node = list->tail_; remaining > 0; --remaining, node = node->previous)
    {
        AddHead(node->element);
    }
}

void CObList::AddTail(const CObList* list)
{
    int remaining = list->count_;
    for (const Node* node = list->head_; remaining > 0; --remaining, node = node->next)
    {
        AddTail(node->element);
    }
}

CObject* CObList::RemoveHead()
{
    CObject* const element = head_->element;
    Unlink(head_);
    return element;
}

CObject* CObList::RemoveTail()
{
    CObject* const element = tail_->element;
    Unlink(tail_);
    return element;
}

void CObList::RemoveAt(POSITION position)
{
    Unlink(AsNode(position));
}

void CObList::RemoveAll()
{
    while (blocks_ != nullptr)
    {
        delete std::exchange(blocks_, blocks_->next);
    }
    head_ = tail_ = free_ = nullptr;
    count_ = 0;
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
    Node* node = startAfter == nullptr ? head_ : AsNode(startAfter)->next;
    while (node != nullptr && node->element != element)
    {
        node = node->next;
    }
    return reinterpret_cast<POSITION>(node);
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
    return reinterpret_cast<POSITION>(node);
}

void CObList::Serialize(CArchive& archive)
{
    if (archive.IsStoring())
    {
        archive.WriteCount(static_cast<DWORD>(count_));
        for (const Node* node = head_; node != nullptr; node = node->next)
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
