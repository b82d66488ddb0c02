// SPDX-License-Identifier: MIT
#include "scene/DrawingObject.h"

#include "host/CArchive.h"
#include "scene/DescendentWalk.h"

#include <algorithm>

// Placement, construction, copying and state. The other subjects are in DrawingObjectTree.cpp,
// -Transforms, -Bounds, -Drawing, -Undo and -Archive.

IMPLEMENT_SERIAL(DrawingObject, CObject, VERSIONABLE_SCHEMA | 3)

TextureMapList* DrawingObject::TextureList = nullptr;

DrawingObject::DrawingObject() = default;

DrawingObject::DrawingObject(const DrawingObject& other) : CObject(other)
{
    CopyFields_(other);
}

DrawingObject& DrawingObject::operator=(const DrawingObject& other)
{
    if (this != &other)
    {
        CopyFields_(other);
    }
    return *this;
}

DrawingObject::~DrawingObject()
{
    DestroyChildren();
    ClearUndo();
    Unlink_();
}

void DrawingObject::CopyFields_(const DrawingObject& other)
{
    constexpr int copiedHandles = 4;
    ChangeExternalUndoStack_(other.Read_().externalUndoStack);
    bounds = other.bounds;
    extentsBoxColor = other.extentsBoxColor;
    flags = other.flags;
    globalSizingHandles.CopyFirst(other.globalSizingHandles, copiedHandles);
    localSizingHandles.CopyFirst(other.localSizingHandles, copiedHandles);
    minimumSize = other.minimumSize;
    parent = other.parent;
    handleSize = other.handleSize;
    transform = other.transform;
    if (HasExtras_() || other.HasExtras_())
    {
        const Extras_& theirs = other.Read_();
        Extras_& own = Own_();
        own.scale = theirs.scale;
        own.scaledDimensions = theirs.scaledDimensions;
        own.texture = theirs.texture;
        own.unscaledDimensions = theirs.unscaledDimensions;
    }
}

void DrawingObject::SetSelected()
{
    SetOwnSelected_();
    VisitDescendents(*this, [](DrawingObject& node) {
        node.SetOwnSelected_();
        return true;
    });
}

void DrawingObject::ClearSelected()
{
    ClearOwnSelected_();
    VisitDescendents(*this, [](DrawingObject& node) {
        node.ClearOwnSelected_();
        return true;
    });
}

NamedColor DrawingObject::GetExtentsBoxColor() const
{
    return extentsBoxColor;
}

void DrawingObject::SetSurfaceColor(const NamedColor&, int) {}
