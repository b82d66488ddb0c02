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

/// A node of the scene tree. Texts, lights, views, scenes and meshes derive from it.
///
/// A node owns its children and deletes the subtree below it. It has a transform relative to its
/// parent, bounds in its own and in its parent's coordinates, eight sizing handles (the corners of
/// its local box) and a stack of copies of itself for undo, which it owns.
///
/// A node is in the list of children of at most one other node, its owner. The owner deletes the
/// node. Only the operations of this class change the owner. The parent pointer usually names the
/// owner too, but a program can set it to any node (SetParent, Orphan, copying) without changing
/// the owner. A node that is deleted removes itself from its owner's list.
///
/// The external undo stack is borrowed and shared by a whole tree; it records which node saved an
/// undo step. A node removes itself from the stack when it is deleted. A program that deletes the
/// stack before the nodes must first call AttachExternalUndoStack(nullptr) on the root of the tree,
/// on every node that has left the tree, and on every copy of a node, so that no node keeps a
/// pointer to the stack.
///
/// Drawing runs on the thread that owns the rendering context.
class ORVANE_API DrawingObject : public CObject
{
    DECLARE_SERIAL(DrawingObject)

public:
    // The bits of flags. Each bit has functions below that set, clear and test it.
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
    /// The eight bits for the state of a view, such as the selection. Undo does not change them.
    static constexpr DWORD viewStateBits = 0x00FF;

    DrawingObject();
    /// A copy has no children, no saved undo steps and no owner, but it has the original's parent
    /// pointer. Construction and assignment copy the sizing handles 0 to 3, but not 4 to 7.
    /// This is required; see the test ACopyHasZeroHandles4To7AndNoChildren.
    DrawingObject(const DrawingObject& other);
    DrawingObject& operator=(const DrawingObject& other);
    /// Deletes the subtree and the saved copies.
    ~DrawingObject() override;

    /// Stores or loads the record. Loading raises badSchema for an unknown version. It raises
    /// badClass for a child that is null, is not a node, occurs twice in the archive, or is an
    /// ancestor of this node; in that case no child has been added.
    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);
    void DeserializeVersion2(CArchive& archive);
    void DeserializeVersion3(CArchive& archive);

    /// Gives this node, its saved copies and its subtree one external undo stack. After a call with
    /// null, none of these nodes has an external stack.
    virtual void AttachExternalUndoStack(DrawingObjectStack* stack);
    /// Computes the bounds from those of the children. Returns 0 if the node has no children or if
    /// the function returns 0 for a child. The local bounds are then incomplete, and the global box
    /// does not change. This is required; see the test ANodeWithoutChildrenStopsItsParentsBounds.
    virtual int CalculateBounds();
    /// Draws this node and its subtree. Returns 0 when the drawing was stopped or failed; the
    /// picture is then incomplete.
    virtual int Draw(DrawingParameters* parameters);
    virtual int DrawChildren(DrawingParameters* parameters);
    /// Draws the node's own geometry, in its own coordinates. This class draws only the boxes that
    /// the node's bits or the parameters ask for.
    virtual int DrawObject(DrawingParameters* parameters);
    virtual NamedColor GetExtentsBoxColor() const;
    virtual DVector GetTranslation() const;
    /// Resizes the node as if a user dragged a sizing handle, 0 to 3, to a point in the node's own
    /// coordinates. The opposite handle stays in place. Always returns 1.
    virtual int Resize(const DVector& point, int handle);
    /// Goes back to the copy saved last, and deletes the copy. The parent pointer and viewStateBits
    /// do not change. Returns 0 when no copy is saved.
    virtual int RestoreFromUndo();
    /// Saves a copy of this node for undo. Classes with fields of their own that undo restores
    /// override this function and RestoreFromUndo. For the other classes, such as OrvString and
    /// TriangularMeshObject, only the fields of DrawingObject are saved. Always returns 1.
    virtual int SaveToUndo();
    virtual void SetTranslation(const DVector& translation);
    /// Sets the material of a surface. This class has no surfaces and ignores the call.
    virtual void SetSurfaceColor(const NamedColor& color, int surface);
    virtual void Translate(const DVector& translation);

protected:
    /// Widens the local bounds by the bounds of the children. Returns 0 in the same cases as
    /// CalculateBounds.
    virtual int CalculateChildBounds();

