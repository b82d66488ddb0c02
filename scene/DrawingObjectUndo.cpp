// SPDX-License-Identifier: MIT
#include "scene/DescendentWalk.h"

#include <memory>
#include <unordered_set>

int DrawingObject::SaveToUndo()
{
    return SaveCopy(new DrawingObject(*this));
}

int DrawingObject::SaveCopy(DrawingObject* copy)
{
    std::unique_ptr<DrawingObject> owned(copy);
    undoStack.Push(copy);
    static_cast<void>(owned.release());  // the stack owns it
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
    // RestoreFromUndo also copies the saved copy's pointer to the stack into this node, so the
    // saved copies get the new stack, too.
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

// Removes this node from the old stack, then sets the pointer to the new stack.
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

// Clears the pointer to the stack without removing this node from the stack.
void DrawingObject::ForgetExternalUndoStack()
{
    if (GetExternalUndoStack() != nullptr)
    {
        EnsureDetails().externalUndoStack = nullptr;
    }
}

// A saved copy is never on an external stack. The copy's pointer to the stack is cleared before the
// copy is deleted, so that its destructor does not search the stack.
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

// Removes all the nodes from their external stacks. Walks over each stack only once, because both
// the stack and the subtree can be large.
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
