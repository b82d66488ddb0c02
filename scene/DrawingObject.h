// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/BoundingElement.h"
#include "geometry/CoordinateTransform.h"
#include "geometry/DVector.h"
#include "geometry/Sphere.h"
#include "geometry/Vector.h"
#include "host/FlagAccessors.h"
#include "imaging/TextureMap.h"
#include "material/NamedColor.h"
#include "scene/DrawingObjectList.h"
#include "scene/DrawingObjectStack.h"
#include "scene/SizingHandles.h"

#include <atomic>
#include <memory>
#include <vector>

class DrawingParameters;
class TextureMapList;

/// A node of the scene tree, base of text, lights, views, scenes and meshes.
///
/// A node owns its children: it deletes the subtree below it. It has a transform relative to its
/// parent, bounds in its own and in its parent's coordinates, eight sizing handles (the corners of
/// its local box) and an undo stack of copies of itself, which it owns.
///
/// A node has one place in the trees: the node that keeps it among its children, and that deletes
/// it. Only the operations here change that. The parent pointer usually names that node, but is set
/// freely (SetParent, Orphan, copying); owning goes by the place alone. A node that is deleted
/// while it has a place leaves it.
///
/// The external undo stack is borrowed and shared by a whole tree; it records which node saved a
/// step. A node that dies takes itself off it. A host that ends a stack first detaches it before,
/// with AttachExternalUndoStack(nullptr) on the root of the tree, on every node taken out of it
/// since and on every copy made of a node: nothing keeps a pointer to it then.
///
/// Drawing runs on the thread that owns the rendering context. Operations return 1 when done and 0
/// when refused, having changed nothing.
class ORVANE_API DrawingObject : public CObject
{
    DECLARE_SERIAL(DrawingObject)

public:
    // The bits of flags. Each has a Set, a Clear and a test operation below.
    static constexpr DWORD selectedBit = 0x0001;
    static constexpr DWORD showScalingBoxBit = 0x0002;
    static constexpr DWORD showExtentsBoxBit = 0x0004;
    static constexpr DWORD groupedBit = 0x0100;
    static constexpr DWORD editableBit = 0x0200;
    static constexpr DWORD definedBit = 0x0400;
    static constexpr DWORD transparentBit = 0x0800;
    static constexpr DWORD deletedBit = 0x1000;
    static constexpr DWORD textureEnabledBit = 0x2000;
    static constexpr DWORD templateObjectBit = 0x4000;
    static constexpr DWORD scaleTemplateObjectBit = 0x8000;
    /// The bits that belong to a view of the node: undo leaves them as they are.
    static constexpr DWORD viewStateBits = 0x00FF;

    DrawingObject();
    /// A copy has no children, no saved steps and no place, but the parent pointer of the original.
    /// Of its sizing handles only 0 to 3 are copied, in construction and in assignment; that is
    /// meant, see ACopyHasZeroHandles4To7AndNoChildren.
    DrawingObject(const DrawingObject& other);
    DrawingObject& operator=(const DrawingObject& other);
    /// Deletes the subtree and the saved copies.
    ~DrawingObject() override;

    /// Stores or loads the record. Loading raises badSchema for an unknown version, and badClass,
    /// before any child is linked, for one that is null, no node, met before, or an ancestor.
    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);
    void DeserializeVersion2(CArchive& archive);
    void DeserializeVersion3(CArchive& archive);

    /// Shares a stack among this node, its saved copies and its subtree; null detaches it.
    virtual void AttachExternalUndoStack(DrawingObjectStack* stack);
    /// Computes the bounds from those of the children. 0 for a node without any, as for one with a
    /// child that returns 0; that is meant, see ANodeWithoutChildrenStopsItsParentsBounds.
    virtual int CalculateBounds();
    /// Draws this node and its subtree. 0 when it was stopped or something failed: the picture is
    /// incomplete.
    virtual int Draw(DrawingParameters* parameters);
    virtual int DrawChildren(DrawingParameters* parameters);
    /// Draws the node's own geometry, in its own coordinates. The base draws boxes only.
    virtual int DrawObject(DrawingParameters* parameters);
    virtual NamedColor GetExtentsBoxColor() const;
    virtual DVector GetTranslation() const;
    /// Resizes by dragging a sizing handle, 0 to 3, to a point in the node's own coordinates; the
    /// opposite one stays where it is.
    virtual int Resize(const DVector& point, int handle);
    /// Takes back the last saved step. The parent and the low eight flag bits, which are view
    /// state, stay as they are.
    virtual int RestoreFromUndo();
    /// Saves a copy. Overridden to save one of the class's own type. Always 1.
    virtual int SaveToUndo();
    virtual void SetTranslation(const DVector& translation);
    /// Does nothing here.
    virtual void SetSurfaceColor(const NamedColor& color, int surface);
    virtual void Translate(const DVector& translation);

