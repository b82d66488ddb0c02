// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"

struct __POSITION;

/// A place in a list; null means no place. A position stays valid until its list node is removed.
using POSITION = __POSITION*;

/// A doubly linked list of pointers to objects. The list does not own the objects. Each element has
/// a list node of its own, allocated when the element is added and freed when it is removed; an
/// empty list allocates nothing.
///
/// The record is the count and then each element as an object reference. Loading appends the loaded
/// elements to the elements of the list. When loading throws, the elements read so far stay in the
/// list; the list's owner decides what to do with them.
class ORVANE_API CObList : public CObject
{
    DECLARE_SERIAL(CObList)

public:
    /// The block size is ignored. The parameter exists because programs written for this interface
    /// pass a block size.
    explicit CObList(int blockSize = 10);
    ~CObList() override;
    CObList(const CObList&) = delete;
    CObList& operator=(const CObList&) = delete;

    int GetCount() const { return count_; }
    BOOL IsEmpty() const { return count_ == 0; }

    // GetHead, GetTail, RemoveHead and RemoveTail need a list that is not empty. Every position
    // must belong to this list.
    CObject*& GetHead();
    CObject* GetHead() const;
    CObject*& GetTail();
    CObject* GetTail() const;

    POSITION GetHeadPosition() const;
    POSITION GetTailPosition() const;
    /// Returns the element at the position and moves the position to the next element, or to null
    /// after the last element. GetPrev moves it to the previous element in the same way.
    CObject*& GetNext(POSITION& position);
    CObject* GetNext(POSITION& position) const;
    CObject*& GetPrev(POSITION& position);
    CObject* GetPrev(POSITION& position) const;
    CObject*& GetAt(POSITION position);
    CObject* GetAt(POSITION position) const;
    void SetAt(POSITION position, CObject* element);

    POSITION AddHead(CObject* element);
    POSITION AddTail(CObject* element);
    /// Adds the elements of another list in their order. \p list may be this list.
    void AddHead(const CObList* list);
    void AddTail(const CObList* list);
    CObject* RemoveHead();
    CObject* RemoveTail();
    void RemoveAt(POSITION position);
    void RemoveAll();

    /// These functions return the position of the new element. With a null position, InsertBefore
    /// adds the element at the head and InsertAfter at the tail.
    POSITION InsertBefore(POSITION position, CObject* element);
    POSITION InsertAfter(POSITION position, CObject* element);

    /// The first position that holds the element. The search begins behind \p startAfter, or at the
    /// head if \p startAfter is null. Returns null when the element is not found.
    POSITION Find(const CObject* element, POSITION startAfter = nullptr) const;
    /// The position at an index from 0; null when the index is outside the list.
    POSITION FindIndex(int index) const;

    void Serialize(CArchive& archive) override;

protected:
    /// The class that every loaded element must be or derive from; loading throws badClass for any
    /// other element. Null references are always accepted. This class returns null, which accepts
    /// any class.
    virtual const CRuntimeClass* GetElementClass() const { return nullptr; }

private:
    struct Node;

    static Node* AsNode(POSITION position);
    static POSITION AsPosition(Node* node);
    Node* Tail() const;
    /// The neighbour of a node. NextOf returns null for the tail, PreviousOf for the head.
    Node* NextOf(const Node* node) const;
    Node* PreviousOf(const Node* node) const;
    /// Adds a node before \p next, or the first node of an empty list if \p next is null. In a list
    /// that is not empty, head_ does not change; AddHead changes it.
    Node* InsertNode(Node* next, CObject* element);

    // The nodes form a ring: the tail is the node before the head, and the head follows the tail.
    Node* head_ = nullptr;
    int count_ = 0;
};
