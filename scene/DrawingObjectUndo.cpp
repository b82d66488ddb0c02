// SPDX-License-Identifier: MIT
#include "scene/DescendentWalk.h"

#include <unordered_set>

int DrawingObject::SaveToUndo()
{
    return SaveCopy(new DrawingObject(*this));
}

int DrawingObject::SaveCopy(DrawingObject* copy)
{
    undoStack.Push(copy);
    SaveToExternalUndo();
    return 1;
}

int DrawingObject::SaveToExternalUndo()
{
    if (GetExternalUndoStack() == nullptr)
    {
        return 0;
    }
    GetExternalUndoStack()->Push(this);
    EnsureDetails().savedToExternalUndo = true;
    return 1;
}

int DrawingObject::RestoreFromUndo()
{
    return RestoreSavedCopy<DrawingObject>();
}

int DrawingObject::PopUndo()
{
    if (undoStack.IsEmpty())
    {
        return 0;
    }
    DeleteLastSavedCopy();
    DrawingObjectStack* const stack = GetExternalUndoStack();
    if (stack != nullptr && stack->Peek() == this)
    {
        stack->Pop();
    }
    return 1;
}

int DrawingObject::CanUndo() const
{
    return undoStack.Peek() != nullptr;
}

int DrawingObject::ClearUndo()
{
    const int cleared = DeleteSavedCopies();
    if (GetExternalUndoStack() != nullptr)
    {
        GetExternalUndoStack()->RemoveAllOccurances(this);
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
        cleared |= node->DeleteSavedCopies();
    }
    LeaveExternalUndoStacks(nodes);
    return cleared;
}

void DrawingObject::AttachExternalUndoStack(DrawingObjectStack* stack)
{
    ChangeExternalUndoStack(stack);
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
void DrawingObject::ChangeExternalUndoStack(DrawingObjectStack* stack)
{
    if (stack == GetExternalUndoStack())
    {
        return;
    }
    Details& own = EnsureDetails();
    if (own.savedToExternalUndo && own.externalUndoStack != nullptr)
    {
        own.externalUndoStack->RemoveAllOccurances(this);
    }
    own.savedToExternalUndo = false;
    own.externalUndoStack = stack;
}

// Without looking for itself there.
void DrawingObject::ForgetExternalUndoStack()
{
    if (GetExternalUndoStack() != nullptr)
    {
        EnsureDetails().externalUndoStack = nullptr;
    }
}

// Copies are on no external stack and need not look for themselves there.
void DrawingObject::DeleteLastSavedCopy()
{
    DrawingObject* const copy = undoStack.Pop();
    if (copy != nullptr)
    {
        copy->ForgetExternalUndoStack();
        delete copy;
    }
}

int DrawingObject::DeleteSavedCopies()
{
    if (undoStack.IsEmpty())
    {
        return 0;
    }
    while (!undoStack.IsEmpty())
    {
        DeleteLastSavedCopy();
    }
    return 1;
}

// One walk over each stack for all of the nodes.
void DrawingObject::LeaveExternalUndoStacks(const std::vector<DrawingObject*>& nodes)
{
    std::unordered_set<DrawingObjectStack*> stacks;
    for (const DrawingObject* const node : nodes)
    {
        DrawingObjectStack* const stack = node->GetExternalUndoStack();
        if (stack != nullptr && !stack->IsEmpty())
        {
            stacks.insert(stack);
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