protected:
    /// Gathers the bounds of the children into the local ones. 0 as CalculateBounds.
    virtual int CalculateChildBounds();

public:
    // The tree. Every position is one of this node's list of children.

    /// Appends a child, which is taken from another parent first (AbandonChild). Takes ownership.
    /// Refuses a node that is a child already, this node itself and its ancestors.
    int AddChild(DrawingObject* child);
    /// The same behind a position (null: at the tail). The new position, null when refused.
    POSITION AddChildAfter(DrawingObject* child, POSITION position);
    /// Takes every child of the other node, in order. 0 when it has none.
    int AdoptChildren(DrawingObject* other);
    int AdoptChildrenAfter(DrawingObject* other, POSITION position);
    /// Hands a child to the caller, who owns it then.
    int RemoveChild(DrawingObject* child);
    /// The same; the child saves a step and combines this node's transform into its own, so that it
    /// keeps its place in the world.
    int AbandonChild(DrawingObject* child);
    /// Puts a node in a child's place; the caller owns \p oldChild then. Refuses this node itself
    /// and its ancestors.
    int ReplaceChild(DrawingObject* oldChild, DrawingObject* newChild);
    /// Deletes all descendants, children before their parents. 0 when there were none.
    int DestroyChildren();
    /// Deletes all descendants that are marked Deleted, with their subtrees. Always 1.
    int RemoveDeletedChildren();
    int MoveChildToTop(DrawingObject* child);
    int MoveChildToBottom(DrawingObject* child);
    int MoveChildUpOnePosition(DrawingObject* child);
    int MoveChildDownOnePosition(DrawingObject* child);

    /// Null when there is no such child; -1 as an index.
    DrawingObject* GetChildByIndex(int index) const;
    int FindChildIndex(DrawingObject* child) const;
    POSITION FindChildPosition(DrawingObject* child) const;
    POSITION FindChildPositionByIndex(int index) const;
    DrawingObject* GetHeadChild() const;
    DrawingObject* GetTailChild() const;
    int GetChildCount() const { return children.GetCount(); }
    int HasChildren() const { return !children.IsEmpty(); }
    int IsChildFirst(DrawingObject* child) const;
    int IsChildLast(DrawingObject* child) const;
    /// Change what it holds through this node's operations only.
    DrawingObjectList* GetChildren() { return &children; }
    const DrawingObjectList* GetChildren() const { return &children; }

    DrawingObject* GetParent() const { return parent; }
    void SetParent(DrawingObject* newParent) { parent = newParent; }
    /// Clears the parent and leaves every list as it is.
    void Orphan() { parent = nullptr; }

    /// How many descendants are not Deleted. A Deleted one hides its subtree, here and below.
    int GetDescendentCount() const;
    /// The children that are Editable, and all descendants of every child, editable or not. That
    /// mixture is meant, see TheEditableCountCountsAllDescendantsOfChildren.
    int GetEditableDescendentCount() const;
    int GetTemplateDescendentCount() const;
    /// Appends the template descendants, parents before their children. How many there were.
    int GetTemplateDescendentList(DrawingObjectList* list) const;
    /// The topmost node reached while the parent is Grouped; this node when it is not.
    DrawingObject* GetTopLevelGroupParent() const;

    // State. SetSelected and ClearSelected mark the whole subtree.

    void SetSelected();
    void ClearSelected();
    int IsSelected() const { return static_cast<int>(flags & selectedBit); }
    ORVANE_FLAG(flags, ShowScalingBox, ShouldShowScalingBox, showScalingBoxBit);
    ORVANE_FLAG(flags, ShowExtentsBox, ShouldShowExtentsBox, showExtentsBoxBit);
    /// In one group with the parent.
    ORVANE_FLAG(flags, Grouped, IsGrouped, groupedBit);
    ORVANE_FLAG(flags, Editable, IsEditable, editableBit);
    /// Has been given its content.
    ORVANE_FLAG(flags, Defined, IsDefined, definedBit);
    ORVANE_FLAG(flags, Transparent, IsTransparent, transparentBit);
    /// Still in the tree, but neither drawn nor counted.
    ORVANE_FLAG(flags, Deleted, IsDeleted, deletedBit);
    ORVANE_FLAG(flags, TextureEnabled, IsTextureEnabled, textureEnabledBit);
    /// Part of a scene template.
    ORVANE_FLAG(flags, TemplateObject, IsTemplateObject, templateObjectBit);
    /// A template node that is scaled with the scene.
    ORVANE_FLAG(flags, ScaleTemplateObject, ShouldScaleTemplateObject, scaleTemplateObjectBit);

    // The transform.

    CoordinateTransform* GetTransform() { return &transform; }
    const CoordinateTransform* GetTransform() const { return &transform; }
    void SetTransform(const CoordinateTransform& newTransform) { transform = newTransform; }
    /// The transform's own 16 values, column-major.
    double* GetCompositeMatrix() { return transform.GetCompositeMatrix(); }
    const double* GetCompositeMatrix() const { return transform.GetCompositeMatrix(); }
    double* GetRotationMatrix() { return transform.GetRotationMatrix(); }
    const double* GetRotationMatrix() const { return transform.GetRotationMatrix(); }
    void SetRotationMatrix(const double* matrix) { transform.SetRotationMatrix(matrix); }
    void SetRotationMatrix(const float* matrix) { transform.SetRotationMatrix(matrix); }
    /// Degrees, right-handed about the axis.
    void SetRotation(double angle, const DVector& axis) { transform.SetRotation(angle, axis); }
    void Rotate(double angle, const DVector& axis) { transform.Rotate(angle, axis); }
    /// Back to no rotation, also of the external matrix.
    void ResetOrientation() { transform.ResetRotation(); }
    /// Takes the transform of what was around this node into its own. Always 1.
    int CombineTransform(CoordinateTransform* outer);
    /// Hands the transform down to the children and resets it. 0 without children.
    int ApplyTransformAndReset();
    /// The transforms from this node up to the root, then that of \p extra when it is given and is
    /// another node. Of this node's own: all with \p includeOwn, else the external part with \p
    /// includeOwnExternal, else nothing. With all of it the result maps the node's coordinates to
    /// the world's. Its external part is copied into its rotation and translation.
    CoordinateTransform AccumulateTransformations(int includeOwn, int includeOwnExternal,
                                                  DrawingObject* extra) const;
    /// A transform that turns the node's world axes into those of the world.
    CoordinateTransform GetAlignmentTransformation() const;
    /// The accumulated transform with its rotations inverted.
    CoordinateTransform GetInverseAlignmentTransformation(DrawingObject* extra) const;
    /// Turns the node until its world axes are those of the target, z first, then y. Always 1. A y
    /// axis that then lies just opposite is turned about x, and takes z along; that is meant, see
    /// AligningAnOppositeYTurnsAboutXAndZWithIt.
    int AlignRotations(CoordinateTransform& target, DrawingObject* extra);
    /// The same with the world axes of another node.
    int AlignRotations(DrawingObject& other, DrawingObject* extra);
    /// Turns the node the shortest way until its front, where its z axis points, faces along the
    /// world's z axis. Always 1.
    int AlignGlobalFrontFace(DrawingObject* extra);
    /// The node's axes in the world; as long as the transforms' scales make them.
    void GetGlobalAxes(DVector* xAxis, DVector* yAxis, DVector* zAxis, DrawingObject* extra) const;
    DVector GetGlobalZAxis(DrawingObject* extra) const;

    // Size. Three values of which the setters keep scaled = scale x unscaled, by axis.

    DVector GetScale() const { return CurrentDetails().scale; }
    void SetScale(const DVector& newScale);
    DVector GetScaledDimensions() const { return CurrentDetails().scaledDimensions; }
    /// Derives the scale, but on an axis where the unscaled dimension is 0. Nothing for the
    /// dimensions that it has.
    void SetScaledDimensions(const DVector& dimensions);
    DVector GetUnscaledDimensions() const { return CurrentDetails().unscaledDimensions; }
    /// Derives the scaled dimensions. Nothing for the dimensions that it has.
    void SetUnscaledDimensions(const DVector& dimensions);

    // Bounds: local ones in the node's coordinates, global ones in the parent's.

    void SetLocalBounds(const Vector& minimum, const Vector& maximum);
    Vector GetBoundsLocalMinimum() const { return bounds.GetLocalMinimum(); }
    Vector GetBoundsLocalMaximum() const { return bounds.GetLocalMaximum(); }
    Vector GetBoundsLocalCenter() const { return bounds.GetLocalCenter(); }
    Sphere GetBoundsLocalSphere() const { return bounds.GetLocalSphere(); }
    float GetBoundsLocalDiameter() const { return bounds.GetLocalDiameter(); }
    float GetLocalBoundsRadius() const { return bounds.GetLocalRadius(); }
    Vector GetBoundsGlobalMinimum() const { return bounds.GetGlobalMinimum(); }
    Vector GetBoundsGlobalMaximum() const { return bounds.GetGlobalMaximum(); }
    Vector GetBoundsGlobalCenter() const { return bounds.GetGlobalCenter(); }
    Sphere GetBoundsGlobalSphere() const { return bounds.GetGlobalSphere(); }
    float GetBoundsGlobalDiameter() const { return bounds.GetGlobalDiameter(); }
    float GetGlobalBoundsRadius() const { return bounds.GetGlobalRadius(); }

    /// Computes the handles from the bounds, and how large they are drawn. Always 1.
    int CalculateSizingHandles();
    /// The handle's centre, \p index 0 to 7: handle i + 4 lies opposite handle i along an edge.
    DVector GetLocalSizingHandleCenter(int index) const { return localSizingHandles[index]; }
    DVector GetGlobalSizingHandleCenter(int index) const { return globalSizingHandles[index]; }
    /// The handle that a picked name means; not checked against any range.
    int SizingHandleIndexFromSelectionIndex(int name) const { return name - GetChildCount(); }

    // Drawing.

    int DrawExtentsBox(DrawingParameters* parameters = nullptr);
    int DrawScalingBox(DrawingParameters* parameters = nullptr);
    /// For applications; the draw of a tree does not show handles.
    int DrawSizingHandles(DrawingParameters* parameters);
    /// A cube of wires about the centre, with edges of that length.
    void DrawOpenSizingHandle(const Vector& center, const float& edge);
    /// The same as a solid.
    void DrawClosedSizingHandle(const Vector& center, const float& edge);
    /// Whether the termination event is signalled and counts. Cheap enough to ask before each
    /// glyph.
    int ShouldTerminateDrawing(DrawingParameters* parameters) const;
    /// Makes the material OpenGL's, for both faces.
    void PrepareMaterialColors(const NamedColor& material);

    TextureMap* GetTexture() { return &EnsureDetails().texture; }
    const TextureMap* GetTexture() const { return &CurrentDetails().texture; }
    void SetTexture(const TextureMap& newTexture) { EnsureDetails().texture = newTexture; }
    /// The textures among which a loaded node looks for one whose file is gone. Borrowed, null for
    /// none.
    static void SetTextureList(TextureMapList* list) { TextureList = list; }
    static TextureMapList* TextureList;

    // Undo.

    /// Records this node itself on the external stack. 0 when there is none.
    int SaveToExternalUndo();
    /// Drops the last saved step, also from the top of the external stack. 0 when there was none.
    int PopUndo();
    int CanUndo() const;
    /// Drops all saved steps, also from the external stack. 0 when there were none.
    int ClearUndo();
    /// The same for the whole subtree. 0 when no node had any.
    int ClearUndoAll();
    DrawingObjectStack* GetExternalUndoStack() const { return CurrentDetails().externalUndoStack; }

    BoundingElement bounds;
    NamedColor extentsBoxColor;  ///< its diffuse colour draws the extents box
    DWORD flags = 0;
    SizingHandles<HandleSpace::Global> globalSizingHandles{*this};
    SizingHandles<HandleSpace::Local> localSizingHandles{*this};
    DVector minimumSize;                             ///< by axis, for Resize; 0 is no limit
    double handleSize = static_cast<double>(0.05f);  ///< edge of a drawn sizing handle
    DrawingObjectStack undoStack;                    ///< of saved copies, owned

