// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"

struct __POSITION;

/// A place in a list; null is none. It stays valid until its node is removed.
using POSITION = __POSITION*;

/// A doubly linked list of object pointers, which it does not own. Each element has a list node of
/// its own, allocated when the element is added and freed when it is removed; an empty list
/// allocates nothing.
///
/// The record is the count and then each element as an object reference. Loading appends to the
/// elements that are there. When loading throws, the elements read so far stay in the list; the
/// list's owner decides what to do with them.
class ORVANE_API CObList : public CObject
{
    DECLARE_SERIAL(CObList)

public:
    /// The block size is accepted and ignored: programs written for the interface pass one.
    explicit CObList(int blockSize = 10);
    ~CObList() override;
    CObList(const CObList&) = delete;
    CObList& operator=(const CObList&) = delete;

    int GetCount() const { return count_; }
    BOOL IsEmpty() const { return count_ == 0; }

    // The element operations below need a list that is not empty or a position of this list.
    CObject*& GetHead();
    CObject* GetHead() const;
    CObject*& GetTail();
    CObject* GetTail() const;

    POSITION GetHeadPosition() const;
    POSITION GetTailPosition() const;
    /// The element at the position, which moves on and becomes null behind the last.
    CObject*& GetNext(POSITION& position);
    CObject* GetNext(POSITION& position) const;
    CObject*& GetPrev(POSITION& position);
    CObject* GetPrev(POSITION& position) const;
    CObject*& GetAt(POSITION position);
    CObject* GetAt(POSITION position) const;
    void SetAt(POSITION position, CObject* element);

    POSITION AddHead(CObject* element);
    POSITION AddTail(CObject* element);
    /// Adds copies of another list's elements, in its order. The list itself may be given.
    void AddHead(const CObList* list);
    void AddTail(const CObList* list);
    CObject* RemoveHead();
    CObject* RemoveTail();
    void RemoveAt(POSITION position);
    void RemoveAll();

    /// A null position means before the head and after the tail.
    POSITION InsertBefore(POSITION position, CObject* element);
    POSITION InsertAfter(POSITION position, CObject* element);

    /// The first position of the element behind \p startAfter (null: from the head), or null.
    POSITION Find(const CObject* element, POSITION startAfter = nullptr) const;
    /// Null when the index is outside the list.
    POSITION FindIndex(int index) const;

    void Serialize(CArchive& archive) override;

protected:
    /// The class that loaded elements, null references aside, must be of or derive from (badClass).
    /// The base's null accepts any class.
    virtual const CRuntimeClass* GetElementClass() const { return nullptr; }

private:
    struct Node;

    static Node* AsNode(POSITION position);
    static POSITION AsPosition(Node* node);
    Node* Tail() const;
    /// The neighbours of a node; null behind the tail and before the head.
    Node* NextOf(const Node* node) const;
    Node* PreviousOf(const Node* node) const;
    /// Adds a node before \p next, or as the first node of the list when \p next is null.
    Node* InsertNode(Node* next, CObject* element);

    // The nodes form a ring: the tail is the node before the head, and the head follows the tail.
    Node* head_ = nullptr;
    int count_ = 0;
};
