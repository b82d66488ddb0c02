// SPDX-License-Identifier: MIT
#include "scene/DescendentWalk.h"

#include <algorithm>
#include <new>

// owner_ names the node that has this node in its list. The parent pointer cannot be used for that,
// because programs can set it to any node, even to a deleted node. Comparing owner_ is also faster
// than searching the parent's list.

bool DrawingObject::IsSelfOrAncestor(const DrawingObject* node) const
{
    for (const DrawingObject* here = this; here != nullptr; here = here->owner_)
    {
        if (here == node || here->parent == node)
        {
            return true;
        }
    }
    return false;
}

void DrawingObject::MarkAsChild(DrawingObject* child)
{
    child->parent = this;
    child->owner_ = this;
}

void DrawingObject::LeaveOwner()
{
    if (owner_ != nullptr)
    {
        owner_->children.RemoveAllOccurances(this);
        owner_ = nullptr;
    }
}

// Leaves the list of the present owner. If the parent pointer names the owner, the node leaves by
// AbandonChild, which saves an undo step and combines the owner's transform into the node's
// transform.
void DrawingObject::LeaveParentForAdoption()
{
    if (owner_ != nullptr && owner_ == parent)
    {
        parent->AbandonChild(this);
    }
    LeaveOwner();
}

int DrawingObject::AddChild(DrawingObject* child)
{
    return AddChildAfter(child, nullptr) != nullptr;
}

POSITION DrawingObject::AddChildAfter(DrawingObject* child, POSITION position)
{
    if (child == nullptr || child->owner_ == this || IsSelfOrAncestor(child))
    {
        return nullptr;
    }
    // The list takes the child first: when there is no memory for it, nothing has changed.
    const POSITION added = children.InsertAfter(position, child);
    try
    {
        child->LeaveParentForAdoption();
    }
    catch (...)
    {
        children.RemoveAt(added);
        throw;
    }
    MarkAsChild(child);
    return added;
}

int DrawingObject::AdoptChildren(DrawingObject* other)
{
    return AdoptChildrenAfter(other, nullptr);
}

int DrawingObject::AdoptChildrenAfter(DrawingObject* other, POSITION position)
{
    if (other == nullptr || other == this || !other->HasChildren())
    {
        return 0;
    }
    const bool atTail = position == nullptr;
    for (POSITION next = other->children.GetHeadPosition(); next != nullptr;)
    {
        const POSITION added = AddChildAfter(other->children.GetNext(next), position);
        if (!atTail && added != nullptr)
        {
            position = added;
        }
    }
    return 1;
}

int DrawingObject::RemoveChild(DrawingObject* child)
{
    if (child == nullptr || child->parent != this)
    {
        return 0;
    }
    const POSITION position = FindChildPosition(child);
    if (position == nullptr)
    {
        return 0;
    }
    children.RemoveAt(position);
    child->parent = nullptr;
    child->owner_ = nullptr;
    return 1;
}

int DrawingObject::AbandonChild(DrawingObject* child)
{
    if (!RemoveChild(child))
    {
        return 0;
    }
    child->SaveToUndo();
    child->CombineTransform(&transform);
    return 1;
}

int DrawingObject::ReplaceChild(DrawingObject* oldChild, DrawingObject* newChild)
{
    if (oldChild == nullptr || newChild == nullptr || oldChild == newChild ||
        oldChild->parent != this || oldChild->owner_ != this || IsSelfOrAncestor(newChild))
    {
        return 0;
    }
    newChild->LeaveOwner();
    children.SetAt(FindChildPosition(oldChild), newChild);
    MarkAsChild(newChild);
    oldChild->parent = nullptr;
    oldChild->owner_ = nullptr;
    return 1;
}

// Gathers the whole subtree before it deletes any node. The function does not recurse, because a
// tree may be deeper than the program's stack allows. It empties the lists and clears owner_ first,
// so that a deleted node does not search its owner's list for itself. The destructor calls this
// function, so without memory to gather the nodes it deletes them one by one.
int DrawingObject::DestroyChildren()
{
    if (!HasChildren())
    {
        return 0;
    }
    std::vector<DrawingObject*> doomed;
    try
    {
        std::vector<DrawingObject*> pending{this};
        while (!pending.empty())
        {
            DrawingObject* const node = pending.back();
            pending.pop_back();
            doomed.push_back(node);
            for (POSITION position = node->children.GetHeadPosition(); position != nullptr;)
            {
                pending.push_back(node->children.GetNext(position));
            }
        }
        doomed.erase(doomed.begin());  // this node itself
        LeaveExternalUndoStacks(doomed);
    }
    catch (const std::bad_alloc&)
    {
        DestroyChildrenOneByOne();
        return 1;
    }
    children.RemoveAll();
    for (DrawingObject* const node : doomed)
    {
        node->owner_ = nullptr;
        node->children.RemoveAll();
        node->ForgetExternalUndoStack();
    }
    // Deletion in reverse order deletes every node after its children, and siblings from first to
    // last.
    std::for_each(doomed.rbegin(), doomed.rend(), [](DrawingObject* node) { delete node; });
    return 1;
}

