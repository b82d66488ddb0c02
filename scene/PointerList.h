// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObList.h"

/// A doubly linked list of untyped pointers, which it does not own. Each node is allocated and
/// freed by itself; a position is the address of a node.
///
/// Assignment copies head, tail and count alone: both lists then share the nodes, and those that
/// the assigned list had before are nobody's. Only one of the two may free them; assigning an empty
/// list to the other makes it let go. There is no copy constructor.
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

    // The element operations need a list that is not empty or a position of this list. Three forms:
    // a reference to the element, the element, and a pointer to where it is kept.
    void*& GetHead() { return head->data; }
    void* GetHead() const { return head->data; }
    void** GetHeadElement() { return &head->data; }
    void*& GetTail() { return tail->data; }
    void* GetTail() const { return tail->data; }
    void** GetTailElement() { return &tail->data; }

    POSITION GetHeadPosition() const { return AsPosition(head); }
    POSITION GetTailPosition() const { return AsPosition(tail); }

    /// The element at the position, which moves on and becomes null behind the last.
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
    /// Adds another list's elements, in its order. The list itself may be given.
    void AddHead(const PointerList* list);
    void AddTail(const PointerList* list);
    void* RemoveHead();
    void* RemoveTail();
    void RemoveAt(POSITION position);
    void RemoveAll();

    /// A null position means before the head and after the tail.
    POSITION InsertBefore(POSITION position, void* element);
    POSITION InsertAfter(POSITION position, void* element);

    // As host/ListOrder.h describes.
    POSITION MoveHead(POSITION position);
    POSITION MoveTail(POSITION position);
    POSITION MoveUp(POSITION position);
    POSITION MoveDown(POSITION position);

    /// The first position of the element behind \p startAfter (null: from the head), or null.
    POSITION Find(const void* element, POSITION startAfter = nullptr) const;
    /// Null from the count on. A negative index is the caller's fault.
    POSITION FindIndex(int index) const;
    /// The index of the first node that holds the element; -1 when none does.
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
    /// A counted node with these links. The caller fills it and links its neighbours.
    Node* NewNode(Node* prev, Node* next);
    /// Links the neighbours to each other, frees the node and uncounts it.
    void FreeNode(Node* node);

private:
    static Node* AsNode(POSITION position) { return reinterpret_cast<Node*>(position); }
    static POSITION AsPosition(Node* node) { return reinterpret_cast<POSITION>(node); }
    static Node* StepForward(POSITION& position);
    static Node* StepBack(POSITION& position);
    POSITION LinkNode(Node* prev, Node* next, void* element);
};