protected:
    // The bit of this node alone, for one that marks itself while it draws.
    void SelectOnlyThisNode() { flags |= selectedBit; }
    void DeselectOnlyThisNode() { flags &= ~selectedBit; }

    // The steps of Resize and of undo, for the classes that vary them.

    /// What a dragged sizing handle asks for.
    struct HandleDrag
    {
        DVector anchor;      ///< the local handle that stays
        DVector difference;  ///< from the anchor to the point, clamped to the minimum size
        DVector extents;     ///< z not negative; all 0 for a handle outside 0 to 3
    };
    HandleDrag MeasureDrag(const DVector& point, int handle) const;
    /// scale = scaled / unscaled dimensions, but on an axis where the unscaled one is 0.
    void DeriveScale();
    /// Moves the node so that the anchor stays where it was, then recomputes the bounds and the
    /// handles. Always 1.
    int KeepAnchorInPlace(const HandleDrag& drag);

    /// Saves a copy of this node, which it takes over, and the step on the external stack.
    /// Always 1.
    int SaveCopy(DrawingObject* copy);
    /// Takes the last saved copy back with \p assign(copy), when it is a Node, the class of this
    /// node. The parent and the bits \p keptBits of the flags stay.
    template <typename Node, typename Assign>
    int RestoreSavedCopy(DWORD keptBits, Assign assign)
    {
        if (!CanUndo())
        {
            return 0;
        }
        DrawingObject* const keptParent = parent;
        const DWORD keptFlags = flags & keptBits;
        const std::unique_ptr<DrawingObject> copy(undoStack.Pop());
        if (const Node* const saved = dynamic_cast<const Node*>(copy.get()))
        {
            assign(*saved);
        }
        copy->ForgetExternalUndoStack();  // it is on none, and need not look
        parent = keptParent;
        flags = (flags & ~keptBits) | keptFlags;
        return 1;
    }
    /// By assignment; the state of the view stays.
    template <typename Node>
    int RestoreSavedCopy()
    {
        return RestoreSavedCopy<Node>(
            viewStateBits, [this](const Node& saved) { static_cast<Node&>(*this) = saved; });
    }

    DrawingObject* parent = nullptr;
    CoordinateTransform transform;
    DrawingObjectList children{10};

    /// The fields that few nodes of a large scene use. They are one block of memory, which a node
    /// has from the first change of one of them on.
    struct Details
    {
        DVector globalSizingHandles[8];
        DVector localSizingHandles[8];
        DVector scale{1.0, 1.0, 1.0};
        DVector scaledDimensions;
        TextureMap texture;
        DVector unscaledDimensions;
        DrawingObjectStack* externalUndoStack = nullptr;  ///< borrowed
        bool savedToExternalUndo = false;                 ///< since the external stack was attached

        /// Copies sizes, texture and, of each array of handles, the first \p handleCount.
        void CopySizesAndTexture(const Details& other, int handleCount);
        /// Whether sizes, texture and handles are those of a new node, to the bit.
        bool AreInitial() const;
    };
    bool HasDetails() const { return details_.load(std::memory_order_acquire) != nullptr; }
    /// The details, or the initial values, which all nodes without details share.
    const Details& CurrentDetails() const;
    /// The details, which are made if there are none. Two threads may do this at once: a host may
    /// reach for a node's texture while another thread draws the node.
    Details& EnsureDetails();
    /// The node's texture, or a texture map that stays empty, which all nodes without details
    /// share.
    TextureMap& TextureOrNone();