public:
    // The tree. Every POSITION belongs to this node's list of children.

    /// Appends a child and takes ownership of it. A node that has another parent leaves that parent
    /// first (AbandonChild). Refuses a node that is already a child, this node itself and its
    /// ancestors.
    int AddChild(DrawingObject* child);
    /// Like AddChild, but inserts the child behind a position. A null position appends the child.
    /// Returns the child's position, or null on refusal.
    POSITION AddChildAfter(DrawingObject* child, POSITION position);
    /// Appends the children of the other node in their order. Children that AddChild refuses stay
    /// where they are. Returns 0 when the other node has no children or is this node.
    int AdoptChildren(DrawingObject* other);
    /// Like AdoptChildren, but inserts the children behind a position. A null position appends
    /// them.
    int AdoptChildrenAfter(DrawingObject* other, POSITION position);
    /// Removes a child from the list without deleting it. The caller then owns the child. Refuses a
    /// child whose parent pointer does not name this node.
    int RemoveChild(DrawingObject* child);
    /// Removes a child like RemoveChild. The child then saves a copy of itself for undo and takes
    /// over this node's transform (CombineTransform), so that the child keeps its place in the
    /// coordinates of this node's parent.
    int AbandonChild(DrawingObject* child);
    /// Puts a node into the list in place of a child. The caller then owns \p oldChild. Refuses
    /// this node itself and its ancestors as \p newChild.
    int ReplaceChild(DrawingObject* oldChild, DrawingObject* newChild);
    /// Deletes all descendants, children before their parents. Returns 0 when there were no
    /// descendants.
    int DestroyChildren();
    /// Deletes all descendants that have the Deleted bit, with their subtrees. Always returns 1.
    int RemoveDeletedChildren();
    // The top child is the head of the list and is drawn first.

    int MoveChildToTop(DrawingObject* child);
    int MoveChildToBottom(DrawingObject* child);
    int MoveChildUpOnePosition(DrawingObject* child);
    int MoveChildDownOnePosition(DrawingObject* child);

    // Functions below that look for a child return null, or -1 as an index, when there is no such
    // child.

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
    /// The list of children. Call this node's operations to change it; do not change it directly.
    DrawingObjectList* GetChildren() { return &children; }
    const DrawingObjectList* GetChildren() const { return &children; }

    DrawingObject* GetParent() const { return parent; }
    void SetParent(DrawingObject* newParent) { parent = newParent; }
    /// Clears the parent pointer. The node stays in its owner's list.
    void Orphan() { parent = nullptr; }

    // Each of the next four functions skips descendants that have the Deleted bit, with their
    // subtrees.

    /// The number of descendants.
    int GetDescendentCount() const;
    /// The number of Editable children plus the number of all descendants of every child, editable
    /// or not. This is required; see the test TheEditableCountCountsAllDescendantsOfChildren.
    int GetEditableDescendentCount() const;
    int GetTemplateDescendentCount() const;
    /// Appends the descendants that have the TemplateObject bit, parents before their children.
    /// Returns how many were appended.
    int GetTemplateDescendentList(DrawingObjectList* list) const;
    /// Climbs from this node to its parent for as long as the parent has the Grouped bit, and
    /// returns the node where the climb ends.
    DrawingObject* GetTopLevelGroupParent() const;

    // State. SetSelected and ClearSelected change the bit of every node of the subtree.

    void SetSelected();
    void ClearSelected();
    int IsSelected() const { return static_cast<int>(flags & selectedBit); }
    /// Draw the scaling box, which looks like the extents box, if the parameters have
    /// ShowExtentsAndHandles but not ExtentsBox.
    ORVANE_FLAG(flags, ShowScalingBox, ShouldShowScalingBox, showScalingBoxBit);
    /// A node that is not Editable draws boxes only if it has this bit and the parameters have
    /// ShowExtentsAndHandles. An Editable node ignores this bit.
    ORVANE_FLAG(flags, ShowExtentsBox, ShouldShowExtentsBox, showExtentsBoxBit);
    /// The node forms a group with its children; see GetTopLevelGroupParent.
    ORVANE_FLAG(flags, Grouped, IsGrouped, groupedBit);
    ORVANE_FLAG(flags, Editable, IsEditable, editableBit);
    /// The node has been given its content.
    ORVANE_FLAG(flags, Defined, IsDefined, definedBit);
    ORVANE_FLAG(flags, Transparent, IsTransparent, transparentBit);
    /// The node is still in the tree, but is not drawn and not counted.
    ORVANE_FLAG(flags, Deleted, IsDeleted, deletedBit);
    ORVANE_FLAG(flags, TextureEnabled, IsTextureEnabled, textureEnabledBit);
    /// The node is part of a scene template.
    ORVANE_FLAG(flags, TemplateObject, IsTemplateObject, templateObjectBit);
    /// The node is part of a scene template and is scaled with the scene.
    ORVANE_FLAG(flags, ScaleTemplateObject, ShouldScaleTemplateObject, scaleTemplateObjectBit);

    // The transform.

    CoordinateTransform* GetTransform() { return &transform; }
    const CoordinateTransform* GetTransform() const { return &transform; }
    void SetTransform(const CoordinateTransform& newTransform) { transform = newTransform; }
    /// The 16 numbers of the transform's matrix, column by column.
    double* GetCompositeMatrix() { return transform.GetCompositeMatrix(); }
    const double* GetCompositeMatrix() const { return transform.GetCompositeMatrix(); }
    double* GetRotationMatrix() { return transform.GetRotationMatrix(); }
    const double* GetRotationMatrix() const { return transform.GetRotationMatrix(); }
    void SetRotationMatrix(const double* matrix) { transform.SetRotationMatrix(matrix); }
    void SetRotationMatrix(const float* matrix) { transform.SetRotationMatrix(matrix); }
    // Angles are degrees, right-handed about the axis.

    void SetRotation(double angle, const DVector& axis) { transform.SetRotation(angle, axis); }
    void Rotate(double angle, const DVector& axis) { transform.Rotate(angle, axis); }
    /// Removes the rotation and resets the external matrix to the identity.
    void ResetOrientation() { transform.ResetRotation(); }
    /// Combines \p outer with this node's transform: points then go through this node's old
    /// transform first and through \p outer last. Always returns 1.
    int CombineTransform(CoordinateTransform* outer);
    /// Combines this node's transform into the transform of every child (CombineTransform), then
    /// resets this node's transform. The children do not move. Returns 0 for a node without
    /// children.
    int ApplyTransformAndReset();
    /// Combines the transforms of this node, then of its ancestors along the parent pointers, and
    /// last the transform of \p extra, unless \p extra is null or this node. If \p includeOwn is
    /// not 0, the result maps the node's coordinates to those of the world. If \p includeOwn is 0,
    /// the result leaves out this node's transform, except for its external matrix if \p
    /// includeOwnExternal is not 0. The external matrix of the result is also copied into the
    /// rotation and the translation of the result.
    ///
    /// The functions below pass their parameter \p extra to this function.
    CoordinateTransform AccumulateTransformations(int includeOwn, int includeOwnExternal,
                                                  DrawingObject* extra) const;
    /// A transform that rotates the node's axes, given in the coordinates of the world, onto the
    /// axes of the world.
    CoordinateTransform GetAlignmentTransformation() const;
    /// The result of AccumulateTransformations(1, 0, extra) after
    /// CoordinateTransform::InvertRotations.
    CoordinateTransform GetInverseAlignmentTransformation(DrawingObject* extra) const;
    /// Turns the node until its axes in the world are parallel to those of the target: first the z
    /// axis, then the y axis. Always returns 1. If the y axis then points the opposite way, the
    /// node turns half a circle about the x axis, which also reverses the z axis. This is required;
    /// see the test AligningAnOppositeYTurnsAboutXAndZWithIt.
    int AlignRotations(CoordinateTransform& target, DrawingObject* extra);
    /// Like the function above, with the axes of another node in the world as the target.
    int AlignRotations(DrawingObject& other, DrawingObject* extra);
    /// Turns the node the shortest way until its z axis points along the world's z axis. Always
    /// returns 1.
    int AlignGlobalFrontFace(DrawingObject* extra);
    /// The node's axes in the world. They have unit length unless a transform on the way to the
    /// world scales.
    void GetGlobalAxes(DVector* xAxis, DVector* yAxis, DVector* zAxis, DrawingObject* extra) const;
    DVector GetGlobalZAxis(DrawingObject* extra) const;

    // Size. On each axis, the setters keep the scaled dimension equal to scale times unscaled
    // dimension.

    DVector GetScale() const { return CurrentDetails().scale; }
    void SetScale(const DVector& newScale);
    DVector GetScaledDimensions() const { return CurrentDetails().scaledDimensions; }
    /// Also sets the scale, except on an axis where the unscaled dimension is 0. Does nothing when
    /// the node already has these dimensions.
    void SetScaledDimensions(const DVector& dimensions);
    DVector GetUnscaledDimensions() const { return CurrentDetails().unscaledDimensions; }
    /// Also sets the scaled dimensions. Does nothing when the node already has these dimensions.
    void SetUnscaledDimensions(const DVector& dimensions);

    // Bounds. Local bounds are in the node's coordinates, global bounds in its parent's.

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

    /// Computes, from the bounds, the centres of the sizing handles and the size at which they are
    /// drawn. Always returns 1.
    int CalculateSizingHandles();
    /// The centre of a sizing handle, \p index 0 to 7. Handle i + 4 is at the other end of a box
    /// edge that begins at handle i.
    DVector GetLocalSizingHandleCenter(int index) const { return localSizingHandles[index]; }
    DVector GetGlobalSizingHandleCenter(int index) const { return globalSizingHandles[index]; }
    /// Converts a name of a picking pass to the index of a sizing handle. If the node has n
    /// children, the children have the names 0 to n - 1, and handle i has the name n + i. The name
    /// is not checked: the name of a child gives a negative index.
    int SizingHandleIndexFromSelectionIndex(int name) const { return name - GetChildCount(); }

    // Drawing.

    int DrawExtentsBox(DrawingParameters* parameters = nullptr);
    int DrawScalingBox(DrawingParameters* parameters = nullptr);
    /// Draws the sizing handles. Draw does not call this function, so a program that shows the
    /// handles calls it.
    int DrawSizingHandles(DrawingParameters* parameters);
    /// Draws the edges of a cube around the centre. \p edge is their length.
    void DrawOpenSizingHandle(const Vector& center, const float& edge);
    /// Like DrawOpenSizingHandle, but draws the faces of the cube.
    void DrawClosedSizingHandle(const Vector& center, const float& edge);
    /// Whether the parameters' termination event is signalled and NoTerminate is not set. A call is
    /// cheap enough to be made before each letter.
    int ShouldTerminateDrawing(DrawingParameters* parameters) const;
    /// Makes the material OpenGL's current material for front and back faces.
    void PrepareMaterialColors(const NamedColor& material);

    TextureMap* GetTexture() { return &EnsureDetails().texture; }
    const TextureMap* GetTexture() const { return &CurrentDetails().texture; }
    void SetTexture(const TextureMap& newTexture) { EnsureDetails().texture = newTexture; }
    /// Sets the list of known textures. When a node is loaded whose texture file is missing, the
    /// node uses the file of the texture in this list that has the same name. The list is borrowed;
    /// null means no list.
    static void SetTextureList(TextureMapList* list) { TextureList = list; }
    static TextureMapList* TextureList;

    // Undo.

    /// Pushes this node, not a copy, onto the external stack. Returns 0 when there is no stack.
    int SaveToExternalUndo();
    /// Deletes the copy saved last without restoring it, and removes this node from the top of the
    /// external stack if it is there. Returns 0 when no copy was saved.
    int PopUndo();
    int CanUndo() const;
    /// Deletes all saved copies and removes this node from the external stack. Returns 0 when no
    /// copy was saved.
    int ClearUndo();
    /// Does what ClearUndo does, for this node and every descendant. Returns 0 when none of these
    /// nodes had a saved copy.
    int ClearUndoAll();
    DrawingObjectStack* GetExternalUndoStack() const { return CurrentDetails().externalUndoStack; }

    BoundingElement bounds;
    NamedColor extentsBoxColor;  ///< the extents box is drawn in its diffuse colour
    DWORD flags = 0;
    SizingHandles<HandleSpace::Global> globalSizingHandles{*this};
    SizingHandles<HandleSpace::Local> localSizingHandles{*this};
    DVector minimumSize;  ///< smallest size on each axis in Resize; 0 means no limit
    double handleSize = static_cast<double>(0.05f);  ///< edge of a drawn handle, in local units
    DrawingObjectStack undoStack;                    ///< saved copies of this node, owned