// Deletes the nodes in the same order as DestroyChildren, but slower: each node searches the
// external undo stack for itself. Needs no memory.
void DrawingObject::DestroyChildrenOneByOne()
{
    DrawingObject* node = this;
    while (node != this || HasChildren())
    {
        if (node->HasChildren())
        {
            DrawingObject* const child = node->children.GetHead();
            child->owner_ = node;
            node = child;
            continue;
        }
        DrawingObject* const owner = node->owner_;
        owner->children.RemoveHead();
        node->owner_ = nullptr;
        delete node;
        node = owner;
    }
}

int DrawingObject::RemoveDeletedChildren()
{
    std::vector<DrawingObject*> pending{this};
    while (!pending.empty())
    {
        DrawingObject* const node = pending.back();
        pending.pop_back();
        for (POSITION next = node->children.GetHeadPosition(); next != nullptr;)
        {
            const POSITION position = next;
            DrawingObject* const child = node->children.GetNext(next);
            if (!child->IsDeleted())
            {
                pending.push_back(child);
                continue;
            }
            node->children.RemoveAt(position);
            child->owner_ = nullptr;
            child->DestroyChildren();
            delete child;
        }
    }
    return 1;
}

int DrawingObject::MoveChildToTop(DrawingObject* child)
{
    return children.MoveHead(FindChildPosition(child)) != nullptr;
}

int DrawingObject::MoveChildToBottom(DrawingObject* child)
{
    return children.MoveTail(FindChildPosition(child)) != nullptr;
}

int DrawingObject::MoveChildUpOnePosition(DrawingObject* child)
{
    return children.MoveUp(FindChildPosition(child)) != nullptr;
}

int DrawingObject::MoveChildDownOnePosition(DrawingObject* child)
{
    return children.MoveDown(FindChildPosition(child)) != nullptr;
}

DrawingObject* DrawingObject::GetChildByIndex(int index) const
{
    const POSITION position = FindChildPositionByIndex(index);
    return position == nullptr ? nullptr : children.GetAt(position);
}

int DrawingObject::FindChildIndex(DrawingObject* child) const
{
    return children.WhichIndex(child);
}

POSITION DrawingObject::FindChildPosition(DrawingObject* child) const
{
    return children.Find(child);
}

POSITION DrawingObject::FindChildPositionByIndex(int index) const
{
    return children.FindIndex(index);
}

DrawingObject* DrawingObject::GetHeadChild() const
{
    return HasChildren() ? children.GetHead() : nullptr;
}

DrawingObject* DrawingObject::GetTailChild() const
{
    return HasChildren() ? children.GetTail() : nullptr;
}

int DrawingObject::IsChildFirst(DrawingObject* child) const
{
    return child != nullptr && GetHeadChild() == child;
}

int DrawingObject::IsChildLast(DrawingObject* child) const
{
    return child != nullptr && GetTailChild() == child;
}

int DrawingObject::GetDescendentCount() const
{
    int count = 0;
    VisitDescendents(*this, [&count](const DrawingObject& node) {
        count += !node.IsDeleted();
        return !node.IsDeleted();
    });
    return count;
}

int DrawingObject::GetEditableDescendentCount() const
{
    int count = 0;
    for (POSITION position = children.GetHeadPosition(); position != nullptr;)
    {
        const DrawingObject* const child = children.GetNext(position);
        if (!child->IsDeleted())
        {
            count += (child->IsEditable() != 0) + child->GetDescendentCount();
        }
    }
    return count;
}

int DrawingObject::GetTemplateDescendentCount() const
{
    DrawingObjectList list;
    return GetTemplateDescendentList(&list);
}

int DrawingObject::GetTemplateDescendentList(DrawingObjectList* list) const
{
    int count = 0;
    VisitDescendents(*this, [&count, list](DrawingObject& node) {
        if (!node.IsDeleted() && node.IsTemplateObject())
        {
            list->AddTail(&node);
            ++count;
        }
        return !node.IsDeleted();
    });
    return count;
}

DrawingObject* DrawingObject::GetTopLevelGroupParent() const
{
    DrawingObject* top = const_cast<DrawingObject*>(this);
    while (top->parent != nullptr && top->parent->IsGrouped())
    {
        top = top->parent;
    }
    return top;
}
