// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObList.h"
#include "host/CString.h"
#include "host/ListOrder.h"
#include "host/MultibyteCompare.h"

/// A CObList of pointers to one class: the operations of the list with Element* in place of
/// CObject*, and those that the library's lists have in common. Does not own its elements. Every
/// typed list derives from this one.
///
/// Element derives from CObject, as its first base, and may be incomplete where the list is only
/// declared.
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

    /// The index, from 0, of the first node that holds the element; -1 when none does.
    int WhichIndex(Element* const& element) const { return IndexInList(*this, element); }

    /// Removes every element that is the object. Always TRUE, also when there was none.
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

    // As host/ListOrder.h describes.
    POSITION MoveHead(POSITION position) { return MoveToHead(*this, position); }
    POSITION MoveTail(POSITION position) { return MoveToTail(*this, position); }
    POSITION MoveUp(POSITION position) { return MoveTowardsHead(*this, position); }
    POSITION MoveDown(POSITION position) { return MoveTowardsTail(*this, position); }

protected:
    /// The first position whose element's name, as \p nameOf gives it, equals \p name; null when
    /// none does.
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

    /// Inserts an element before the first one that is greater, by the elements' own comparisons
    /// with a pointer, so that a sorted list stays sorted. Null, inserting nothing, when an equal
    /// one is met first; otherwise the element.
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
    // The nodes hold CObject*, whose declared type may alias that of any pointer (CObList.cpp).
    using Slot [[gnu::may_alias]] = Element*;

    static Element*& AsSlot(CObject*& slot) { return reinterpret_cast<Slot&>(slot); }
    static Element* AsElement(CObject* object) { return static_cast<Element*>(object); }
};
