// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObList.h"

/// \file
/// Functions that find an element in a list of pointers and move it. List is any class with the
/// functions of CObList.

/// The index, from 0, of the first node that holds the element; -1 when no node holds it.
template <typename List, typename Element>
int IndexInList(const List& list, const Element* element)
{
    int index = 0;
    for (POSITION position = list.GetHeadPosition(); position != nullptr; ++index)
    {
        if (list.GetNext(position) == element)
        {
            return index;
        }
    }
    return -1;
}

/// Moves an element to the front of the list and returns its new position. The old position is not
/// valid afterwards, except when the element was already at the front. Returns null for a null
/// position.
template <typename List>
POSITION MoveToHead(List& list, POSITION position)
{
    if (position == nullptr || position == list.GetHeadPosition())
    {
        return position;
    }
    auto* const element = list.GetAt(position);
    list.RemoveAt(position);
    return list.AddHead(element);
}

/// Moves an element to the back of the list; otherwise like MoveToHead.
template <typename List>
POSITION MoveToTail(List& list, POSITION position)
{
    if (position == nullptr || position == list.GetTailPosition())
    {
        return position;
    }
    auto* const element = list.GetAt(position);
    list.RemoveAt(position);
    return list.AddTail(element);
}

/// Exchanges the elements at two positions. Both positions stay valid. Returns \p neighbour, where
/// the element from \p position is now. If either position is null, changes nothing and returns \p
/// position.
template <typename List>
POSITION ExchangeInList(List& list, POSITION position, POSITION neighbour)
{
    if (position == nullptr || neighbour == nullptr)
    {
        return position;
    }
    auto* const element = list.GetAt(position);
    list.SetAt(position, list.GetAt(neighbour));
    list.SetAt(neighbour, element);
    return neighbour;
}

/// Exchanges the element at \p position with the previous element and returns its new position. The
/// first element stays where it is. Returns null for a null position.
template <typename List>
POSITION MoveTowardsHead(List& list, POSITION position)
{
    POSITION previous = position;
    if (previous != nullptr)
    {
        list.GetPrev(previous);
    }
    return ExchangeInList(list, position, previous);
}

/// Exchanges the element at \p position with the next element; otherwise like MoveTowardsHead.
template <typename List>
POSITION MoveTowardsTail(List& list, POSITION position)
{
    POSITION next = position;
    if (next != nullptr)
    {
        list.GetNext(next);
    }
    return ExchangeInList(list, position, next);
}
