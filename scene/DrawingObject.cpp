// SPDX-License-Identifier: MIT
#include "scene/DrawingObject.h"

#include "host/CArchive.h"
#include "scene/DescendentWalk.h"

#include <algorithm>

// Construction, copying, details and the selection. The other subjects are in the sources
// DrawingObjectArchive, -Bounds, -Drawing, -Transforms, -Tree and -Undo.

IMPLEMENT_SERIAL(DrawingObject, CObject, VERSIONABLE_SCHEMA | 3)

TextureMapList* DrawingObject::TextureList = nullptr;

// The destructor asks for the initial details of nodes, and must not be the first to need memory
// for them.
DrawingObject::DrawingObject()
{
    InitialDetails();
}

// The first constructor has made a complete node, so that the destructor frees what is copied when
// there is no memory for the rest.
DrawingObject::DrawingObject(const DrawingObject& other) : DrawingObject()
{
    CopyFieldsFrom(other);
}

DrawingObject& DrawingObject::operator=(const DrawingObject& other)
{
    if (this != &other)
    {
        CopyFieldsFrom(other);
    }
    return *this;
}

DrawingObject::~DrawingObject()
{
    DestroyChildren();
    ClearUndo();
    LeaveOwner();
    delete details_.load(std::memory_order_relaxed);
}

DrawingObject::Details& DrawingObject::InitialDetails()
{
    // The object is never destroyed, because nodes with static storage may need it while the
    // process ends.
    static Details* const initial = new Details;
    return *initial;
}

const DrawingObject::Details& DrawingObject::CurrentDetails() const
{
    const Details* const details = details_.load(std::memory_order_acquire);
    return details != nullptr ? *details : InitialDetails();
}

DrawingObject::Details& DrawingObject::EnsureDetails()
{
    Details* details = details_.load(std::memory_order_acquire);
    if (details == nullptr)
    {
        auto made = std::make_unique<Details>();
        if (details_.compare_exchange_strong(details, made.get(), std::memory_order_acq_rel))
        {
            return *made.release();
        }
        // Another thread was first. The exchange has put that thread's pointer into details.
    }
    return *details;
}

TextureMap& DrawingObject::TextureOrNone()
{
    return HasDetails() ? EnsureDetails().texture : InitialDetails().texture;
}

void DrawingObject::CopyFieldsFrom(const DrawingObject& other)
{
    ChangeExternalUndoStack(other.GetExternalUndoStack());
    bounds = other.bounds;
    extentsBoxColor = other.extentsBoxColor;
    flags = other.flags;
    minimumSize = other.minimumSize;
    parent = other.parent;
    handleSize = other.handleSize;
    transform = other.transform;
    if (HasDetails() || other.HasDetails())
    {
        constexpr int copiedHandles = 4;
        EnsureDetails().CopySizesAndTexture(other.CurrentDetails(), copiedHandles);
    }
}

void DrawingObject::Details::CopySizesAndTexture(const Details& other, int handleCount)
{
    std::copy_n(other.globalSizingHandles, handleCount, globalSizingHandles);
    std::copy_n(other.localSizingHandles, handleCount, localSizingHandles);
    scale = other.scale;
    scaledDimensions = other.scaledDimensions;
    texture = other.texture;
    unscaledDimensions = other.unscaledDimensions;
}

void DrawingObject::SetSelected()
{
    SelectOnlyThisNode();
    VisitDescendents(*this, [](DrawingObject& node) {
        node.SelectOnlyThisNode();
        return true;
    });
}

void DrawingObject::ClearSelected()
{
    DeselectOnlyThisNode();
    VisitDescendents(*this, [](DrawingObject& node) {
        node.DeselectOnlyThisNode();
        return true;
    });
}

NamedColor DrawingObject::GetExtentsBoxColor() const
{
    return extentsBoxColor;
}

void DrawingObject::SetSurfaceColor(const NamedColor&, int) {}
