// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObList.h"
#include "host/CString.h"
#include "host/ListOrder.h"
#include "platform/MultibyteCompare.h"

/// A CObList whose elements are pointers to one class, and the functions that all lists of the
/// library have in common. The list does not own its elements. All typed lists derive from this
/// class.
///
/// CObject must be the first base class of Element. Element may be incomplete where the list is
/// only declared.
template <typename Element>
class TypedList : public CObList
{
public:
    explicit TypedList(int blockSize = 10) : CObList(blockSize) {}

    Element*& GetHead() { return AsSlot(CObList::GetHead()); }
    Element* GetHead() const { return AsElement(CObList::GetHead()); }
    Element*& GetTail() { return AsSlot(CObList::GetTail()); }
    Element* GetTail() const { return AsElement(CObList::GetTail()); }
    Element*& GetNext(POSITION& position) { return AsSlot(CObList::GetNext(position)); }
    Element* GetNext(POSITION& position) const { return AsElement(CObList::GetNext(position)); }
    Element*& GetPrev(POSITION& position) { return AsSlot(CObList::GetPrev(position)); }
    Element* GetPrev(POSITION& position) const { return AsElement(CObList::GetPrev(position)); }
    Element*& GetAt(POSITION position) { return AsSlot(CObList::GetAt(position)); }
    Element* GetAt(POSITION position) const { return AsElement(CObList::GetAt(position)); }
    void SetAt(POSITION position, Element* element) { CObList::SetAt(position, element); }

    POSITION AddHead(Element* element) { return CObList::AddHead(element); }
    POSITION AddTail(Element* element) { return CObList::AddTail(element); }
    void AddHead(const TypedList* list) { CObList::AddHead(list); }
    void AddTail(const TypedList* list) { CObList::AddTail(list); }
    Element* RemoveHead() { return AsElement(CObList::RemoveHead()); }
    Element* RemoveTail() { return AsElement(CObList::RemoveTail()); }
    POSITION InsertBefore(POSITION position, Element* element)
    {
        return CObList::InsertBefore(position, element);
    }
    POSITION InsertAfter(POSITION position, Element* element)
    {
        return CObList::InsertAfter(position, element);
    }
    POSITION Find(const Element* element, POSITION startAfter = nullptr) const
    {
        return CObList::Find(element, startAfter);
    }

    /// The index, from 0, of the first node that holds the element; -1 when no node holds it.
    int WhichIndex(Element* const& element) const { return IndexInList(*this, element); }

    /// Removes all nodes that hold the element. Returns TRUE, even if there was no such node.
    BOOL RemoveAllOccurances(const Element* element)
    {
        for (POSITION position = Find(element); position != nullptr;)
        {
            const POSITION found = position;
            position = Find(element, found);
            RemoveAt(found);
        }
        return TRUE;
    }

    // See host/ListOrder.h.
    POSITION MoveHead(POSITION position) { return MoveToHead(*this, position); }
    POSITION MoveTail(POSITION position) { return MoveToTail(*this, position); }
    POSITION MoveUp(POSITION position) { return MoveTowardsHead(*this, position); }
    POSITION MoveDown(POSITION position) { return MoveTowardsTail(*this, position); }

protected:
    /// The position of the first element that has the name; null when no element has it.
    /// \param nameOf returns the name of an element.
    template <typename NameOf>
    POSITION FindNamed(const CString& name, NameOf nameOf) const
    {
        for (POSITION position = GetHeadPosition(); position != nullptr;)
        {
            const POSITION here = position;
            const CString elementName = nameOf(GetNext(position));
            if (CompareMultibyte(elementName, name) == 0)
            {
                return here;
            }
        }
        return nullptr;
    }

    /// Inserts an element before the first element that is greater, so that a sorted list stays
    /// sorted, and returns the inserted element. If an equal element stands before that place, the
    /// function inserts nothing and returns null. Elements are compared with their own operators ==
    /// and >, which take a pointer.
    Element* InsertInOrder(Element* element)
    {
        for (POSITION next = GetHeadPosition(); next != nullptr;)
        {
            const POSITION position = next;
            const Element* const present = GetNext(next);
            if (*present == element)
            {
                return nullptr;
            }
            if (*present > element)
            {
                InsertBefore(position, element);
                return element;
            }
        }
        AddTail(element);
        return element;
    }

private:
    // A node stores a CObject*. This type lets the compiler know that the same memory is also
    // accessed as an Element*. CObList.cpp does the same on its side.
    using Slot [[gnu::may_alias]] = Element*;

    static Element*& AsSlot(CObject*& slot) { return reinterpret_cast<Slot&>(slot); }
    static Element* AsElement(CObject* object) { return static_cast<Element*>(object); }
};
