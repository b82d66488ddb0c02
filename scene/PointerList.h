// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObList.h"

/// A doubly linked list of untyped pointers. The list does not own the objects that they point to.
/// Each list node is allocated and freed separately. A position is the address of a list node.
///
/// Assignment copies only head, tail and count. Both lists then share the same nodes, and the nodes
/// that the assigned list had before are leaked. Only one of the two lists may free the shared
/// nodes: assign an empty list to the other one before it is destroyed. There is no copy
/// constructor.
class ORVANE_API PointerList
{
public:
    /// The block size is accepted and ignored.
    explicit PointerList(int blockSize = 10);
    PointerList(const PointerList&) = delete;
    PointerList& operator=(const PointerList& other);
    ~PointerList();

    int GetCount() const { return count; }
    int IsEmpty() const { return count == 0; }

    // GetHead, GetTail, RemoveHead and RemoveTail need a list that is not empty. Every position
    // must belong to this list. Functions that read elements have three forms: they return a
    // reference to the element, the element itself (if the list is const), or the address of the
    // element in its list node.
    void*& GetHead() { return head->data; }
    void* GetHead() const { return head->data; }
    void** GetHeadElement() { return &head->data; }
    void*& GetTail() { return tail->data; }
    void* GetTail() const { return tail->data; }
    void** GetTailElement() { return &tail->data; }

    POSITION GetHeadPosition() const { return AsPosition(head); }
    POSITION GetTailPosition() const { return AsPosition(tail); }

    /// Returns the element at the position and moves the position to the next node, or to null
    /// after the last node. GetPrev moves it to the previous node in the same way.
    void*& GetNext(POSITION& position) { return *GetNextElement(position); }
    void* GetNext(POSITION& position) const { return StepForward(position)->data; }
    void** GetNextElement(POSITION& position) { return &StepForward(position)->data; }
    void*& GetPrev(POSITION& position) { return *GetPrevElement(position); }
    void* GetPrev(POSITION& position) const { return StepBack(position)->data; }
    void** GetPrevElement(POSITION& position) { return &StepBack(position)->data; }
    void*& GetAt(POSITION position) { return AsNode(position)->data; }
    void* GetAt(POSITION position) const { return AsNode(position)->data; }
    void** GetElementAt(POSITION position) { return &AsNode(position)->data; }
    void SetAt(POSITION position, void* element) { AsNode(position)->data = element; }

    POSITION AddHead(void* element);
    POSITION AddTail(void* element);
    /// Adds the elements of another list, in their order. The other list may be this list.
    void AddHead(const PointerList* list);
    void AddTail(const PointerList* list);
    void* RemoveHead();
    void* RemoveTail();
    void RemoveAt(POSITION position);
    void RemoveAll();

    /// With a null position, InsertBefore adds at the head and InsertAfter at the tail.
    POSITION InsertBefore(POSITION position, void* element);
    POSITION InsertAfter(POSITION position, void* element);

    // See host/ListOrder.h.
    POSITION MoveHead(POSITION position);
    POSITION MoveTail(POSITION position);
    POSITION MoveUp(POSITION position);
    POSITION MoveDown(POSITION position);

    /// The first position that holds the element. The search begins behind \p startAfter, or at the
    /// head if \p startAfter is null. Returns null when the element is not found.
    POSITION Find(const void* element, POSITION startAfter = nullptr) const;
    /// The position at an index from 0; null if the index is not less than the count. The index
    /// must not be negative.
    POSITION FindIndex(int index) const;
    /// The index of the first node that holds the element; -1 when no node holds it.
    int WhichIndex(const void* element) const;

    struct Node
    {
        Node* next;
        Node* prev;
        void* data;
    };

    Node* head = nullptr;
    Node* tail = nullptr;
    int count = 0;

protected:
    /// Allocates a node with these links and adds 1 to the count. The caller sets the node's data
    /// and makes the neighbours point to the node.
    Node* NewNode(Node* prev, Node* next);
    /// Links the neighbours to each other, frees the node and subtracts 1 from the count.
    void FreeNode(Node* node);

private:
    static Node* AsNode(POSITION position) { return reinterpret_cast<Node*>(position); }
    static POSITION AsPosition(Node* node) { return reinterpret_cast<POSITION>(node); }
    static Node* StepForward(POSITION& position);
    static Node* StepBack(POSITION& position);
    POSITION LinkNode(Node* prev, Node* next, void* element);
};
