// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"
#include "host/MadeWhenUsed.h"

struct __POSITION;

/// A place in a list; null is none. It stays valid until its node is removed.
using POSITION = __POSITION*;

/// A doubly linked list of object pointers, which it does not own. One of the usual block size that
/// never held anything, as of most nodes, takes no memory but itself, two pointers.
///
/// Its record is the count and then each element as an object reference; loading appends. When
/// loading throws, what was appended by then stays: the list's owner decides what becomes of it.
class ORVANE_API CObList : public CObject
{
    DECLARE_SERIAL(CObList)

public:
    /// \param blockSize nodes are allocated that many at a time, at least 1.
    explicit CObList(int blockSize = usualBlockSize_);
    ~CObList() override;
    CObList(const CObList&) = delete;
    CObList& operator=(const CObList&) = delete;

    int GetCount() const { return body_.Read().count; }
    BOOL IsEmpty() const { return GetCount() == 0; }

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
    static constexpr int usualBlockSize_ = 10;

    struct Node;
    struct Body
    {
        Node* head = nullptr;
        Node* tail = nullptr;
        int count = 0;
        int blockSize = usualBlockSize_;
        Node* free = nullptr;    // a chain of nodes that hold nothing
        Node* blocks = nullptr;  // the first node of each is no element's and leads to the next
    };

    static Node* AsNode(POSITION position);
    Node* NewNode(Node* previous, Node* next, CObject* element);
    void Unlink(Node* node);
    const Body& Filled() const;

    MadeWhenUsed<Body> body_;
};
