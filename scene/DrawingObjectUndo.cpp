// SPDX-License-Identifier: MIT
#include "scene/DescendentWalk.h"

#include <unordered_set>

int DrawingObject::SaveToUndo()
{
    return SaveToUndo_(new DrawingObject(*this));
}

int DrawingObject::SaveToUndo_(DrawingObject* copy)
{
    undoStack.Push(copy);
    SaveToExternalUndo();
    return 1;
}

int DrawingObject::SaveToExternalUndo()
{
    if (externalUndoStack == nullptr)
    {
        return 0;
    }
    externalUndoStack->Push(this);
    savedToExternalUndo_ = true;
    return 1;
}

int DrawingObject::RestoreFromUndo()
{
    return RestoreFromUndo_<DrawingObject>();
}

int DrawingObject::PopUndo()
{
    if (undoStack.IsEmpty())
    {
        return 0;
    }
    DeleteSavedCopy_();
    if (externalUndoStack != nullptr && externalUndoStack->Peek() == this)
    {
        externalUndoStack->Pop();
    }
    return 1;
}

int DrawingObject::CanUndo() const
{
    return undoStack.Peek() != nullptr;
}

int DrawingObject::ClearUndo()
{
    const int cleared = DeleteSavedCopies_();
    if (externalUndoStack != nullptr)
    {
        externalUndoStack->RemoveAllOccurances(this);
    }
    return cleared;
}

int DrawingObject::ClearUndoAll()
{
    std::vector<DrawingObject*> nodes{this};
    VisitDescendents(*this, [&nodes](DrawingObject& node) {
        nodes.push_back(&node);
        return true;
    });
    int cleared = 0;
    for (DrawingObject* const node : nodes)
    {
        cleared |= node->DeleteSavedCopies_();
    }
    LeaveExternalUndoStacks_(nodes);
    return cleared;
}

void DrawingObject::AttachExternalUndoStack(DrawingObjectStack* stack)
{
    ChangeExternalUndoStack_(stack);
    // A saved copy brings its pointer back when it is restored.
    for (POSITION position = undoStack.GetHeadPosition(); position != nullptr;)
    {
        if (DrawingObject* const copy = undoStack.GetNext(position))
        {
            copy->AttachExternalUndoStack(stack);
        }
    }
    for (POSITION position = children.GetHeadPosition(); position != nullptr;)
    {
        children.GetNext(position)->AttachExternalUndoStack(stack);
    }
}

// A node that turned away from a stack could not take itself off it any more when it dies.
void DrawingObject::ChangeExternalUndoStack_(DrawingObjectStack* stack)
{
    if (stack == externalUndoStack)
    {
        return;
    }
    if (savedToExternalUndo_ && externalUndoStack != nullptr)
    {
        externalUndoStack->RemoveAllOccurances(this);
    }
    savedToExternalUndo_ = false;
    externalUndoStack = stack;
}

// Copies are on no external stack and need not look for themselves there.
void DrawingObject::DeleteSavedCopy_()
{
    DrawingObject* const copy = undoStack.Pop();
    if (copy != nullptr)
    {
        copy->externalUndoStack = nullptr;
        delete copy;
    }
}

int DrawingObject::DeleteSavedCopies_()
{
    if (undoStack.IsEmpty())
    {
        return 0;
    }
    while (!undoStack.IsEmpty())
    {
        DeleteSavedCopy_();
    }
    return 1;
}

// One walk over each stack for all of the nodes.
void DrawingObject::LeaveExternalUndoStacks_(const std::vector<DrawingObject*>& nodes)
{
    std::unordered_set<DrawingObjectStack*> stacks;
    for (const DrawingObject* const node : nodes)
    {
        if (node->externalUndoStack != nullptr && !node->externalUndoStack->IsEmpty())
        {
            stacks.insert(node->externalUndoStack);
        }
    }
    if (stacks.empty())
    {
        return;
    }
    const std::unordered_set<const DrawingObject*> leaving(nodes.begin(), nodes.end());
    for (DrawingObjectStack* const stack : stacks)
    {
        for (POSITION next = stack->GetHeadPosition(); next != nullptr;)
        {
            const POSITION position = next;
            if (leaving.contains(stack->GetNext(next)))
            {
                stack->RemoveAt(position);
            }
        }
    }
}
