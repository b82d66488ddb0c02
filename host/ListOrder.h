// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObList.h"

/// \file
/// What every list of pointers offers to find an element's place and to move it. A List has the
/// operations of CObList.

/// The index, from 0, of the first node that holds the element; -1 when none does.
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

/// Moves the element to the front; its node is made anew, so \p position is no longer valid.
/// Returns the new position. A null position gives null, the head itself.
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

/// The same towards the back.
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

/// Exchanges the elements at two positions; the nodes stay. Returns where the first element now is:
/// \p position itself when there is no neighbour.
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

/// Exchanges the element with its predecessor's. Returns where it now is: \p position itself for
/// the head, null for null.
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

/// The same with its successor.
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