protected:
    // These functions change the Selected bit of this node alone. Views and scenes use them to
    // select themselves while only selected nodes are drawn.
    void SelectOnlyThisNode() { flags |= selectedBit; }
    void DeselectOnlyThisNode() { flags &= ~selectedBit; }

    // The steps of Resize and of undo, for classes whose Resize or undo differs in one step.

    /// How a node is to be resized after a sizing handle was dragged.
    struct HandleDrag
    {
        DVector anchor;  ///< the centre of the handle that stays in place
        /// From the anchor to the point that the handle was dragged to. A component that is shorter
        /// than that of minimumSize gets its length and keeps its sign.
        DVector difference;
        /// The new size. A negative x or y mirrors the node; z is at least 0. All are 0 if the
        /// handle is not 0 to 3.
        DVector extents;
    };
    HandleDrag MeasureDrag(const DVector& point, int handle) const;
    /// Sets scale = scaled / unscaled dimensions, except on an axis where the unscaled dimension is
    /// 0.
    void DeriveScale();
    /// Moves the resized node so that the anchor is where it was before, then recomputes bounds and
    /// sizing handles. Always returns 1.
    int KeepAnchorInPlace(const HandleDrag& drag);

    /// Takes ownership of \p copy, a copy of this node, and pushes it onto the undo stack. Pushes
    /// this node onto the external stack. Always returns 1.
    int SaveCopy(DrawingObject* copy);
    /// Pops the copy saved last and calls \p assign(copy), which copies it into this node. The
    /// parent pointer and the bits of flags that are in \p keptBits do not change. \p Node is the
    /// class of this node; a copy of another class is deleted without being assigned. Returns 0
    /// when no copy is saved.
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
        copy->ForgetExternalUndoStack();  // so that its destructor does not search the stack
        parent = keptParent;
        flags = (flags & ~keptBits) | keptFlags;
        return 1;
    }
    /// Like the function above: copies with the assignment operator and keeps viewStateBits.
    template <typename Node>
    int RestoreSavedCopy()
    {
        return RestoreSavedCopy<Node>(
            viewStateBits, [this](const Node& saved) { static_cast<Node&>(*this) = saved; });
    }

    DrawingObject* parent = nullptr;
    CoordinateTransform transform;
    DrawingObjectList children{10};

    /// The fields that few nodes of a large scene use. They are one block of memory, which is
    /// allocated when one of the fields is changed for the first time.
    struct Details
    {
        DVector globalSizingHandles[8];
        DVector localSizingHandles[8];
        DVector scale{1.0, 1.0, 1.0};
        DVector scaledDimensions;
        TextureMap texture;
        DVector unscaledDimensions;
        DrawingObjectStack* externalUndoStack = nullptr;  ///< borrowed
        bool savedToExternalUndo = false;  ///< has pushed itself onto externalUndoStack

        /// Copies scale, dimensions, texture, and the first \p handleCount handles of each array.
        void CopySizesAndTexture(const Details& other, int handleCount);
        /// Whether scale, dimensions, texture and handles have the same bits as in a new node.
        bool AreInitial() const;
    };
    bool HasDetails() const { return details_.load(std::memory_order_acquire) != nullptr; }
    /// The details of this node, or the initial values, which all nodes without details share.
    const Details& CurrentDetails() const;
    /// The details of this node; allocates them if there are none. Two threads may call this at the
    /// same time: a program may change a node's texture while another thread draws the node.
    Details& EnsureDetails();
    /// The node's texture, or the empty texture map that all nodes without details share. The
    /// caller must not put a picture into the shared texture map.
    TextureMap& TextureOrNone();

private:
    void CopyFieldsFrom(const DrawingObject& other);
    bool IsSelfOrAncestor(const DrawingObject* node) const;
    void MarkAsChild(DrawingObject* child);
    void LeaveOwner();
    void DestroyChildrenOneByOne();
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

    DrawingObject* owner_ = nullptr;           // the node that has this node in its list
    std::atomic<Details*> details_ = nullptr;  // owned
};

// An imported file may have tens of thousands of nodes, so a node may have at most 900 bytes.
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