private:
    void CopyFieldsFrom(const DrawingObject& other);
    bool IsSelfOrAncestor(const DrawingObject* node) const;
    void MarkAsChild(DrawingObject* child);
    void LeaveOwner();
    void LeaveParentForAdoption();
    void AlignAxis(const DVector& axis, const DVector& standIn, const CoordinateTransform& target,
                   DrawingObject* extra);
    int DrawObjectWithTexture(DrawingParameters* parameters);
    void DrawRequestedBoxes(DrawingParameters* parameters);
    void ChangeExternalUndoStack(DrawingObjectStack* stack);
    void ForgetExternalUndoStack();
    void DeleteLastSavedCopy();
    int DeleteSavedCopies();
    static void LeaveExternalUndoStacks(const std::vector<DrawingObject*>& nodes);
    void WriteFields(CArchive& archive);
    void ReadFields(CArchive& archive, DWORD version);
    void ReadChildren(CArchive& archive);
    void FindTextureFile();
    static Details& InitialDetails();

    template <HandleSpace space>
    friend class SizingHandles;

    DrawingObject* owner_ = nullptr;           // the node whose list of children this one is in
    std::atomic<Details*> details_ = nullptr;  // owned
};

// An imported file may have tens of thousands of nodes.
static_assert(sizeof(DrawingObject) <= 900);

template <HandleSpace space>
SizingHandles<space>::operator Centers&()
{
    DrawingObject::Details& details = node_.EnsureDetails();
    return space == HandleSpace::Global ? details.globalSizingHandles : details.localSizingHandles;
}

template <HandleSpace space>
SizingHandles<space>::operator const Centers&() const
{
    const DrawingObject::Details& details = node_.CurrentDetails();
    return space == HandleSpace::Global ? details.globalSizingHandles : details.localSizingHandles;
}
