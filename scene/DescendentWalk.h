// SPDX-License-Identifier: MIT
#pragma once

#include "scene/DrawingObject.h"

#include <vector>

/// Calls \p visit(DrawingObject&, int) for each child of the node, in order, with the child's
/// index.
template <typename Visit>
void ForEachChild(const DrawingObject& node, Visit visit)
{
    const DrawingObjectList& children = *node.GetChildren();
    int index = 0;
    for (POSITION position = children.GetHeadPosition(); position != nullptr; ++index)
    {
        visit(*children.GetNext(position), index);
    }
}

/// Calls \p visit(DrawingObject&) for every descendant of the node, parents before their children
/// and siblings in order. When \p visit returns false, the walk skips that descendant's subtree.
/// The walk does not recurse, because a tree may be deeper than the program's stack allows.
template <typename Visit>
void VisitDescendents(const DrawingObject& root, Visit visit)
{
    std::vector<DrawingObject*> pending;
    const auto push = [&pending](const DrawingObject& node) {
        if (!node.HasChildren())
        {
            return;
        }
        const DrawingObjectList& children = *node.GetChildren();
        for (POSITION position = children.GetTailPosition(); position != nullptr;)
        {
            pending.push_back(children.GetPrev(position));
        }
    };
    push(root);
    while (!pending.empty())
    {
        DrawingObject& node = *pending.back();
        pending.pop_back();
        if (visit(node))
        {
            push(node);
        }
    }
}
